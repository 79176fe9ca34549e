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

/// Lists the folder at `location` with one pass of directory reads: regular files and folders, and
/// links to files and folders. The disk is asked further only about names that are neither, such
/// as links, or whose type the file system does not report. The listing has a problem, and is empty, when the folder
/// cannot be opened or is given up. When the folder cannot be read to its end, the listing has a
/// problem, and holds what was read.
[[nodiscard]] FolderListing ListFolder(const AbsoluteIRI& location, DiskPatience& patience);

/// The same without the files.
[[nodiscard]] FolderListing ListSubfolders(const AbsoluteIRI& location, DiskPatience& patience);

// The next three functions complete a listing that does not come from the disk; `ListFolder` does
// the same itself.

/// Adds a subfolder that is a folder itself, not a link to one.
void AddSubfolder(FolderListing& listing, std::string_view name);

/// Asks the disk anew where the links in `listing` lead. `path` is the native path of the folder
/// that was listed. When the folder is given up, `listing` stays as it is.
void AskLinks(const std::string& path, FolderListing& listing, DiskPatience& patience);

/// The last step: adds the links that lead to files and folders to those, and puts the folders in
/// order.
void AddLinked(FolderListing& listing);

/// Whether `name` is "." or "..".
[[nodiscard]] bool IsDots(const char* name) noexcept;

/// Why the folder at `path` could not be opened or read, when the system reports `error`. Asks the
/// disk once more only to tell a broken link from a folder that does not exist.
[[nodiscard]] current_working_folder::AbsolutizeError ReasonFor(std::error_code error,
                                                                const std::string& path);

/// Why the folder at `location` cannot be listed; `nullopt` when it can be opened.
[[nodiscard]] std::optional<current_working_folder::AbsolutizeError> ProbeFolder(
    const AbsoluteIRI& location, DiskPatience& patience);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_DIRECTORY_SCAN_H
