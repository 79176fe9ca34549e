#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMPILATION_DATABASE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMPILATION_DATABASE_H

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// How one file is compiled.
struct CompileCommand {
  std::string folder;  // where the compiler runs
  std::string file;    // from there, unless it is absolute
  std::vector<std::string> words;
};

/// Reads a compilation database in JSON, as build tools write it for other tools. Files of arguments,
/// "@FILE", are replaced by what they hold.
///
/// Errors: `UsageError`, which names the file, the line and the field.
[[nodiscard]] std::vector<CompileCommand> ReadCompilationDatabase(const std::string& file);

/// `name` as it is called from anywhere, if it is a name within `folder`.
[[nodiscard]] std::string GetAbsoluteName(const std::string& folder, const std::string& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMPILATION_DATABASE_H
