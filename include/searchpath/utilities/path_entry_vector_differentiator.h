#ifndef SEARCHPATH_UTILITIES_PATH_ENTRY_VECTOR_DIFFERENTIATOR_H
#define SEARCHPATH_UTILITIES_PATH_ENTRY_VECTOR_DIFFERENTIATOR_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry.h"

#include <cstdint>
#include <memory>

namespace Corvane::PathManagement {

/// Tells what changed between two versions of a list of entries.
///
/// An entry object that is in both lists is unchanged if it is part of their longest common
/// subsequence, else reordered. The other entries are compared by folder, that is by canonical IRI
/// as `AbsoluteIRI`. An old and a new entry for one folder are refreshed, as a pair; the rest is
/// removed or added. Objects and folders that a list holds several times are matched one for one.
///
/// Results accumulate in five lists, which copies of an object share: a comparison made by one copy
/// appends to the lists of all copies, and so to the lists that getters have returned. For fresh
/// results make a new object. A moved-from object holds no lists: its getters return null.
///
/// Threads: an object and its copies are used by one thread at a time. `Compare` sorts long lists
/// on several threads, and asks entries for their canonical IRIs on each of them.
/// Ownership: the lists share the entries.
class SEARCHPATH_EXPORT PathEntryVectorDifferentiator {
 public:
  /// How deep a comparison goes. Any other value means `TopLevelOnly`.
  enum class ComparisonFilter : std::uint32_t {
    TopLevelOnly = 0,  ///< the two lists alone
    /// Also the folders directly below each entry whose object changed, and so on downwards.
    IncludeSubfolders = 1,
  };

  PathEntryVectorDifferentiator();
  /// Shares the lists.
  PathEntryVectorDifferentiator(const PathEntryVectorDifferentiator& other);
  PathEntryVectorDifferentiator(PathEntryVectorDifferentiator&& other) noexcept;
  /// Shares the lists.
  PathEntryVectorDifferentiator& operator=(const PathEntryVectorDifferentiator& other);
  PathEntryVectorDifferentiator& operator=(PathEntryVectorDifferentiator&& other) noexcept;
  ~PathEntryVectorDifferentiator();

  /// Appends how `after` differs from `before`: reordered entries in the order of their addresses,
  /// all others in the order of their canonical IRIs; then, with `IncludeSubfolders`, what differs
  /// one level below, and so on. Below the first level nothing is reordered.
  ///
  /// Precondition: not moved from; no entry is null, and the canonical IRI of each stays the same
  /// throughout. With `IncludeSubfolders`, no entry is below itself, or the comparison never ends
  /// (asserted in debug builds, unchecked in release).
  /// Errors: an exception of an entry passes through; when several threads raise, the first one.
  /// After a failure each list holds the beginning of what it would have held, and the two lists of
  /// refreshed entries have the same length.
  /// Cost: n log n in the lengths of the lists, and more when they hold one object many times. Only
  /// changed entries are asked for anything. The depth of the folders costs no stack.
  void Compare(PathEntries before, PathEntries after, ComparisonFilter filter);

  /// The new entries without a counterpart: their folders have come, or now occur more often.
  [[nodiscard]] std::shared_ptr<PathEntries> GetAdded() const;

  /// The old entries without a counterpart: their folders have gone, or now occur less often.
  [[nodiscard]] std::shared_ptr<PathEntries> GetRemoved() const;

  /// The entries that are in both lists, but moved relative to the unchanged ones.
  [[nodiscard]] std::shared_ptr<PathEntries> GetReordered() const;

  /// The old entries of folders that are in both lists, but have another entry in the new one.
  [[nodiscard]] std::shared_ptr<PathEntries> GetRefreshedBefore() const;

  /// The new entries of the same folders, each at the index of its old entry in
  /// `GetRefreshedBefore`.
  [[nodiscard]] std::shared_ptr<PathEntries> GetRefreshedAfter() const;

 private:
  void CompareHelper(PathEntries&& before, PathEntries&& after, ComparisonFilter filter,
                     bool computeReordered);
  void AppendByIRI(const PathEntries& beforeOnly, const PathEntries& afterOnly);

  // Null only after a move.
  std::shared_ptr<PathEntries> added;
  std::shared_ptr<PathEntries> removed;
  std::shared_ptr<PathEntries> reordered;
  std::shared_ptr<PathEntries> refreshedAfter;
  std::shared_ptr<PathEntries> refreshedBefore;
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_ENTRY_VECTOR_DIFFERENTIATOR_H
