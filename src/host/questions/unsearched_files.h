#ifndef SEARCHPATH_SRC_HOST_QUESTIONS_UNSEARCHED_FILES_H
#define SEARCHPATH_SRC_HOST_QUESTIONS_UNSEARCHED_FILES_H

#include "searchpath/host/folder_entry.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/search_target.h"
#include "searchpath/model/ustring.h"

#include <memory>
#include <optional>

namespace Corvane::PathManagement::host {

/// A file that a look-up does not find, because it stands below a folder that is not searched.
struct UnsearchedFile {
  std::shared_ptr<const IPathEntry> folder;  // which holds the file
  ustring path;        // native if the file is on disk, else the text of its location
  PathEntryType kind;  // of the folder that is not searched: private or resources
};

/// The first such file below `top`, which is on the path; empty when there is none. A plain name,
/// without separators, is looked for everywhere below the private and the resources folder of
/// `top`, and in the latter. Any other name is looked for only at the place that it names. An entry
/// that is no folder on disk has nothing but special folders below it.
///
/// Cost: for a plain name, lists all folders below the private and the resources folder of `top`.
[[nodiscard]] std::optional<UnsearchedFile> FindUnsearchedFile(
    const std::shared_ptr<const IPathEntry>& top,
    const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_QUESTIONS_UNSEARCHED_FILES_H
