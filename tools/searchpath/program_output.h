#ifndef SEARCHPATH_TOOLS_SEARCHPATH_PROGRAM_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_PROGRAM_OUTPUT_H

#include <optional>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A program that is to be asked for the folders that it searches.
struct ProgramQuestion {
  std::string program;                     // as messages name it
  std::vector<std::string> words;          // the program and its arguments
  std::string advice;                      // for messages: what to do when it does not answer
  std::optional<std::string> folder = {};  // where it runs; `nullopt` for the working folder
};

/// What a program wrote before it ended with success.
struct ProgramOutput {
  std::string out;    // to standard output
  std::string error;  // to standard error
};

/// Runs the program in the C locale, with empty standard input, for at most 10 seconds.
///
/// Errors: `UsageError` when it cannot be started, does not end with success in that time, or
/// writes more than 16 MiB to one stream; `std::system_error` when no pipe can be made.
[[nodiscard]] ProgramOutput AskProgram(const ProgramQuestion& question);

/// Errors: always `UsageError`, which says that the program did not answer, says `why`, and gives
/// the advice of `question`.
[[noreturn]] void RefuseAnswer(const ProgramQuestion& question, const std::string& why);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_PROGRAM_OUTPUT_H
