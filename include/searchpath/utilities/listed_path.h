#ifndef SEARCHPATH_UTILITIES_LISTED_PATH_H
#define SEARCHPATH_UTILITIES_LISTED_PATH_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/ustring.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement {

class IPath;

/// A folder whose content is given as a list, for example by an archive, a database or a virtual
/// file system. It is not looked for on disk.
struct ListedFolder {
  /// Where the folder is, an IRI of any scheme. The last name in it gives the kind of a folder that
  /// is below another one.
  AbsoluteIRI location;
  /// The names of its files, in any order, with their extensions.
  std::vector<ustring> files = {};
  /// The private, resources, "+" and "@" folders directly below. An ordinary folder in this list is
  /// not searched, as on disk: to search it, list it beside this one instead.
  std::vector<ListedFolder> folders = {};
};

/// A search path of `folders`, in the order given. It answers as a path of folders on disk with
/// these names would: `folders` themselves are ordinary, whatever their names are, and the folders
/// below them are of the kind that their name gives.
///
/// Threads: all operations of the path, from any thread.
/// Cost: the first look-up of a name without separators builds an index of all files; another way
/// to compare names needs an index of its own. After that, a look-up is one hash probe for each
/// extension, however many folders there are.
[[nodiscard]] SEARCHPATH_EXPORT std::shared_ptr<const IPath> CreateListedPath(
    std::vector<ListedFolder> folders);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_LISTED_PATH_H
