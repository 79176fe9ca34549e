#include "command_line.h"

#include "other_names.h"
#include "searchpath/model/byte_text.h"
#include "standard_streams.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace Corvane::PathManagement::tool {

namespace {

constexpr std::size_t kHelpColumn = 22;  // where the descriptions of options begin

// `argument`, quoted for a shell if necessary.
std::string GetShellWord(const std::string& argument) {
  const auto isPlain = [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::string_view("%+,-./:=@_").find(c) != std::string_view::npos;
  };
  if (!argument.empty() && std::all_of(argument.begin(), argument.end(), isPlain)) return argument;
  std::string word = "'";
  for (const char c : argument) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return word + '\'';
}

// The names in "-a,--all" or "--all".
std::vector<std::string> SplitNames(const std::string& names) {
  const std::size_t comma = names.find(',');
  if (comma == std::string::npos) return {names};
  return {names.substr(0, comma), names.substr(comma + 1)};
}

void WriteVersion() { WriteData("searchpath " SEARCHPATH_VERSION "\n"); }

}  // namespace

const char* const kEnvironmentNotes =
    "Environment:\n"
    "  XDG_CONFIG_HOME  has the stored path and profiles.json in searchpath/; when it\n"
    "                   is not set, $HOME/.config has them\n"
    "  NO_COLOR         when set and not empty, no colour unless --color always\n"
    "  TERM             when empty or \"dumb\", no colour and no progress\n"
    "  PATH             where which and --path-of look for programs\n"
    "  CC, CXX          the compilers that --path-of cc and c++ ask\n"
    "  SEARCHPATH_LOG   a file, or - for standard error, for a log of what is read\n"
    "                   and how long that takes\n";

