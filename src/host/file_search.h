#ifndef SEARCHPATH_SRC_HOST_FILE_SEARCH_H
#define SEARCHPATH_SRC_HOST_FILE_SEARCH_H

#include "searchpath/host/explanation.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/host/lookup_observer.h"

#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// Every file that `target` could mean to code in the folder `asker`, or to any code: the one that
/// it means, then those that it hides, in path order. `observer` may be null.
[[nodiscard]] std::vector<FoundItem> FindAllFiles(
    const FolderPath& path, const std::optional<AbsoluteIRI>& asker,
    const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy,
    ILookupObserver* observer);

/// The same look-up, explained. `origins` belong to the main entries of `path`, in their order.
[[nodiscard]] Explanation ExplainLookup(const FolderPath& path,
                                        const std::optional<AbsoluteIRI>& asker,
                                        const PathManagement::detail::SearchTarget& target,
                                        FilenameMatchingPolicy policy,
                                        const std::vector<ustring>& origins);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FILE_SEARCH_H
