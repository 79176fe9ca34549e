#ifndef SEARCHPATH_HOST_FOLDER_EXPANSION_H
#define SEARCHPATH_HOST_FOLDER_EXPANSION_H

#include <cstdint>

namespace Corvane::PathManagement::host {

/// How the folders that an `Environment` is given become its path.
enum class FolderExpansion : std::uint8_t {
  Alone,      ///< each folder by itself
  Recursive,  ///< each folder and all ordinary folders below it, see `CreateFolderTree`
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_EXPANSION_H
