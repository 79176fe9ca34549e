#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_LISTING_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_LISTING_H

#include "host/folder/folder_stamp.h"
#include "host/names/name_block.h"
#include "searchpath/model/path_entry_type.h"
#include "searchpath/platform/current_working_folder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::host {

/// What a link led to when it was asked.
enum class LinkTarget : std::uint8_t { Neither = 0, File = 1, Folder = 2 };

/// What one pass over a folder found.
struct FolderListing {
  struct Subfolder {
    std::string name;
    PathEntryType kind;
    bool isLink;
  };
  /// A link, or an item whose type the file system does not tell.
  struct Link {
    std::string name;
    LinkTarget target;
  };

  NameBlock files;                         // in the order of the disk, those behind links last
  std::vector<Subfolder> specialFolders;   // in path order
  std::vector<Subfolder> ordinaryFolders;  // in the order of their bytes
  std::vector<Link> links;                 // those that lead to files and folders are also there
  std::optional<FolderStamp> stamp;        // taken before the pass; empty when it tells nothing
  std::optional<current_working_folder::AbsolutizeError> problem;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_LISTING_H
