#ifndef SEARCHPATH_HOST_EXPLANATION_JSON_H
#define SEARCHPATH_HOST_EXPLANATION_JSON_H

#include "searchpath/export.h"
#include "searchpath/host/explanation.h"

#include <string>

namespace Corvane::PathManagement::host {

/// Why `name` means its file, as an object in JSON without line breaks: what `searchpath find --explain
/// --json` prints. A text with bytes that are not UTF-8 has U+FFFD for them, and all its bytes in Base64
/// beside it: "pathBytes" beside "path".
[[nodiscard]] SEARCHPATH_EXPORT std::string GetJson(const std::string& name,
                                                    const Explanation& explanation);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_EXPLANATION_JSON_H
