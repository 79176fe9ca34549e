#ifndef SEARCHPATH_UTILITIES_DEDUPLICATED_PATH_H
#define SEARCHPATH_UTILITIES_DEDUPLICATED_PATH_H

#include "searchpath/export.h"
#include "searchpath/utilities/concatenated_path.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement {

/// Several paths seen as one that shows each folder once: of all entries for a folder, only the
/// first in path order. Entries are for one folder when their canonical locations are equal as
/// `AbsoluteIRI`. Every list is de-duplicated by itself: a folder may be among the main entries and
/// also among the method entries.
///
/// A traversal never builds the list of main entries, which would ask every entry for its location,
/// but uses a list that is there. So there are two ways:
///
/// - Before the list is built, or when it is empty, the parts are traversed, and only the first
///   entry for each folder is visited. An entry that is below two main entries is visited once. An
///   entry that is below no main entry is visited if its part shows it. What a filtered part hides
///   stays hidden.
/// - Once `GetMainEntries` has built a list that is not empty, each entry of the list visits itself
///   and what is below it, and nothing is dropped. An entry that is below two main entries is
///   visited twice. An entry that is below no main entry is not visited. An entry that is below a
///   main entry is visited even if it comes from a filtered part that hides it.
///
/// A copy of a path whose list is built traverses in the second way from the start. Such a copy may
/// be a part of another path: folders that the copy visits twice are then visited twice there as
/// well, unless the other path is a `DeduplicatedPath` whose own list is not built.
///
/// For traversals that are all alike, build the list before the first of them, or never.
///
/// Precondition: as for `ConcatenatedPath`; no list or traversal of a part holds a null entry, and
/// no file that a part finds has a null item.
/// Threads, Ownership, Errors: as for `ConcatenatedPath`.
/// Cost: to make a list, each entry of the parts is asked for its location once, and a hash table
/// holds one location for each folder. The returned list has no spare capacity.
class SEARCHPATH_EXPORT DeduplicatedPath : public ConcatenatedPath {
 public:
  /// Takes over `pathParts`, which is empty afterwards. Precondition: no part is null.
  explicit DeduplicatedPath(std::vector<std::shared_ptr<const IPath>>&& pathParts);

  /// As for `ConcatenatedPath`: shares the parts, and the list of main entries if it is built.
  DeduplicatedPath(const DeduplicatedPath& other);
  /// As for `ConcatenatedPath`: copies the parts and takes over the list of main entries.
  DeduplicatedPath(DeduplicatedPath&& other);
  DeduplicatedPath& operator=(const DeduplicatedPath&) = delete;
  ~DeduplicatedPath() override;

  [[nodiscard]] std::shared_ptr<const PathEntries> GetMainEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                   FilenameMatchingPolicy policy) const override;
  [[nodiscard]] PathEntries GetPartiallyMatchingEntries(
      SearchScope scope, const ustring& name, FilenameMatchingPolicy policy) const override;
  /// Returns each file once. Files are the same when their items have the same folder and the same
  /// file name, no matter where it is cut into name and extension. The entries are not compared.
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope,
                                                      const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// `ForEachEntry`, on the calling thread: which entry is a folder's first depends on the order.
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_DEDUPLICATED_PATH_H
