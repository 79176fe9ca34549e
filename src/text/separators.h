#ifndef SEARCHPATH_SRC_TEXT_SEPARATORS_H
#define SEARCHPATH_SRC_TEXT_SEPARATORS_H

#include "searchpath/model/constants.h"

#include <string_view>

namespace Corvane::PathManagement::detail {

/// Whether any unit of `Constants::PathnameSeparatorStr` occurs in `text`. Every look-up asks this,
/// so all of the text is compared, many units at once, instead of one after the other up to the
/// first.
[[nodiscard]] inline bool HasSeparator(std::u16string_view text) noexcept {
  for (const char16_t separator : Constants::PathnameSeparatorStr) {
    unsigned hits = 0;
    for (const char16_t unit : text) hits |= static_cast<unsigned>(unit == separator);
    if (hits != 0) return true;
  }
  return false;
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_SEPARATORS_H
