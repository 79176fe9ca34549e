#ifndef SEARCHPATH_MODEL_CONSTANTS_H
#define SEARCHPATH_MODEL_CONSTANTS_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement {

/// The separators in search paths, and the names of folders that have a meaning there. Ready before
/// any static that is defined after this header is included.
///
/// Threads: read-only.
struct SEARCHPATH_EXPORT Constants {
  /// Separates the folders of one pathname.
  static inline const ustring PathnameSeparatorStr = u"/";
  /// Separates the folders of a search-path string, beside ";".
  static inline const ustring ZentraPathsepStr = u":";
  /// A folder of this name is visible from the folder above it only.
  static inline const ustring PrivateFolderStr = u"private";
  /// A folder of this name holds data of the folder above it.
  static inline const ustring ResourcesFolderStr = u"resources";
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_CONSTANTS_H
