#ifndef SEARCHPATH_SRC_PATHS_MAKE_ROOM_H
#define SEARCHPATH_SRC_PATHS_MAKE_ROOM_H

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Corvane::PathManagement::detail {

/// Room for `count` more. Grows by half at least, so that many short lists cost no more than one
/// long one; whoever hands the list out shrinks it to fit.
template <class Element>
void MakeRoom(std::vector<Element>& list, std::size_t count) {
  const std::size_t wanted = list.size() + count;
  if (wanted > list.capacity()) list.reserve(std::max(wanted, list.size() / 2 * 3));
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_PATHS_MAKE_ROOM_H
