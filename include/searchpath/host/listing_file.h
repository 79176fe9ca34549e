#ifndef SEARCHPATH_HOST_LISTING_FILE_H
#define SEARCHPATH_HOST_LISTING_FILE_H

#include "searchpath/export.h"
#include "searchpath/host/path_entry_factory.h"
#include "searchpath/platform/filesystem.h"

namespace Corvane::PathManagement::host {

// Caches and saved listings as files. Folders below the one that holds the file are saved relative
// to it, so that a tree can be moved together with the file at its top.

/// Whether `file` is a regular file whose first line names the format of saved listings, in any
/// version.
[[nodiscard]] SEARCHPATH_EXPORT bool IsListingFile(const fl::filesystem::path& file);

/// Reads a cache or saved listing, to be used as `use` says.
///
/// Errors: `InvalidListingException`, also for a file that cannot be opened or is not a regular
/// one: a FIFO is refused without waiting for it.
[[nodiscard]] SEARCHPATH_EXPORT PathEntryFactory
LoadListing(const fl::filesystem::path& file, ListingUse use = ListingUse::WhileFresh);

/// Saves the listings of `mainFolders`, of `furtherFolders`, and of all special folders below them;
/// lists those that have not been listed. Only `mainFolders` become the main folders of the saved
/// path, the folders on the path itself. Replaces the file in one step, as `WriteToolboxPathCache`
/// does.
///
/// Errors: `std::system_error`, which says what failed; `std::length_error` for more than a file
/// can hold. The old file then stays as it was.
SEARCHPATH_EXPORT void SaveListing(const fl::filesystem::path& file,
                                   const FolderEntries& mainFolders,
                                   const FolderEntries& furtherFolders = {});

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_LISTING_FILE_H
