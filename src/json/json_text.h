#ifndef SEARCHPATH_SRC_JSON_JSON_TEXT_H
#define SEARCHPATH_SRC_JSON_JSON_TEXT_H

#include "searchpath/model/ustring.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace Corvane::PathManagement::json {

/// Adds `text` to `object` under `key`. In JSON, bytes that are not UTF-8 become U+FFFD. If there
/// are any, all bytes of `text` are also added in Base64: "pathBytes" beside "path".
/// Precondition: `text` stands for bytes, see `BytesFromText`.
void AddText(nlohmann::ordered_json& object, const std::string& key, const ustring& text);

/// `object` as JSON in one line. `asciiOnly` escapes all characters that are not ASCII.
[[nodiscard]] std::string GetLine(const nlohmann::ordered_json& object, bool asciiOnly = false);

}  // namespace Corvane::PathManagement::json

#endif  // SEARCHPATH_SRC_JSON_JSON_TEXT_H
