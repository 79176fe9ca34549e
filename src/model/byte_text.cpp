#include "searchpath/model/byte_text.h"

#include "model/text_units.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>

namespace Corvane::PathManagement {

namespace {

void AppendUtf8(std::string& bytes, std::uint32_t codePoint) {
  std::uint8_t buffer[U8_MAX_LENGTH];
  std::size_t length = 0;
  U8_APPEND_UNSAFE(buffer, length, codePoint);
  bytes.append(reinterpret_cast<const char*>(buffer), length);
}

}  // namespace

ustring TextFromBytes(std::string_view bytes) {
  ustring text;
  text.reserve(bytes.size());
  const auto* units = reinterpret_cast<const std::uint8_t*>(bytes.data());
  const std::size_t size = bytes.size();
  for (std::size_t at = 0; at < size;) {
    if (units[at] < 0x80) {
      text.push_back(units[at++]);
      continue;
    }
    const std::size_t start = at;
    UChar32 codePoint = 0;
    U8_NEXT(units, at, size, codePoint);
    if (codePoint >= 0) {
      detail::AppendCodePoint(text, codePoint);
    } else {
      // An ill-formed sequence may span several bytes; one at a time keeps every byte.
      text.push_back(detail::UnitForByte(units[start]));
      at = start + 1;
    }
  }
  return text;
}

std::optional<std::string> BytesFromText(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  const std::size_t size = text.size();
  for (std::size_t at = 0; at < size;) {
    if (text[at] < 0x80) {
      bytes.push_back(static_cast<char>(text[at++]));
      continue;
    }
    const char16_t unit = text[at++];
    if (U16_IS_LEAD(unit) && at < size && U16_IS_TRAIL(text[at])) {
      AppendUtf8(bytes, static_cast<std::uint32_t>(U16_GET_SUPPLEMENTARY(unit, text[at])));
      ++at;
    } else if (!U16_IS_SURROGATE(unit)) {
      AppendUtf8(bytes, unit);
    } else if (detail::IsUnitForByte(unit)) {
      bytes.push_back(detail::ByteForUnit(unit));
    } else {
      return std::nullopt;
    }
  }
  return bytes;
}

}  // namespace Corvane::PathManagement
