#ifndef SEARCHPATH_SRC_HOST_RULES_TREE_FOLDER_H
#define SEARCHPATH_SRC_HOST_RULES_TREE_FOLDER_H

#include "searchpath/host/folder_entry.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// A folder below a folder of a path, and the links on the way to it.
struct TreeFolder {
  struct Link {
    AbsoluteIRI target;  // canonical
    std::shared_ptr<const Link> before;
  };

  std::shared_ptr<const FolderEntry> entry;
  std::shared_ptr<const Link> links;  // null when there are none

  /// The folders directly below, whatever their names are, in the order of the bytes of their names.
  /// A link that leads back to a folder on the way to it is left out. Lists the folder.
  [[nodiscard]] std::vector<TreeFolder> FindBelow() const;
  /// Its own name.
  [[nodiscard]] std::string GetName() const;
};

/// Remembers what stands below folders, so that a tree which is walked again is the same one.
///
/// Threads: all operations, from any thread.
class RememberedTree {
 public:
  /// As `TreeFolder::FindBelow` when it was first asked for.
  [[nodiscard]] std::vector<TreeFolder> Below(const TreeFolder& folder);

 private:
  std::mutex mutex;  // guards what follows
  boost::unordered_flat_map<std::shared_ptr<const FolderEntry>, std::vector<TreeFolder>> known;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_TREE_FOLDER_H
