#include "origin_output.h"

#include "output.h"
#include "package_output.h"
#include "words.h"

#include <nlohmann/json.hpp>

namespace Corvane::PathManagement::tool {

std::string GetOriginText(const Output& output, const host::Environment& environment,
                          const host::FolderOrigin& origin, const IPathEntry& folder) {
  using enum host::FolderSource;
  if (origin.source == StoredPath) return "from the stored path";
  if (origin.source == Cache) return "from the cache";
  if (origin.source == Package) return "from package " + output.GetShown(GetText(*origin.package));
  const bool isItself =
      environment.GetWorkingFolder().Locate(origin.folder) == folder.GetAbsoluteIRI();
  return isItself ? "" : "from --path " + output.GetShown(origin.folder);
}

void AddOrigin(nlohmann::ordered_json& object, const host::FolderOrigin& origin) {
  AddText(object, "origin", origin.folder);
  object["source"] = GetWord(origin.source);
  if (!origin.package) return;
  AddText(object["package"], "name", origin.package->name);
  AddText(object["package"], "version", origin.package->version);
}

}  // namespace Corvane::PathManagement::tool
