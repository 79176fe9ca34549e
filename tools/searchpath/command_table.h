#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_TABLE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_TABLE_H

#include "command_line.h"
#include "output.h"

#include <span>
#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

struct Command {
  std::string_view usage;    ///< its name, then its operands
  std::string_view purpose;  ///< in a few words, for the list of all commands
  Outcome (*run)(const Arguments& arguments);

  [[nodiscard]] std::string_view GetName() const { return usage.substr(0, usage.find(' ')); }
};

/// All commands, in the order of the help.
[[nodiscard]] std::span<const Command> GetCommands();

/// The command called `name`. Errors: `UsageError` when there is none; the message suggests a
/// similar name.
[[nodiscard]] const Command& GetCommand(const std::string& name);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_TABLE_H
