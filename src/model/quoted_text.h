#ifndef SEARCHPATH_SRC_MODEL_QUOTED_TEXT_H
#define SEARCHPATH_SRC_MODEL_QUOTED_TEXT_H

#include <string>
#include <string_view>

namespace Corvane::PathManagement::detail {

/// `text` for a message: UTF-8 in double quotes, controls and lone surrogates as escapes, a text of
/// many lines' length cut.
[[nodiscard]] std::string QuotedText(std::u16string_view text);

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_MODEL_QUOTED_TEXT_H
