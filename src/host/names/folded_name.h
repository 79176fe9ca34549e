#ifndef SEARCHPATH_SRC_HOST_NAMES_FOLDED_NAME_H
#define SEARCHPATH_SRC_HOST_NAMES_FOLDED_NAME_H

#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

/// The bytes that all names have in common that are the same when case is ignored. Kept in
/// `buffer`.
[[nodiscard]] std::string_view FoldName(std::string_view name, std::string& buffer);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_FOLDED_NAME_H
