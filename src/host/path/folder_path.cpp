#include "searchpath/host/folder_path.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "host/folder/folder_walk.h"
#include "host/path/path_table.h"
#include "host/path/plain_lookup.h"
#include "listed/last_folders.h"
#include "listed/partial_target.h"
#include "searchpath/host/filename_comparison.h"
#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/once_flag.h"
#include "searchpath/utilities/partial_pathname.h"
#include "text/separators.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::IsInScope;
using PathManagement::detail::LastFolders;
using PathManagement::detail::ReachesBelowMainEntries;
using PathManagement::detail::SearchTarget;

bool IsPlain(const SearchTarget& target) {
  return !PathManagement::detail::HasSeparator(target.GetName());
}

/// Whether `scope` covers the main entries and nothing else.
bool IsMainScope(SearchScope scope) {
  // Nearly all questions have a scope of one kind, `Ordinary`.
  constexpr auto ordinary = static_cast<std::uint32_t>(PathEntryType::Ordinary);
  if (scope.size() == 1) return *scope.data() == ordinary;
  return IsInScope(scope, PathEntryType::Ordinary) && !ReachesBelowMainEntries(scope);
}

}  // namespace

struct FolderPath::State {
  explicit State(FolderEntries mainFolders)
      : folders(std::move(mainFolders)),
        mainEntries(std::make_shared<const PathEntries>(folders.begin(), folders.end())),
        plainLookup(folders, mainEntries) {}

  const FolderEntries folders;
  const std::shared_ptr<const PathEntries> mainEntries;
  PlainLookup plainLookup;

  PathManagement::detail::OnceFlag tableOnce = {};
  std::unique_ptr<const PathTable> table = nullptr;  // of all entries; guarded by tableOnce
  PathManagement::detail::OnceFlag lastFoldersOnce = {};
  std::unique_ptr<const LastFolders> lastFolders = nullptr;  // guarded by lastFoldersOnce

  const PathTable& Table() {
    tableOnce.Call([this] { table = std::make_unique<const PathTable>(TableOf(folders)); });
    return *table;
  }

  /// The entries that the last folder of a partial pathname may mean.
  const std::vector<LastFolders::Candidate>& CandidatesFor(const ustring& lastFolder) {
    lastFoldersOnce.Call([this] { lastFolders = std::make_unique<const LastFolders>(Table()); });
    return lastFolders->CandidatesFor(lastFolder);
  }

  /// Visits the entries in `scope` that the partial pathname `partial` matches, in path order,
  /// until `visit` returns true. `path` is the path that owns this state.
  template <class Visit>
  void ForEachMatch(const FolderPath& path, SearchScope scope,
                    const boost::container::small_vector<ustring, 8>& partial,
                    FilenameMatchingPolicy policy, const Visit& visit) {
    const auto matches = [&](const auto& entry) {
      return DoesPartialPathnameMatchPathEntryIRI(path, partial, entry, policy);
    };
    if (partial.empty() || policy == FilenameMatchingPolicy::IgnoreCase) {
      ForEachInScope(scope, [&](const auto& entry) { return matches(entry) && visit(entry); });
      return;
    }
    for (const auto [row, hasExactName] : CandidatesFor(partial.back())) {
      const auto& entry = Table().Rows()[row].entry;
      if (!IsInScope(scope, entry->GetPathEntryType())) continue;
      // An entry without a parent entry is compared by its own name alone, as `CandidatesFor` has
      // done already.
      const bool isCompared =
          hasExactName && partial.size() == 1 && path.GetParentEntryForEntry(*entry) == nullptr;
      if ((isCompared || matches(entry)) && visit(entry)) return;
    }
  }

  /// The row of `entry`, which has to be on the path.
  std::uint32_t RowOf(const IPathEntry& entry) {
    const auto row = Table().Find(entry);
    assert(row && "the entry must be on the path");
    return *row;
  }

  /// Visits the entries in `scope` in path order until `visit` returns true; returns whether it
  /// did. Lists no folder when `scope` ends at the main entries.
  template <class Visit>
  bool ForEachInScope(SearchScope scope, const Visit& visit) const {
    return std::any_of(folders.begin(), folders.end(),
                       [&](const auto& folder) { return VisitInScope(folder, scope, visit); });
  }

  /// The same, for a main folder and what is below it.
  template <class Visit>
  static bool VisitInScope(const std::shared_ptr<const FolderEntry>& folder, SearchScope scope,
                           const Visit& visit) {
    if (ReachesBelowMainEntries(scope)) return WalkInScope(folder, scope, visit);
    return IsInScope(scope, folder->GetPathEntryType()) && visit(folder);
  }

  template <class Visit>
  static bool WalkInScope(const std::shared_ptr<const FolderEntry>& top, SearchScope scope,
                          const Visit& visit) {
    return WalkFolders(top, [&](const auto& entry, std::size_t /*depth*/) {
      return IsInScope(scope, entry->GetPathEntryType()) && visit(entry);
    });
  }

