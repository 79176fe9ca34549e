#include "described_command.h"

#include "command_table.h"

namespace Corvane::PathManagement::tool {

namespace {

// What is offered for a value or an operand that the help calls `kind`.
Completion GetCompletion(const std::string& kind) {
  if (kind == "FILE" || kind == "TEXT") return Completion::File;
  if (kind == "FOLDER" || kind == "DIR") return Completion::Folder;
  if (kind == "FOLDERS" || kind == "OLD") return Completion::Path;
  return kind == "COMMAND" ? Completion::Command : Completion::Nothing;
}

}  // namespace

bool DescribedCommand::Takes(const std::string& kind) const {
  const std::size_t begin = operands.starts_with('[') ? 1 : 0;
  return operands.compare(begin, operands.find_first_of(" .]", begin) - begin, kind) == 0;
}

std::vector<DescribedCommand> DescribeCommands() {
  std::vector<DescribedCommand> described;
  const Arguments request = {.describe = [&](const CommandLine& commandLine) {
    const CommandText& text = commandLine.GetText();
    described.push_back({text.name, text.operands, text.purpose, text.examples,
                         commandLine.GetNotes(), commandLine.GetOptions()});
  }};
  // With such arguments a command is not run, so that its result means nothing.
  for (const Command& command : GetCommands()) static_cast<void>(command.run(request));
  return described;
}

Completion GetCompletion(const OptionText& option) {
  return option.words.empty() ? GetCompletion(option.valueName) : Completion::Words;
}

Completion GetCompletion(const DescribedCommand& command) {
  // The help calls the operands of these two NAME, as those of other commands.
  if (command.name == "which") return Completion::Program;
  if (command.name == "folders") return Completion::Folder;
  for (const char* kind : {"FILE", "TEXT", "FOLDER", "OLD", "COMMAND"}) {
    if (command.Takes(kind)) return GetCompletion(std::string(kind));
  }
  return Completion::Nothing;
}

std::vector<FirstWord> GetFirstWords() {
  std::vector<FirstWord> words;
  for (const Command& command : GetCommands()) {
    words.push_back({std::string(command.GetName()), std::string(command.purpose)});
  }
  return words;
}

std::vector<std::string> GetSecondWords(const std::vector<DescribedCommand>& commands,
                                        const std::string& word) {
  std::vector<std::string> words;
  for (const DescribedCommand& command : commands) {
    if (command.name.starts_with(word + ' ')) words.push_back(command.name.substr(word.size() + 1));
  }
  return words;
}

}  // namespace Corvane::PathManagement::tool
