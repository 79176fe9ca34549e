#ifndef SEARCHPATH_TOOLS_SEARCHPATH_HINT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_HINT_H

#include "searchpath/host/environment.h"

#include <string>

namespace Corvane::PathManagement::tool {

/// What to append to the message that the name of `lookup` was not found: "; ..." on why a file of
/// that very name does not count, or "; did you mean ...?" with files of similar names, or "".
[[nodiscard]] std::string GetHint(const host::Environment& environment, const host::Lookup& lookup);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_HINT_H
