#include "host/names/folded_name.h"

#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/filename_comparison.h"

namespace Corvane::PathManagement::host {

std::string_view FoldName(std::string_view name, std::string& buffer) {
  buffer.assign(name);
  bool isAscii = true;
  for (char& byte : buffer) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte + 0x20);
    isAscii = isAscii && static_cast<unsigned char>(byte) < 0x80;
  }
  // Folding keeps every lone surrogate, so the text still stands for bytes.
  if (!isAscii) buffer = BytesFromText(FoldFilename(TextFromBytes(name))).value();
  return buffer;
}

}  // namespace Corvane::PathManagement::host
