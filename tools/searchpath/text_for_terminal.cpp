#include "text_for_terminal.h"

#include "model/text_units.h"
#include "searchpath/model/byte_text.h"

namespace Corvane::PathManagement::tool {

namespace {

bool IsControl(char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }

// Separators of lines and paragraphs, and marks that change the direction of writing.
bool BreaksLineOrDirection(char16_t unit) {
  return unit == 0x061C || unit == 0x200E || unit == 0x200F || (unit >= 0x2028 && unit <= 0x202E) ||
         (unit >= 0x2066 && unit <= 0x2069);
}

// A backslash, `mark`, and the last `digits` hexadecimal digits of `unit`.
ustring GetEscape(char16_t mark, int unit, int digits) {
  ustring escape = {u'\\', mark};
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
    escape += u"0123456789ABCDEF"[(unit >> shift) & 0xF];
  }
  return escape;
}

}  // namespace

std::string GetTextForTerminal(std::string_view bytes) {
  const ustring text = TextFromBytes(bytes);
  ustring harmless;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    // `IsByteAt`: the unit stands for a byte that is not UTF-8; its last two digits are the byte.
    if (detail::IsByteAt(text, i) || (unit < 0x80 && IsControl(unit))) {
      harmless += GetEscape(u'x', unit, /*digits=*/2);
    } else if (IsControl(unit) || BreaksLineOrDirection(unit)) {
      harmless += GetEscape(u'u', unit, /*digits=*/4);
    } else {
      harmless += unit;
    }
  }
  return BytesFromText(harmless).value();  // has bytes, as `text` came from bytes
}

}  // namespace Corvane::PathManagement::tool
