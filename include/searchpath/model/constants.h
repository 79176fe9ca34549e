#ifndef SEARCHPATH_MODEL_CONSTANTS_H
#define SEARCHPATH_MODEL_CONSTANTS_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement {

/// The separators of pathnames and search paths, and the folder names that have a meaning on a
/// search path. They are initialised before all static variables that a source file defines after
/// including this header.
///
/// Threads: read-only.
struct SEARCHPATH_EXPORT Constants {
  /// Separates the folders in a pathname.
  static inline const ustring PathnameSeparatorStr = u"/";
  /// Separates the folders of a search-path string, as ";" does, too. "Zentra path" in names means
  /// a search path.
  static inline const ustring ZentraPathsepStr = u":";
  /// The files of a folder of this name are visible only from the folder above it.
  static inline const ustring PrivateFolderStr = u"private";
  /// A folder of this name holds data of the folder above it.
  static inline const ustring ResourcesFolderStr = u"resources";
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_CONSTANTS_H
