#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMPILER_FOLDERS_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMPILER_FOLDERS_H

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A compiler of the C family, and how it is called.
struct CompilerCall {
  std::vector<std::string> words;          // the program, and words that always stand behind it
  std::vector<std::string> flags = {};     // those that change which folders are searched
  std::string language = {};               // as -x names it
  std::string advice = {};                 // what to do when it does not answer, for messages
  std::optional<std::string> folder = {};  // where it runs; empty for the working folder
};

/// The folders in which a compiler looks for headers, in their order and as it writes them.
struct CompilerFolders {
  std::vector<std::string> quoted;  // only for #include "...", before the others
  std::vector<std::string> searched;
};

/// Errors: `UsageError` when the compiler does not name them.
[[nodiscard]] CompilerFolders AskCompiler(const CompilerCall& call);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMPILER_FOLDERS_H
