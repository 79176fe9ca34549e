#ifndef SEARCHPATH_UTILITIES_DEDUPLICATED_PATH_H
#define SEARCHPATH_UTILITIES_DEDUPLICATED_PATH_H

#include "searchpath/export.h"
#include "searchpath/utilities/concatenated_path.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement {

/// Several paths seen as one that shows each folder once: at its first place, as the entry that
/// stands there. Entries are of one folder when their canonical locations are equal as
/// `AbsoluteIRI`. Every list is de-duplicated for itself: a folder may be among the main entries
/// and among the method entries.
///
/// A traversal never builds the list of main entries, but is shaped by it:
///
/// - Before the list is built, or when it is empty, the parts are traversed, and each folder is
///   visited at its first place only. An entry below two main entries is visited once, one below
///   none is visited if its part shows it, and what a filtered part hides stays hidden.
/// - Once `GetMainEntries` has built a list that is not empty, its entries are asked to visit
///   themselves and what hangs below them, and nothing is dropped: an entry below two main entries
///   is visited twice, one below none not at all, and one below a main entry is visited even if it
///   comes from a filtered part that hides it.
///
/// A copy of a path whose list is built traverses in the second way from the start. So when the
/// copy is a part of another path, the folders that it visits twice are visited twice there as
/// well, unless that is a `DeduplicatedPath` whose own list is not built.
///
/// A program that needs one picture builds the list before its first traversal, or never.
///
/// Precondition: as for `ConcatenatedPath`; no list or traversal of a part holds a null entry, and
/// no file that a part finds has a null item.
/// Threads, Ownership, Errors: as for `ConcatenatedPath`.
/// Cost: a list asks each entry of the parts for its location once and puts it into a hash table
/// of as many locations as there are folders. A list that is returned has no spare capacity.
class SEARCHPATH_EXPORT DeduplicatedPath : public ConcatenatedPath {
 public:
  /// Takes the vector over, which is empty afterwards. Precondition: no part is null.
  explicit DeduplicatedPath(std::vector<std::shared_ptr<const IPath>>&& pathParts);

  /// As of a `ConcatenatedPath`: shares the parts, and the list of main entries when it is built.
  DeduplicatedPath(const DeduplicatedPath& other);
  /// As of a `ConcatenatedPath`: copies the parts and takes the list of main entries over.
  DeduplicatedPath(DeduplicatedPath&& other);
  DeduplicatedPath& operator=(const DeduplicatedPath&) = delete;
  ~DeduplicatedPath() override;

  [[nodiscard]] std::shared_ptr<const PathEntries> GetMainEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntries() const override;
  [[nodiscard]] PathEntries GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                   FilenameMatchingPolicy policy) const override;
  [[nodiscard]] PathEntries GetPartiallyMatchingEntries(
      SearchScope scope, const ustring& name, FilenameMatchingPolicy policy) const override;
  /// Shows each file once: files are the same when they stand in the same folder and have the same
  /// file name, wherever it is cut into name and extension. The entries are not compared.
  [[nodiscard]] std::vector<FoundItem> FindAllInScope(SearchScope scope,
                                                      const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const override;
  bool ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
  /// `ForEachEntry`, on the calling thread: what is shown first depends on the order.
  bool ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const override;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_DEDUPLICATED_PATH_H
