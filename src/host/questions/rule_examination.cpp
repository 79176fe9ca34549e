#include "host/questions/rule_examination.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "host/questions/path_examination.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Place = RuledPath::Place;
using Files = LookupRules::Files;

/// Whether a file begins like a script or a program.
bool LooksLikeProgram(const std::string& path) {
  std::array<char, 4> begin = {};
  std::ifstream(path, std::ios::binary).read(begin.data(), begin.size());
  const std::string_view bytes(begin.data(), begin.size());
  return bytes.starts_with("#!") || bytes == "\177ELF";
}

class RuleExaminer {
 public:
  RuleExaminer(const RuledPath& ruledPath, const Examination& examination)
      : path(ruledPath), slow(examination.slow) {}

  std::vector<PathFinding> Run() {
    for (const FolderProblem& problem : path.GetView().GetUnlocated()) {
      findings.push_back({.kind = KindOf(problem.reason),
                          .folder = problem.folder,
                          .origin = problem.folder,
                          .reason = problem.reason});
    }
    const auto places = path.GetPlacesOnPath();
    ForEachInParallel(places.size(), [&](std::size_t at) {
      if (!IsHidden(places[at])) StateOf(*places[at].folder).List();
    });
    for (const Place& place : places) {
      if (!IsHidden(place)) Examine(place);
    }
    return std::move(findings);
  }

 private:
  [[nodiscard]] bool IsHidden(const Place& place) const {
    return path.GetView().FindHider(*place.folder) != nullptr;
  }

  void Examine(const Place& place) {
    const ustring& text = path.GetView().GetOrigin(*place.folder).folder;
    if (text.empty()) {
      Add(FindingKind::EmptyPart, place);
    } else if (const auto reason = RuledPath::FindProblem(place)) {
      // A part that was meant for the home folder, but these rules do not expand it.
      const bool isHome =
          text.starts_with(u'~') && *reason == current_working_folder::AbsolutizeError::Absent;
      Add(isHome ? FindingKind::UnexpandedHome : KindOf(*reason), place).reason = reason;
      return;
    } else if (!text.starts_with(u'/')) {
      Add(FindingKind::RelativePart, place);
    }
    const auto [first, isNew] = seen.emplace(place.folder->GetCanonicalAbsoluteIRI(), place.folder);
    if (!isNew) {
      Add(FindingKind::Repeat, place).other = GetStringFromIRI(first->second->GetAbsoluteIRI());
      return;
    }
    ExamineListing(place);
  }

  void ExamineListing(const Place& place) {
    const FolderState& state = StateOf(*place.folder);
    const FolderListing& listing = state.Listing();
    if (state.ListingTime() >= slow) {
      Add(FindingKind::Slow, place).listingTime =
          std::chrono::duration_cast<std::chrono::milliseconds>(state.ListingTime());
    }
    std::vector<std::string> notUtf8;
    std::vector<std::string> notExecutable;
    std::vector<std::string> broken;
    for (std::size_t file = 0; file < listing.files.size(); ++file) {
      std::string name(listing.files[file]);
      if (!IsUtf8(name)) notUtf8.push_back(name);
      if (IsProgramWithoutRight(RuledPath::PathOf(place, name))) {
        notExecutable.push_back(std::move(name));
      }
    }
    for (const auto& link : listing.links) {
      if (IsBrokenLink(RuledPath::PathOf(place, link.name))) broken.push_back(link.name);
    }
    AddFiles(FindingKind::NotExecutable, place, std::move(notExecutable));
    AddFiles(FindingKind::BrokenLink, place, std::move(broken));
    AddFiles(FindingKind::NotUtf8, place, std::move(notUtf8));
    // Where names with a separator are looked up below a folder, folders in it may be of use.
    const bool reachesBelow = path.GetRules().separator == LookupRules::Separator::FileBelow;
    const bool hasFolders = !listing.ordinaryFolders.empty() || !listing.specialFolders.empty();
    const bool isEmpty = listing.files.size() == 0 && !(reachesBelow && hasFolders);
    if (isEmpty && !listing.problem) Add(FindingKind::Empty, place);
  }

  /// Whether programs are searched for, and `file` looks like one that may not be executed.
  [[nodiscard]] bool IsProgramWithoutRight(const std::string& file) const {
    return path.GetRules().files == Files::Executable &&
           LookAtFile(file, Files::Executable) == Standing::NotExecutable && LooksLikeProgram(file);
  }

  PathFinding& Add(FindingKind kind, const Place& place) {
    return findings.emplace_back(
        PathFinding{.kind = kind,
                    .folder = GetStringFromIRI(place.folder->GetAbsoluteIRI()),
                    .origin = path.GetView().GetOrigin(*place.folder).folder});
  }

  void AddFiles(FindingKind kind, const Place& place, std::vector<std::string> names) {
    if (names.empty()) return;
    std::sort(names.begin(), names.end());
    PathFinding& finding = Add(kind, place);
    for (const std::string& name : names) {
      finding.files.push_back(TextFromBytes(RuledPath::PathOf(place, name)));
    }
  }

  const RuledPath& path;
  const std::chrono::nanoseconds slow;  // listings that take this long are reported
  /// The folders so far, each by its canonical location.
  boost::unordered_flat_map<AbsoluteIRI, std::shared_ptr<const FolderEntry>, HeldHash> seen;
  std::vector<PathFinding> findings;
};

}  // namespace

std::vector<PathFinding> ExamineByRules(const RuledPath& path, const Examination& examination) {
  return RuleExaminer(path, examination).Run();
}

}  // namespace Corvane::PathManagement::host
