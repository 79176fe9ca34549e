#ifndef SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H
#define SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H

#include "host/folder/folder_state.h"
#include "searchpath/host/folder_entry.h"

#include <memory>

namespace Corvane::PathManagement::host {

// Entries and what stands behind them, for the parts of the host that work on many at once.

/// What is known of the folder of `entry`, which owns it.
[[nodiscard]] inline FolderState& StateOf(const FolderEntry& entry) noexcept {
  return *entry.state;
}

/// An entry for the folder that `state` describes. Its special folders are `specialFolders`, or
/// those of `state` when that is null.
[[nodiscard]] std::shared_ptr<const FolderEntry> CreateEntry(
    std::unique_ptr<FolderState> state, std::unique_ptr<FolderEntries> specialFolders = nullptr);

/// An entry for a folder that is put on a path, as `FolderEntry::Create` makes it, with the listings
/// of `source`; null means the disk. `limit` says how long the disk is waited for.
[[nodiscard]] std::shared_ptr<const FolderEntry> CreateMainFolder(
    const AbsoluteIRI& location, std::shared_ptr<const ListingSource> source,
    DiskPatience::Limit limit = {});

/// Resolves the links of all folders where that has not been done; what they have in common once.
void IdentifyAll(const FolderEntries& folders);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H
