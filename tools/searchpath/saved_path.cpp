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
    // By some rules, ordinary folders below the main folders are searched, too. The main folders
    // are among the folders searched, but `SaveListing` saves each location once.
    host::SaveListing(TextFromBytes(file), environment.GetMainFolders(),
                      environment.FindSearchedFolders());
  } catch (const std::exception& failure) {
    throw UsageError("cannot write the cache: " + std::string(failure.what()));
  }
  const bool failed = ReportProblems(environment, options);
  return failed ? Outcome::Failed : Outcome::Done;
}

}  // namespace Corvane::PathManagement::tool
