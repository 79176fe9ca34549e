#ifndef SEARCHPATH_HOST_NAME_CHANGES_H
#define SEARCHPATH_HOST_NAME_CHANGES_H

#include "searchpath/export.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"

#include <boost/optional.hpp>

#include <vector>

namespace Corvane::PathManagement::host {

/// A file name that means another file on one path than on another. Never both empty.
struct NameChange {
  ustring name;
  boost::optional<FoundItem> before;  ///< empty: the name is new
  boost::optional<FoundItem> after;   ///< empty: the name is gone
};

/// All plain file names, extension and all, that mean another file on `after` than on `before`, in
/// the order of their bytes. They are told apart as the file system does. A file is another one when
/// it stands in another folder, whatever location that was given as; what is in it is not asked. What
/// "@" folders hold has no plain name.
///
/// Errors: `std::length_error` for more than 2^32 - 1 such names.
/// Cost: lists the main folders of both paths and reads each name once; some 100 bytes for each name
/// in folders that are new, gone, moved or changed. Folders whose entries are the same objects on
/// both paths, in the same order, cost no more, see `ShareUnchangedFolders`.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<NameChange> FindNameChanges(const FolderPath& before,
                                                                        const FolderPath& after);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_NAME_CHANGES_H
