#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_FILE_SEARCH_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_FILE_SEARCH_H

#include "searchpath/host/lookup_observer.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path.h"
#include "searchpath/model/search_target.h"

#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

class PathView;

/// Every file that `target` could mean to code in the folder `asker`, or to any code when
/// `asker` has no value: the file that `target` means, then the files that this one hides, in path
/// order. `observer`, which may be null, hears of repeated and hidden folders, too, with the files
/// that they hold; the answer leaves those files out.
[[nodiscard]] std::vector<FoundItem> FindAllFiles(
    const PathView& view, const std::optional<AbsoluteIRI>& asker,
    const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy,
    ILookupObserver* observer);

/// The entries in which `FindAllFiles` looks for `target`, in the order asked, without method
/// entries: folders called "@name", in which it looks for `name` as well.
[[nodiscard]] PathEntries FindAskedEntries(const PathView& view,
                                           const std::optional<AbsoluteIRI>& asker,
                                           const PathManagement::detail::SearchTarget& target,
                                           FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_FILE_SEARCH_H
