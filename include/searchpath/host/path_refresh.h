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
// A folder is unchanged when it is the same folder, holds files of the same names, has the same
// problem or none, and every special folder below it is unchanged. The order on the disk, ordinary
// folders below it and the contents of files do not count. An entry that has not been listed is
// unchanged, too: it shows nothing yet that could differ.

/// The main folders of a new path of `locations`, in this order. `oldFolders` are those of the path
/// before: their locations keep their entries, and a location that is repeated takes its old
/// entries one after the other. All other locations get new entries, which have not been listed.
///
/// Cost: asks the disk nothing.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
RearrangeFolders(const FolderEntries& oldFolders, const std::vector<AbsoluteIRI>& locations);

/// `oldFolders` as they are now. Those that have been listed are listed again. A folder that has
/// changed gets a new entry, which shares the entries of unchanged folders below it.
///
/// Cost: that of listing, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries RefreshFolders(const FolderEntries& oldFolders);

/// `folders`, where each unchanged folder has its entry of `oldFolders`; so have unchanged special
/// folders below changed ones. For two paths that were made independently, from a saved listing for
/// instance. A folder is found on the old path by its location, or else by its canonical location;
/// a folder that is repeated takes its old entries one after the other.
///
/// Cost: lists each folder that is on both paths, unless neither path has asked it for anything
/// yet.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
ShareUnchangedFolders(const FolderEntries& folders, const FolderEntries& oldFolders);

/// The folders in which something may have changed, by their locations: main folders, special
/// folders below them, and special folders that have come or gone.
///
/// Threads: constant operations, from any thread.
class SEARCHPATH_EXPORT ChangedFolders {
 public:
  /// The folders at `changed`. For a special folder, the folders that it belongs to are added,
  /// since they hold it.
  ///
  /// Cost: resolves the links of each location.
  explicit ChangedFolders(const AbsoluteIRIRange& changed);
  ChangedFolders(const ChangedFolders&) = default;
  ChangedFolders& operator=(const ChangedFolders&) = default;
  ~ChangedFolders();

  /// Whether `folder` itself may have changed.
  [[nodiscard]] bool Contains(const FolderEntry& folder) const;

  /// Whether `mainFolder` or a special folder below it may have changed. Folders that have not been
  /// listed do not count: their listing will show the change.
  [[nodiscard]] bool Affect(const FolderEntry& mainFolder) const;

 private:
  struct Locations;
  std::shared_ptr<const Locations> locations;
};

/// `oldFolders` as they are now, where only the folders of `changed` are listed again. A special
/// folder that `changed` does not contain keeps its listing, even below a folder that it contains.
///
/// Cost: asks the disk about the folders of `changed` alone, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries RefreshFolders(const FolderEntries& oldFolders,
                                                             const ChangedFolders& changed);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_REFRESH_H
