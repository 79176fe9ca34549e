#ifndef SEARCHPATH_UTILITIES_LISTED_PATH_H
#define SEARCHPATH_UTILITIES_LISTED_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement {

class IPath;

/// A folder that is not on disk, or not looked for there: what an archive, a database or a virtual
/// file system says that it holds.
struct ListedFolder {
  /// Where it is, of any scheme; its last name says what kind of folder it is.
  AbsoluteIRI location;
  /// The names of its files, in any order, with their extensions.
  std::vector<ustring> files = {};
  /// The folders directly below. Private, resources, "+" and "@" folders hang below this one; an
  /// ordinary folder is not searched, as on disk. To search it, list it beside this one.
  std::vector<ListedFolder> folders = {};
};

/// A search path of listed folders, in the order given. It answers as folders on disk with these
/// names do: the folders of the list are ordinary ones, whatever they are called, and those below
/// are of the kind that their name says.
///
/// Threads: all operations of the path, from any thread.
/// Cost: an index of all names is built when the first plain name is looked up, one for each way to
/// compare names; a look-up is then one hash probe for each extension, however many folders there
/// are.
[[nodiscard]] SEARCHPATH_EXPORT std::shared_ptr<const IPath> CreateListedPath(
    std::vector<ListedFolder> folders);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_LISTED_PATH_H
