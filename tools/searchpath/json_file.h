#ifndef SEARCHPATH_TOOLS_SEARCHPATH_JSON_FILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_JSON_FILE_H

#include "json/json_field.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace Corvane::PathManagement::tool {

/// The bytes of the regular file `file`; `nullopt` when it does not exist.
///
/// Errors: `UsageError` when it cannot be read.
[[nodiscard]] std::optional<std::string> ReadBytes(const std::string& file);

/// Parses the JSON text `bytes`, the content of `file`, and calls `read` with its root. Refuses a
/// text of more than `most` values.
///
/// Errors: `UsageError`, which names `file`, the line and the field, when the text is refused or
/// `read` throws a `JsonException`; any other exception of `read`.
void ReadJson(const std::string& file, const std::string& bytes, std::size_t most,
              const std::function<void(const json::Field&)>& read);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_JSON_FILE_H
