#include "completions.h"
#include "phrases.h"

namespace Corvane::PathManagement::tool {

namespace {

// `__searchpath_is WORDS`: whether the command line begins with these words. With a blank after
// both, only a whole word matches the last one. `__searchpath_path` offers folders for the last
// part of a list "A:B", and files after "@".
constexpr const char* kFishBegin = R"(# Completion of searchpath for fish.

function __searchpath_is
    set -l words (commandline -opc)[2..-1]
    string match -q -- "$argv *" "$words "
end

function __searchpath_path
    set -l typed (commandline -ct)
    set -l before (string match -r -- '^(?:--[^=]*=)?(?:.*:)?@?' $typed)
    set -l last (string replace -- "$before" "" $typed)
    set -l complete __fish_complete_directories
    string match -q -- '*@' "$before"; and set complete __fish_complete_path
    for answer in ($complete $last)
        printf '%s%s\n' "$before" $answer
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

// The arguments of `complete` that say what is offered; "" for nothing. `words` is the list for
// `Words` and `Command`.
std::string GetCandidates(Completion completion, const std::string& words) {
  switch (completion) {
    case Completion::Words:
    case Completion::Command:
      return " -a " + Quote(words);
    case Completion::File:
      return " -F";
    case Completion::Folder:
      return " -a '(__fish_complete_directories)'";
    case Completion::Path:
      return " -a '(__searchpath_path)'";
    case Completion::Program:
      return " -a '(__fish_complete_command)'";
    case Completion::Nothing:
      break;
  }
  return "";
}

// The line that offers `option`, and what its value may be.
std::string GetLine(const DescribedCommand& command, const OptionText& option) {
  std::string line = "complete -c searchpath -n '__searchpath_is " + command.name + '\'';
  for (const std::string& name : option.names) {
    line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  if (!option.valueName.empty()) {
    const Completion completion = GetCompletion(option);
    // Both say that the option takes a value; with -x, fish offers no files for it.
    line += completion == Completion::File ? " -r" : " -x";
    line += GetCandidates(completion, Join(option.words, " "));
  }
  return line + " -d " + Quote(option.help) + '\n';
}

// The line that offers operands; "" if nothing is offered. `allCommands` is for an operand COMMAND.
std::string GetOperands(const DescribedCommand& command, const std::string& allCommands) {
  const std::string candidates = GetCandidates(GetCompletion(command), allCommands);
  if (candidates.empty()) return "";
  return "complete -c searchpath -n '__searchpath_is " + command.name + '\'' + candidates + '\n';
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
    // Offers the second words, until one of them is there.
    text += "complete -c searchpath -n '__searchpath_is " + word;
    for (const std::string& each : second) {
      text.append("; and not __searchpath_is ").append(word).append(" ").append(each);
    }
    text += "' -a " + Quote(Join(second, " ")) + '\n';
  }
  for (const DescribedCommand& command : commands) {
    for (const OptionText& option : command.options) text += GetLine(command, option);
    text += GetOperands(command, all);
  }
  return text;
}

}  // namespace Corvane::PathManagement::tool
