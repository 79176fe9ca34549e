#ifndef SEARCHPATH_HOST_FOLDER_LIST_H
#define SEARCHPATH_HOST_FOLDER_LIST_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

#include <istream>
#include <vector>

namespace Corvane::PathManagement::host {

/// The folders of a list that holds one folder or IRI a line; empty lines are dropped, nothing is
/// trimmed. Unlike a search-path string it can hold every folder but one whose name has a line
/// break.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<ustring> ReadFolderList(std::istream& list);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_LIST_H
