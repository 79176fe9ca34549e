#ifndef SEARCHPATH_UTILITIES_FILENAME_COMPARISON_H
#define SEARCHPATH_UTILITIES_FILENAME_COMPARISON_H

#include "searchpath/export.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/ustring.h"

#include <string_view>

namespace Corvane::PathManagement {

/// Whether two file names are the same under `policy`. `FileSystemDefault` is case-sensitive here.
///
/// Errors: `std::length_error` for names of 2^31 units or more that are not ASCII, when case is
/// ignored.
/// Cost: when case is ignored, ASCII names are compared without Unicode tables.
[[nodiscard]] SEARCHPATH_EXPORT bool AreSameFilename(std::u16string_view left,
                                                     std::u16string_view right,
                                                     FilenameMatchingPolicy policy);

/// The folded form of a file name, which is the same for all names that differ only in case: a key
/// for tables in which case is ignored.
///
/// Errors: `std::length_error` for a name of more than 2^31 / 3 units that is not ASCII: its folded
/// form may be three times as long.
[[nodiscard]] SEARCHPATH_EXPORT ustring FoldFilename(std::u16string_view name);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_FILENAME_COMPARISON_H
