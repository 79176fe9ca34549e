#ifndef SEARCHPATH_HOST_PATH_REFRESH_H
#define SEARCHPATH_HOST_PATH_REFRESH_H

#include "searchpath/export.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/any_range_adapter.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

// Two versions of a path share the entries of what has not changed, so that their difference can be
// told from the identity of the objects.
//
// A folder is unchanged when it is the same folder, holds files of the same names, has the same
// problem if any, and when the same holds for every special folder below it. The order of the disk
// does not count, nor do ordinary folders, which no path leads to, nor what is in the files. An
// entry that nobody has asked for what it holds is unchanged too: it has taken no snapshot yet.

/// The main folders of a path that has the folders at `locations`, in this order. A location that was
/// on an earlier version, whose folders are `oldFolders`, keeps its entry; repeated ones take old
/// entries one for one. What was not on it gets an entry that has not been listed.
///
/// Cost: asks the disk nothing.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<std::shared_ptr<const FolderEntry>> RearrangeFolders(
    const std::vector<std::shared_ptr<const FolderEntry>>& oldFolders,
    const std::vector<AbsoluteIRI>& locations);

/// `oldFolders` as they are now: all that have been listed are listed anew, and one that has changed
/// gets a new entry, which shares those below it that have not.
///
/// Cost: that of listing, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<std::shared_ptr<const FolderEntry>> RefreshFolders(
    const std::vector<std::shared_ptr<const FolderEntry>>& oldFolders);

/// `folders` with the entries of `oldFolders`, which come from elsewhere, in place of all that are
/// unchanged, below changed ones too. The same folder is found whatever location it was given as; of
/// several, one with the same location. Repeated folders take old entries one for one.
///
/// Cost: lists what is on both paths, unless both entries have yet to read it from the disk.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<std::shared_ptr<const FolderEntry>>
ShareUnchangedFolders(const std::vector<std::shared_ptr<const FolderEntry>>& folders,
                      const std::vector<std::shared_ptr<const FolderEntry>>& oldFolders);

/// Folders in which something may have changed, as whoever watches them names them: main folders,
/// special ones below them, and such as have come or gone.
///
/// Threads: constant operations, from any thread.
class SEARCHPATH_EXPORT ChangedFolders {
 public:
  /// Cost: resolves the links of each.
  explicit ChangedFolders(const AbsoluteIRIRange& locations);
  ChangedFolders(const ChangedFolders&) = default;
  ChangedFolders& operator=(const ChangedFolders&) = default;
  ~ChangedFolders();

  /// Whether one of them is `mainFolder` or belongs to it, as far as that has been listed. What has
  /// not been will see the change anyway.
  [[nodiscard]] bool Concern(const FolderEntry& mainFolder) const;

  /// Whether `folder` itself is one of them or, should that be a special folder, above it: a special
  /// folder that comes or goes is a change of those that it belongs to.
  [[nodiscard]] bool Name(const FolderEntry& folder) const;

 private:
  struct Locations;
  std::shared_ptr<const Locations> all;
};

/// The main folders of the same path with those folders listed anew that `changed` names, and no
/// others: what belongs to a folder and is not named itself keeps its listing.
///
/// Cost: asks the disk about those folders alone, on several threads.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<std::shared_ptr<const FolderEntry>> RefreshFolders(
    const std::vector<std::shared_ptr<const FolderEntry>>& oldFolders,
    const ChangedFolders& changed);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_REFRESH_H
