#ifndef SEARCHPATH_SRC_MODEL_PATH_COMPONENTS_H
#define SEARCHPATH_SRC_MODEL_PATH_COMPONENTS_H

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace foundation::storage::vfs::detail {

/// Removes the first non-empty component from `rest`, and returns it; "" when there is none.
template <class Unit>
[[nodiscard]] std::basic_string_view<Unit> TakeComponent(
    std::basic_string_view<Unit>& rest) noexcept {
  const std::size_t begin = std::min(rest.find_first_not_of(Unit{'/'}), rest.size());
  const std::size_t end = std::min(rest.find(Unit{'/'}, begin), rest.size());
  const std::basic_string_view<Unit> component = rest.substr(begin, end - begin);
  rest.remove_prefix(end);
  return component;
}

/// Whether a component of `path` is "..".
template <class Unit>
[[nodiscard]] bool HasDoubleDots(std::basic_string_view<Unit> path) noexcept {
  for (auto name = TakeComponent(path); !name.empty(); name = TakeComponent(path)) {
    if (name.size() == 2 && name[0] == '.' && name[1] == '.') return true;
  }
  return false;
}

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_MODEL_PATH_COMPONENTS_H
