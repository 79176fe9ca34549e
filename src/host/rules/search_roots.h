#ifndef SEARCHPATH_SRC_HOST_RULES_SEARCH_ROOTS_H
#define SEARCHPATH_SRC_HOST_RULES_SEARCH_ROOTS_H

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

  [[nodiscard]] std::size_t size() const noexcept { return folders.size(); }
  [[nodiscard]] const FolderEntries& GetFolders() const noexcept { return folders; }

  /// The native path of the folder, or file, called `relative` below a root; for "", that of the
  /// root, ended by "/".
  [[nodiscard]] std::string PathOf(std::size_t root, std::string_view relative) const;

  /// The same folders, with new entries that remember nothing. A folder about which the disk has
  /// not answered in time keeps its entry, so that nobody waits for it again.
  [[nodiscard]] SearchRoots WithEntriesAnew() const;

  /// Whether there is a folder at a root, searchable or not.
  [[nodiscard]] bool IsFolder(std::size_t root) const;

  /// An entry for the folder called `relative` below a root; the root's own entry when
  /// `relative` is empty.
  [[nodiscard]] std::shared_ptr<const FolderEntry> CreateFolder(std::size_t root,
                                                                std::string_view relative) const;

 private:
  FolderEntries folders;
  std::vector<std::string> paths;  // native, each ended by "/"
  std::shared_ptr<const ListingSource> source;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RULES_SEARCH_ROOTS_H
