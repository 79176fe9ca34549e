#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_H

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A named path, the rules by which it is searched, and how names are written for it. At most one
/// of `path`, `folders` and `pathOf` says what the path is.
struct Profile {
  std::string name = {};
  /// The path as --path takes it: "A:B".
  std::optional<std::string> path = {};
  /// The path folder by folder, so that a folder may hold a ":".
  std::vector<std::string> folders = {};
  /// The program or variable that names the path, as --path-of takes it.
  std::optional<std::string> pathOf = {};
  std::vector<std::string> flags = {};  // for the compiler that `pathOf` names
  /// The name of the rules, as --as takes it; `nullopt` for the rules "environment".
  std::optional<std::string> rules = {};
  /// What is appended to names; each begins with "." or "/". `nullopt` for what `pathOf` appends,
  /// if anything; an empty list for nothing.
  std::optional<std::vector<std::string>> extensions = {};
  /// What separates the parts of a name, such as "." in "a.b"; "" when it is "/".
  std::string moduleSeparator = {};
  /// The file that defines this profile; "" when it is built in.
  std::string file = {};
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_H
