#ifndef SEARCHPATH_SRC_HOST_PATH_HIDDEN_FOLDERS_H
#define SEARCHPATH_SRC_HOST_PATH_HIDDEN_FOLDERS_H

#include "host/common/held_hash.h"
#include "searchpath/host/folder_expansion.h"
#include "searchpath/host/folder_path.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// Folders that are hidden from a path, as the entry filter of a `FilteredPath`.
///
/// An entry of another path is on this one when it is for such a folder or has been reached through
/// one: as a special folder below it, or as any folder where folders are expanded. That a link in
/// such a folder leads to the entry's own does not matter: it has been reached in another way.
///
/// Cost: lists no folder; one hash probe for most entries.
class HiddenFolders : public FolderPath {
 public:
  HiddenFolders(std::vector<std::shared_ptr<const FolderEntry>> folders,
                FolderExpansion folderExpansion);

  [[nodiscard]] bool IsEntryOnPath(const IPathEntry& entry) const override;

  /// Which of the folders hides `entry`, by number; empty when none does.
  [[nodiscard]] std::optional<std::size_t> FindHider(const IPathEntry& entry) const;

 private:
  [[nodiscard]] std::optional<std::size_t> FindAtOrAbove(AbsoluteIRI folder) const;

  FolderExpansion expansion;
  boost::unordered_flat_map<AbsoluteIRI, std::size_t, HeldHash> numbers;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_HIDDEN_FOLDERS_H
