#include "json/json_text.h"

#include "model/text_units.h"
#include "searchpath/model/byte_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace Corvane::PathManagement::json {

namespace {

/// Whether some of the bytes of `text` are not UTF-8.
bool HasBadBytes(const ustring& text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (PathManagement::detail::IsByteAt(text, at)) return true;
  }
  return false;
}

std::string GetBase64(std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string encoded;
  for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(3, bytes.size()))) {
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group = group << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
    }
    // One byte takes two digits, two bytes take three.
    for (std::size_t i = 0; i < 4; ++i) {
      encoded += i <= bytes.size() ? kDigits[group >> (18 - 6 * i) & 63] : '=';
    }
  }
  return encoded;
}

}  // namespace

void AddText(nlohmann::ordered_json& object, const std::string& key, const ustring& text) {
  const std::string bytes = BytesFromText(text).value();
  object[key] = bytes;
  if (HasBadBytes(text)) object[key + "Bytes"] = GetBase64(bytes);
}

std::string GetLine(const nlohmann::ordered_json& object, bool asciiOnly) {
  return object.dump(/*indent=*/-1, /*indent_char=*/' ', asciiOnly,
                     nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace Corvane::PathManagement::json
