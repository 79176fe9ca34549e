#ifndef SEARCHPATH_SRC_DIFF_SORT_IN_PARALLEL_H
#define SEARCHPATH_SRC_DIFF_SORT_IN_PARALLEL_H

#include <tbb/parallel_sort.h>

#include <atomic>
#include <exception>

namespace Corvane::PathManagement::detail {

/// Compares as another comparator does until that raises an exception, which is kept. From then on
/// all elements count as equal, so that the sort ends and never leaves the bounds of the list.
///
/// Threads: all operations but `Rethrow`, from any thread.
template <class Compare>
class FailureKeepingComparator {
 public:
  explicit FailureKeepingComparator(const Compare& comparator) : comesBefore(comparator) {}

  template <class Thing>
  bool operator()(const Thing& left, const Thing& right) noexcept {
    if (hasFailed.load(std::memory_order_relaxed)) return false;
    try {
      return comesBefore(left, right);
    } catch (...) {
      if (!hasFailed.exchange(true)) failure = std::current_exception();
      return false;
    }
  }

  /// Raises the kept exception, if there is one. To be called when all comparisons are done.
  void Rethrow() const {
    if (failure != nullptr) std::rethrow_exception(failure);
  }

 private:
  const Compare& comesBefore;
  std::atomic<bool> hasFailed = false;
  std::exception_ptr failure;  // written by the thread that sets hasFailed, read after the sort
};

/// Sorts `list`, on several threads when it is long. An exception of `comesBefore` passes through:
/// it is kept, since `parallel_sort` drops one that is raised just when it has found the list out
/// of order.
template <class List, class Compare>
void SortInParallel(List& list, const Compare& comesBefore) {
  FailureKeepingComparator comparator(comesBefore);
  tbb::parallel_sort(list.begin(), list.end(), [&comparator](const auto& left, const auto& right) {
    return comparator(left, right);
  });
  comparator.Rethrow();
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_SORT_IN_PARALLEL_H
