#ifndef SEARCHPATH_TOOLS_SEARCHPATH_UNTIL_EXIT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_UNTIL_EXIT_H

#include <deque>
#include <type_traits>
#include <utility>

namespace Corvane::PathManagement::tool {

/// Moves `value` to where it stays until the process ends, and returns it there. The kernel then
/// takes all memory back at once, which is faster than freeing the objects of a large path, of which
/// there are millions, one by one.
template <class Value>
  requires(!std::is_reference_v<Value>)
Value& KeepUntilExit(Value&& value) {
  static auto* const kept = new std::deque<Value>;
  return kept->emplace_back(std::forward<Value>(value));
}

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_UNTIL_EXIT_H
