#include "completions.h"
#include "phrases.h"

namespace Corvane::PathManagement::tool {

namespace {

constexpr const char* kFishBegin = R"(# Completion of searchpath for fish.

function __searchpath_is
    set -l words (commandline -opc)[2..-1]
    string match -q -- "$argv *" "$words "
end

function __searchpath_path
    set -l typed (commandline -ct)
    set -l before (string match -r -- '^(?:--[^=]*=)?(?:.*:)?@?' $typed)
    set -l last (string replace -- "$before" "" $typed)
    if string match -q -- '*@' "$before"
        printf "$before%s\n" (__fish_complete_path $last)
    else
        printf "$before%s\n" (__fish_complete_directories $last)
    end
end

complete -c searchpath -f
)";

// `text` in single quotes.
std::string Quote(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '\'';
}

// The options that say what is completed; `whereNothing` for nothing.
std::string GetValues(Completion completion, const std::vector<std::string>& words) {
  switch (completion) {
    case Completion::Words:
      return " -x -a " + Quote(Join(words, " "));
    case Completion::File:
      return " -r -F";
    case Completion::Folder:
      return " -x -a '(__fish_complete_directories)'";
    case Completion::Path:
      return " -x -a '(__searchpath_path)'";
    case Completion::Program:
      return " -x -a '(__fish_complete_command)'";
    case Completion::Command:
    case Completion::Nothing:
      break;
  }
  return " -x";
}

std::string GetLine(const DescribedCommand& command, const OptionText& option) {
  std::string line = "complete -c searchpath -n '__searchpath_is " + command.name + '\'';
  for (const std::string& name : option.names) {
    line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  if (!option.valueName.empty()) line += GetValues(GetCompletion(option), option.words);
  return line + " -d " + Quote(option.help) + '\n';
}

std::string GetOperands(const DescribedCommand& command, const std::string& allCommands) {
  const std::string condition = "complete -c searchpath -n '__searchpath_is " + command.name + '\'';
  switch (GetCompletion(command)) {
    case Completion::File:
      return condition + " -F\n";
    case Completion::Folder:
      return condition + " -a '(__fish_complete_directories)'\n";
    case Completion::Path:
      return condition + " -a '(__searchpath_path)'\n";
    case Completion::Program:
      return condition + " -a '(__fish_complete_command)'\n";
    case Completion::Command:
      return condition + " -a " + Quote(allCommands) + '\n';
    case Completion::Words:
    case Completion::Nothing:
      break;
  }
  return "";
}

}  // namespace

std::string GetFishCompletion(const std::vector<DescribedCommand>& commands) {
  std::string text = kFishBegin;
  std::string all;
  for (const auto& [word, purpose] : GetFirstWords()) {
    all += (all.empty() ? "" : " ") + word;
    text += "complete -c searchpath -n __fish_is_first_token -a " + word + " -d " + Quote(purpose) +
            '\n';
    const auto second = GetSecondWords(commands, word);
    if (second.empty()) continue;
    text += "complete -c searchpath -n '__searchpath_is " + word + "; and not __searchpath_is " +
            Join(second, "; and not __searchpath_is ") + "' -a " + Quote(Join(second, " ")) + '\n';
  }
  for (const DescribedCommand& command : commands) {
    for (const OptionText& option : command.options) text += GetLine(command, option);
    text += GetOperands(command, all);
  }
  return text;
}

}  // namespace Corvane::PathManagement::tool
