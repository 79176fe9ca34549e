#ifndef SEARCHPATH_HOST_FOLDER_PATH_H
#define SEARCHPATH_HOST_FOLDER_PATH_H

#include "searchpath/export.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/lookup_observer.h"
#include "searchpath/model/path.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// A search path of folders on disk, in the order given.
///
/// The folders given are the main entries. Below them are their special folders, among them method
/// entries: the folder "@fn" is the method entry called "fn". An entry is on the path when the
/// path holds that object, or another entry for the same folder.
///
/// A plain name has no separators. A name with separators is a partial pathname: it is looked up in
/// the entries whose trailing folders match the folders before its last part, see
/// `DoesPartialPathnameMatchPathEntryIRI`. If it begins with a separator, these folders are the
/// full location of the one entry in which it is looked up.
///
/// Threads: all operations, from any thread.
/// Ownership: shares its entries.
/// Errors: a folder that cannot be searched is a problem and is searched as if it were empty.
/// Cost: each folder is listed at most once. The first eight calls of `FindFirstInScope` or
/// `FindAllInScope` for a plain name, one without separators, among the main entries ask one folder
/// after the other for that name alone, `FindFirstInScope` up to the answer; the ninth lists all
/// main folders and makes an index. `GetMethodEntriesByName` asks all main folders once. Policies
/// that ignore case list the folders that they ask. Questions about parents, order, membership and
/// partial pathnames list every folder, special ones included.
class SEARCHPATH_EXPORT FolderPath : public IPath {
 public:
  /// Precondition: no pointer is null.
  explicit FolderPath(FolderEntries folders);
  FolderPath(const FolderPath&) = delete;
  FolderPath& operator=(const FolderPath&) = delete;
  ~FolderPath() override;

  [[nodiscard]] std::shared_ptr<const PathEntries> GetMainEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                   FilenameMatchingPolicy policy) const override;
  [[nodiscard]] PathEntries GetPartiallyMatchingEntries(
      SearchScope scope, const ustring& name, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetMainEntryForEntry(
      const IPathEntry& entry) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetParentEntryForEntry(
      const IPathEntry& entry) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const CanonicalAbsoluteIRI& iri) const override;
  /// Resolves the links of `iri` first.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const override;
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(
      SearchScope scope, const PathManagement::detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(
      SearchScope scope, const PathManagement::detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                    const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

  /// The main entries, as the `FolderEntry` objects that they are.
  [[nodiscard]] const FolderEntries& GetMainFolders() const noexcept;

  /// As `FindFirstFileVisibleOnPath` on this path. The first eight calls for a plain name "fn" ask
  /// each folder for the file and for the method entry "@fn" at once, and no folder after the one
  /// with the answer.
  [[nodiscard]] boost::optional<FoundItem> FindVisible(
      const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy) const;
  /// The quick part of `FindVisible`, for a name that is looked up as it is: when the index exists
  /// and `name` is plain and not that of a method entry, sets `found` to the answer, which may be
  /// none, and returns true. Otherwise returns false.
  [[nodiscard]] bool FindIndexed(std::u16string_view name, boost::optional<FoundItem>& found) const;
  /// Makes the index for `policy` at once, and not only at the ninth question: for whoever is going
  /// to ask much. Lists all main folders.
  void MakeIndex(FilenameMatchingPolicy policy) const;
  /// As `FindVisible`, as if only those entries were on the path for which `isShown` returns true.
  /// The outer optional is empty when there is no quick answer, and nothing was looked up: for a
  /// partial pathname, for a policy that ignores case, and after the first eight questions.
  [[nodiscard]] std::optional<boost::optional<FoundItem>> FindShown(
      const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy,
      const std::function<bool(const FolderEntry&)>& isShown) const;

  /// The same answer as without an observer. All folders are asked one by one, and `observer` is
  /// called for each.
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(
      SearchScope scope, const PathManagement::detail::SearchTarget& target,
      FilenameMatchingPolicy policy, ILookupObserver& observer) const;

  /// What keeps folders of the path from being searched, in path order. Main folders that have not
  /// been listed are opened. Special folders are examined only when an earlier question has listed
  /// every folder.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;
  /// The same for the folders for which `isWanted` returns true; it is called in path order.
  [[nodiscard]] std::vector<FolderProblem> FindProblems(
      const std::function<bool(const IPathEntry&)>& isWanted) const;
  /// The problems that `FindProblems` would return and that earlier questions have met. Asks the
  /// disk nothing; `isWanted` is called only for folders that have a problem.
  [[nodiscard]] std::vector<FolderProblem> GetProblemsMet(
      const std::function<bool(const IPathEntry&)>& isWanted) const;

 private:
  struct State;

  std::unique_ptr<State> state;
};

/// The same answer as for the target `SearchTarget(name)`, for whom has just the text: once the path
/// has its index, `name` is not copied.
[[nodiscard]] SEARCHPATH_EXPORT boost::optional<FoundItem> FindFirstFileVisibleOnPath(
    const FolderPath& path, std::u16string_view name, FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_PATH_H
