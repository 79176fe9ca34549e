#ifndef SEARCHPATH_SRC_MODEL_QUOTED_TEXT_H
#define SEARCHPATH_SRC_MODEL_QUOTED_TEXT_H

#include <string>
#include <string_view>

namespace Corvane::PathManagement::detail {

/// `text` for a message: UTF-8 in double quotes. Controls, marks that end a line, marks of
/// writing direction and lone surrogates are shown as escapes, and a text of more than 200 code
/// units is cut.
[[nodiscard]] std::string QuotedText(std::u16string_view text);

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_MODEL_QUOTED_TEXT_H
