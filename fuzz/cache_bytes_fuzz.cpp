#include "fuzz_input.h"
#include "searchpath/host/path_entry_factory.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <cstring>
#include <sstream>
#include <string>

using namespace Corvane::PathManagement;
using fuzz::Require;

namespace {

const AbsoluteIRI kRoot(u"file:///no/such/root");
constexpr std::size_t kHeader = 21 + 8 + 8;  // the first line, the length, the checksum

host::PathEntryFactory Load(const std::string& bytes) {
  std::istringstream stream(bytes);
  host::PathEntryFactory factory(host::ListingUse::AsSaved);
  factory.ReadEntries(stream, kRoot);
  return factory;
}

std::string Save(const host::PathEntryFactory& factory) {
  std::ostringstream stream;
  factory.WriteEntries(stream, kRoot);
  return stream.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  if (size >= kHeader) {
    // With a header that is right, what is behind it gets looked at.
    const std::uint64_t numbers[] = {size - kHeader,
                                     XXH3_64bits(bytes.data() + kHeader, size - kHeader)};
    std::memcpy(bytes.data() + kHeader - sizeof(numbers), numbers, sizeof(numbers));
  }
  try {
    const std::string saved = Save(Load(bytes));
    Require(Save(Load(saved)) == saved, "what was loaded and saved is loaded as the same");
  } catch (const host::InvalidListingException& refused) {
    Require(*refused.what() != '\0', "a refusal says why");
  }
  return 0;
}
