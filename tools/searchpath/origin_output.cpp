#include "origin_output.h"

#include "output.h"
#include "package_output.h"
#include "search_path.h"

namespace Corvane::PathManagement::tool {

namespace {

// Whether `typed` denotes `folder`. False when `typed` has no location, as "~nobody" without such a
// user: some rules take it as the name of a folder.
bool IsDenotedBy(const IPathEntry& folder, const ustring& typed,
                 const host::Environment& environment) {
  try {
    return environment.GetWorkingFolder().Locate(typed) == folder.GetAbsoluteIRI();
  } catch (const current_working_folder::FailedToAbsolutizeException&) {
    return false;
  }
}

}  // namespace

std::string GetOriginText(const Output& output, const PathOptions& options,
                          const host::Environment& environment, const host::FolderOrigin& origin,
                          const IPathEntry& folder) {
  using enum host::FolderSource;
  if (origin.source == StoredPath) return "from the stored path";
  if (origin.source == Cache) return "from the cache";
  if (origin.source == Package) return "from package " + output.GetShown(GetText(*origin.package));
  if (origin.folder.empty()) return "from an empty part of the path";
  if (IsDenotedBy(folder, origin.folder, environment)) return "";
  const std::string option = options.GetPathOption();
  // In "from --profile c: lib", the option has a value of its own before the folder.
  return "from " + option + (option == "--path" ? " " : ": ") + output.GetShown(origin.folder);
}

}  // namespace Corvane::PathManagement::tool
