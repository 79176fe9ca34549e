#ifndef SEARCHPATH_TOOLS_PAGES_DESCRIBED_COMMAND_H
#define SEARCHPATH_TOOLS_PAGES_DESCRIBED_COMMAND_H

#include "command_line.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// A command with its operands, its options and all of its help.
struct DescribedCommand {
  std::string name;      ///< "find", "cache write"
  std::string operands;  ///< as `CommandText::operands`
  std::string purpose;
  std::string examples;
  std::string notes;
  std::vector<OptionText> options;
};

/// All commands, in the order of the help.
[[nodiscard]] std::vector<DescribedCommand> DescribeCommands();

/// What a shell offers for the value of an option, or for an operand.
enum class Completion : std::uint8_t {
  Nothing,
  Words,  ///< the values in `OptionText::words`
  File,
  Folder,
  Path,  ///< a list of folders, "A:B", or "@FILE"
  Program,
  Command  ///< the first word of a command of searchpath
};

/// What is offered for the value of `option`.
[[nodiscard]] Completion GetCompletion(const OptionText& option);
/// What is offered for the operands of `command`.
[[nodiscard]] Completion GetCompletion(const DescribedCommand& command);

/// A first word, which may begin several commands ("cache write", "cache verify"), and what it is
/// for.
struct FirstWord {
  std::string word;
  std::string purpose;
};
/// Each first word once, in the order of the help.
[[nodiscard]] std::vector<FirstWord> GetFirstWords();

/// The second words of those of `commands` whose first word is `word`; usually none.
[[nodiscard]] std::vector<std::string> GetSecondWords(const std::vector<DescribedCommand>& commands,
                                                      const std::string& word);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_PAGES_DESCRIBED_COMMAND_H
