#include "saved_path.h"

#include "command_line.h"
#include "progress.h"
#include "searchpath/host/listing_file.h"
#include "searchpath/model/byte_text.h"

#include <exception>

namespace Corvane::PathManagement::tool {

Outcome SavePath(const host::Environment& environment, const PathOptions& options,
                 const std::string& file) {
  try {
    const Progress progress(options.quiet);
    // The main folders, those on the path itself, are saved with their special folders. Some rules
    // also search other folders below the main folders; those are saved, too.
    host::SaveListing(TextFromBytes(file), environment.GetMainFolders(),
                      environment.FindSearchedFolders());
  } catch (const std::exception& failure) {
    throw UsageError("cannot write the cache: " + std::string(failure.what()));
  }
  const bool failed = ReportProblems(environment, options);
  return failed ? Outcome::Failed : Outcome::Found;
}

}  // namespace Corvane::PathManagement::tool
