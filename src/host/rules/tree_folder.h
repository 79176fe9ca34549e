#ifndef SEARCHPATH_SRC_HOST_RULES_TREE_FOLDER_H
#define SEARCHPATH_SRC_HOST_RULES_TREE_FOLDER_H

#include "searchpath/host/folder_entry.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// A folder of a path, or one below it, and the links on the way to it.
struct TreeFolder {
  struct Link {
    AbsoluteIRI target;                  // canonical
    std::shared_ptr<const Link> before;  // the one above it on the way; null for the first
  };

  std::shared_ptr<const FolderEntry> entry;
  std::shared_ptr<const Link> links;  // the last one on the way; null when there is none

  /// The folders directly below, special ones too, in the order of the bytes of their names. A link
  /// to a folder on the way here, or above one, is left out: a walk would go in circles. Lists the
  /// folder.
  [[nodiscard]] std::vector<TreeFolder> FindBelow() const;
  /// The last part of its location, in bytes.
  [[nodiscard]] std::string GetName() const;
};

/// Remembers the folders below folders, so that every walk meets the same tree.
///
/// Threads: all operations, from any thread.
class RememberedTree {
 public:
  /// What `folder.FindBelow()` returned when it was first needed here.
  [[nodiscard]] std::vector<TreeFolder> Below(const TreeFolder& folder);

 private:
  std::mutex mutex;  // guards what follows
  boost::unordered_flat_map<std::shared_ptr<const FolderEntry>, std::vector<TreeFolder>> known;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_TREE_FOLDER_H
