#ifndef SEARCHPATH_TOOLS_PAGES_DESCRIBED_COMMAND_H
#define SEARCHPATH_TOOLS_PAGES_DESCRIBED_COMMAND_H

#include "command_line.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

/// What a command takes, with all of its help.
struct DescribedCommand {
  std::string name;  ///< "find", "cache write"
  std::string operands;
  std::string purpose;
  std::string examples;
  std::string notes;
  std::vector<OptionText> options;

  /// Whether the operands are of that kind: "FILE", "FOLDER".
  [[nodiscard]] bool Takes(const std::string& kind) const;
};

/// All commands, in the order of the help.
[[nodiscard]] std::vector<DescribedCommand> DescribeCommands();

/// What may stand in the place of a value or an operand.
enum class Completion : std::uint8_t { Nothing, Words, File, Folder, Path, Program, Command };

[[nodiscard]] Completion GetCompletion(const OptionText& option);
[[nodiscard]] Completion GetCompletion(const DescribedCommand& command);

/// The first words of the commands, each once, with what they are for.
struct FirstWord {
  std::string word;
  std::string purpose;
};
[[nodiscard]] std::vector<FirstWord> GetFirstWords();

/// The second words of the commands that begin with `word`; usually none.
[[nodiscard]] std::vector<std::string> GetSecondWords(const std::vector<DescribedCommand>& commands,
                                                      const std::string& word);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_PAGES_DESCRIBED_COMMAND_H
