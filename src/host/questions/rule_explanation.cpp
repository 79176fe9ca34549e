#include "host/questions/rule_explanation.h"

#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Place = RuledPath::Place;

/// Why what stands at a name is no answer.
FolderOutcome OutcomeFor(Standing standing) {
  switch (standing) {
    case Standing::Folder:
      return FolderOutcome::IsFolder;
    case Standing::OtherType:
      return FolderOutcome::OtherType;
    case Standing::NotExecutable:
      return FolderOutcome::NotExecutable;
    case Standing::NotReadable:
    case Standing::NotReachable:
      return FolderOutcome::NotReadable;
    case Standing::Counts:  // a file that has come since it was asked for
    case Standing::Absent:
      break;
  }
  return FolderOutcome::Absent;
}

class RuleExplainer {
 public:
  RuleExplainer(const RuledPath& ruledPath, const RuledPath::Target& target)
      : path(ruledPath),
        names(RuledPath::NamesOf(target)),
        isThatFile(path.IsThatFile(target.GetName())),
        filter(path.GetView()) {}

  Explanation Run(const std::vector<Place>& places) {
    for (const Place& place : places) {
      if (Ask(place)) break;
    }
    explanation.rule = RuleFor(places);
    return std::move(explanation);
  }

 private:
  /// Asks one place; returns whether the search ends there.
  bool Ask(const Place& place) {
    AskedFolder asked{
        .folder = place.folder, .outcome = FolderOutcome::Absent, .files = {}, .origin = {}};
    asked.origin = place.isOnPath
                       ? path.FindOrigin(*place.folder)
                       : FolderOrigin{.folder = place.folder->GetAbsoluteIRI().getPath()};
    if (!MarkUnseen(place, asked)) {
      for (const std::string& name : names) {
        const auto sight = RuledPath::LookIn(place, name);
        if (sight.match != nullptr) asked.files.push_back(sight.match->file);
        hasEnded = hasEnded || EndsSearch(sight.standing, path.GetRules().files);
        if (hasEnded) break;
      }
      MarkOutcome(place, asked);
    }
    explanation.files.insert(explanation.files.end(), asked.files.begin(), asked.files.end());
    explanation.asked.push_back(std::move(asked));
    return hasEnded;
  }

  /// Marks a folder that is hidden or a repeat; returns whether it is.
  bool MarkUnseen(const Place& place, AskedFolder& asked) {
    if (const ustring* hider = path.GetView().FindHider(*place.folder)) {
      asked.outcome = FolderOutcome::FilteredOut;
      asked.hider = *hider;
      return true;
    }
    const auto first = filter.FindFirst(place);
    if (first == place.folder) return false;
    asked.outcome = FolderOutcome::DroppedAsRepeat;
    asked.repeated = first;
    return true;
  }

  void MarkOutcome(const Place& place, AskedFolder& asked) {
    if (!asked.files.empty()) {
      asked.outcome =
          explanation.files.empty() ? FolderOutcome::HoldsIt : FolderOutcome::HiddenByEarlier;
      return;
    }
    if (RuledPath::FindProblem(place)) {
      asked.outcome = FolderOutcome::Unreadable;
      return;
    }
    for (const std::string& name : names) {
      const std::string file = RuledPath::PathOf(place, name);
      asked.outcome = OutcomeFor(LookAtFile(file, path.GetRules().files));
      if (asked.outcome == FolderOutcome::Absent && IsBrokenLink(file)) {
        asked.outcome = FolderOutcome::BrokenLink;
      }
      if (asked.outcome == FolderOutcome::Absent) continue;
      asked.instead = TextFromBytes(file);
      return;
    }
  }

  [[nodiscard]] DecidingRule RuleFor(const std::vector<Place>& places) const {
    const bool asksAskerFirst = !places.empty() && !places.front().isOnPath;
    if (isThatFile) return DecidingRule::ThatFile;
    if (!explanation.files.empty()) {
      const bool isInFirst = !explanation.asked.front().files.empty();
      return asksAskerFirst && isInFirst ? DecidingRule::AskersFolder : DecidingRule::FirstFolder;
    }
    if (hasEnded) return DecidingRule::SearchEnded;
    const bool lacksPermission = std::any_of(
        explanation.asked.begin(), explanation.asked.end(),
        [](const auto& asked) { return asked.outcome == FolderOutcome::NotExecutable; });
    return lacksPermission ? DecidingRule::NoneMayBeExecuted : DecidingRule::NothingFound;
  }

  const RuledPath& path;
  const std::vector<std::string> names;
  const bool isThatFile;  // the name says which file is meant
  PlaceFilter filter;     // knows the places asked so far
  Explanation explanation = {};
  bool hasEnded = false;
};

}  // namespace

Explanation ExplainByRules(const RuledPath& path, const RuledPath::Target& target,
                           const RuledPath::Asker& asker) {
  return RuleExplainer(path, target).Run(path.FindPlaces(target, asker));
}

}  // namespace Corvane::PathManagement::host
