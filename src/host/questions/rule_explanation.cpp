#include "host/questions/rule_explanation.h"

#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Place = RuledPath::Place;

/// The outcome for a folder without an answer, by what stands there at the name.
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
    case Standing::Counts:  // a file that has come since the folder was asked
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
        namesOneFile(path.SaysWhichFile(target.GetName())),
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
  [[nodiscard]] bool Ask(const Place& place) {
    AskedFolder asked{
        .folder = place.folder, .outcome = FolderOutcome::Absent, .files = {}, .origin = {}};
    asked.origin = place.isOnPath
                       ? path.FindOrigin(*place.folder)
                       : FolderOrigin{.folder = place.folder->GetAbsoluteIRI().getPath()};
    if (!MarkUnseen(place, asked)) {
      for (const std::string& name : names) {
        const auto sight = RuledPath::LookIn(place, name);
        if (sight.match != nullptr) asked.files.push_back(sight.match->file);
        // By some rules, a file that cannot be read ends the search, even if others follow.
        hasEnded = hasEnded || EndsSearch(sight.standing, path.GetRules().files);
        if (hasEnded) break;
      }
      MarkOutcome(place, asked);
    }
    explanation.files.insert(explanation.files.end(), asked.files.begin(), asked.files.end());
    explanation.asked.push_back(std::move(asked));
    return hasEnded;
  }

  /// Marks a folder that does not count, since the path hides it or has it twice. Returns whether
  /// that is so. To be called once for each place, in order.
  [[nodiscard]] bool MarkUnseen(const Place& place, AskedFolder& asked) {
    if (const ustring* hider = path.GetView().FindHider(*place.folder)) {
      asked.outcome = FolderOutcome::FilteredOut;
      asked.hider = *hider;
      return true;
    }
    const auto first = filter.Remember(place);
    if (first == place.folder) return false;
    asked.outcome = FolderOutcome::DroppedAsRepeat;
    asked.repeated = first;
    return true;
  }

  /// To be called before the files of `asked` are added to those of the explanation.
  void MarkOutcome(const Place& place, AskedFolder& asked) {
    if (!asked.files.empty()) {
      asked.outcome =
          explanation.files.empty() ? FolderOutcome::HoldsIt : FolderOutcome::HiddenByEarlier;
      return;
    }
    if (RuledPath::FindProblem(place)) {
      asked.outcome = FolderOutcome::Unreadable;  // the folder; `NotReadable` is said of a file
      return;
    }
    for (const std::string& name : names) {
      const std::string file = RuledPath::PathOf(place, name);
      const FolderOutcome here = OutcomeFor(LookAtFile(file, path.GetRules().files));
      const bool lacksRight =
          here == FolderOutcome::NotExecutable || here == FolderOutcome::NotReadable;
      // What lacks a right may have decided; anything else matters only as the first in the way.
      if (!lacksRight && asked.outcome != FolderOutcome::Absent) continue;
      asked.outcome =
          here == FolderOutcome::Absent && IsBrokenLink(file) ? FolderOutcome::BrokenLink : here;
      if (asked.outcome != FolderOutcome::Absent) asked.instead = TextFromBytes(file);
      if (lacksRight) return;
    }
  }

  /// To be called when all of `places` have been asked, or the search has ended.
  [[nodiscard]] DecidingRule RuleFor(const std::vector<Place>& places) const {
    if (namesOneFile) return DecidingRule::ThatFile;
    if (!explanation.files.empty()) {
      // Only the folder of the file that asks is not on the path, and it is asked first.
      const bool isInAskersFolder =
          !places.front().isOnPath && !explanation.asked.front().files.empty();
      return isInAskersFolder ? DecidingRule::AskersFolder : DecidingRule::FirstFolder;
    }
    if (hasEnded) return DecidingRule::SearchEnded;
    const bool lacksPermission = std::any_of(
        explanation.asked.begin(), explanation.asked.end(),
        [](const auto& asked) { return asked.outcome == FolderOutcome::NotExecutable; });
    return lacksPermission ? DecidingRule::NoneMayBeExecuted : DecidingRule::NothingFound;
  }

  const RuledPath& path;
  const std::vector<std::string> names;  // looked for in each place, the preferred one first
  const bool namesOneFile;  // the name says which file is meant, so the path is not searched
  PlaceFilter filter;       // remembers the places asked so far, to tell repeats
  Explanation explanation = {};
  bool hasEnded = false;  // before all places were asked
};

}  // namespace

Explanation ExplainByRules(const RuledPath& path, const RuledPath::Target& target,
                           const RuledPath::Asker& asker) {
  return RuleExplainer(path, target).Run(path.FindPlaces(target, asker));
}

}  // namespace Corvane::PathManagement::host
