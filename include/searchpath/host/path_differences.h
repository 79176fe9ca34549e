#ifndef SEARCHPATH_HOST_PATH_DIFFERENCES_H
#define SEARCHPATH_HOST_PATH_DIFFERENCES_H

#include "searchpath/export.h"
#include "searchpath/model/path.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/utilities/path_entry_vector_differentiator.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// What became of a folder between two versions of a path.
enum class FolderChange : std::uint8_t {
  Removed,    ///< on the earlier path alone
  Added,      ///< on the later path alone
  Moved,      ///< the same entry, at another place among the entries that stayed
  Refreshed,  ///< another entry for the same folder: its listing has changed
};

/// A folder that differs between two versions of a path, and where it is on each.
struct FolderDifference {
  FolderChange change;                       ///< what became of it
  std::shared_ptr<const IPathEntry> before;  ///< null when it was added
  std::shared_ptr<const IPathEntry> after;   ///< null when removed; the same as `before` when moved
  /// On the earlier path: the number, from 0, of the main folder that the folder is or belongs to;
  /// empty when the folder is not on that path, or is a special folder whose main entry makes a new
  /// entry for it whenever it is asked.
  std::optional<std::size_t> placeBefore;
  std::optional<std::size_t> placeAfter;  ///< the same on the later path
};

/// The differences that `PathEntryVectorDifferentiator` finds. Unchanged entries of the two paths
/// have to be the same objects, see `ShareUnchangedFolders`. Removed folders come first, in the
/// order of `before`; then folders added, moved and refreshed, each kind in the order of `after`.
///
/// Cost: that of the differentiator. `filter` may be `IncludeSubfolders`, which reads changed main
/// folders from the disk if they have not been listed.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<FolderDifference> FindPathDifferences(
    const IPath& before, const IPath& after,
    PathEntryVectorDifferentiator::ComparisonFilter filter);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_DIFFERENCES_H
