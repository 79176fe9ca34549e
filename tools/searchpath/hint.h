#ifndef SEARCHPATH_TOOLS_SEARCHPATH_HINT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_HINT_H

#include "searchpath/host/environment.h"

#include <string>

namespace Corvane::PathManagement::tool {

/// "; did you mean ...?", to be appended to the message that the name of `lookup` was not found; it
/// lists the files with similar names. Empty when there are none.
[[nodiscard]] std::string GetHint(const host::Environment& environment, const host::Lookup& lookup);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_HINT_H
