#include "completions.h"
#include "phrases.h"

namespace Corvane::PathManagement::tool {

namespace {

// In `_searchpath_path`, `compset -P` keeps what comes before the last folder of a list, or "@".
constexpr const char* kZshBegin = R"(#compdef searchpath

_searchpath_path() {
  compset -P '*:'
  if compset -P '@'; then _files; else _files -/; fi
}

_searchpath() {
  local command=$words[2]
  local -a commands
)";

// `text` escaped for `_arguments` and `_describe`, and for the single quotes around it.
std::string EscapeForZsh(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\'') {
      escaped += "'\\''";
      continue;
    }
    if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// What `_arguments` does to complete a value; `words` is the list for `Words`.
std::string GetAction(Completion completion, const std::vector<std::string>& words) {
  switch (completion) {
    case Completion::Words:
      return '(' + Join(words, " ") + ')';
    case Completion::File:
      return "_files";
    case Completion::Folder:
      return "_files -/";
    case Completion::Path:
      return "_searchpath_path";
    case Completion::Program:
      return "_command_names -e";
    case Completion::Command:
      return "($commands)";
    case Completion::Nothing:
      break;
  }
  return " ";  // for `_arguments`: there is a value, but nothing to offer
}

// An option, as `_arguments` takes it.
std::string GetArgument(const OptionText& option) {
  const std::string help = '[' + EscapeForZsh(option.help) + ']';
  if (option.valueName.empty()) {
    if (option.names.size() == 1) return '\'' + option.names[0] + help + '\'';
    // Either name excludes the other: '(-q --quiet)'{-q,--quiet}'[help]'.
    return "'(" + Join(option.names, " ") + ")'{" + Join(option.names, ",") + "}'" + help + '\'';
  }
  return std::string("'") + (option.isRepeated ? "*" : "") + option.names[0] + '=' + help + ':' +
         option.valueName + ':' + GetAction(GetCompletion(option), option.words) + '\'';
}

// The case of `command` in `_searchpath`.
std::string GetCase(const DescribedCommand& command) {
  std::string text = "    '" + command.name + "')\n      _arguments -s -S";
  for (const OptionText& option : command.options) {
    text += " \\\n        " + GetArgument(option);
  }
  if (!command.operands.empty()) {
    // If the action of an operand were a blank, zsh would offer no options after it.
    const Completion completion = GetCompletion(command);
    const std::string action = completion == Completion::Nothing ? "()" : GetAction(completion, {});
    // Double quotes, so that zsh expands "$commands".
    const bool isExpanded = action.starts_with("($");
    text += std::string(" \\\n        ") + (isExpanded ? "\"" : "'") +
            "*:" + EscapeForZsh(command.operands) + ':' + action + (isExpanded ? "\"" : "'");
  }
  return text + "\n      ;;\n";
}

}  // namespace

std::string GetZshCompletion(const std::vector<DescribedCommand>& commands) {
  std::string text = kZshBegin;
  std::string all;
  std::string twoWords;
  for (const auto& [word, purpose] : GetFirstWords()) {
    all += (all.empty() ? "" : " ") + word;
    text += "  commands+=('" + word + ':' + EscapeForZsh(purpose) + "')\n";
    const auto second = GetSecondWords(commands, word);
    if (second.empty()) continue;
    // Completes the second word, or takes it into the name of the command.
    twoWords += "  if [[ $command == " + word + " ]]; then\n    if ((CURRENT == 3)); then\n" +
                "      compadd -- " + Join(second, " ") +
                "\n      return\n    fi\n    command+=\" $words[3]\"\n" +
                "    shift words\n    ((CURRENT--))\n  fi\n";
  }
  text +=
      "  if ((CURRENT == 2)); then\n    _describe command commands\n"
      "    compadd -- -h --help -V --version\n    return\n  fi\n" +
      twoWords + "  shift words\n  ((CURRENT--))\n  commands=(" + all + ")\n  case $command in\n";
  for (const DescribedCommand& command : commands) text += GetCase(command);
  return text + "  esac\n}\n\n_searchpath \"$@\"\n";
}

}  // namespace Corvane::PathManagement::tool
