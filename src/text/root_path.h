#ifndef SEARCHPATH_SRC_TEXT_ROOT_PATH_H
#define SEARCHPATH_SRC_TEXT_ROOT_PATH_H

#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement::detail {

/// `text` without the p + |root| units from p on, where p is the place of the first `root` in it: a
/// root in front is taken off.
///
/// Errors: `std::out_of_range` when `root` does not occur.
[[nodiscard]] ustring EraseThroughRoot(ustring text, const ustring& root);

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_ROOT_PATH_H
