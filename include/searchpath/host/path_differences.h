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
  Removed,
  Added,
  Moved,      ///< unchanged, and out of the order of those that stayed
  Refreshed,  ///< another entry for the same folder: what it holds has changed
};

/// A folder that differs between two versions of a path, and where it stands.
struct FolderDifference {
  FolderChange change;
  std::shared_ptr<const IPathEntry> before;  ///< null when it was added
  std::shared_ptr<const IPathEntry> after;   ///< null when it was removed; the same when it moved
  /// Which main folder it is, or belongs to, from 0 on; empty on the path that it is not on.
  std::optional<std::size_t> placeBefore;
  std::optional<std::size_t> placeAfter;
};

/// What `PathEntryVectorDifferentiator` says of two versions of a path whose unchanged entries are
/// the same objects, see `ShareUnchangedFolders`. Removed folders come first, as they stood on
/// `before`; then those that were added, those that moved and those refreshed, each as they stand on
/// `after`.
///
/// Cost: that of the differentiator. With `IncludeSubfolders` lists changed main folders.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<FolderDifference> FindPathDifferences(
    const IPath& before, const IPath& after,
    PathEntryVectorDifferentiator::ComparisonFilter filter);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_PATH_DIFFERENCES_H
