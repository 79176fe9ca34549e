#ifndef SEARCHPATH_SRC_MODEL_TEXT_ENCODING_H
#define SEARCHPATH_SRC_MODEL_TEXT_ENCODING_H

#include "model/text_units.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Corvane::PathManagement::detail {

/// Calls append(bytes, count) with the UTF-8 of each character of `text`, in order; for a lone
/// surrogate U+DC80..U+DCFF, with the byte that it stands for. Stops and returns false at any other
/// lone surrogate.
template <class Append>
bool EncodeText(std::u16string_view text, const Append& append) {
  const std::size_t size = text.size();
  for (std::size_t at = 0; at < size;) {
    const char16_t unit = text[at++];
    // Pairs are taken as a whole below, so a trailing surrogate seen here is a lone one.
    if (unit < 0x80 || IsUnitForByte(unit)) {
      const char byte = unit < 0x80 ? static_cast<char>(unit) : ByteForUnit(unit);
      append(&byte, 1);
      continue;
    }
    auto codePoint = static_cast<std::uint32_t>(unit);
    if (U16_IS_LEAD(unit) && at < size && U16_IS_TRAIL(text[at])) {
      codePoint = static_cast<std::uint32_t>(U16_GET_SUPPLEMENTARY(unit, text[at++]));
    } else if (U16_IS_SURROGATE(unit)) {
      return false;
    }
    std::uint8_t buffer[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(buffer, length, codePoint);
    append(reinterpret_cast<const char*>(buffer), length);
  }
  return true;
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_MODEL_TEXT_ENCODING_H
