#ifndef SEARCHPATH_HOST_FOLDER_LIST_H
#define SEARCHPATH_HOST_FOLDER_LIST_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

#include <iosfwd>
#include <vector>

namespace Corvane::PathManagement::host {

/// The folders in a list with one folder or IRI on each line. Empty lines are left out; blanks are
/// part of the names. Such a list can name folders that a search-path string cannot, except those
/// with a line break in their names.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<ustring> ReadFolderList(std::istream& list);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_LIST_H
