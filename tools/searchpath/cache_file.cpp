#include "cache_file.h"

#include "command_line.h"
#include "searchpath/model/byte_text.h"
#include "standard_streams.h"

namespace Corvane::PathManagement::tool {

bool IsListing(const std::string& file) { return host::IsListingFile(TextFromBytes(file)); }

host::PathEntryFactory ReadListing(const std::string& file, host::ListingUse use) try {
  return host::LoadListing(TextFromBytes(file), use);
} catch (const host::InvalidListingException& invalid) {
  throw UsageError("cannot use " + Quoted(file) + ": " + invalid.what());
}

}  // namespace Corvane::PathManagement::tool