  /// Calls use(entry), in path order, for the folders known so far: the main folders, and once the
  /// table is built also those below.
  template <class Use>
  void ForEachKnown(const Use& use) const {
    if (tableOnce.IsBuilt()) {
      for (const auto& row : table->Rows()) use(*row.entry);
    } else {
      for (const auto& folder : folders) use(*folder);
    }
  }

  [[nodiscard]] PathEntries FindMethodEntries(SearchScope scope, const ustring& name,
                                              FilenameMatchingPolicy policy) const;
  [[nodiscard]] boost::optional<FoundItem> FindInFolders(const FolderPath& path, SearchScope scope,
                                                         const SearchTarget& target,
                                                         FilenameMatchingPolicy policy);

  /// Calls ask(entry, file), in path order, for the entries in which `target` is to be looked for,
  /// until it returns true. `file` is `target` without its folders; `path` is the path that owns
  /// this state.
  template <class Ask>
  void AskEachFolder(const FolderPath& path, SearchScope scope, const SearchTarget& target,
                     FilenameMatchingPolicy policy, const Ask& ask) {
    const auto forEachMatch = [&](const auto& partial, const auto& visit) {
      ForEachMatch(path, scope, partial, policy, visit);
    };
    if (const auto parts = PathManagement::detail::SplitTarget(target)) {
      PathManagement::detail::AskMatchingFolders(path, scope, *parts, policy, forEachMatch, ask);
    } else {
      ForEachInScope(scope, [&](const auto& entry) { return ask(entry, target); });
    }
  }
};

FolderPath::FolderPath(FolderEntries folders)
    : state(std::make_unique<State>(std::move(folders))) {}

FolderPath::~FolderPath() = default;

std::shared_ptr<const PathEntries> FolderPath::GetMainEntries() const { return state->mainEntries; }

const FolderEntries& FolderPath::GetMainFolders() const noexcept { return state->folders; }

PathEntries FolderPath::GetMethodEntries() const {
  PathEntries methods;
  for (const auto& folder : state->folders) {
    WalkFolders(folder, [&methods](const auto& entry, std::size_t /*depth*/) {
      if (entry->GetPathEntryType() == PathEntryType::AtFolder) methods.push_back(entry);
      return false;
    });
  }
  return methods;
}

PathEntries FolderPath::GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                               FilenameMatchingPolicy policy) const {
  // The rare case has a function of its own, since its variables would make this function larger
  // and each call of it slower.
  if (IsMainScope(scope)) return state->plainLookup.FindMethodFolders(name, policy);
  return state->FindMethodEntries(scope, name, policy);
}

PathEntries FolderPath::State::FindMethodEntries(SearchScope scope, const ustring& name,
                                                 FilenameMatchingPolicy policy) const {
  PathEntries methods;
  const ustring folderName = u'@' + name;
  for (const auto& folder : folders) {
    std::vector<PathEntryType> kindsAbove;  // of the entries above, from the main one to the parent
    WalkFolders(folder, [&](const auto& entry, std::size_t depth) {
      kindsAbove.resize(depth);
      if (depth > 0 && IsInScope(scope, kindsAbove.back()) &&
          entry->GetPathEntryType() == PathEntryType::AtFolder &&
          AreSameFilename(entry->GetAbsoluteIRI().getName(), folderName, policy)) {
        methods.push_back(entry);
      }
      kindsAbove.push_back(entry->GetPathEntryType());
      return false;
    });
  }
  return methods;
}

PathEntries FolderPath::GetPartiallyMatchingEntries(SearchScope scope, const ustring& name,
                                                    FilenameMatchingPolicy policy) const {
  PathEntries matches;
  state->ForEachMatch(*this, scope, SplitPartialPathname(name), policy, [&](const auto& entry) {
    matches.push_back(entry);
    return false;
  });
  return matches;
}

std::shared_ptr<const IPathEntry> FolderPath::GetMainEntryForEntry(const IPathEntry& entry) const {
  const auto& rows = state->Table().Rows();
  return rows[rows[state->RowOf(entry)].main].entry;
}

std::shared_ptr<const IPathEntry> FolderPath::GetParentEntryForEntry(
    const IPathEntry& entry) const {
  return state->Table().Parent(state->RowOf(entry));
}

std::shared_ptr<const IPathEntry> FolderPath::GetPathEntryFromAbsoluteIRI(
    const CanonicalAbsoluteIRI& iri) const {
  return state->Table().FindExactly(iri);
}

