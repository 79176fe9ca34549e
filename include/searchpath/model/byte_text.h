#ifndef SEARCHPATH_MODEL_BYTE_TEXT_H
#define SEARCHPATH_MODEL_BYTE_TEXT_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

#include <optional>
#include <string>
#include <string_view>

namespace Corvane::PathManagement {

/// Turns the bytes of a file name into text. UTF-8 becomes UTF-16; a byte that is not part of valid
/// UTF-8 becomes U+DC80..U+DCFF, so that `BytesFromText` gives back exactly the same bytes.
///
/// Cost: linear, one pass, ASCII at memory speed.
[[nodiscard]] SEARCHPATH_EXPORT ustring TextFromBytes(std::string_view bytes);

/// Turns text into the bytes of a file name: UTF-8, but a lone U+DC80..U+DCFF becomes the byte that
/// it was made from. Nullopt when the text holds any other lone surrogate: no file has such a name.
///
/// Cost: linear, one pass.
[[nodiscard]] SEARCHPATH_EXPORT std::optional<std::string> BytesFromText(std::u16string_view text);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_BYTE_TEXT_H
