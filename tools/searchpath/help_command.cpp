#include "command_line.h"
#include "command_table.h"
#include "commands.h"
#include "general_help.h"

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kHelpText = {
    "help", "[COMMAND]", "Prints the help of COMMAND, with examples; without it, all commands.",
    "  searchpath help\n"
    "  searchpath help find           as searchpath find --help\n"
    "  searchpath help cache write\n",
    "Exit: 0, or 2 when there is no such command.\n"
    "\n"};

}  // namespace

Outcome RunHelp(const Arguments& arguments) {
  CommandLine commandLine(kHelpText);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  std::vector<std::string> words = commandLine.GetOperands();
  if (words.empty()) {
    // The result is always true: it says whether the word asks for help, and "--help" does.
    static_cast<void>(AnswerHelp("--help", GetGeneralHelp(), kGeneralExamples));
    return Outcome::Done;
  }
  const Command& command = GetCommand(words.front());
  words.erase(words.begin());
  words.emplace_back("--help");
  return command.run({.words = std::move(words)});
}

}  // namespace Corvane::PathManagement::tool
