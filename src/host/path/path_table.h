#ifndef SEARCHPATH_SRC_HOST_PATH_PATH_TABLE_H
#define SEARCHPATH_SRC_HOST_PATH_PATH_TABLE_H

#include "listed/entry_table.h"
#include "searchpath/host/folder_entry.h"

namespace Corvane::PathManagement::host {

using PathTable = PathManagement::detail::EntryTable<FolderEntry>;

/// The table of `mainFolders` and of the special folders below them. Lists every one of these
/// folders.
[[nodiscard]] PathTable TableOf(const FolderEntries& mainFolders);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_PATH_TABLE_H
