#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_FILE_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_FILE_SEARCH_H

#include "searchpath/host/explanation.h"
#include "searchpath/host/lookup_observer.h"

#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

class PathView;

/// Every file that `target` could mean to code in the folder `asker`, or to any code: the one that
/// it means, then those that it hides, in path order. `observer` may be null; it hears of dropped
/// and hidden folders too, with the files that would be found in them.
[[nodiscard]] std::vector<FoundItem> FindAllFiles(
    const PathView& view, const std::optional<AbsoluteIRI>& asker,
    const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy,
    ILookupObserver* observer);

/// The same look-up, explained.
[[nodiscard]] Explanation ExplainLookup(const PathView& view,
                                        const std::optional<AbsoluteIRI>& asker,
                                        const PathManagement::detail::SearchTarget& target,
                                        FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_FILE_SEARCH_H
