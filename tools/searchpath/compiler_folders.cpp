#include "compiler_folders.h"

#include "phrases.h"
#include "program_output.h"

#include <sstream>

namespace Corvane::PathManagement::tool {

namespace {

// Reads the lists that GCC and Clang print with -v. `nullopt` when they are missing or have no end.
std::optional<CompilerFolders> ParseFolders(const std::string& printed) {
  CompilerFolders folders;
  std::vector<std::string>* list = nullptr;
  std::istringstream lines(printed);
  for (std::string line; std::getline(lines, line);) {
    if (line == "#include \"...\" search starts here:") {
      list = &folders.quoted;
    } else if (line == "#include <...> search starts here:") {
      list = &folders.searched;
    } else if (line == "End of search list.") {
      return list == &folders.searched ? std::optional(folders) : std::nullopt;
    } else if (list != nullptr && line.starts_with(' ')) {
      // Headers in a framework and in a header map are not found by their file names.
      const bool isFolder =
          !line.ends_with(" (framework directory)") && !line.ends_with(" (headermap)");
      if (isFolder) list->push_back(line.substr(1));
    }
  }
  return std::nullopt;
}

}  // namespace

CompilerFolders AskCompiler(const CompilerCall& call) {
  std::vector<std::string> words = call.words;
  words.insert(words.end(), call.flags.begin(), call.flags.end());
  const std::string program = Join(words, " ");  // for messages
  words.insert(words.end(), {"-E", "-v", "-x", call.language, "/dev/null"});
  const ProgramQuestion question = {
      .program = program, .words = words, .advice = call.advice, .folder = call.folder};
  const std::string printed = AskProgram(question).error;  // where -v prints
  if (auto folders = ParseFolders(printed)) return *folders;
  RefuseAnswer(question, "unlike GCC and Clang, it prints no folders with -E -v");
}

}  // namespace Corvane::PathManagement::tool
