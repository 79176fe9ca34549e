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

/// A value of a JSON text, and the line on which it stands.
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
/// The same for an element of an array: "folders[1]" for 1 of "folders".
[[nodiscard]] ustring FieldBelow(const ustring& array, std::size_t index);

/// Parses `bytes`. More than 32 levels or `most` values are refused, so that the tree can be destroyed
/// by recursion and takes little memory.
///
/// Errors: `JsonException`.
[[nodiscard]] LocatedJson ParseJson(std::string_view bytes, std::size_t most = 10'000);

}  // namespace Corvane::PathManagement::json

#endif  // SEARCHPATH_SRC_JSON_LOCATED_JSON_H
