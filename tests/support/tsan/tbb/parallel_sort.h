#ifndef SEARCHPATH_TESTS_SUPPORT_TSAN_TBB_PARALLEL_SORT_H
#define SEARCHPATH_TESTS_SUPPORT_TSAN_TBB_PARALLEL_SORT_H

#include <algorithm>
#include <exception>
#include <functional>
#include <iterator>
#include <thread>
#include <vector>

// Takes the place of the library's header of this name in builds for the thread sanitizer, which
// cannot see into the real one and reports what is no race. It calls the comparator from two
// threads, so that races of ours still show.
namespace tbb {

template <std::random_access_iterator Iterator, class Compare>
void parallel_sort(Iterator begin, Iterator end, const Compare& comesBefore) {
  // Short ranges are sorted by the thread that asks, as the real one does, with a far higher limit.
  if (end - begin < 8) return std::sort(begin, end, comesBefore);
  const Iterator middle = begin + (end - begin) / 2;
  std::exception_ptr failure;
  {
    const std::jthread lowerHalf([&] {
      try {
        std::sort(begin, middle, comesBefore);
      } catch (...) {
        failure = std::current_exception();
      }
    });
    std::sort(middle, end, comesBefore);
  }
  if (failure) std::rethrow_exception(failure);
  std::vector<std::iter_value_t<Iterator>> merged;
  std::merge(begin, middle, middle, end, std::back_inserter(merged), comesBefore);
  std::move(merged.begin(), merged.end(), begin);
}

template <std::random_access_iterator Iterator>
void parallel_sort(Iterator begin, Iterator end) {
  parallel_sort(begin, end, std::less<>());
}

}  // namespace tbb

#endif  // SEARCHPATH_TESTS_SUPPORT_TSAN_TBB_PARALLEL_SORT_H
