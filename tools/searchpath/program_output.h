#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROGRAM_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROGRAM_OUTPUT_H

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A program that is to be asked for the folders that it searches.
struct ProgramQuestion {
  std::string program;                     // as messages name it
  std::vector<std::string> words;          // it and its arguments, as `execvp` takes them
  std::string advice;                      // what to do when it does not answer, for messages
  std::optional<std::string> folder = {};  // where it runs; empty for the working folder
};

/// What a program wrote before it ended with success.
struct ProgramOutput {
  std::string out;
  std::string error;
};

/// Runs a program, which speaks as in the C locale and has nothing to read, for at most 10 seconds.
///
/// Errors: `UsageError` when it does not end with success in that time, or writes more than 16 MiB.
[[nodiscard]] ProgramOutput AskProgram(const ProgramQuestion& question);

/// Reports that the program did not answer: `why`, and what to do.
[[noreturn]] void RefuseAnswer(const ProgramQuestion& question, const std::string& why);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROGRAM_OUTPUT_H
