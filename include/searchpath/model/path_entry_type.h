#ifndef SEARCHPATH_MODEL_PATH_ENTRY_TYPE_H
#define SEARCHPATH_MODEL_PATH_ENTRY_TYPE_H

#include <cstdint>

namespace Corvane::PathManagement {

/// The kind of a folder. The numbers never change: scopes and stored data hold them. 4 stays
/// unused.
enum class PathEntryType : std::uint32_t {
  Ordinary = 0,         ///< any folder that is none of the others
  PlusFolder = 1,       ///< its name begins with "+": a package
  AtFolder = 2,         ///< its name begins with "@": the methods of a class
  PrivateFolder = 3,    ///< `Constants::PrivateFolderStr`: for the folder above it only
  ResourcesFolder = 5,  ///< `Constants::ResourcesFolderStr`: data, which look-ups leave out
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_PATH_ENTRY_TYPE_H
