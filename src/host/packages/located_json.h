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

/// A manifest cannot be used. Its members are as in `PackageProblem`, which adds the file.
class ManifestException : public std::exception {
 public:
  ManifestException(PackageFault itsFault, std::optional<std::size_t> itsLine, ustring itsField,
                    ustring itsDetail = {})
      : fault(itsFault), line(itsLine), field(std::move(itsField)), detail(std::move(itsDetail)) {}

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

/// How messages name a member of an object: "folders[1].tags" for "tags" of "folders[1]". The
/// object "" is the whole text.
[[nodiscard]] ustring FieldBelow(const ustring& object, const ustring& name);
/// The same for an element of an array: "folders[1]" for 1 of "folders".
[[nodiscard]] ustring FieldBelow(const ustring& array, std::size_t index);

/// Parses `bytes`. More than 32 levels or 10,000 values are refused, so that the tree can be
/// destroyed by recursion and takes little memory.
///
/// Errors: `ManifestException`.
[[nodiscard]] LocatedJson ParseJson(std::string_view bytes);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PACKAGES_LOCATED_JSON_H
