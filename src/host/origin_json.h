#ifndef SEARCHPATH_SRC_HOST_ORIGIN_JSON_H
#define SEARCHPATH_SRC_HOST_ORIGIN_JSON_H

#include "json/json_text.h"
#include "searchpath/host/words.h"

#include <nlohmann/json.hpp>

namespace Corvane::PathManagement::host {

/// Adds "origin", "source" and, for a folder of a package, "package" to `object`.
inline void AddOrigin(nlohmann::ordered_json& object, const FolderOrigin& origin) {
  json::AddText(object, "origin", origin.folder);
  object["source"] = GetWord(origin.source);
  if (!origin.package) return;
  json::AddText(object["package"], "name", origin.package->name);
  json::AddText(object["package"], "version", origin.package->version);
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_ORIGIN_JSON_H
