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
    std::shared_ptr<const Link> before;  // the last link on the way to this one; null for the first
  };

  std::shared_ptr<const FolderEntry> entry;
  std::shared_ptr<const Link> links;  // the last one on the way; null when there is none

  /// The folders directly below, whatever their names, in the order of the bytes of these. Leaves
  /// out a link to a folder on the way here, or to one above that: a walk would go in circles.
  /// Lists the folder if that has not been done.
  [[nodiscard]] std::vector<TreeFolder> FindBelow() const;
  /// The last part of its location, in bytes.
  [[nodiscard]] std::string GetName() const;
};

/// Remembers the folders below folders, so that every walk meets the same tree.
///
/// Threads: all operations, from any thread.
class RememberedTree {
 public:
  /// What `folder.FindBelow()` has returned when it was first asked for here.
  [[nodiscard]] std::vector<TreeFolder> Below(const TreeFolder& folder);

 private:
  std::mutex mutex;  // guards what follows
  // By folder: those below it.
  boost::unordered_flat_map<std::shared_ptr<const FolderEntry>, std::vector<TreeFolder>> known;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_TREE_FOLDER_H
