#include "model/quoted_text.h"

#include "model/hexadecimal.h"
#include "searchpath/model/byte_text.h"

#include <unicode/utf16.h>

#include <cstddef>

namespace Corvane::PathManagement::detail {

namespace {

constexpr std::size_t kLongestQuoted = 200;  // in code units

/// Whether `unit` could not be shown as itself: a control, a surrogate, a mark that ends a line
/// or paragraph, or one that changes the writing direction of the text after it.
bool IsEscaped(char16_t unit) {
  const bool isControl = unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
  const bool turnsDirection = unit == 0x061C || unit == 0x200E || unit == 0x200F ||
                              (unit >= 0x202A && unit <= 0x202E) ||
                              (unit >= 0x2066 && unit <= 0x2069);
  const bool endsLine = unit == 0x2028 || unit == 0x2029;
  return U16_IS_SURROGATE(unit) || isControl || turnsDirection || endsLine;
}

}  // namespace

std::string QuotedText(std::u16string_view text) {
  std::string quoted = "\"";
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (at >= kLongestQuoted) {
      quoted += "...";
      break;
    }
    const char16_t unit = text[at];
    if (U16_IS_LEAD(unit) && at + 1 < text.size() && U16_IS_TRAIL(text[at + 1])) {
      quoted += BytesFromText(text.substr(at++, 2)).value();
    } else if (IsEscaped(unit)) {
      quoted += "\\u";
      AppendHexadecimal(quoted, unit, 4, kLowerCaseDigits);
    } else {
      quoted += BytesFromText(text.substr(at, 1)).value();
    }
  }
  return quoted + "\"";
}

}  // namespace Corvane::PathManagement::detail
