#ifndef SEARCHPATH_SRC_HOST_RULES_TREE_WALK_H
#define SEARCHPATH_SRC_HOST_RULES_TREE_WALK_H

#include "host/rules/ruled_path.h"
#include "searchpath/host/folder_entry.h"

#include <functional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// The folders of one relative name below several roots.
struct MergedFolder {
  std::string name;                 // empty for the roots themselves, else ended by "/"
  std::vector<TreeFolder> folders;  // in the order of the roots; they have been listed
};

/// The folders of `path` that count, in order: neither hidden nor repeats.
[[nodiscard]] std::vector<TreeFolder> FindRoots(const RuledPath& path);

/// Calls visit(folder) for each root and, where names with a separator are searched below it, for
/// each folder below it, in the order of the roots and then of the names, until it returns true.
bool WalkTrees(const RuledPath& path, const std::function<bool(const TreeFolder&)>& visit);

/// Calls visit(folder) for each relative folder, on all processors; names that stand below one root
/// alone are left out when `sharedOnly` is set.
void WalkMerged(const RuledPath& path, bool sharedOnly,
                const std::function<void(const MergedFolder&)>& visit);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_TREE_WALK_H