CommandLine::CommandLine(const CommandText& description)
    : text(description), notes(description.notes), app(std::make_unique<CLI::App>()) {
  app->set_help_flag();  // no help of the parser's own
  app->allow_extras();   // see `TakeOperands`
  app->option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

CommandLine::~CommandLine() = default;

void CommandLine::AddFlag(const std::string& names, bool& value, const std::string& help) {
  app->add_flag(names, value);
  options.push_back({.names = SplitNames(names), .valueName = "", .help = help});
}

void CommandLine::AddFlagForOperands(const std::string& name, bool& value,
                                     const std::string& help) {
  AddFlag(name, value, help);
  flagForOperands = name;
  operandsAreElsewhere = &value;
}

void CommandLine::AddValue(const std::string& name, const char* valueName,
                           std::optional<std::string>& value, const std::string& help,
                           std::vector<std::string> words) {
  // By the policy that the constructor sets, the parser passes only the last value.
  const auto take = [&value](const CLI::results_t& results) {
    value = results.back();
    return true;
  };
  app->add_option(name, take);
  options.push_back(
      {.names = {name}, .valueName = valueName, .help = help, .words = std::move(words)});
}

void CommandLine::AddValues(const std::string& name, const char* valueName,
                            std::vector<std::string>& values, const std::string& help,
                            std::vector<std::string> words) {
  // A container as the option's variable would make the parser read "[a,b]" as a list.
  const auto take = [&values](const CLI::results_t& results) {
    values = results;
    return true;
  };
  app->add_option(name, take)->take_all();
  options.push_back({.names = {name},
                     .valueName = valueName,
                     .help = help,
                     .words = std::move(words),
                     .isRepeated = true});
}

// `Parse` calls this, so that these options come after those of the command. The help lists only -h
// of them.
void CommandLine::AddHelp() {
  AddFlag("-h", asksForBriefHelp, "this help; --help adds examples and rules");
  AddFlag("--help", asksForFullHelp, "the help with examples and rules");
  options.back().isListed = false;
  AddFlag("-V,--version", asksForVersion, "the version");
  options.back().isListed = false;
}

const OptionText* CommandLine::FindOption(const std::string& name) const {
  const auto found = std::find_if(options.begin(), options.end(), [&](const OptionText& option) {
    return std::find(option.names.begin(), option.names.end(), name) != option.names.end();
  });
  return found == options.end() ? nullptr : &*found;
}

// The words that were typed, as the parser needs them: "--path=" becomes "--path" and "", because
// the parser would take the next word as the value of "--path=".
std::vector<std::string> CommandLine::GetWordsForParser() const {
  std::vector<std::string> words;
  for (auto word = typed.begin(); word != typed.end(); ++word) {
    if (*word == "--") {
      words.insert(words.end(), word, typed.end());
      break;
    }
    const std::size_t equals = word->find('=');
    const std::string name = word->substr(0, equals);
    const OptionText* const option = FindOption(name);
    const bool takesValue = option != nullptr && !option->valueName.empty();
    if (option != nullptr && !takesValue && equals != std::string::npos) {
      throw UsageError(name + " takes no value; leave out " + Quoted(word->substr(equals)));
    }
    if (takesValue && equals == word->size() - 1) {
      words.insert(words.end(), {name, ""});
      continue;
    }
    words.push_back(*word);
    // The next word is the value of the option, even if it looks like an option.
    if (takesValue && equals == std::string::npos && word + 1 != typed.end()) {
      words.push_back(*++word);
    }
  }
  return words;
}

bool CommandLine::Parse(const Arguments& arguments) {
  AddHelp();
  if (arguments.describe) {
    arguments.describe(*this);
    return false;
  }
  typed = arguments.words;
  std::vector<std::string> reversed = GetWordsForParser();
  std::reverse(reversed.begin(), reversed.end());  // the order that the parser expects
  try {
    app->parse(std::move(reversed));
  } catch (const CLI::ArgumentMismatch&) {  // only the last word can lack a value
    throw UsageError(typed.back() + " needs a value after it; see searchpath " + text.name + " -h");
  } catch (const CLI::ParseError& error) {
    throw UsageError(std::string(error.what()) + "; see searchpath " + text.name + " -h");
  }
  if (asksForVersion) WriteVersion();
  if (asksForBriefHelp || asksForFullHelp) WriteData(GetHelp(asksForFullHelp));
  if (asksForVersion || asksForBriefHelp || asksForFullHelp) return false;
  TakeOperands();
  for (const auto& work : afterParse) work();
  return true;
}

// The operands are the words that the parser leaves over. If they were declared to the parser, it
// would read "[a,b]" as a list, and "-1" as an operand.
void CommandLine::TakeOperands() {
  bool onlyOperands = false;
  for (const std::string& argument : app->remaining()) {
    if (!onlyOperands && argument == "--") {
      onlyOperands = true;
    } else if (!onlyOperands && argument.size() > 1 && argument.starts_with('-')) {
      RefuseOption(argument);
    } else {
      operands.push_back(argument);
    }
  }
  CheckOperands();
}

void CommandLine::CheckOperands() const {
  const std::string wanted = text.operands;
  if (operandsAreElsewhere != nullptr && *operandsAreElsewhere) {
    if (operands.empty()) return;
    throw UsageError(flagForOperands + " takes " + wanted + " from standard input; leave out " +
                     Quoted(operands[0]) + ", or the option");
  }
  if (wanted.empty() && !operands.empty()) {
    throw UsageError(std::string(text.name) + " takes options only, not " + Quoted(operands[0]));
  }
  if (!wanted.empty() && !wanted.starts_with('[') && operands.empty()) {
    throw UsageError(std::string(text.name) + " needs " + wanted +
                     "; type: " + GetLineWith(wanted));
  }
}

void CommandLine::RefuseOption(const std::string& argument) const {
  std::vector<std::string> known;
  for (const OptionText& option : options) {
    known.insert(known.end(), option.names.begin(), option.names.end());
  }
  const bool hasName = !argument.starts_with("--=");  // else there is no name before "="
  const std::string name = hasName ? argument.substr(0, argument.find('=')) : argument;
  const std::string meant = FindOptionMeant(name, known);
  if (!meant.empty()) {
    throw UsageError("unknown option " + Quoted(name) + "; did you mean " + meant + "?");
  }
  // --flag takes one word only, so further flags for the compiler come here.
  const auto position = std::find(typed.begin(), typed.end(), argument);
  if (std::find(typed.begin(), position, "--flag") != position) {
    throw UsageError("unknown option " + Quoted(name) +
                     "; a flag for the compiler is typed as --flag " + GetShellWord(argument));
  }
  throw UsageError("unknown option " + Quoted(name) + "; see searchpath " + text.name +
                   " -h, and write -- before operands that begin with -");
}

std::string CommandLine::GetLineWith(const std::string& addition) const {
  std::string line = std::string("searchpath ") + text.name + ' ' + addition;
  for (const std::string& argument : typed) line += ' ' + GetShellWord(argument);
  return line;
}

std::string CommandLine::GetHelp(bool full) const {
  std::string help;
  if (full) help = std::string("Examples:\n") + text.examples + '\n';
  help += std::string("Usage: searchpath ") + text.name + " [OPTION]..." +
          (*text.operands == '\0' ? "" : " ") + text.operands + '\n' + text.purpose +
          "\n\nOptions:\n";
  for (const OptionText& option : options) {
    if (!option.isListed) continue;
    std::string line = "  " + Join(option.names, ", ");
    if (!option.valueName.empty()) line += ' ' + option.valueName;
    line.resize(std::max(line.size() + 1, kHelpColumn), ' ');
    help += line + option.help + '\n';
  }
  if (!full) return help;
  // One empty line before each paragraph; the notes of some commands end with one.
  return help + '\n' + notes + (notes.ends_with("\n\n") ? "" : "\n") + kEnvironmentNotes;
}

std::optional<std::chrono::milliseconds> GetMilliseconds(const std::string& option,
                                                         const std::optional<std::string>& typed) {
  if (!typed) return std::nullopt;
  const auto number = ParseNumber<std::uint32_t>(*typed);
  if (number) return std::chrono::milliseconds(*number);
  throw UsageError(option + " is a number of milliseconds, not " + Quoted(*typed));
}

std::vector<ustring> GetTexts(const std::vector<std::string>& words) {
  std::vector<ustring> texts(words.size());
  std::transform(words.begin(), words.end(), texts.begin(), TextFromBytes);
  return texts;
}

bool AnswerHelp(const std::string& word, const std::string& help, const char* examples) {
  const bool isFull = word == "--help";
  const bool isVersion = word == "-V" || word == "--version";
  if (isFull) WriteData(std::string("Examples:\n") + examples + '\n');
  if (isFull || word == "-h") WriteData(help);
  if (isFull) WriteData(std::string("\n") + kEnvironmentNotes);
  if (isVersion) WriteVersion();
  return isFull || word == "-h" || isVersion;
}

}  // namespace Corvane::PathManagement::tool
