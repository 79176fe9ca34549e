#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMPILER_FOLDERS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMPILER_FOLDERS_H

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A compiler of the C family, and how it is called.
struct CompilerCall {
  std::vector<std::string> words;          // the program, then any arguments that it always gets
  std::vector<std::string> flags = {};     // further arguments, which change the folders searched
  std::string language = {};               // as -x takes it: "c++"
  std::string advice = {};                 // what to do when it does not answer; ends the message
  std::optional<std::string> folder = {};  // where it runs; `nullopt` for the working folder
};

/// The folders in which a compiler looks for headers, in the order of its search, as the compiler
/// prints them.
struct CompilerFolders {
  std::vector<std::string> quoted;    // only for #include "...", before the others
  std::vector<std::string> searched;  // for each #include
};

/// Runs the compiler, which prints its folders. Errors: `UsageError` when the compiler does not
/// run, or prints no folders.
[[nodiscard]] CompilerFolders AskCompiler(const CompilerCall& call);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMPILER_FOLDERS_H
