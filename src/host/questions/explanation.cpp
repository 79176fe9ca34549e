#include "host/questions/explanation.h"

#include "host/common/held_hash.h"
#include "host/folder/entry_state.h"
#include "host/path/path_view.h"
#include "host/questions/file_search.h"
#include "host/questions/unsearched_files.h"
#include "text/separators.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;

/// Writes down which folders are asked.
class AskedFolders : public ILookupObserver {
 public:
  void FolderAsked(const std::shared_ptr<const IPathEntry>& folder,
                   const std::vector<FoundItem>& files) override {
    asked.push_back(
        {.folder = folder, .outcome = FolderOutcome::Absent, .files = files, .origin = {}});
  }

  std::vector<AskedFolder> asked;
};

/// Whether the folder is a method entry: one called "@name", which a look-up of `name` searches
/// beside the main entries, the folders on the path itself.
bool IsMethodEntry(const AskedFolder& asked) {
  return asked.folder->GetPathEntryType() == PathEntryType::AtFolder;
}

/// The files that a name means when case is ignored, looked up when somebody first asks.
class OtherCases {
 public:
  OtherCases(const PathView& pathView, const std::optional<AbsoluteIRI>& askingFolder,
             const SearchTarget& searchTarget)
      : view(pathView), asker(askingFolder), target(searchTarget) {}

  [[nodiscard]] std::vector<FoundItem> In(const std::shared_ptr<const IPathEntry>& folder) {
    if (!files) {
      files = FindAllFiles(view, asker, target, FilenameMatchingPolicy::IgnoreCase,
                           /*observer=*/nullptr);
    }
    std::vector<FoundItem> here;
    std::copy_if(files->begin(), files->end(), std::back_inserter(here),
                 [&](const FoundItem& file) { return file.GetPathEntry() == folder; });
    return here;
  }

 private:
  const PathView& view;
  const std::optional<AbsoluteIRI>& asker;
  const SearchTarget& target;
  std::optional<std::vector<FoundItem>> files;
};

/// `all` are the files that the name could mean; `isPlain` says that it has no separators.
FolderOutcome OutcomeOf(const AskedFolder& asked, const std::vector<FoundItem>& all, bool isPlain) {
  if (asked.files.empty()) {
    const auto* onDisk = dynamic_cast<const FolderEntry*>(asked.folder.get());
    if (onDisk != nullptr && FindOwnProblem(*onDisk)) return FolderOutcome::Unreadable;
    return asked.inOtherCase.empty() ? FolderOutcome::Absent : FolderOutcome::OtherCaseOnly;
  }
  const bool isMethod = isPlain && IsMethodEntry(asked);
  if (asked.files.front() == all.front()) {
    return isMethod ? FolderOutcome::MethodEntry : FolderOutcome::HoldsIt;
  }
  return isMethod ? FolderOutcome::LosesToEarlierFolder : FolderOutcome::HiddenByEarlier;
}

DecidingRule RuleFor(const std::vector<FoundItem>& all, const std::vector<AskedFolder>& asked,
                     bool isPlain) {
  if (all.empty()) return DecidingRule::NothingFound;
  if (!isPlain) return DecidingRule::PartialPathname;
  const PathEntryType kind = all.front().GetPathEntry()->GetPathEntryType();
  if (kind == PathEntryType::PrivateFolder) return DecidingRule::PrivateFolder;
  if (kind == PathEntryType::AtFolder) return DecidingRule::MethodEntryFirst;
  const bool beatsMethod = std::any_of(asked.begin(), asked.end(), [](const AskedFolder& folder) {
    return !folder.files.empty() && IsMethodEntry(folder);
  });
  return beatsMethod ? DecidingRule::FolderBeforeMethod : DecidingRule::FirstFolder;
}

/// Marks folders without an answer that have a file for the target below, in a folder that is not
/// searched.
class UnsearchedFolders {
 public:
  UnsearchedFolders(const SearchTarget& searchTarget, FilenameMatchingPolicy matchingPolicy,
                    const std::vector<AskedFolder>& askedFolders)
      : target(searchTarget), policy(matchingPolicy) {
    for (const AskedFolder& folder : askedFolders) {
      asked.insert(folder.folder->GetCanonicalAbsoluteIRI());
    }
  }

  void Mark(AskedFolder& folder) const {
    if (folder.folder->GetPathEntryType() != PathEntryType::Ordinary) return;
    const auto file = FindUnsearchedFile(folder.folder, target, policy);
    if (!file || asked.contains(file->folder->GetCanonicalAbsoluteIRI())) return;
    folder.outcome = FolderOutcome::BelowUnsearched;
    folder.instead = file->path;
    folder.unsearchedKind = file->kind;
  }

