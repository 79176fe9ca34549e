#ifndef SEARCHPATH_SRC_TEXT_SEPARATORS_H
#define SEARCHPATH_SRC_TEXT_SEPARATORS_H

#include "searchpath/model/constants.h"

#include <cstdint>
#include <cstring>
#include <string_view>

namespace Corvane::PathManagement::detail {

/// Whether any of the four units from `text` on is `unit`.
[[nodiscard]] inline bool IsAmongFour(const char16_t* text, char16_t unit) noexcept {
  constexpr std::uint64_t each = 0x0001000100010001U;
  std::uint64_t units = 0;
  std::memcpy(&units, text, sizeof(units));
  const std::uint64_t differences = units ^ unit * each;
  return ((differences - each) & ~differences & (0x8000 * each)) != 0;  // a unit that became zero
}

/// Whether any unit of `Constants::PathnameSeparatorStr` occurs in `text`. Every look-up asks this,
/// so four units are compared at once: one after the other costs twice as much.
[[nodiscard]] inline bool HasSeparator(std::u16string_view text) noexcept {
  for (const char16_t separator : Constants::PathnameSeparatorStr) {
    if (text.size() < 4) {
      if (text.find(separator) != std::u16string_view::npos) return true;
      continue;
    }
    const char16_t* const lastFour = text.data() + text.size() - 4;
    for (const char16_t* at = text.data(); at < lastFour; at += 4) {
      if (IsAmongFour(at, separator)) return true;
    }
    if (IsAmongFour(lastFour, separator)) return true;
  }
  return false;
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_SEPARATORS_H
