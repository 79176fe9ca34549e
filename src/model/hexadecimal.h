#ifndef SEARCHPATH_SRC_MODEL_HEXADECIMAL_H
#define SEARCHPATH_SRC_MODEL_HEXADECIMAL_H

#include <cstdint>
#include <string_view>

namespace Corvane::PathManagement::detail {

inline constexpr std::string_view kLowerCaseDigits = "0123456789abcdef";
inline constexpr std::string_view kUpperCaseDigits = "0123456789ABCDEF";

/// Appends the last `count` hexadecimal digits of `number`, leading zeros included. `alphabet` is
/// one of the two above.
template <class Text>
void AppendHexadecimal(Text& text, std::uint64_t number, int count, std::string_view alphabet) {
  for (int shift = 4 * (count - 1); shift >= 0; shift -= 4) {
    text.push_back(static_cast<typename Text::value_type>(alphabet[(number >> shift) & 0xFU]));
  }
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_MODEL_HEXADECIMAL_H
