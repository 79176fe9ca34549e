#ifndef SEARCHPATH_SRC_HOST_PATH_HIDDEN_FOLDERS_H
#define SEARCHPATH_SRC_HOST_PATH_HIDDEN_FOLDERS_H

#include "host/common/held_hash.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/folder_expansion.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// Folders that are hidden from a path: the path has them, but look-ups do not find their files.
///
/// A hidden folder hides the entries for it, and the entries that were reached through it: those
/// for the special folders below it ("+", "@", private, resources) and, under
/// `FolderExpansion::Recursive`, for all folders below it. A link in a hidden folder does not hide
/// its target: an entry for the target that was reached in another way is shown.
///
/// Threads: all operations, from any thread.
/// Cost: lists no folder; one hash probe for most entries.
class HiddenFolders {
 public:
  HiddenFolders(FolderEntries hiddenFolders, FolderExpansion folderExpansion);

  /// The hidden folders, as they were handed over.
  [[nodiscard]] const FolderEntries& GetFolders() const noexcept { return folders; }

  /// The index in `GetFolders` of the folder that hides `entry`; `nullopt` when none does.
  [[nodiscard]] std::optional<std::size_t> FindHider(const IPathEntry& entry) const;

 private:
  /// The index of the hidden folder that is `folder`, or that `folder` belongs to; `nullopt` when
  /// there is none. `folder` is a canonical location.
  [[nodiscard]] std::optional<std::size_t> FindAtOrAbove(AbsoluteIRI folder) const;

  FolderEntries folders;
  FolderExpansion expansion;
  boost::unordered_flat_map<AbsoluteIRI, std::size_t, HeldHash>
      indices;  // in folders, by canonical location
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_HIDDEN_FOLDERS_H
