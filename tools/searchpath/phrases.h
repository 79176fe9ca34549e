#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PHRASES_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PHRASES_H

#include <cstddef>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

// Parts of sentences.

/// "1 file", "2 files" for the `thing` "file", whose plural must end in "s".
[[nodiscard]] std::string GetCounted(std::size_t count, const std::string& thing);

/// The parts with `separator` between them, but `last` before the last part.
[[nodiscard]] std::string Join(const std::vector<std::string>& parts, const std::string& separator,
                               const std::string& last);
/// The parts with `separator` between them.
[[nodiscard]] std::string Join(const std::vector<std::string>& parts, const std::string& separator);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PHRASES_H
