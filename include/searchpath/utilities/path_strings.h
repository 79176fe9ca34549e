#ifndef SEARCHPATH_UTILITIES_PATH_STRINGS_H
#define SEARCHPATH_UTILITIES_PATH_STRINGS_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry_type.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/filesystem.h"

#include <vector>

namespace Corvane::PathManagement {

// These functions work on texts alone: none asks the file system.
//
// Threads: stateless.

/// The folders of a search-path string, in order. ";" and each unit of
/// `Constants::ZentraPathsepStr` are separators. Empty folders are dropped. Nothing is trimmed, and
/// there is no quoting or escaping: a folder whose name holds ";" or ":" cannot be written this
/// way, and an IRI is cut in two at its ":".
///
/// Cost: one pass and one string for each folder.
[[nodiscard]] SEARCHPATH_EXPORT std::vector<ustring> SplitZentraPath(const ustring& pathString);

/// `absolutePath` without its root: "usr/lib" of "/usr/lib". A relative path is returned unchanged.
///
/// Errors: `std::out_of_range` when the root does not occur in the text.
[[nodiscard]] SEARCHPATH_EXPORT ustring
RemoveRootPathFromAbsolutePath(const fl::filesystem::path& absolutePath);

/// The kind of the folder called `baseName`: special when the name begins with "+" or "@", or is
/// `Constants::PrivateFolderStr` or `Constants::ResourcesFolderStr`; else ordinary.
///
/// Cost: one look at the first unit for most names; never allocates.
[[nodiscard]] SEARCHPATH_EXPORT PathEntryType
GetPathEntryTypeFromBaseName(const ustring& baseName) noexcept;

/// The last name of `folder`, with all special folders that are directly above it in a row:
/// "+pkg/@cls/private" of ".../lib/+pkg/@cls/private", "tools" of ".../lib/tools". For a root this
/// is the name of the root. "" for text that is neither an IRI nor an absolute path.
[[nodiscard]] SEARCHPATH_EXPORT ustring
GetPartialPathIncludingSpecialFolders(const ustring& folder);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_PATH_STRINGS_H
