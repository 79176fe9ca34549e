#ifndef SEARCHPATH_SRC_HOST_PACKAGES_LOCATED_JSON_H
#define SEARCHPATH_SRC_HOST_PACKAGES_LOCATED_JSON_H

#include "searchpath/host/package_problem.h"
#include "searchpath/model/ustring.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Corvane::PathManagement::host {

/// A manifest cannot be used. The data are those of `PackageProblem`, without the file.
class ManifestException : public std::exception {
 public:
  ManifestException(PackageFault what, std::optional<std::size_t> where, ustring which,
                    ustring more = {})
      : fault(what), line(where), field(std::move(which)), detail(std::move(more)) {}

  PackageFault fault;
  std::optional<std::size_t> line;
  ustring field;
  ustring detail;
};

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

/// What messages call the field `name` of the field `object`; "" is the whole text.
[[nodiscard]] ustring FieldBelow(const ustring& object, const ustring& name);
/// The same for the element at `index` of an array, from 0.
[[nodiscard]] ustring FieldBelow(const ustring& array, std::size_t index);

/// Parses `bytes`. More than 32 levels or 10,000 values are refused, so that the tree can be
/// destroyed by recursion and takes little memory.
///
/// Errors: `ManifestException`.
[[nodiscard]] LocatedJson ParseJson(std::string_view bytes);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PACKAGES_LOCATED_JSON_H
