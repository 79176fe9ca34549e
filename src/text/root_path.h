#ifndef SEARCHPATH_SRC_TEXT_ROOT_PATH_H
#define SEARCHPATH_SRC_TEXT_ROOT_PATH_H

#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement::detail {

/// `text` without a `root` at its beginning. Where the first `root` is at a later position p, it
/// erases p + |root| units from p on: "abcRefghij" without "R" is "abchij".
///
/// Errors: `std::out_of_range` when `root` does not occur.
[[nodiscard]] ustring EraseThroughRoot(ustring text, const ustring& root);

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_ROOT_PATH_H
