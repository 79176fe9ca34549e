#include "described_command.h"

#include "command_table.h"

namespace Corvane::PathManagement::tool {

namespace {

// What is offered for a value or an operand that the help calls `word`.
Completion GetCompletion(const std::string& word) {
  // A TEXT is a pathname or an IRI; shells can offer only the pathnames.
  if (word == "FILE" || word == "TEXT") return Completion::File;
  if (word == "FOLDER" || word == "DIR") return Completion::Folder;
  // OLD and NEW, which diff compares, are whole paths: lists of folders, as after --path.
  if (word == "FOLDERS" || word == "OLD") return Completion::Path;
  return word == "COMMAND" ? Completion::Command : Completion::Nothing;
}

// The word by which the help calls the first operand: "FILE" for "[FILE...]"; "" for none.
std::string GetOperandWord(const DescribedCommand& command) {
  const std::string& operands = command.operands;
  const std::size_t begin = operands.starts_with('[') ? 1 : 0;
  return operands.substr(begin, operands.find_first_of(" .]", begin) - begin);
}

}  // namespace

std::vector<DescribedCommand> DescribeCommands() {
  std::vector<DescribedCommand> described;
  const Arguments request = {.describe = [&](const CommandLine& commandLine) {
    const CommandText& text = commandLine.GetText();
    described.push_back({text.name, text.operands, text.purpose, text.examples,
                         commandLine.GetNotes(), commandLine.GetOptions()});
  }};
  // With `describe` set, `run` only describes the command, so its outcome means nothing.
  for (const Command& command : GetCommands()) static_cast<void>(command.run(request));
  return described;
}

Completion GetCompletion(const OptionText& option) {
  return option.words.empty() ? GetCompletion(option.valueName) : Completion::Words;
}

Completion GetCompletion(const DescribedCommand& command) {
  // These operands are called NAME like the files of `find`, for which nothing is offered.
  if (command.name == "which") return Completion::Program;
  if (command.name == "folders") return Completion::Folder;
  return GetCompletion(GetOperandWord(command));
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
