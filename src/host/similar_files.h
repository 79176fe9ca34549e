#ifndef SEARCHPATH_SRC_HOST_SIMILAR_FILES_H
#define SEARCHPATH_SRC_HOST_SIMILAR_FILES_H

#include "searchpath/host/folder_path.h"
#include "searchpath/host/similar_file.h"

#include <cstddef>
#include <vector>

namespace Corvane::PathManagement::host {

/// At most `most` files of the main folders whose names resemble what `target` looks for, the most
/// similar first, each name once. Reads every name of the path.
[[nodiscard]] std::vector<SimilarFile> FindSimilarFiles(
    const FolderPath& path, const PathManagement::detail::SearchTarget& target, std::size_t most);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SIMILAR_FILES_H
