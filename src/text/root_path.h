#ifndef SEARCHPATH_SRC_TEXT_ROOT_PATH_H
#define SEARCHPATH_SRC_TEXT_ROOT_PATH_H

#include "searchpath/model/ustring.h"

namespace Corvane::PathManagement::detail {

/// `text`, a path, without `root`, which the platform has found in it. This platform finds roots in
/// front only: "/usr" without "/" is "usr".
///
/// Where a root does not stand in front but first at a position p, p + |root| units are erased from
/// p on: "abcRefghij" without "R" is "abchij". This is odd, but callers on other platforms rely on
/// it.
///
/// Errors: `std::out_of_range` when `root` does not occur.
[[nodiscard]] ustring EraseRoot(ustring text, const ustring& root);

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_ROOT_PATH_H
