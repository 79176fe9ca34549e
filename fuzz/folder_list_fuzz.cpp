#include "fuzz_input.h"
#include "searchpath/host/folder_list.h"
#include "searchpath/model/byte_text.h"

#include <sstream>

using namespace Corvane::PathManagement;

// A file with a folder on each line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::string expected;
  for (const char byte : bytes) {
    const bool endsEmptyLine = byte == '\n' && (expected.empty() || expected.back() == '\n');
    if (!endsEmptyLine) expected.push_back(byte);
  }
  if (!expected.empty() && expected.back() != '\n') expected.push_back('\n');

  std::istringstream list(bytes);
  std::string written;
  for (const ustring& folder : host::ReadFolderList(list)) {
    written += BytesFromText(folder).value_or("\n") + '\n';
  }
  fuzz::Require(written == expected, "each line that is not empty is a folder");
  return 0;
}
