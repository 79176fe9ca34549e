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
// what has changed. A path is given by its main folders, those on the path itself. The special
// folders below them are the private, resources, "+" and "@" folders.
//
// A folder is unchanged when its canonical location is the same, it holds files of the same names,
// it has the same problem or none, and every special folder below it is unchanged. The order of its
// names on the disk, its ordinary subfolders and the contents of its files make no difference. An
// entry that has not been listed is unchanged, too: it has shown nothing yet that could differ.

/// The main folders of a new path: entries for `locations`, in the same order. Those that are among
/// `oldFolders`, the main folders of the old path, keep their entries; a location that is repeated
/// takes its old entries one after the other. All other locations get new entries, which have not
/// been listed.
///
/// Cost: asks the disk nothing.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
RearrangeFolders(const FolderEntries& oldFolders, const std::vector<AbsoluteIRI>& locations);

/// `oldFolders`, brought up to date with the disk: folders that have been listed are listed again.
/// A folder that has changed gets a new entry, which shares the entries of unchanged special
/// folders below it.
///
/// Cost: that of listing, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries RefreshFolders(const FolderEntries& oldFolders);

/// `folders`, in which each unchanged folder is replaced by its entry of `oldFolders`, and so is
/// each unchanged special folder below a changed one. For two paths that were made independently,
/// one of them from a saved listing for instance. A folder is looked for among `oldFolders` by its
/// location, then by its canonical location; a folder that is repeated takes its old entries one
/// after the other.
///
/// Cost: lists each folder that is in both lists, unless neither of its two entries has been asked
/// for anything yet.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
ShareUnchangedFolders(const FolderEntries& folders, const FolderEntries& oldFolders);

/// The folders in which something may have changed, by their locations: main folders, special
/// folders below them, and special folders that have come or gone.
///
/// Threads: constant operations, from any thread.
class SEARCHPATH_EXPORT ChangedFolders {
 public:
  /// The folders at `changed`. A special folder is a part of the folder that holds it, so that
  /// folder is added, too, and so on up to the first ordinary folder.
  ///
  /// Cost: resolves the links of each location.
  explicit ChangedFolders(const AbsoluteIRIRange& changed);
  ChangedFolders(const ChangedFolders&) = default;
  ChangedFolders& operator=(const ChangedFolders&) = default;
  ~ChangedFolders();

  /// Whether `folder` itself may have changed.
  [[nodiscard]] bool Contains(const FolderEntry& folder) const;

  /// Whether `mainFolder` or a special folder below it may have changed. What is below a folder
  /// that has not been listed is passed over: the listing will show the change.
  [[nodiscard]] bool Affect(const FolderEntry& mainFolder) const;

 private:
  struct Locations;
  std::shared_ptr<const Locations> locations;
};

/// `oldFolders`, brought up to date with the disk, where only the folders of `changed` are listed
/// again. A special folder that `changed` does not contain keeps its listing, even below a folder
/// that `changed` contains.
///
/// Cost: asks the disk about the folders of `changed` alone, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries RefreshFolders(const FolderEntries& oldFolders,
                                                             const ChangedFolders& changed);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_REFRESH_H
