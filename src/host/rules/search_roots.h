#ifndef SEARCHPATH_SRC_HOST_RULES_SEARCH_ROOTS_H
#define SEARCHPATH_SRC_HOST_RULES_SEARCH_ROOTS_H

#include "host/common/disk_patience.h"
#include "searchpath/host/folder_entry.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

class ListingSource;

/// The folders below which relative names are looked up, in order. A root is the index of one.
class SearchRoots {
 public:
  /// Listings come from `listingSource`; from the disk when that is null.
  SearchRoots(FolderEntries rootFolders, std::shared_ptr<const ListingSource> listingSource);

  /// "/" as the only root, for folders that may be on any disk. `limit` says how long to wait for
  /// the disk: see `DiskPatience`.
  [[nodiscard]] static SearchRoots OfFileSystem(DiskPatience::Limit limit);
  /// Whether each folder is waited for on its own, since they may be on different disks. Otherwise
  /// a root is given up with all folders below it.
  [[nodiscard]] bool AreOnManyDisks() const noexcept { return areOnManyDisks; }

  [[nodiscard]] std::size_t size() const noexcept { return folders.size(); }
  [[nodiscard]] const FolderEntries& GetFolders() const noexcept { return folders; }

  /// The native path of the folder, or file, called `relative` below a root; for "", that of the
  /// root, ended by "/".
  [[nodiscard]] std::string PathOf(std::size_t root, std::string_view relative) const;

  /// The same folders, with new entries that remember nothing. A folder about which the disk has
  /// not answered in time keeps its entry, so that nobody waits for it again.
  [[nodiscard]] SearchRoots WithEntriesAnew() const;

  /// Whether there is a folder at a root, searchable or not. No when the disk does not say so in
  /// time.
  [[nodiscard]] bool IsFolder(std::size_t root) const;

  /// An entry for the folder called `relative` below a root; the root's own entry when
  /// `relative` is empty.
  [[nodiscard]] std::shared_ptr<const FolderEntry> CreateFolder(std::size_t root,
                                                                std::string_view relative) const;

 private:
  FolderEntries folders;
  std::vector<std::string> paths;  // native, each ended by "/"
  std::shared_ptr<const ListingSource> source;
  bool areOnManyDisks = false;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_SEARCH_ROOTS_H
