#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_FOLDER_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_FOLDER_SEARCH_H

#include "searchpath/host/folder_lookup.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/path.h"

namespace Corvane::PathManagement::host {

/// As `Environment::FindFolders`.
[[nodiscard]] PathEntries FindFoldersNamed(const IPath& path, const WorkingFolder& workingFolder,
                                           const FolderLookup& lookup);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_FOLDER_SEARCH_H
