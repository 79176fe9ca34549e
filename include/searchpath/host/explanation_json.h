#ifndef SEARCHPATH_HOST_EXPLANATION_JSON_H
#define SEARCHPATH_HOST_EXPLANATION_JSON_H

#include "searchpath/export.h"
#include "searchpath/host/explanation.h"

#include <string>

namespace Corvane::PathManagement::host {

/// Why `name` means its file, as a JSON object without line breaks: what `searchpath find --explain
/// --json` prints. In a text, U+FFFD stands for bytes that are not UTF-8; a second field then has
/// all its bytes in Base64: "pathBytes" beside "path".
[[nodiscard]] SEARCHPATH_EXPORT std::string GetJson(const std::string& name,
                                                    const Explanation& explanation);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_EXPLANATION_JSON_H
