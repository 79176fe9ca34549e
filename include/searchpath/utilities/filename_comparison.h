#ifndef SEARCHPATH_UTILITIES_FILENAME_COMPARISON_H
#define SEARCHPATH_UTILITIES_FILENAME_COMPARISON_H

#include "searchpath/export.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/ustring.h"

#include <string_view>

namespace Corvane::PathManagement {

/// Whether two file names are the same under `policy`. `FileSystemDefault` is case-sensitive here.
///
/// Cost: ASCII names that ignore case are compared without tables.
[[nodiscard]] SEARCHPATH_EXPORT bool AreSameFilename(std::u16string_view left,
                                                     std::u16string_view right,
                                                     FilenameMatchingPolicy policy);

/// The folded form of a file name: the same for all names that differ in case alone. As a key, it
/// stands for a name that is looked up without regard to case.
///
/// Errors: `std::length_error` for a name of more than 2^31 units.
[[nodiscard]] SEARCHPATH_EXPORT ustring FoldFilename(std::u16string_view name);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_FILENAME_COMPARISON_H
