#include "command_table.h"
#include "completions.h"
#include "phrases.h"

namespace Corvane::PathManagement::tool {

namespace {

// COMP_WORDBREAKS says where bash splits words: "--path=a:b" is one word, or up to five. From the
// word that is completed, `at` goes back over separators, such as ":" or "=:", and the folders
// before them, and ends at the option. The text SECOND is replaced by the commands of two
// words, such as "cache write".
constexpr const char* kBashBegin = R"(# Completion of searchpath for bash. Needs nothing but bash.

_searchpath() {
  local cur=${COMP_WORDS[COMP_CWORD]} at=$((COMP_CWORD - 1)) prefix= option command word
  local options= operands= kind= words= i
  COMPREPLY=()
  if [[ $cur == +([=:]) ]]; then
    at=$COMP_CWORD cur=
  elif [[ $cur == --*=* ]]; then
    option=${cur%%=*} prefix=$option= cur=${cur#*=}
  fi
  while ((at > 1)) && [[ ${COMP_WORDS[at]} == +([=:]) ]]; do
    at=$((at - 1))
    [[ ${COMP_WORDS[at]} == -* ]] || at=$((at - 1))
  done
  [[ $option ]] || option=${COMP_WORDS[at]%%=*}
  for ((i = 1; i < COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    [[ $word == -* ]] && break
    if [[ ! $command ]]; then
      command=$word
    else
      [[ "$command $word" == @(SECOND) ]] && command="$command $word"
      break
    fi
  done
)";

constexpr const char* kBashEnd = R"(  if [[ ! $kind ]]; then
    [[ $cur == -* ]] && words=$options kind=words || kind=$operands
  fi
  case $kind in
    path | folder)
      if [[ $kind == path && $cur == *:* ]]; then prefix+=${cur%:*}: cur=${cur##*:}; fi
      if [[ $kind == path && $cur == @* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -P "${prefix}@" -- "${cur#@}")
      else
        mapfile -t COMPREPLY < <(compgen -d -P "$prefix" -- "$cur")
      fi
      compopt -o filenames 2>/dev/null
      ;;
    file)
      mapfile -t COMPREPLY < <(compgen -f -P "$prefix" -- "$cur")
      compopt -o filenames 2>/dev/null
      ;;
    program) mapfile -t COMPREPLY < <(compgen -c -- "$cur") ;;
    words) mapfile -t COMPREPLY < <(compgen -W "$words" -P "$prefix" -- "$cur") ;;
  esac
  return 0
}

complete -F _searchpath searchpath
)";

// The value of `kind` for which `kBashEnd` makes the offer.
const char* GetWord(Completion completion) {
  switch (completion) {
    case Completion::File:
      return "file";
    case Completion::Folder:
      return "folder";
    case Completion::Path:
      return "path";
    case Completion::Program:
      return "program";
    case Completion::Words:
    case Completion::Command:
      return "words";
    case Completion::Nothing:
      break;
  }
  return "nothing";
}

// The case of `command` in the function: its options, its operands, and the values of each option.
std::string GetCase(const DescribedCommand& command, const std::string& allCommands) {
  std::string names;
  std::string values;
  for (const OptionText& option : command.options) {
    for (const std::string& name : option.names) names += (names.empty() ? "" : " ") + name;
    if (option.valueName.empty()) continue;
    const Completion completion = GetCompletion(option);
    values += "        " + Join(option.names, " | ") + ") kind=" + GetWord(completion);
    if (!option.words.empty()) values += " words='" + Join(option.words, " ") + '\'';
    values += " ;;\n";
  }
  const Completion operands = GetCompletion(command);
  std::string text = "    '" + command.name + "')\n      options='" + names +
                     "' operands=" + GetWord(operands) + '\n';
  if (operands == Completion::Command) text += "      words='" + allCommands + "'\n";
  if (!values.empty()) text += "      case $option in\n" + values + "      esac\n";
  return text + "      ;;\n";
}

}  // namespace

std::string GetBashCompletion(const std::vector<DescribedCommand>& commands) {
  std::vector<std::string> first;
  std::vector<std::string> twoWords;
  std::string cases;
  for (const auto& [word, purpose] : GetFirstWords()) {
    first.push_back(word);
    const auto second = GetSecondWords(commands, word);
    for (const std::string& each : second) {
      twoWords.push_back(std::string("\"").append(word).append(" ").append(each).append("\""));
    }
    if (second.empty()) continue;
    cases += "    " + word + ") operands=words words='" + Join(second, " ") +
             "' options='-h --help' ;;\n";
  }
  const std::string all = Join(first, " ");
  for (const DescribedCommand& command : commands) cases += GetCase(command, all);
  std::string begin = kBashBegin;
  const std::string placeholder = "SECOND";
  begin.replace(begin.find(placeholder), placeholder.size(), Join(twoWords, "|"));
  return begin + "  case $command in\n    '') operands=words words='" + all +
         "' options='-h --help -V --version' ;;\n" + cases + "  esac\n" + kBashEnd;
}

}  // namespace Corvane::PathManagement::tool
