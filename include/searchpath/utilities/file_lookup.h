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

// Which file a name means, on any path.
//
// Threads: stateless; as safe as the path and its entries are.
// Errors: not found is empty; exceptions of the path and its entries pass through.

/// The target for a name that may carry its own extension: "fn" is tried with each of `extensions`;
/// "fn.x" and "fn." are looked up as they stand.
[[nodiscard]] SEARCHPATH_EXPORT detail::SearchTarget
CreateSearchTargetWithExtensionInFilenamePreferred(const ustring& name,
                                                   const std::vector<ustring>& extensions);

/// The file that `target` means on `path` as a whole: the first match in the ordinary folders or in
/// the method entries of that name, whichever comes first on the path; the ordinary folder on a
/// tie. A name with a separator is a partial pathname and is looked up in the kinds of folder 0 to
/// 4 instead: all but resources folders.
///
/// Method entries are looked up by name under `FilenameMatchingPolicy::FileSystemDefault`, whatever
/// `policy` is; `policy` then says which of their files match.
[[nodiscard]] SEARCHPATH_EXPORT boost::optional<FoundItem> FindFirstFileVisibleOnPath(
    const IPath& path, const detail::SearchTarget& target, FilenameMatchingPolicy policy);

/// The file that `target` means to code in `folder`: one in its private folder before all others.
/// When `folder` is not on `path`, when its private folder holds no such file, or when the name has
/// a separator: as `FindFirstFileVisibleOnPath`.
///
/// `folder` itself is looked up under `FilenameMatchingPolicy::FileSystemDefault`, whatever
/// `policy` is.
[[nodiscard]] SEARCHPATH_EXPORT boost::optional<FoundItem> FindFirstFileVisibleFromFolder(
    const IPath& path, const AbsoluteIRI& folder, const detail::SearchTarget& target,
    FilenameMatchingPolicy policy);

/// The same for the location of `folder`.
[[nodiscard]] SEARCHPATH_EXPORT boost::optional<FoundItem> FindFirstFileVisibleFromFolder(
    const IPath& path, const foundation::storage::vfs::Folder& folder,
    const detail::SearchTarget& target, FilenameMatchingPolicy policy);

/// The files of `entry` that carry one of `extensions`, in the entry's order. A file occurs once
/// for each extension of the list that equals its own: the list is trusted to hold no repeats.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<FoundItem> FindFilesByExtensions(
    const std::shared_ptr<const IPathEntry>& entry, const std::vector<ustring>& extensions,
    FilenameMatchingPolicy policy);

/// The same for all entries of `path` in `scope`, in path order.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<FoundItem> FindFilesByExtensions(
    const IPath& path, SearchScope scope, const std::vector<ustring>& extensions,
    FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_FILE_LOOKUP_H
