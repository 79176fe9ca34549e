#include "host/names/folded_name.h"

#include "searchpath/model/byte_text.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace Corvane::PathManagement::host {

namespace {

ustring FoldText(const ustring& text) {
  ustring folded(text.size() * 3, u'\0');  // no character folds to more units
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length =
      u_strFoldCase(folded.data(), static_cast<std::int32_t>(folded.size()), text.data(),
                    static_cast<std::int32_t>(text.size()), U_FOLD_CASE_DEFAULT, &status);
  if (U_FAILURE(status)) throw std::length_error("a file name of more than 2^31 units");
  folded.resize(static_cast<std::size_t>(length));
  return folded;
}

}  // namespace

std::string_view FoldName(std::string_view name, std::string& buffer) {
  buffer.assign(name);
  bool isAscii = true;
  for (char& byte : buffer) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte + 0x20);
    isAscii = isAscii && static_cast<unsigned char>(byte) < 0x80;
  }
  // Folding keeps every lone surrogate, so the text still stands for bytes.
  if (!isAscii) buffer = BytesFromText(FoldText(TextFromBytes(name))).value();
  return buffer;
}

}  // namespace Corvane::PathManagement::host
