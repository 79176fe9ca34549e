#include "model/percent_escapes.h"

#include "model/text_units.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <string>

namespace foundation::storage::vfs::detail {

namespace {

using Corvane::PathManagement::detail::AppendCodePoint;
using Corvane::PathManagement::detail::UnitForByte;

constexpr int HexValue(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  return -1;
}

/// The bytes of the escapes that follow one another from `begin` on, up to one that is kept because
/// it would name another file when decoded.
std::string BytesOfRun(std::u16string_view text, std::size_t begin, Undecodable undecodable) {
  std::string bytes;
  while (const auto byte = EscapeAt(text, begin + 3 * bytes.size())) {
    const bool namesAnotherFile = *byte == '/' || *byte == 0;
    if (namesAnotherFile && undecodable == Undecodable::KeptWithSeparators) break;
    bytes.push_back(static_cast<char>(*byte));
  }
  return bytes;
}

/// Decodes the run of escapes that begins at `begin`, and returns the position after it.
std::size_t DecodeRun(std::u16string_view text, std::size_t begin, Undecodable undecodable,
                      ustring& decoded) {
  const std::string bytes = BytesOfRun(text, begin, undecodable);
  const auto* units = reinterpret_cast<const std::uint8_t*>(bytes.data());
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t start = at;
    UChar32 codePoint = 0;
    U8_NEXT(units, at, bytes.size(), codePoint);
    if (codePoint >= 0) {
      AppendCodePoint(decoded, codePoint);
      continue;
    }
    at = start + 1;
    if (undecodable == Undecodable::AsByte) {
      decoded.push_back(UnitForByte(units[start]));
    } else {
      decoded += text.substr(begin + 3 * start, 3);
    }
  }
  return begin + 3 * bytes.size();
}

}  // namespace

std::optional<std::uint8_t> EscapeAt(std::u16string_view text, std::size_t at) noexcept {
  if (text.size() < 3 || at > text.size() - 3 || text[at] != u'%') return std::nullopt;
  const int high = HexValue(text[at + 1]);
  const int low = HexValue(text[at + 2]);
  if (high < 0 || low < 0) return std::nullopt;
  return static_cast<std::uint8_t>(high * 16 + low);
}

ustring DecodeEscapes(std::u16string_view text, Undecodable undecodable) {
  ustring decoded;
  decoded.reserve(text.size());
  std::size_t begin = 0;  // where the rest begins, perhaps with a "%" that is to be kept
  for (auto at = text.find(u'%'); at != text.npos; at = text.find(u'%', std::max(begin, at + 1))) {
    decoded += text.substr(begin, at - begin);
    begin = DecodeRun(text, at, undecodable, decoded);
  }
  decoded += text.substr(begin);
  return decoded;
}

ustring DecodeAsciiEscapes(std::u16string_view text) {
  ustring decoded;
  decoded.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = EscapeAt(text, at);
    if (byte && *byte < 0x80) {
      decoded.push_back(*byte);
      at += 3;
    } else {
      decoded.push_back(text[at++]);
    }
  }
  return decoded;
}

}  // namespace foundation::storage::vfs::detail
