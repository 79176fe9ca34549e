#include "diff/entry_sort.h"

#include "diff/sort_in_parallel.h"

#include <tbb/parallel_sort.h>

namespace Corvane::PathManagement::detail {

extern "C" const EntrySort* SearchpathEntrySort() {
  static constexpr EntrySort kSort = {
      // Comparing addresses raises nothing, so `parallel_sort` is safe as it is.
      .byAddress = [](PathEntries& entries) { tbb::parallel_sort(entries.begin(), entries.end()); },
      .inOrder = [](PathEntries& entries,
                    EntrySort::Order comesBefore) { SortInParallel(entries, comesBefore); }};
  return &kSort;
}

}  // namespace Corvane::PathManagement::detail
