#ifndef SEARCHPATH_SRC_JSON_LOCATED_JSON_H
#define SEARCHPATH_SRC_JSON_LOCATED_JSON_H

#include "json/json_fault.h"
#include "searchpath/model/ustring.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

namespace Corvane::PathManagement::json {

struct JsonMember;

/// A value of a JSON text, and its line in the text.
struct LocatedJson {
  using Array = std::vector<LocatedJson>;
  using Object = std::vector<JsonMember>;  // in the order of the text; no name is repeated

  std::size_t line;  // in which it begins, from 1 on
  std::variant<std::nullptr_t, bool, std::int64_t, double, ustring, Array, Object> content;
};

struct JsonMember {
  ustring name;
  LocatedJson value;
};

/// How messages name a member of an object: "folders[1].tags" for "tags" of "folders[1]". The
/// object "" is the whole text.
[[nodiscard]] ustring FieldBelow(const ustring& object, const ustring& name);
/// The same for an element of an array: "folders[1]" for element 1 of "folders".
[[nodiscard]] ustring FieldBelow(const ustring& array, std::size_t index);

/// Parses `bytes`. A text with more than 32 levels is refused, since the tree is destroyed by
/// recursion. So is one with more than `mostValues` values, since the tree should take little
/// memory.
///
/// Errors: `JsonException`.
[[nodiscard]] LocatedJson ParseJson(std::string_view bytes, std::size_t mostValues = 10'000);

}  // namespace Corvane::PathManagement::json

#endif  // SEARCHPATH_SRC_JSON_LOCATED_JSON_H
