#ifndef SEARCHPATH_SRC_PATHS_JOIN_H
#define SEARCHPATH_SRC_PATHS_JOIN_H

#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::detail {

/// `list` without spare room. `shrink_to_fit` may silently keep the room when memory is short; this
/// raises `std::bad_alloc`.
template <class Element>
std::vector<Element> Fit(std::vector<Element> list) {
  if (list.size() == list.capacity()) return list;
  // Braces would make a list of the iterators, where an element can be made of one.
  return std::vector<Element>(std::make_move_iterator(list.begin()),
                              std::make_move_iterator(list.end()));
}

/// The elements of all `lists`, one list after the other, without spare room. Each element is moved
/// only once; a vector that grew with each list would move the first elements again and again.
template <class Element>
std::vector<Element> Join(std::vector<std::vector<Element>> lists) {
  if (lists.size() == 1) return Fit(std::move(lists.front()));
  std::size_t count = 0;
  for (const auto& list : lists) count += list.size();
  std::vector<Element> all;
  all.reserve(count);
  for (auto& list : lists) std::move(list.begin(), list.end(), std::back_inserter(all));
  return all;
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_PATHS_JOIN_H
