#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_SIMILAR_FILES_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_SIMILAR_FILES_H

#include "searchpath/host/similar_files.h"
#include "searchpath/model/path.h"

#include <cstddef>
#include <vector>

namespace Corvane::PathManagement::host {

/// At most `most` files of `mainEntries` whose names resemble what `target` looks for, the most
/// similar first, each name once; none for a name with separators. Reads every name there.
[[nodiscard]] std::vector<SimilarFile> FindSimilarFiles(
    const PathEntries& mainEntries, const PathManagement::detail::SearchTarget& target,
    std::size_t most);

/// As `Environment::FindSimilarFolders`.
[[nodiscard]] PathEntries FindFoldersLike(const IPath& path, const ustring& name, std::size_t most);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_SIMILAR_FILES_H
