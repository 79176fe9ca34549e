#ifndef SEARCHPATH_HOST_FOLDER_LOOKUP_H
#define SEARCHPATH_HOST_FOLDER_LOOKUP_H

#include "searchpath/model/any_text.h"
#include "searchpath/model/filename_matching_policy.h"

namespace Corvane::PathManagement::host {

/// A folder as a user names it, and how the name is to be read.
struct FolderLookup {
  /// A full pathname, or a partial pathname: the last folders of the location.
  AnyText name;
  /// How the name is compared with those of folders.
  FilenameMatchingPolicy policy = FilenameMatchingPolicy::FileSystemDefault;
  /// Whether a partial pathname is taken as written: the "+" of a folder cannot be left out, and
  /// the folder above its first part must be an ordinary one.
  bool isLiteral = false;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_LOOKUP_H
