#include "model/quoted_text.h"

#include "searchpath/model/byte_text.h"

#include <cstddef>

namespace Corvane::PathManagement::detail {

namespace {

constexpr std::size_t kLongestQuoted = 200;  // in code units

std::string Escape(char16_t unit) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string escape = "\\u";
  for (const int shift : {12, 8, 4, 0}) {
    escape.push_back(digits[(static_cast<unsigned>(unit) >> shift) & 0xFU]);
  }
  return escape;
}

constexpr bool IsLead(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsTrail(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

std::string QuotedText(std::u16string_view text) {
  std::string quoted = "\"";
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (at >= kLongestQuoted) {
      quoted += "...";
      break;
    }
    const char16_t unit = text[at];
    if (IsLead(unit) && at + 1 < text.size() && IsTrail(text[at + 1])) {
      quoted += BytesFromText(text.substr(at++, 2)).value();
    } else if (unit < 0x20 || unit == 0x7F || IsLead(unit) || IsTrail(unit)) {
      quoted += Escape(unit);
    } else {
      quoted += BytesFromText(text.substr(at, 1)).value();
    }
  }
  return quoted + "\"";
}

}  // namespace Corvane::PathManagement::detail