std::shared_ptr<const IPathEntry> FolderPath::GetPathEntryFromAbsoluteIRI(
    const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const {
  AbsoluteIRI canonical = iri;
  try {
    canonical = GetCanonicalIRI(iri);
  } catch (const foundation::storage::vfs::Exception&) {
    // A location that cannot be resolved is compared as written; so are those of entries.
  }
  return state->Table().FindNamed(canonical, policy);
}

boost::optional<FoundItem> FolderPath::FindFirstInScope(SearchScope scope,
                                                        const SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  if (IsMainScope(scope) && IsPlain(target)) return state->plainLookup.FindFirst(target, policy);
  return state->FindInFolders(*this, scope, target, policy);
}

boost::optional<FoundItem> FolderPath::State::FindInFolders(const FolderPath& path,
                                                            SearchScope scope,
                                                            const SearchTarget& target,
                                                            FilenameMatchingPolicy policy) {
  boost::optional<FoundItem> found;
  AskEachFolder(path, scope, target, policy, [&](const auto& entry, const auto& file) {
    if (auto item = entry->FindItem(file, policy)) found.emplace(std::move(item), entry);
    return found.has_value();
  });
  return found;
}

boost::optional<FoundItem> FolderPath::FindVisible(const SearchTarget& target,
                                                   FilenameMatchingPolicy policy) const {
  if (IsPlain(target)) return state->plainLookup.FindVisible(target, policy);
  return FindFirstFileVisibleOnPath(*this, target, policy);
}

bool FolderPath::FindIndexed(std::u16string_view name, boost::optional<FoundItem>& found) const {
  return state->plainLookup.FindIndexed(name, found);
}

void FolderPath::MakeIndex(FilenameMatchingPolicy policy) const {
  state->plainLookup.MakeIndex(policy);
}

boost::optional<FoundItem> FindFirstFileVisibleOnPath(const FolderPath& path,
                                                      std::u16string_view name,
                                                      FilenameMatchingPolicy policy) {
  boost::optional<FoundItem> found;
  const bool hasAnswer =
      policy != FilenameMatchingPolicy::IgnoreCase && path.FindIndexed(name, found);
  if (!hasAnswer) found = path.FindVisible(SearchTarget(ustring(name)), policy);
  return found;
}

std::optional<boost::optional<FoundItem>> FolderPath::FindShown(
    const SearchTarget& target, FilenameMatchingPolicy policy,
    const std::function<bool(const FolderEntry&)>& isShown) const {
  if (!IsPlain(target)) return std::nullopt;
  return state->plainLookup.FindShown(target, policy, isShown);
}

std::vector<FoundItem> FolderPath::FindAllInScope(SearchScope scope, const SearchTarget& target,
                                                  FilenameMatchingPolicy policy) const {
  if (IsPlain(target) && IsMainScope(scope)) return state->plainLookup.FindAll(target, policy);
  std::vector<FoundItem> found;
  state->AskEachFolder(*this, scope, target, policy, [&](const auto& entry, const auto& file) {
    for (auto& item : entry->FindItems(file, policy)) found.emplace_back(std::move(item), entry);
    return false;
  });
  return found;
}

std::vector<FoundItem> FolderPath::FindAllInScope(SearchScope scope, const SearchTarget& target,
                                                  FilenameMatchingPolicy policy,
                                                  ILookupObserver& observer) const {
  std::vector<FoundItem> all;
  state->AskEachFolder(*this, scope, target, policy, [&](const auto& entry, const auto& file) {
    std::vector<FoundItem> here;
    for (auto& item : entry->FindItems(file, policy)) here.emplace_back(std::move(item), entry);
    observer.FolderAsked(entry, here);
    all.insert(all.end(), here.begin(), here.end());
    return false;
  });
  return all;
}

bool FolderPath::ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const {
  return state->ForEachInScope(scope, visitor);
}

bool FolderPath::ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const {
  return AnyInParallel(state->folders.size(), [&](std::size_t index) {
    return State::VisitInScope(state->folders[index], scope, visitor);
  });
}

bool FolderPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                const IPathEntry& second) const {
  return state->Table().IsBefore(first, second);
}

bool FolderPath::IsEntryOnPath(const IPathEntry& entry) const {
  return state->Table().Find(entry).has_value();
}

std::vector<FolderProblem> FolderPath::FindProblems() const {
  return FindProblems([](const IPathEntry& /*folder*/) { return true; });
}

std::vector<FolderProblem> FolderPath::FindProblems(
    const std::function<bool(const IPathEntry&)>& isWanted) const {
  std::vector<const FolderEntry*> wanted;
  state->ForEachKnown([&](const FolderEntry& entry) {
    if (isWanted(entry)) wanted.push_back(&entry);
  });
  std::vector<std::vector<FolderProblem>> found(wanted.size());
  const auto ask = [&](std::size_t index) { found[index] = wanted[index]->GetProblems(); };
  ForEachInParallel(wanted.size(), ask, /*threadsAtFirst=*/1);
  std::vector<FolderProblem> problems;
  for (auto& here : found) std::move(here.begin(), here.end(), std::back_inserter(problems));
  return problems;
}

std::vector<FolderProblem> FolderPath::GetProblemsMet(
    const std::function<bool(const IPathEntry&)>& isWanted) const {
  std::vector<FolderProblem> problems;
  state->ForEachKnown([&](const FolderEntry& entry) {
    auto met = StateOf(entry).ProblemsMet();
    // isWanted() is called last: it may resolve links, to tell whether the folder is a repeat.
    if (met.empty() || !isWanted(entry)) return;
    std::move(met.begin(), met.end(), std::back_inserter(problems));
  });
  return problems;
}

}  // namespace Corvane::PathManagement::host
