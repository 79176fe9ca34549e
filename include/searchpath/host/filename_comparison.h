#ifndef SEARCHPATH_HOST_FILENAME_COMPARISON_H
#define SEARCHPATH_HOST_FILENAME_COMPARISON_H

#include "searchpath/export.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/ustring.h"

#include <string_view>

namespace Corvane::PathManagement::host {

/// Whether two file names are the same under `policy`. `FileSystemDefault` is case-sensitive here.
///
/// Cost: ASCII names that ignore case are compared without tables.
[[nodiscard]] SEARCHPATH_EXPORT bool AreSameFilename(std::u16string_view left,
                                                     std::u16string_view right,
                                                     FilenameMatchingPolicy policy);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FILENAME_COMPARISON_H
