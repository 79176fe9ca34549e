#include "searchpath/model/byte_text.h"

#include "model/ascii_prefix.h"
#include "model/text_encoding.h"
#include "model/text_units.h"

#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>

namespace Corvane::PathManagement {

ustring TextFromBytes(std::string_view bytes) {
  const std::size_t ascii = detail::AsciiPrefix(bytes);
  ustring text;
  text.reserve(bytes.size());
  text.assign(bytes.begin(), bytes.begin() + ascii);
  const auto* units = reinterpret_cast<const std::uint8_t*>(bytes.data());
  const std::size_t size = bytes.size();
  for (std::size_t at = ascii; at < size;) {
    if (units[at] < 0x80) {
      text.push_back(units[at++]);
      continue;
    }
    const std::size_t start = at;
    UChar32 codePoint = 0;
    U8_NEXT(units, at, size, codePoint);
    if (codePoint >= 0) {
      detail::AppendCodePoint(text, codePoint);
    } else {
      // U8_NEXT may have passed several ill-formed bytes. Only the first is taken, so none is lost.
      text.push_back(detail::UnitForByte(units[start]));
      at = start + 1;
    }
  }
  return text;
}

std::optional<std::string> BytesFromText(std::u16string_view text) {
  const std::size_t ascii = detail::AsciiPrefix(text);
  std::string bytes;
  bytes.reserve(text.size());
  bytes.assign(text.begin(), text.begin() + ascii);
  const auto append = [&bytes](const char* encoded, std::size_t count) {
    if (count == 1) {
      bytes.push_back(*encoded);  // the usual case, and cheaper than append
    } else {
      bytes.append(encoded, count);
    }
  };
  if (!detail::EncodeText(text.substr(ascii), append)) return std::nullopt;
  return bytes;
}

}  // namespace Corvane::PathManagement
