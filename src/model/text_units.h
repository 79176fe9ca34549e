#ifndef SEARCHPATH_SRC_MODEL_TEXT_UNITS_H
#define SEARCHPATH_SRC_MODEL_TEXT_UNITS_H

#include "searchpath/model/ustring.h"

#include <unicode/utf16.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Corvane::PathManagement::detail {

// In text, a byte that is not UTF-8 is a lone low surrogate, U+DC80..U+DCFF; see `TextFromBytes`.

[[nodiscard]] constexpr char16_t UnitForByte(std::uint8_t byte) noexcept {
  return static_cast<char16_t>(0xDC00 + byte);
}

[[nodiscard]] constexpr bool IsUnitForByte(char16_t unit) noexcept {
  return unit >= 0xDC80 && unit <= 0xDCFF;
}

[[nodiscard]] constexpr char ByteForUnit(char16_t unit) noexcept {
  return static_cast<char>(unit - 0xDC00);
}

/// Whether the unit at `at` stands for a byte: the second half of a surrogate pair does not.
[[nodiscard]] constexpr bool IsByteAt(std::u16string_view text, std::size_t at) noexcept {
  return IsUnitForByte(text[at]) && (at == 0 || !U16_IS_LEAD(text[at - 1]));
}

/// Appends a code point that is no surrogate.
inline void AppendCodePoint(ustring& text, UChar32 codePoint) {
  if (codePoint <= 0xFFFF) {
    text.push_back(static_cast<char16_t>(codePoint));
  } else {
    text.push_back(U16_LEAD(codePoint));
    text.push_back(U16_TRAIL(codePoint));
  }
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_MODEL_TEXT_UNITS_H
