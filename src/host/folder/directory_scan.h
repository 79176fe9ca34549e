#ifndef SEARCHPATH_SRC_HOST_FOLDER_DIRECTORY_SCAN_H
#define SEARCHPATH_SRC_HOST_FOLDER_DIRECTORY_SCAN_H

#include "host/common/disk_patience.h"
#include "host/folder/folder_listing.h"
#include "searchpath/model/absolute_iri.h"

#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Corvane::PathManagement::host {

/// Lists the folder at `location` with one pass of directory reads: regular files and folders, also
/// those behind links. The disk is asked further only about links and about names whose type the
/// file system does not report. A folder that cannot be opened is empty; one that cannot be read to
/// its end holds what was read, and so is one that is given up.
[[nodiscard]] FolderListing ListFolder(const AbsoluteIRI& location, DiskPatience& patience);

// For listings that do not come from the disk:

/// Adds a folder that is not behind a link.
void AddSubfolder(FolderListing& listing, std::string_view name);

/// Finds out anew where the links in `listing` lead, which is that of the folder at the native path.
void AskLinks(const std::string& path, FolderListing& listing, DiskPatience& patience);

/// Adds the files and folders behind the links, and puts the folders in order: the last step.
void AddLinked(FolderListing& listing);

/// Whether `name` is "." or "..".
[[nodiscard]] bool IsDots(const char* name) noexcept;

/// Why the folder at `path` could not be opened or read, from the error of the system.
[[nodiscard]] current_working_folder::AbsolutizeError ReasonFor(std::error_code error,
                                                                const std::string& path);

/// Why the folder at `location` cannot be listed; empty when it can be opened.
[[nodiscard]] std::optional<current_working_folder::AbsolutizeError> ProbeFolder(
    const AbsoluteIRI& location, DiskPatience& patience);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_DIRECTORY_SCAN_H
