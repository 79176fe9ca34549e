#ifndef SEARCHPATH_TOOLS_SEARCHPATH_JSON_FILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_JSON_FILE_H

#include "json/json_field.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace Corvane::PathManagement::tool {

/// The bytes of a regular file; empty when there is none of that name.
///
/// Errors: `UsageError` when it cannot be read.
[[nodiscard]] std::optional<std::string> ReadBytes(const std::string& file);

/// Hands the value of the JSON text `bytes` to `read`. It may hold `most` values.
///
/// Errors: `UsageError` for a `JsonException`, with `file`, the line and the field; and what `read`
/// throws.
void ReadJson(const std::string& file, const std::string& bytes, std::size_t most,
              const std::function<void(const json::Field&)>& read);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_JSON_FILE_H
