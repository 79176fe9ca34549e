#ifndef SEARCHPATH_HOST_NAME_CHANGES_H
#define SEARCHPATH_HOST_NAME_CHANGES_H

#include "searchpath/export.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/ustring.h"

#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// A name that means different files on two paths, or at two times. At least one file is set.
struct NameChange {
  /// The name with its extension; from `Receipt::Verify`, the name as it was asked for.
  ustring name;
  std::optional<FoundItem> before;  ///< empty: the name is new
  std::optional<FoundItem> after;   ///< empty: the name is gone
};

/// All file names, with their extensions, that mean another file on `after` than on `before`, in
/// the order of their bytes; names that differ in case are different names. Two files of one name
/// are the same when their folders are, by canonical location; contents do not matter. Only files
/// of main folders, those on the path itself, are compared: files of special folders are not found
/// by a name without separators.
///
/// Errors: `std::length_error` for more than 2^32 - 1 such names.
/// Cost: lists the main folders of both paths and reads each name once. Takes some 100 bytes of
/// memory for each name in folders that are new, gone, moved or changed; folders whose entries are
/// the same objects in the same order on both paths take none, see `ShareUnchangedFolders`.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<NameChange> FindNameChanges(const FolderPath& before,
                                                                        const FolderPath& after);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_NAME_CHANGES_H
