#ifndef SEARCHPATH_SRC_JSON_JSON_FAULT_H
#define SEARCHPATH_SRC_JSON_JSON_FAULT_H

#include "searchpath/model/ustring.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <utility>

namespace Corvane::PathManagement::json {

/// What is wrong with a JSON text, or with what it says.
enum class JsonFault : std::uint8_t {
  NotUtf8,
  Syntax,
  TooDeep,
  TooManyValues,
  RepeatedField,
  MissingField,
  UnknownField,
  WrongType,  ///< `JsonException::detail` says what was expected
  OutOfRange,
};

/// The fault in words, to be followed by `JsonException::detail`.
[[nodiscard]] const char16_t* GetWords(JsonFault fault);

/// "FILE:LINE: FIELD: what", without the line when it is nullopt and the field when it is "".
[[nodiscard]] ustring GetMessage(const ustring& file, std::optional<std::size_t> line,
                                 const ustring& field, const ustring& what);

/// A JSON text cannot be used.
class JsonException : public std::exception {
 public:
  JsonException(JsonFault itsFault, std::optional<std::size_t> itsLine, ustring itsField,
                ustring itsDetail = {})
      : fault(itsFault), line(itsLine), field(std::move(itsField)), detail(std::move(itsDetail)) {}

  JsonFault fault;
  std::optional<std::size_t> line;  // from 1; nullopt when the text as a whole is at fault
  ustring field;                    // such as "folders[1].tags", counted from 0; "" for none
  ustring detail;                   // the end of the message; "" for most faults
};

}  // namespace Corvane::PathManagement::json

#endif  // SEARCHPATH_SRC_JSON_JSON_FAULT_H
