#ifndef SEARCHPATH_SRC_TEXT_CASE_FOLDING_H
#define SEARCHPATH_SRC_TEXT_CASE_FOLDING_H

#include "searchpath/export.h"
#include "searchpath/model/ustring.h"

#include <string_view>

namespace Corvane::PathManagement::detail {

/// Full Unicode case folding, for text that is not all ASCII. As pointers to functions, since the
/// code may be in a module that is opened at the first use, see `FindInModule`.
///
/// Errors: both raise `std::length_error` for a text of more than 2^31 units.
struct CaseFolding {
  bool (*areSameFolded)(std::u16string_view left, std::u16string_view right);
  /// Keeps every lone surrogate.
  ustring (*fold)(const ustring& text);
};

/// Never null; a pointer, since functions with C linkage return no reference.
///
/// Errors: `std::runtime_error` when it is in a module that cannot be opened.
extern "C" SEARCHPATH_EXPORT const CaseFolding* SearchpathCaseFolding();

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_CASE_FOLDING_H
