#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_WALK_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_WALK_H

#include "listed/entry_walk.h"

#include <memory>

namespace Corvane::PathManagement::host {

/// Calls visit(folder, depth) as `WalkEntries` does: for `top` and the special folders below it, at
/// any depth, until a call returns true. Returns whether one did. Ordinary folders below `top` are
/// not visited. Lists each folder after its visit.
template <class Folder, class Visit>
bool WalkFolders(const std::shared_ptr<const Folder>& top, const Visit& visit) {
  return PathManagement::detail::WalkEntries(
      top, visit, [](const Folder& folder) -> const auto& { return folder.GetSpecialFolders(); });
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_WALK_H