 private:
  const SearchTarget& target;
  FilenameMatchingPolicy policy;
  // The canonical locations of folders that were searched, a private one perhaps among them.
  boost::unordered_flat_set<AbsoluteIRI, HeldHash> asked;
};

/// Marks folders that were asked although the path does not show them, with the reason: they are
/// hidden, or repeats.
class UnseenFolders {
 public:
  /// Of several entries for one folder, the one that holds a file of the answer `all` counts, or
  /// else the first one marked.
  UnseenFolders(const PathView& pathView, const std::vector<FoundItem>& all) : view(pathView) {
    for (const FoundItem& file : all) Add(file.GetPathEntry());
  }

  /// Marks `asked` and returns true if the path does not show it. Called in the order asked.
  bool Mark(AskedFolder& asked) {
    if (const ustring* hider = view.FindHider(*asked.folder)) {
      asked.outcome = FolderOutcome::FilteredOut;
      asked.hider = *hider;
    } else if (const auto first = Add(asked.folder); first != asked.folder) {
      asked.outcome = FolderOutcome::DroppedAsRepeat;
      asked.repeated = first;
    } else {
      return false;
    }
    asked.files.clear();
    return true;
  }

 private:
  /// Returns the entry that counts for the folder: the first one added.
  std::shared_ptr<const IPathEntry> Add(const std::shared_ptr<const IPathEntry>& entry) {
    if (!view.DropsRepeats()) return entry;
    return counting.emplace(entry->GetCanonicalAbsoluteIRI(), entry).first->second;
  }

  const PathView& view;
  // By canonical location: the entry that counts.
  boost::unordered_flat_map<AbsoluteIRI, std::shared_ptr<const IPathEntry>, HeldHash> counting;
};

/// Adds the main entries below which a file for `target` stands where it is not searched for.
void AddHoldersOf(const SearchTarget& target, FilenameMatchingPolicy policy, const PathView& view,
                  std::vector<AskedFolder>& asked) {
  const auto mainEntries = view.GetPath()->GetMainEntries();
  for (const auto& folder : *mainEntries) {
    if (!FindUnsearchedFile(folder, target, policy)) continue;
    asked.push_back(
        {.folder = folder, .outcome = FolderOutcome::Absent, .files = {}, .origin = {}});
  }
}

}  // namespace

const char* GetText(FolderOutcome outcome) noexcept {
  // In the order of the enumerators.
  static constexpr std::array kTexts = {"holds it",
                                        "method entry that holds it",
                                        "hidden by an earlier folder",
                                        "method entry that loses to an earlier folder",
                                        "other case only",
                                        "absent",
                                        "unreadable",
                                        "dropped as a repeat",
                                        "filtered out",
                                        "below a folder that is not searched",
                                        "not executable",
                                        "a folder of that name",
                                        "a link that leads nowhere",
                                        "another type of file",
                                        "cannot be read"};
  return kTexts[static_cast<std::size_t>(outcome)];
}

const char* GetText(DecidingRule rule) noexcept {
  // In the order of the enumerators.
  static constexpr std::array kTexts = {
      "no folder holds it",
      "the first folder on the path that holds it",
      "a method entry of that name comes before every folder that holds it",
      "the first folder that holds it comes before the method entry",
      "the private folder of the asking folder comes first",
      "the first folder on the path whose location ends as the name says",
      "the folder of the file that asks comes before the path",
      "a name with \"/\" is that file itself, and the path is not searched",
      "a file that cannot be read ends the search",
      "none of the files of that name may be executed; bash would try the first one all the same"};
  return kTexts[static_cast<std::size_t>(rule)];
}

Explanation ExplainLookup(const PathView& view, const std::optional<AbsoluteIRI>& asker,
                          const SearchTarget& target, FilenameMatchingPolicy policy) {
  const bool isPlain = !PathManagement::detail::HasSeparator(target.GetName());
  AskedFolders record;
  auto files = FindAllFiles(view, asker, target, policy, &record);
  UnseenFolders unseen(view, files);
  OtherCases otherCases(view, asker, target);
  // A partial pathname asks only folders that match it, and folders that are not searched never
  // match. When none is asked, the main entries above such folders are named instead.
  if (record.asked.empty()) AddHoldersOf(target, policy, view, record.asked);
  const UnsearchedFolders unsearched(target, policy, record.asked);
  for (AskedFolder& folder : record.asked) {
    if (!unseen.Mark(folder)) {
      if (folder.files.empty()) folder.inOtherCase = otherCases.In(folder.folder);
      folder.outcome = OutcomeOf(folder, files, isPlain);
      if (folder.outcome == FolderOutcome::Absent) unsearched.Mark(folder);
    }
    folder.origin = view.GetOrigin(*folder.folder);
  }
  const DecidingRule rule = RuleFor(files, record.asked, isPlain);
  return {std::move(files), rule, std::move(record.asked)};
}

}  // namespace Corvane::PathManagement::host
