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
// what has changed. A path is given by its main folders, which are on the path itself. The special
// folders below them are the private, resources, "+" and "@" folders.
//
// A folder is unchanged when its canonical location is the same, it holds files of the same names,
// it has the same problem or none, and every special folder below it is unchanged. The order of its
// names on the disk, its ordinary subfolders and the contents of its files make no difference.
//
// An idle entry is one that has not been asked yet what its folder holds, and that will read the
// disk when it is; an entry with a listing that is used `AsSaved` is not idle. Between two idle
// entries of a folder nothing is compared, and the folder is unchanged: neither has shown anything
// that could differ.
//
// Where an `Environment` has given the old folders a time limit, new entries have it as well.

/// The main folders of a new path: entries for `locations`, in the same order. A location that is
/// among `oldFolders`, the main folders of the old path, takes its entry from there: the n-th
/// occurrence of the location takes its n-th old entry, or a new one when there are fewer. All
/// other locations get new entries, too. New entries are idle.
///
/// Cost: asks the disk nothing.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
RearrangeFolders(const FolderEntries& oldFolders, const std::vector<AbsoluteIRI>& locations);

/// `oldFolders`, brought up to date with the disk: all folders but those with idle entries are
/// listed again. A folder that has changed gets a new entry, which shares the entries of unchanged
/// special folders below it.
///
/// Cost: that of listing, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries RefreshFolders(const FolderEntries& oldFolders);

/// `folders`, in which each unchanged folder is replaced by its entry in `oldFolders`, and so is
/// each unchanged special folder below a changed one. This is for two paths that were made
/// independently, for instance one of them from a saved listing.
///
/// First each folder is paired with an old entry of its location: the n-th occurrence of a location
/// with its n-th old entry. Then the folders and old entries that are left are paired in the same
/// way by canonical location. A folder without an old entry keeps its own.
///
/// Cost: lists the folders of each pair, unless both entries are idle.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries
ShareUnchangedFolders(const FolderEntries& folders, const FolderEntries& oldFolders);

/// The folders in which something may have changed, by their locations: main folders, special
/// folders below them, and special folders that have come or gone.
///
/// Threads: constant operations, from any thread.
class SEARCHPATH_EXPORT ChangedFolders {
 public:
  /// The folders at `changed`. A special folder is a part of the folder that holds it. So the
  /// folder that holds it is added, too, and so on up to the first ordinary folder.
  ///
  /// Cost: resolves the links of each location.
  explicit ChangedFolders(const AbsoluteIRIRange& changed);
  ChangedFolders(const ChangedFolders&) = default;
  ChangedFolders& operator=(const ChangedFolders&) = default;
  ~ChangedFolders();

  /// Whether `folder` itself may have changed.
  [[nodiscard]] bool Contains(const FolderEntry& folder) const;

  /// Whether `mainFolder` or a special folder below it may have changed. Special folders below a
  /// folder that has not been listed are passed over: its first listing will show them as they are
  /// by then.
  [[nodiscard]] bool Affect(const FolderEntry& mainFolder) const;

 private:
  struct Locations;
  std::shared_ptr<const Locations> locations;
};

/// `oldFolders`, brought up to date with the disk, where only the folders of `changed` are listed
/// again. A special folder that `changed` does not contain keeps its listing, even below a folder
/// that `changed` contains.
///
/// Cost: asks the disk about the folders of `changed`, on several threads; also resolves the
/// canonical locations of main folders of which they are not known yet.
[[nodiscard]] SEARCHPATH_EXPORT FolderEntries RefreshFolders(const FolderEntries& oldFolders,
                                                             const ChangedFolders& changed);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_REFRESH_H
