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
/// Errors: `InvalidListingException`, also for a file that cannot be opened, and for anything that
/// is not a regular file: a FIFO is refused without waiting for its writer.
[[nodiscard]] SEARCHPATH_EXPORT PathEntryFactory
LoadListing(const fl::filesystem::path& file, ListingUse use = ListingUse::WhileFresh);

/// Saves the listings of `mainFolders` and all special folders below them, and of `furtherFolders`
/// alone. Folders that have not been listed are listed. A location that occurs several times among
/// all these folders is saved once. Only `mainFolders` are the path that is saved; `furtherFolders`
/// are not on it, but some rules search them. Replaces the file in one step, as
/// `WriteToolboxPathCache` does.
///
/// Errors: `std::system_error`, which says what failed; `std::length_error` for more than a file
/// can hold. The old file then stays as it was.
SEARCHPATH_EXPORT void SaveListing(const fl::filesystem::path& file,
                                   const FolderEntries& mainFolders,
                                   const FolderEntries& furtherFolders = {});

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_LISTING_FILE_H
