#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_LINE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_LINE_H

#include "phrases.h"
#include "searchpath/model/ustring.h"

#include <charconv>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace Corvane::PathManagement::tool {

/// What was typed cannot be done. The message is one line that says why and what to type instead.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What the help of a command says beside its options.
struct CommandText {
  const char* name;
  const char* operands;  ///< "NAME...", or "[NAME...]" where there may be none
  const char* purpose;
  const char* examples;
  const char* notes;  ///< what --help says at its end
};

/// The arguments of one command: its options, its operands and the help on both.
class CommandLine {
 public:
  explicit CommandLine(const CommandText& description);
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;
  ~CommandLine();

  // The variables are set by `Parse`. A value that is given twice counts as it was given last.
  void AddFlag(const std::string& names, bool& value, const std::string& help);
  void AddValue(const std::string& name, const char* valueName, std::optional<std::string>& value,
                const std::string& help);
  void AddValues(const std::string& name, const char* valueName, std::vector<std::string>& values,
                 const std::string& help);

  /// As `AddFlag`, for a flag that stands for the operands: with it there are none.
  void AddFlagForOperands(const std::string& name, bool& value, const std::string& help);

  /// More for --help to say.
  void AddNotes(const char* more) { notes += more; }

  /// Returns false when help was asked for; it is then written.
  ///
  /// Errors: `UsageError`, also when there is no operand though the command needs one, or one
  /// beside a flag that stands for them.
  [[nodiscard]] bool Parse(const std::vector<std::string>& arguments);

  [[nodiscard]] const std::vector<std::string>& GetOperands() const noexcept { return operands; }

  /// The line to type for the same with `addition` among the options.
  [[nodiscard]] std::string GetLineWith(const std::string& addition) const;

 private:
  void TakeOperands();
  void CheckOperands() const;
  [[noreturn]] void RefuseOption(const std::string& argument) const;
  [[nodiscard]] std::string GetHelp(bool full) const;

  CommandText text;
  std::string notes;
  std::unique_ptr<CLI::App> app;
  std::vector<std::string> typed;
  std::string flagForOperands;
  const bool* operandsAreElsewhere = nullptr;  // the variable of that flag
  std::vector<std::string> operands;
};

/// The meaning of `value`, one of a few words. Errors: `UsageError` for any other.
template <class Meaning>
[[nodiscard]] Meaning ChooseValue(const std::string& option, const std::string& value,
                                  const std::vector<std::pair<std::string, Meaning>>& words) {
  std::vector<std::string> known;
  for (const auto& [word, meaning] : words) {
    if (word == value) return meaning;
    known.push_back(word);
  }
  throw UsageError(option + " is one of " + Join(known, ", ") + ", not \"" + value + '"');
}

/// `text` as a number of its type; empty when it is none. Nothing may stand before or behind it.
template <class Number>
[[nodiscard]] std::optional<Number> ParseNumber(const std::string& text) {
  Number number{};
  const char* const end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

/// Words of the command line as texts.
[[nodiscard]] std::vector<ustring> GetTexts(const std::vector<std::string>& words);

/// Answers -h, --help and --version where a command is expected. Returns whether `word` is one of
/// them.
[[nodiscard]] bool AnswerHelp(const std::string& word, const char* help, const char* examples);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_LINE_H
