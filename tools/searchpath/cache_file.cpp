#include "cache_file.h"

#include "command_line.h"
#include "output.h"
#include "progress.h"
#include "searchpath/model/byte_text.h"

#include <exception>

namespace Corvane::PathManagement::tool {

bool IsListing(const std::string& file) { return host::IsListingFile(TextFromBytes(file)); }

host::PathEntryFactory ReadListing(const std::string& file, host::ListingUse use) try {
  return host::LoadListing(TextFromBytes(file), use);
} catch (const host::InvalidListingException& invalid) {
  throw UsageError("cannot use " + Quoted(file) + ": " + invalid.what());
}

bool SavePath(const host::Environment& environment, const PathOptions& options,
              const std::string& file) {
  try {
    const Progress progress(options.quiet);
    host::SaveListing(TextFromBytes(file), environment.GetMainFolders());
  } catch (const std::exception& failure) {
    throw UsageError("cannot write the cache: " + std::string(failure.what()));
  }
  return ReportProblems(environment, options);
}

}  // namespace Corvane::PathManagement::tool
