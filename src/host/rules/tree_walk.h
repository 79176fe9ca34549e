#ifndef SEARCHPATH_SRC_HOST_RULES_TREE_WALK_H
#define SEARCHPATH_SRC_HOST_RULES_TREE_WALK_H

#include "host/rules/ruled_path.h"
#include "searchpath/host/folder_entry.h"

#include <functional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// The folders of one relative name below several folders of a path, the roots.
struct MergedFolder {
  std::string name;                 // "" for the roots themselves, else ended by "/"
  std::vector<TreeFolder> folders;  // in the order of the roots; they have been listed
};

/// The folders of `path` that are searched, in order: neither hidden nor repeats.
[[nodiscard]] std::vector<TreeFolder> FindRoots(const RuledPath& path);

/// Calls visit(folder) for each folder of `FindRoots` and, where names with a separator are
/// searched below the path, for all folders below it. Visits a folder before those below it, in the
/// order of the path and then of names, until a visit returns true. Returns whether one did.
bool WalkTrees(const RuledPath& path, const std::function<bool(const TreeFolder&)>& visit);

/// Merges the folders that `WalkTrees` visits by their relative names, and calls visit(merged) for
/// each name, from several threads at once. With `sharedOnly`, leaves out the names that only one
/// root has.
void WalkMerged(const RuledPath& path, bool sharedOnly,
                const std::function<void(const MergedFolder&)>& visit);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_TREE_WALK_H
