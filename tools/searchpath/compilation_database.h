#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMPILATION_DATABASE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMPILATION_DATABASE_H

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// How one file is compiled.
struct CompileCommand {
  std::string folder;              // where the compiler runs
  std::string file;                // relative to `folder`, unless it is absolute
  std::vector<std::string> words;  // the compiler, then its arguments
};

/// Reads a compilation database in JSON, as build tools write it for other tools. An argument
/// "@FILE" is replaced by the arguments in FILE, or stays as it is when FILE cannot be read.
///
/// Errors: `UsageError`, also when the database does not exist or cannot be read; for a fault in
/// the database it names the file, the line and the field.
[[nodiscard]] std::vector<CompileCommand> ReadCompilationDatabase(const std::string& file);

/// `name`, with `folder` in front of it unless it is absolute.
[[nodiscard]] std::string GetAbsoluteName(const std::string& folder, const std::string& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMPILATION_DATABASE_H
