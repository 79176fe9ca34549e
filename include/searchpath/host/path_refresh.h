#ifndef SEARCHPATH_HOST_PATH_REFRESH_H
#define SEARCHPATH_HOST_PATH_REFRESH_H

#include "searchpath/export.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/any_range_adapter.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

// Two versions of a path share the entries of unchanged folders, so that comparing objects shows
// what has changed.
//
// A folder is unchanged when it is the same folder with files of the same names and the same
// problem, if any, and when every special folder below it is unchanged. The order in which the disk
// lists them does not count, nor do ordinary folders, to which no path leads, nor the contents of
// files. An entry that has not been listed is unchanged, too: there is nothing that could differ.

/// The main folders of a path that has the folders at `locations`, in this order, and follows one
/// of `oldFolders`. A location of the old path keeps its entry; where a location is repeated, so
/// are its old entries, as far as there are any. The other locations get entries that have not been
/// listed.
///
/// Cost: asks the disk nothing.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
RearrangeFolders(const FolderEntries& oldFolders, const std::vector<AbsoluteIRI>& locations);

/// `oldFolders` as they are now. Those that have been listed are listed again. A folder that has
/// changed gets a new entry, which shares the entries of unchanged folders below it.
///
/// Cost: that of listing, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries RefreshFolders(const FolderEntries& oldFolders);

/// `folders`, where every unchanged folder has its entry of `oldFolders`, below changed folders,
/// too. For two paths that were made independently, from a saved listing for instance. A folder is
/// found on the old path by its location, else by its canonical location. Where a folder is
/// repeated, each of its old entries is taken once.
///
/// Cost: lists the folders that are on both paths, unless neither of their entries has been read
/// yet.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
ShareUnchangedFolders(const FolderEntries& folders, const FolderEntries& oldFolders);

/// The folders in which something may have changed, by their locations: main folders, special
/// folders below them, and special folders that have come or gone.
///
/// Threads: constant operations, from any thread.
class SEARCHPATH_EXPORT ChangedFolders {
 public:
  /// A special folder stands for the folders that it belongs to as well, since these hold it.
  ///
  /// Cost: resolves the links of each location.
  explicit ChangedFolders(const AbsoluteIRIRange& changed);
  ChangedFolders(const ChangedFolders&) = default;
  ChangedFolders& operator=(const ChangedFolders&) = default;
  ~ChangedFolders();

  /// Whether `folder` itself may have changed.
  [[nodiscard]] bool Contains(const FolderEntry& folder) const;

  /// Whether `mainFolder` or a special folder below it may have changed. Folders that have not been
  /// listed do not count: when they are, they show the change.
  [[nodiscard]] bool Affect(const FolderEntry& mainFolder) const;

 private:
  struct Locations;
  std::shared_ptr<const Locations> locations;
};

/// `oldFolders`, where the folders of `changed`, and no others, are listed again: a special folder
/// keeps its listing unless `changed` contains it, whatever becomes of the folder above it.
///
/// Cost: asks the disk about the folders of `changed` alone, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries RefreshFolders(const FolderEntries& oldFolders,
                                                             const ChangedFolders& changed);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_REFRESH_H
