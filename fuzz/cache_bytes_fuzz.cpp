#include "fuzz_input.h"
#include "searchpath/host/path_entry_factory.h"

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
  const std::string bytes = fuzz::WithRightHeader(data, size, kHeader);
  try {
    const std::string saved = Save(Load(bytes));
    Require(Save(Load(saved)) == saved, "what was loaded and saved is loaded as the same");
  } catch (const host::InvalidListingException& refused) {
    Require(*refused.what() != '\0', "a refusal says why");
  }
  return 0;
}
