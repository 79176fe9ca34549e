#include "host/names/folded_name.h"

#include "host/names/case_folding.h"
#include "searchpath/model/byte_text.h"

namespace Corvane::PathManagement::host {

std::string_view FoldName(std::string_view name, std::string& buffer) {
  buffer.assign(name);
  bool isAscii = true;
  for (char& byte : buffer) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte + 0x20);
    isAscii = isAscii && static_cast<unsigned char>(byte) < 0x80;
  }
  // Folding keeps every lone surrogate, so the text still stands for bytes.
  if (!isAscii) buffer = BytesFromText(SearchpathCaseFolding()->fold(TextFromBytes(name))).value();
  return buffer;
}

}  // namespace Corvane::PathManagement::host
