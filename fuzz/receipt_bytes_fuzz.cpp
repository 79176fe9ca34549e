#include "fuzz_input.h"
#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/host/native_location.h"
#include "searchpath/host/receipt.h"

#include <sstream>
#include <string>

using namespace Corvane::PathManagement;
using fuzz::Require;

namespace {

constexpr std::size_t kHeader = 21 + 8 + 8;  // the first line, the length, the checksum

/// Asks a receipt for all that it says, and the disk about what it rests on.
void ReadAll(const host::Receipt& receipt) {
  static_cast<void>(receipt.GetOptions());
  for (std::size_t at = 0; at < receipt.GetCount(); ++at) {
    Require(receipt.GetLookup(at).name == receipt.GetName(at), "a question is that of its name");
    if (const auto file = receipt.GetAnswer(at)) {
      Require(host::GetNativePath(*file).starts_with(u'/'), "an answer stands somewhere");
    }
    static_cast<void>(receipt.GetBasis(at));
  }
  static_cast<void>(receipt.GetBasis());
  static_cast<void>(receipt.IsFresh());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = fuzz::WithRightHeader(data, size, kHeader);
  try {
    std::istringstream stream(bytes);
    const auto receipt = host::Receipt::Read(stream);
    ReadAll(receipt);
    std::ostringstream written;
    receipt.Write(written);
    Require(written.str() == bytes, "what was read is written as the same");
  } catch (const host::InvalidListingException& refused) {
    Require(*refused.what() != '\0', "a refusal says why");
  }
  return 0;
}
