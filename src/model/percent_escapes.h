#ifndef SEARCHPATH_SRC_MODEL_PERCENT_ESCAPES_H
#define SEARCHPATH_SRC_MODEL_PERCENT_ESCAPES_H

#include "model/hexadecimal.h"
#include "searchpath/model/ustring.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace foundation::storage::vfs::detail {

/// The byte that the escape "%XX" at `at` stands for; nullopt when there is no escape at `at`.
[[nodiscard]] std::optional<std::uint8_t> EscapeAt(std::u16string_view text,
                                                   std::size_t at) noexcept;

/// Appends "%XX" in upper case.
template <class Text>
void AppendEscape(Text& text, std::uint8_t byte) {
  namespace texts = Corvane::PathManagement::detail;
  text.push_back('%');
  texts::AppendHexadecimal(text, byte, 2, texts::kUpperCaseDigits);
}

/// What becomes of escapes that are not part of valid UTF-8.
enum class Undecodable : std::uint8_t {
  Kept,                ///< they stay as they are written
  KeptWithSeparators,  ///< as `Kept`; "%2F" and "%00" stay, too: decoded, they name another file
  AsByte,              ///< they become lone surrogates U+DC80..U+DCFF, as in `TextFromBytes`
};

/// `text` with its escapes decoded as UTF-8.
[[nodiscard]] ustring DecodeEscapes(std::u16string_view text, Undecodable undecodable);

/// `text` with the escapes of ASCII characters decoded.
[[nodiscard]] ustring DecodeAsciiEscapes(std::u16string_view text);

}  // namespace foundation::storage::vfs::detail

#endif  // SEARCHPATH_SRC_MODEL_PERCENT_ESCAPES_H
