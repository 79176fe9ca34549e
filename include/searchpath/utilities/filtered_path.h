#ifndef SEARCHPATH_UTILITIES_FILTERED_PATH_H
#define SEARCHPATH_UTILITIES_FILTERED_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/path.h"
#include "searchpath/utilities/once_flag.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement {

/// A path without the entries that another path holds: an entry is shown unless `IsEntryOnPath` of
/// the other path, the entry filter, says that it holds it. Nothing is added and the order stays.
/// So the filter decides what counts as the same entry: one that answers by folder, as `IPath`
/// asks, hides every entry of its folders, whichever object that is; one that compares objects
/// hides only the very objects that it holds.
///
/// The list of main entries is built at the first `GetMainEntries` and kept; every other question
/// asks both paths afresh. The order of two entries is the source's own, shown or not.
///
/// Precondition: neither path is null; the source's traversals visit no null entry and its files
/// are in no null entry. A null entry in one of its lists is left out. While either path is asked
/// for its main entries or about an entry, it must not ask this path for its main entries: both
/// would wait for ever.
/// Threads: as safe as both paths are; the list of main entries is built once. A concurrent
/// traversal asks the entry filter from the threads that the source visits on.
/// Ownership: shares both paths. Neither copied nor moved.
/// Errors: exceptions of either path or a visitor pass through unchanged and change nothing; a list
/// of main entries whose building failed is built at the next call.
/// Cost: the source's, and one question to the entry filter for each entry of its answer; a list
/// that is returned has no spare capacity.
class SEARCHPATH_EXPORT FilteredPath : public IPath {
 public:
  /// Shows `sourcePath` without the entries of `hiddenPath`.
  FilteredPath(std::shared_ptr<const IPath> sourcePath, std::shared_ptr<const IPath> hiddenPath);
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
  /// Null when the source's first such entry is hidden, even if it holds another.
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const CanonicalAbsoluteIRI& iri) const override;
  [[nodiscard]] std::shared_ptr<const IPathEntry> GetPathEntryFromAbsoluteIRI(
      const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const override;
  /// Asks the source for every match only when its first one is hidden.
  [[nodiscard]] boost::optional<FoundItem> FindFirstInScope(
      SearchScope scope, const detail::SearchTarget& target,
      FilenameMatchingPolicy policy) const override;
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope,
                                                      const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// The source's answer, also for entries that are hidden.
  [[nodiscard]] bool FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                    const IPathEntry& second) const override;
  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

 private:
  class EntryFilter;

  [[nodiscard]] EntryFilter GetEntryFilter() const noexcept;

  const std::shared_ptr<const IPath> source;
  const std::shared_ptr<const IPath> hidden;
  mutable detail::OnceFlag mainEntriesOnce;  // guards mainEntries
  mutable std::shared_ptr<const PathEntries> mainEntries;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_FILTERED_PATH_H
