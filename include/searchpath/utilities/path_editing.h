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

// Adding folders to the main search path and taking them off it.
//
// Each operation reads the manager's list of folders once and replaces it in one call at the very
// end, or leaves it alone. It returns a message for each problem with a single folder:
// path_messages.h lists the messages, and `foundation::core::except::GetText` turns them into
// sentences.
//
// Threads: stateless; it is for the manager to keep two changes from overlapping, since one that
// comes between reading and replacing is lost.
// Errors: a manager that is being changed further up the call stack refuses the new list with
// `RecursivePathChangeException`: the path stays as it is, and the messages so far are returned.
// All else that the manager or the working folder throws passes through.
// Cost: linear in the folders given and those on the path; each given range is walked once.

/// Where added folders go. Any other value means `End`.
enum class Position : std::uint32_t {
  Begin = 0,  ///< before all that are on the path
  End = 1,    ///< behind them
};

/// The locations of `folders`, in their order. Each is converted before the next is looked at. A
/// folder that cannot be used is left out, and a message of `PathMessages::FolderCatalogue` about
/// it is appended to `notification`. The vector has room for as many as were given.
///
/// Errors: a failure that is not the folder's own (no working folder, an I/O error, an error of
/// unknown kind) reaches the caller as it was thrown, a `FailedToAbsolutizeException`.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<AbsoluteIRI> ConvertUstringRangeToAbsoluteIRIs(
    const UstringRange& folders, const current_working_folder::ICurrentWorkingFolder& cwf,
    foundation::core::except::Notification& notification);

/// As `AddIRIsToZentraPath`, for folders as users type them. When one of them cannot be used, none
/// is added and the manager is not asked.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification AddFoldersToZentraPath(
    const UstringRange& folders, const current_working_folder::ICurrentWorkingFolder& cwf,
    IMainSearchPathManager& manager, Position position);

/// Puts `iris` in front of the path or behind it, in their order, a repeated one at its first place
/// only. A folder that is on the path already is moved.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification AddIRIsToZentraPath(
    const AbsoluteIRIRange& iris, IMainSearchPathManager& manager, Position position);

/// As `RemoveIRIsFromZentraPath`, for folders as users type them. When one of them cannot be used,
/// none is removed and the manager is not asked.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification RemoveFoldersFromZentraPath(
    const UstringRange& folders, const current_working_folder::ICurrentWorkingFolder& cwf,
    IMainSearchPathManager& manager);

/// Takes each of `iris` off the path, wherever it occurs. One that is not on the path as it is
/// given is looked for by its canonical location; if that is not there either, the message
/// `PathMessages::NotOnPath` reports it, and the others are removed.
///
/// Errors: the disk's, for a folder whose canonical location cannot be determined.
/// Cost: a question to the disk for each folder that is not on the path as it is given.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification RemoveIRIsFromZentraPath(
    const AbsoluteIRIRange& iris, IMainSearchPathManager& manager);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_EDITING_H
