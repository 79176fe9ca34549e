#include "host/path/path_view.h"

#include "host/common/held_hash.h"
#include "host/folder/entry_state.h"
#include "searchpath/model/constants.h"
#include "searchpath/utilities/concatenated_path.h"
#include "searchpath/utilities/deduplicated_path.h"
#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/filtered_path.h"
#include "searchpath/utilities/iri_conversion.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Given = GivenFolders::Given;

/// Precondition: all of `entries` are folders on disk.
FolderEntries AsFolders(const PathEntries& entries) {
  FolderEntries folders;
  folders.reserve(entries.size());
  for (const auto& entry : entries) {
    folders.push_back(std::static_pointer_cast<const FolderEntry>(entry));
  }
  return folders;
}

/// Those of `entries` that are folders on disk.
FolderEntries FoldersAmong(PathEntries entries) {
  std::erase_if(entries, [](const auto& entry) {
    return dynamic_cast<const FolderEntry*>(entry.get()) == nullptr;
  });
  return AsFolders(entries);
}

std::shared_ptr<const FolderPath> PathOf(const std::vector<Given>& given) {
  PathEntries entries;
  for (const Given& folder : given) {
    entries.insert(entries.end(), folder.entries.begin(), folder.entries.end());
  }
  return std::make_shared<const FolderPath>(AsFolders(entries));
}

/// The main entries of a path, each as it was given.
std::vector<Given> GivenBy(const IPath& path) {
  std::vector<Given> given;
  const auto mainEntries = path.GetMainEntries();
  for (const auto& entry : *mainEntries) {
    given.push_back({{.folder = GetStringFromIRI(entry->GetAbsoluteIRI())}, {entry}});
  }
  return given;
}

/// `path` itself, or the part of it that is on disk.
std::shared_ptr<const FolderPath> FolderPathOf(const std::shared_ptr<const IPath>& path) {
  if (auto folders = std::dynamic_pointer_cast<const FolderPath>(path)) return folders;
  return std::make_shared<const FolderPath>(FoldersAmong(*path->GetMainEntries()));
}

std::shared_ptr<const IPath> WithoutRepeats(const std::shared_ptr<const IPath>& path) {
  auto withoutRepeats =
      std::make_shared<const DeduplicatedPath>(std::vector<std::shared_ptr<const IPath>>{path});
  // Before the list of main entries is built, a traversal visits each folder once; afterwards, all
  // that is below each main entry, and so perhaps a folder twice. Built here, so that the first
  // traversal is like all others.
  static_cast<void>(withoutRepeats->GetMainEntries());
  return withoutRepeats;
}

/// The path whose entries a `FilteredPath` is to hide. Only `IsEntryOnPath` is ever called, so it
/// holds no entries.
class HiddenEntries : public ConcatenatedPath {
 public:
  explicit HiddenEntries(std::shared_ptr<const HiddenFolders> hiddenFolders)
      : ConcatenatedPath(std::vector<std::shared_ptr<const IPath>>()),
        folders(std::move(hiddenFolders)) {}

  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override {
    return folders->FindHider(entry).has_value();
  }

 private:
  std::shared_ptr<const HiddenFolders> folders;
};

/// For each entry, the index in `given` of the folder that it comes from.
boost::unordered_flat_map<const IPathEntry*, std::size_t> IndexOf(const std::vector<Given>& given) {
  boost::unordered_flat_map<const IPathEntry*, std::size_t> indices;
  for (std::size_t index = 0; index < given.size(); ++index) {
    for (const auto& entry : given[index].entries) indices.emplace(entry.get(), index);
  }
  return indices;
}

}  // namespace

PathView::PathView(GivenFolders givenFolders, const GivenFolders& hiddenFolders,
                   FolderExpansion expansion, bool keepDuplicates)
    : given(std::move(givenFolders.folders)),
      unlocated(std::move(givenFolders.unlocated)),
      folders(PathOf(given)),
      wholePath(folders),
      givenBy(IndexOf(given)),
      dropsRepeats(!keepDuplicates),
      shownFolders(hiddenFolders.folders.empty() ? folders.get() : nullptr) {
  FolderEntries hiding;
  for (const Given& folder : hiddenFolders.folders) {
    // Only the folder itself: `HiddenFolders` sees to those below it.
    hiding.push_back(AsFolders(folder.entries).front());
    hiddenTexts.push_back(folder.origin.folder);
  }
  for (const FolderProblem& problem : hiddenFolders.unlocated) {
    unlocatedHidden.push_back(problem.folder);
  }
  hidden = std::make_shared<const HiddenFolders>(std::move(hiding), expansion);
}

PathView::PathView(std::shared_ptr<const IPath> givenPath)
    : given(GivenBy(*givenPath)),
      folders(FolderPathOf(givenPath)),
      wholePath(std::move(givenPath)),
      givenBy(IndexOf(given)),
      hidden(std::make_shared<const HiddenFolders>(FolderEntries(), FolderExpansion::Alone)),
      dropsRepeats(false),
      shownFolders(IsOnDisk() ? folders.get() : nullptr) {}

const std::shared_ptr<const IPath>& PathView::GetPath() const {
  pathOnce.Call([this] { path = MakePath(); });
  return path;
}

std::shared_ptr<const IPath> PathView::MakePath() const {
  std::shared_ptr<const IPath> made = wholePath;
  if (dropsRepeats || !hiddenTexts.empty()) IdentifyAll(folders->GetMainFolders());
  const auto hide = [&] {
    if (hiddenTexts.empty()) return;
    made =
        std::make_shared<const FilteredPath>(made, std::make_shared<const HiddenEntries>(hidden));
  };
  if (dropsRepeats) {
    // Entries are hidden before repeats are dropped: of several entries for a folder, the one that
    // is kept must not be hidden while another is shown.
    hide();
    made = WithoutRepeats(made);
  }
  // Entries are hidden afterwards, too: a traversal without repeats asks the main entries
  // themselves for what is below them, hidden or not.
  hide();
  return made;
}

