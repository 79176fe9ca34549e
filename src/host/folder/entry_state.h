#ifndef SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H
#define SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H

#include "host/folder/folder_state.h"
#include "searchpath/host/folder_entry.h"

#include <memory>
#include <optional>

namespace Corvane::PathManagement::host {

// The states behind entries, for the parts of the host that work on many entries at once.

/// The state of the folder of `entry`; the entry owns it.
[[nodiscard]] inline FolderState& StateOf(const FolderEntry& entry) noexcept {
  return *entry.state;
}

/// An entry for the folder that `state` describes. `specialFolders` are the entries of its special
/// folders; when null, they are made from `state` when they are first asked for.
[[nodiscard]] std::shared_ptr<const FolderEntry> CreateEntry(
    std::unique_ptr<FolderState> state, std::unique_ptr<FolderEntries> specialFolders = nullptr);

/// An entry for a folder that is put on a path, like those of `FolderEntry::Create`. Its listings
/// come from `source`; from the disk when that is null. `limit` says how long to wait for the disk:
/// see `DiskPatience`.
[[nodiscard]] std::shared_ptr<const FolderEntry> CreateMainFolder(
    const AbsoluteIRI& location, std::shared_ptr<const ListingSource> source,
    DiskPatience::Limit limit = {});

/// Why `folder` itself cannot be searched, which does not concern links in it; empty when it can be.
/// Lists the folder.
[[nodiscard]] std::optional<FolderProblem> FindOwnProblem(const FolderEntry& folder);

/// Resolves the locations of all folders where that has not been done. A folder that several of
/// the locations lead through is resolved once.
void IdentifyAll(const FolderEntries& folders);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_ENTRY_STATE_H
