#ifndef SEARCHPATH_SRC_HOST_NAMES_FOLDED_NAME_H
#define SEARCHPATH_SRC_HOST_NAMES_FOLDED_NAME_H

#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

/// The folded form of `name`: the same for all names that differ in case alone. It is written to
/// `buffer`, which the result views.
[[nodiscard]] std::string_view FoldName(std::string_view name, std::string& buffer);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_FOLDED_NAME_H