boost::optional<FoundItem> PathView::FindVisible(const PathManagement::detail::SearchTarget& target,
                                                 FilenameMatchingPolicy policy) const {
  // No need to drop repeats: the first entry for a folder wins anyway.
  if (shownFolders != nullptr) return shownFolders->FindVisible(target, policy);
  return FindAmongShown(target, policy);
}

boost::optional<FoundItem> PathView::FindAmongShown(
    const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy) const {
  // A path that was handed over hides nothing.
  if (!IsOnDisk()) return FindFirstFileVisibleOnPath(*wholePath, target, policy);
  const auto links = std::make_shared<LinkResolver>();
  const auto isShown = [&](const FolderEntry& folder) {
    // The state stores the result, which `FindHider` uses.
    static_cast<void>(StateOf(folder).Identity(links));
    return FindHider(folder) == nullptr;
  };
  if (auto answer = folders->FindShown(target, policy, isShown)) return *std::move(answer);
  return FindFirstFileVisibleOnPath(*GetPath(), target, policy);
}

std::optional<std::chrono::milliseconds> PathView::GetLimit() const noexcept {
  // An `Environment` gives all its folders the same limit.
  const auto& onDisk = folders->GetMainFolders();
  return onDisk.empty() ? std::nullopt : StateOf(*onDisk.front()).GetLimit();
}

bool PathView::MayHavePrivateFolder(const AbsoluteIRI& asker) const {
  const auto& onDisk = folders->GetMainFolders();
  const auto showsTheDisk = [](const auto& folder) { return StateOf(*folder).ShowsTheDisk(); };
  if (!IsOnDisk() || onDisk.empty() || !std::ranges::all_of(onDisk, showsTheDisk)) return true;
  NameQuestion question;
  question.AddFolder(Constants::PrivateFolderStr);
  FolderState state(asker, /*listingSource=*/nullptr, GetLimit());
  return state.Ask(question).hasFolder;
}

FolderOrigin PathView::GetOrigin(const IPathEntry& entry) const {
  auto found = givenBy.find(&entry);
  if (found == givenBy.end()) found = givenBy.find(wholePath->GetMainEntryForEntry(entry).get());
  if (found != givenBy.end()) return given[found->second].origin;
  // A path that was handed over may show an entry and hide its main entry.
  return {.folder = GetStringFromIRI(entry.GetAbsoluteIRI())};
}

FolderEntries PathView::GetMainFolders() const {
  const auto entries = GetPath()->GetMainEntries();
  return IsOnDisk() ? AsFolders(*entries) : FoldersAmong(*entries);
}

const ustring* PathView::FindHider(const IPathEntry& entry) const {
  const auto hider = hidden->FindHider(entry);
  return hider ? &hiddenTexts[*hider] : nullptr;
}

void PathView::RemoveUnseen(std::vector<FoundItem>& files) const {
  // By canonical location.
  boost::unordered_flat_map<AbsoluteIRI, const IPathEntry*, HeldHash> firstEntries;
  std::erase_if(files, [&](const FoundItem& file) {
    const auto entry = file.GetPathEntry();
    if (FindHider(*entry) != nullptr) return true;
    if (!dropsRepeats) return false;
    const auto first = firstEntries.emplace(entry->GetCanonicalAbsoluteIRI(), entry.get()).first;
    return first->second != entry.get();
  });
}

/// The folders that have no location, then the problems that find(isWanted) returns for the others.
template <class Find>
std::vector<FolderProblem> PathView::WithUnlocated(const Find& find) const {
  std::vector<FolderProblem> problems = unlocated;
  boost::unordered_flat_set<AbsoluteIRI, HeldHash> seen;  // canonical locations
  auto others = find([&](const IPathEntry& folder) {
    return FindHider(folder) == nullptr &&
           (!dropsRepeats || seen.insert(folder.GetCanonicalAbsoluteIRI()).second);
  });
  std::move(others.begin(), others.end(), std::back_inserter(problems));
  return problems;
}

std::vector<FolderProblem> PathView::FindProblems() const {
  if (dropsRepeats || !hiddenTexts.empty()) IdentifyAll(folders->GetMainFolders());
  return WithUnlocated([this](const auto& isWanted) { return folders->FindProblems(isWanted); });
}

std::vector<FolderProblem> PathView::GetProblemsMet() const {
  return WithUnlocated([this](const auto& isWanted) { return folders->GetProblemsMet(isWanted); });
}

std::vector<ustring> PathView::FindIdleExclusions() const {
  std::vector<ustring> idle = unlocatedHidden;
  boost::unordered_flat_set<std::size_t> hidingMain;  // indices of those that hide a main entry
  for (const auto& folder : folders->GetMainFolders()) {
    if (const auto hider = hidden->FindHider(*folder)) hidingMain.insert(*hider);
  }
  const auto& hiding = hidden->GetFolders();
  for (std::size_t index = 0; index < hiding.size(); ++index) {
    // `IsEntryOnPath` lists every folder of the path, so it is called only where it has to be.
    const bool hides = hidingMain.contains(index) || wholePath->IsEntryOnPath(*hiding[index]);
    if (!hides) idle.push_back(hiddenTexts[index]);
  }
  return idle;
}

}  // namespace Corvane::PathManagement::host
