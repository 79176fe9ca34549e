#ifndef SEARCHPATH_SRC_TEXT_CASE_FOLDING_H
#define SEARCHPATH_SRC_TEXT_CASE_FOLDING_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

#include <string_view>

namespace Corvane::PathManagement::detail {

/// Full Unicode case folding, for text that is not all ASCII. These are pointers to functions,
/// since the code may be in a module that is opened at the first use, see `FindInModule`.
///
/// Errors: `std::length_error` for texts that are too long to be compared (2^31 units or more) or
/// to be folded (more than 2^31 / 3 units); `std::bad_alloc`; `std::runtime_error` when the
/// Unicode library fails otherwise.
struct CaseFolding {
  bool (*areSameFolded)(std::u16string_view left, std::u16string_view right);
  /// Keeps every lone surrogate.
  ustring (*fold)(const ustring& text);
};

/// Never null. It returns a pointer, since a function with C linkage should not return a reference.
///
/// Errors: `std::runtime_error` when the code is in a module that cannot be opened.
extern "C" SEARCHPATH_EXPORT const CaseFolding* SearchpathCaseFolding();

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_CASE_FOLDING_H
