#ifndef SEARCHPATH_UTILITIES_PATH_EDITING_H
#define SEARCHPATH_UTILITIES_PATH_EDITING_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/any_range_adapter.h"
#include "searchpath/platform/current_working_folder.h"
#include "searchpath/platform/main_search_path_manager.h"
#include "searchpath/platform/notification.h"

#include <cstdint>
#include <vector>

namespace Corvane::PathManagement {

// Adds folders to the main search path, and removes folders from it. "The Zentra path" in names,
// and "the path" in comments, mean that path: the one that the manager holds.
//
// Each operation reads the manager's list of folders once, and replaces the list in one call at the
// very end or leaves it alone. It returns a message for each problem with a single folder:
// path_messages.h lists the messages, and `foundation::core::except::GetText` turns them into
// sentences.
//
// Threads: stateless, but not atomic: a change that another thread makes between the reading and
// the replacing is lost. Callers who edit one path from several threads need a lock of their own.
// Errors: the manager refuses the new list with `RecursivePathChangeException` when a change of the
// path is under way further up the call stack; the path then stays as it is, and the messages so
// far are returned. Other exceptions of the manager or the working folder pass through.
// Cost: linear in the folders given and those on the path; each given range is walked once.

/// Where added folders go. Any other value means `End`.
enum class Position : std::uint32_t {
  Begin = 0,  ///< before the folders that are on the path
  End = 1,    ///< after them
};

/// The locations of `folders`, in the same order, as `workingFolder` gives them. Each folder is
/// converted before the next one is read from the range. A folder that cannot be used is left out,
/// and a message of `PathMessages::FolderCatalogue` about it is appended to `notification`. The
/// capacity of the vector is at least the number of `folders`.
///
/// Errors: a failure that is not the folder's own (no working folder, an I/O error, no answer in
/// time, an unknown error) passes through: it is the `FailedToAbsolutizeException` of
/// `workingFolder`.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<AbsoluteIRI> ConvertUstringRangeToAbsoluteIRIs(
    const UstringRange& folders, const current_working_folder::ICurrentWorkingFolder& workingFolder,
    foundation::core::except::Notification& notification);

/// As `AddIRIsToZentraPath`, for folders as users type them; `workingFolder` makes them absolute.
/// When one of them cannot be used, none is added and the manager is not called.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification AddFoldersToZentraPath(
    const UstringRange& folders, const current_working_folder::ICurrentWorkingFolder& workingFolder,
    IMainSearchPathManager& manager, Position position);

/// Puts `iris` before or after the folders of the path, in the order given. Of a folder that is
/// given several times, only the first occurrence counts. A folder that is already on the path is
/// moved.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification AddIRIsToZentraPath(
    const AbsoluteIRIRange& iris, IMainSearchPathManager& manager, Position position);

/// As `RemoveIRIsFromZentraPath`, for folders as users type them; `workingFolder` makes them
/// absolute. When one of them cannot be used, none is removed and the manager is not called.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification RemoveFoldersFromZentraPath(
    const UstringRange& folders, const current_working_folder::ICurrentWorkingFolder& workingFolder,
    IMainSearchPathManager& manager);

/// Removes each of `iris` from the path, wherever it occurs. One that is not on the path is looked
/// for a second time, by its canonical location; the folders of the path are compared as the path
/// has them. When the second search finds nothing either, the message `PathMessages::NotOnPath`
/// reports that folder, and all others are still removed.
///
/// Errors: `foundation::storage::vfs::Exception` when a canonical location cannot be determined.
/// Cost: accesses the disk for each of `iris` that is not on the path as given.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification RemoveIRIsFromZentraPath(
    const AbsoluteIRIRange& iris, IMainSearchPathManager& manager);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_EDITING_H
