#ifndef SEARCHPATH_UTILITIES_FILE_LOOKUP_H
#define SEARCHPATH_UTILITIES_FILE_LOOKUP_H

#include "searchpath/export.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/model/search_target.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/storage.h"

#include <boost/optional.hpp>

#include <memory>
#include <vector>

namespace Corvane::PathManagement {

class IPath;
class IPathEntry;

// Finds the file that a name means, on any path.
//
// Threads: stateless; as safe as the path and its entries are.
// Errors: the answer is empty when nothing is found; exceptions of the path and its entries pass
// through.

/// The target for a name that may have its own extension: "fn" is tried with each of `extensions`,
/// while "fn.x" and "fn." are looked up exactly as they are.
[[nodiscard]] SEARCHPATH_EXPORT detail::SearchTarget
CreateSearchTargetWithExtensionInFilenamePreferred(const ustring& name,
                                                   const std::vector<ustring>& extensions);

/// The file that `target` means on `path` to code in any folder. A name without separators, "fn",
/// is looked up in the ordinary folders, and in the method entries of its name: the "@fn" folders
/// directly below ordinary folders. For "fn.x" they are called "@fn.x"; extensions that `target`
/// adds to the name are not added to theirs. Each of these two kinds has a first match. Of the two
/// matches, the one that comes first on the path is the answer; when the path puts neither before
/// the other, the one in the ordinary folder.
///
/// A name with a separator is a partial pathname. It is looked up in `kAllKindsScope`, which leaves
/// out resources folders.
///
/// The method entries themselves are always found under
/// `FilenameMatchingPolicy::FileSystemDefault`; `policy` only says which of their files match.
[[nodiscard]] SEARCHPATH_EXPORT boost::optional<FoundItem> FindFirstFileVisibleOnPath(
    const IPath& path, const detail::SearchTarget& target, FilenameMatchingPolicy policy);

/// The file that `target` means to code in `folder`: a file in the private folder of `folder` comes
/// before all other files. When `folder` is not on `path`, when its private folder holds no such
/// file, or when the name has a separator, the answer is that of `FindFirstFileVisibleOnPath`.
///
/// `folder` itself is always looked up under `FilenameMatchingPolicy::FileSystemDefault`.
[[nodiscard]] SEARCHPATH_EXPORT boost::optional<FoundItem> FindFirstFileVisibleFromFolder(
    const IPath& path, const AbsoluteIRI& folder, const detail::SearchTarget& target,
    FilenameMatchingPolicy policy);

/// The same for the location of `folder`.
[[nodiscard]] SEARCHPATH_EXPORT boost::optional<FoundItem> FindFirstFileVisibleFromFolder(
    const IPath& path, const foundation::storage::vfs::Folder& folder,
    const detail::SearchTarget& target, FilenameMatchingPolicy policy);

/// The files of `entry` that have one of `extensions`, in the entry's order. A file occurs once for
/// each of `extensions` that equals the file's own under `policy`, so `extensions` should hold no
/// repeats.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<FoundItem> FindFilesByExtensions(
    const std::shared_ptr<const IPathEntry>& entry, const std::vector<ustring>& extensions,
    FilenameMatchingPolicy policy);

/// The same for all entries of `path` in `scope`, in path order.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<FoundItem> FindFilesByExtensions(
    const IPath& path, SearchScope scope, const std::vector<ustring>& extensions,
    FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_FILE_LOOKUP_H
