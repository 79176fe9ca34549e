#ifndef SEARCHPATH_UTILITIES_FILTERED_PATH_H
#define SEARCHPATH_UTILITIES_FILTERED_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/path.h"
#include "searchpath/utilities/once_flag.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement {

/// A path, the source, without the entries that are on another path, the excluded path: an entry is
/// hidden when `IsEntryOnPath` of the excluded path returns true for it. Nothing is added, and the
/// order stays the same. An excluded path that compares folders, as `IPath` demands, hides every
/// entry for its folders, whichever object that is; one that compares objects hides only its own.
///
/// The first `GetMainEntries` builds the list of main entries, which is then kept. All other
/// answers come from both paths each time.
///
/// Precondition: neither path is null; the source's traversals visit no null entry, and no file
/// that it finds has a null entry. A null entry in one of the source's lists is left out. Neither
/// `GetMainEntries` nor `IsEntryOnPath` of either path may call `GetMainEntries` of this path,
/// which would wait for ever.
/// Threads: as safe as both paths are; the list of main entries is built once. A concurrent
/// traversal calls the excluded path on the threads on which the source visits.
/// Ownership: shares both paths. Neither copied nor moved.
/// Errors: exceptions of either path or a visitor pass through unchanged, and leave this path as it
/// was. When building the list of main entries fails, the next call tries again.
/// Cost: the source's, and one `IsEntryOnPath` of the excluded path for each entry of the source's
/// answer; a returned list has no spare capacity.
class SEARCHPATH_EXPORT FilteredPath : public IPath {
 public:
  /// Shows `sourcePath` without the entries that are on `excludedPath`.
  FilteredPath(std::shared_ptr<const IPath> sourcePath, std::shared_ptr<const IPath> excludedPath);
  FilteredPath(const FilteredPath&) = delete;
  FilteredPath& operator=(const FilteredPath&) = delete;
  ~FilteredPath() override;

  [[nodiscard]] std::shared_ptr<const PathEntries> GetMainEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                   FilenameMatchingPolicy policy) const override;
  [[nodiscard]] PathEntries GetPartiallyMatchingEntries(
      SearchScope scope, const ustring& name, FilenameMatchingPolicy policy) const override;
  /// Null also when the main entry is hidden.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetMainEntryForEntry(
      const IPathEntry& entry) const override;
  /// Null also when the parent is hidden.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetParentEntryForEntry(
      const IPathEntry& entry) const override;
  /// Null when the first such entry of the source is hidden, even if the source has another one.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const CanonicalAbsoluteIRI& iri) const override;
  /// Null in the same case.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const override;
  /// The first match that is not hidden. Asks the source for all matches if its first is hidden.
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(
      SearchScope scope, const detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope,
                                                      const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// The answer of the source, even for hidden entries.
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                    const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

 private:
  class EntryFilter;

  [[nodiscard]] EntryFilter GetEntryFilter() const noexcept;

  const std::shared_ptr<const IPath> source;
  const std::shared_ptr<const IPath> excluded;
  mutable detail::OnceFlag mainEntriesOnce;  // guards mainEntries
  mutable std::shared_ptr<const PathEntries> mainEntries;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_FILTERED_PATH_H
