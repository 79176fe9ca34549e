#ifndef SEARCHPATH_SRC_JSON_JSON_TEXT_H
#define SEARCHPATH_SRC_JSON_JSON_TEXT_H

#include "searchpath/model/ustring.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace Corvane::PathManagement::json {

/// Adds `text` to `object` under `key`, with U+FFFD for bytes that are not UTF-8. If there are any, it
/// also adds the bytes in Base64: "pathBytes" beside "path".
void AddText(nlohmann::ordered_json& object, const std::string& key, const ustring& text);

/// An object without line breaks. `asciiOnly` escapes all other characters.
[[nodiscard]] std::string GetLine(const nlohmann::ordered_json& object, bool asciiOnly = false);

}  // namespace Corvane::PathManagement::json

#endif  // SEARCHPATH_SRC_JSON_JSON_TEXT_H
