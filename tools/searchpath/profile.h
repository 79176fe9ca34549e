#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_H

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A name for a path, for the rules by which it is searched, and for how names are written.
struct Profile {
  std::string name = {};
  /// As for --path A:B.
  std::optional<std::string> path = {};
  /// Or folder by folder, where they hold a ":".
  std::vector<std::string> folders = {};
  /// Or who names the path, as for --path-of.
  std::optional<std::string> pathOf = {};
  std::vector<std::string> flags = {};  // for a compiler
  /// As --as names them; empty for those of the environment.
  std::optional<std::string> rules = {};
  /// Each with its dot; empty when they are those of `pathOf`, if it has any.
  std::optional<std::vector<std::string>> extensions = {};
  /// What stands between the parts of a name; "" when it is "/" or nothing.
  std::string moduleSeparator = {};
  /// The file that it comes from; "" when it is built in.
  std::string file = {};
};

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROFILE_H
