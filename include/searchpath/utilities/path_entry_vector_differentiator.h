#ifndef SEARCHPATH_UTILITIES_PATH_ENTRY_VECTOR_DIFFERENTIATOR_H
#define SEARCHPATH_UTILITIES_PATH_ENTRY_VECTOR_DIFFERENTIATOR_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry.h"

#include <cstdint>
#include <memory>

namespace Corvane::PathManagement {

/// Tells what changed between two versions of a list of entries.
///
/// An entry object that both lists hold is unchanged, or reordered when it is not part of their
/// longest common subsequence. All others are compared by folder, that is by canonical IRI as
/// `AbsoluteIRI`: those with a counterpart among the changed entries of the other list are
/// refreshed, in pairs; the rest is removed or added. An object or a folder that a list holds
/// several times is matched one for one.
///
/// Results accumulate in five lists that copies of an object share: a comparison made by one copy
/// appends to the lists of all, those that a getter has returned included. For fresh results make a
/// new object. A moved-from object holds no lists: its getters answer null.
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
  /// throughout. With `IncludeSubfolders`, no entry hangs below itself: that never ends (asserted
  /// in debug builds, unchecked in release).
  /// Errors: what an entry raises passes through, the first such exception when several threads
  /// raise. After a failure each list holds the beginning of what it would have held, and the two
  /// lists of refreshed entries are of the same length.
  /// Cost: n log n in the lengths of the lists, plus what the longest common subsequence costs when
  /// they hold one object many times. Only changed entries are asked for anything. Depth costs no
  /// stack.
  void Compare(PathEntries before, PathEntries after, ComparisonFilter filter);

  /// The new entries without a counterpart: their folders have come, or now occur more often.
  [[nodiscard]] std::shared_ptr<PathEntries> GetAdded() const;

  /// The old entries without a counterpart: their folders have gone, or now occur less often.
  [[nodiscard]] std::shared_ptr<PathEntries> GetRemoved() const;

  /// Entries that stand in both lists, but not in the same order as those that stayed.
  [[nodiscard]] std::shared_ptr<PathEntries> GetReordered() const;

  /// The old entries of folders that got a new one.
  [[nodiscard]] std::shared_ptr<PathEntries> GetRefreshedBefore() const;

  /// The new entries of these folders, each at the place of the old one.
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
