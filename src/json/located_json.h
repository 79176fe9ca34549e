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

  std::size_t line;  // from 1 on
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

/// Parses `bytes`. A text of more than 32 levels or `most` values is refused: the tree is destroyed
/// by recursion, and should take little memory.
///
/// Errors: `JsonException`.
[[nodiscard]] LocatedJson ParseJson(std::string_view bytes, std::size_t most = 10'000);

}  // namespace Corvane::PathManagement::json

#endif  // SEARCHPATH_SRC_JSON_LOCATED_JSON_H
