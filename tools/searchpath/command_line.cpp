#include "command_line.h"

#include "searchpath/model/byte_text.h"
#include "standard_streams.h"
#include "suggestion.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace Corvane::PathManagement::tool {

namespace {

constexpr std::size_t kHelpColumn = 22;  // where the texts on options begin

// `argument` as it is typed in a shell.
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

// For "--path=" the parser would take the next argument as the value.
std::vector<std::string> SplitEmptyValues(const std::vector<std::string>& arguments) {
  std::vector<std::string> split;
  bool onlyOperands = false;
  for (const std::string& argument : arguments) {
    onlyOperands = onlyOperands || argument == "--";
    if (!onlyOperands && argument.starts_with("--") && argument.find('=') == argument.size() - 1) {
      split.insert(split.end(), {argument.substr(0, argument.size() - 1), ""});
    } else {
      split.push_back(argument);
    }
  }
  return split;
}

void WriteVersion() { WriteData("searchpath " SEARCHPATH_VERSION "\n"); }

}  // namespace

CommandLine::CommandLine(const CommandText& description)
    : text(description), notes(description.notes), app(std::make_unique<CLI::App>()) {
  app->set_help_flag();
  app->allow_extras();
  app->option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

CommandLine::~CommandLine() = default;

void CommandLine::AddFlag(const std::string& names, bool& value, const std::string& help) {
  app->add_flag(names, value, help);
}

void CommandLine::AddFlagForOperands(const std::string& name, bool& value,
                                     const std::string& help) {
  AddFlag(name, value, help);
  flagForOperands = name;
  operandsAreElsewhere = &value;
}

void CommandLine::AddValue(const std::string& name, const char* valueName,
                           std::optional<std::string>& value, const std::string& help) {
  const auto take = [&value](const CLI::results_t& results) {
    value = results.back();
    return true;
  };
  app->add_option(name, take, help)->type_name(valueName);
}

void CommandLine::AddValues(const std::string& name, const char* valueName,
                            std::vector<std::string>& values, const std::string& help) {
  // A container as the option's variable would make the parser read "[a,b]" as a list.
  const auto take = [&values](const CLI::results_t& results) {
    values = results;
    return true;
  };
  app->add_option(name, take, help)->type_name(valueName)->take_all();
}

bool CommandLine::Parse(const std::vector<std::string>& arguments) {
  bool shortHelp = false;
  bool fullHelp = false;
  bool version = false;
  AddFlag("-h", shortHelp, "this help; --help adds examples and rules");
  AddFlag("--help", fullHelp, "");
  AddFlag("--version", version, "");
  typed = arguments;
  std::vector<std::string> reversed = SplitEmptyValues(arguments);
  std::reverse(reversed.begin(), reversed.end());  // the order that the parser expects
  try {
    app->parse(std::move(reversed));
  } catch (const CLI::ArgumentMismatch&) {
    throw UsageError(typed.back() + " needs a value after it; see searchpath " + text.name + " -h");
  } catch (const CLI::ParseError& error) {
    throw UsageError(std::string(error.what()) + "; see searchpath " + text.name + " -h");
  }
  if (version) WriteVersion();
  if (shortHelp || fullHelp) WriteData(GetHelp(fullHelp));
  if (version || shortHelp || fullHelp) return false;
  TakeOperands();
  if (afterParse) afterParse();
  return true;
}

// The operands are what the parser leaves over. As an option of the parser, they would be read as lists,
// and "-1" would be one of them.
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
  for (const CLI::Option* option : app->get_options()) {
    for (const std::string& name : option->get_lnames()) known.push_back(name);
  }
  const std::string name = argument.substr(0, argument.find('='));
  std::string nearest;
  if (name.starts_with("--")) nearest = FindNearest(name.substr(2), known);
  if (!nearest.empty()) {
    throw UsageError("unknown option " + Quoted(name) + "; did you mean --" + nearest + "?");
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
  for (const CLI::Option* option : app->get_options()) {
    if (option->get_description().empty()) continue;
    std::string line = "  " + option->get_name(false, true);
    if (const auto comma = line.find(','); comma != std::string::npos) line.insert(comma + 1, " ");
    if (option->get_type_size() != 0) line += ' ' + option->get_type_name();
    line.resize(std::max(line.size() + 1, kHelpColumn), ' ');
    help += line + option->get_description() + '\n';
  }
  return full ? help + '\n' + notes : help;
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

bool AnswerHelp(const std::string& word, const char* help, const char* examples) {
  const bool isFull = word == "--help";
  if (isFull) WriteData(std::string("Examples:\n") + examples + '\n');
  if (isFull || word == "-h") WriteData(help);
  if (word == "--version") WriteVersion();
  return isFull || word == "-h" || word == "--version";
}

}  // namespace Corvane::PathManagement::tool
