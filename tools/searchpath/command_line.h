#ifndef SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_LINE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_LINE_H

#include "phrases.h"
#include "searchpath/model/ustring.h"

#include <charconv>
#include <chrono>
#include <functional>
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

/// The command line is wrong. The message is one line that says why and what to type instead.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The help of a command, but for its options.
struct CommandText {
  const char* name;
  const char* operands;  ///< "NAME...", or "[NAME...]" where there may be none
  const char* purpose;
  const char* examples;
  const char* notes;  ///< what --help says at its end
};

class CommandLine;

/// What stands behind the name of a command.
struct Arguments {
  std::vector<std::string> words = {};
  /// When this is set, it is called with what the command takes, and the command is not run.
  std::function<void(const CommandLine& commandLine)> describe = {};
};

/// An option as the help shows it.
struct OptionText {
  std::vector<std::string> names;  ///< "-a", "--all"
  std::string valueName;           ///< empty for a flag
  std::string help;
  std::vector<std::string> words = {};  ///< all that it takes, where these are few
  bool isRepeated = false;              ///< whether several values count, not the last one alone
  bool isBrief = true;                  ///< whether -h lists it
};

/// The options, the operands and the help of one command.
class CommandLine {
 public:
  explicit CommandLine(const CommandText& description);
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;
  ~CommandLine();

  // `Parse` sets the variables. When a value is given twice, the last one counts.
  void AddFlag(const std::string& names, bool& value, const std::string& help);
  // `words`, where there are few, are for completion.
  void AddValue(const std::string& name, const char* valueName, std::optional<std::string>& value,
                const std::string& help, std::vector<std::string> words = {});
  void AddValues(const std::string& name, const char* valueName, std::vector<std::string>& values,
                 const std::string& help, std::vector<std::string> words = {});

  /// As `AddFlag`, for a flag that replaces the operands.
  void AddFlagForOperands(const std::string& name, bool& value, const std::string& help);

  /// Does `work` at the end of `Parse`, when all variables are set; in the order of these calls.
  void AfterParse(std::function<void()> work) { afterParse.push_back(std::move(work)); }

  /// Adds text at the end of --help.
  void AddNotes(const char* more) { notes += more; }

  /// Returns false when the arguments ask for help or the version, and writes it; or for what the
  /// command takes.
  ///
  /// Errors: `UsageError`, also when the operands are missing, or given beside a flag that replaces
  /// them; what the work of `AfterParse` throws.
  [[nodiscard]] bool Parse(const Arguments& arguments);

  [[nodiscard]] const std::vector<std::string>& GetOperands() const noexcept { return operands; }

  [[nodiscard]] const CommandText& GetText() const noexcept { return text; }
  [[nodiscard]] const std::string& GetNotes() const noexcept { return notes; }
  [[nodiscard]] const std::vector<OptionText>& GetOptions() const noexcept { return options; }

  /// The command line as it was typed, with `addition` behind the command.
  [[nodiscard]] std::string GetLineWith(const std::string& addition) const;

 private:
  void AddHelp();
  void TakeOperands();
  void CheckOperands() const;
  [[noreturn]] void RefuseOption(const std::string& argument) const;
  [[nodiscard]] std::string GetHelp(bool full) const;

  CommandText text;
  std::string notes;
  std::unique_ptr<CLI::App> app;
  std::vector<std::string> typed;
  std::vector<std::function<void()>> afterParse;
  std::vector<OptionText> options;
  bool asksForBriefHelp = false;
  bool asksForFullHelp = false;
  bool asksForVersion = false;
  std::string flagForOperands;
  const bool* operandsAreElsewhere = nullptr;  // the variable of that flag
  std::vector<std::string> operands;
};

/// Words and what they mean.
template <class Meaning>
using WordList = std::vector<std::pair<std::string, Meaning>>;

/// The words alone.
template <class Meaning>
[[nodiscard]] std::vector<std::string> GetWords(const WordList<Meaning>& words) {
  std::vector<std::string> known;
  for (const auto& [word, meaning] : words) known.push_back(word);
  return known;
}

/// The meaning of the word `value`. Errors: `UsageError` when it is not among `words`.
template <class Meaning>
[[nodiscard]] Meaning ChooseValue(const std::string& option, const std::string& value,
                                  const WordList<Meaning>& words) {
  for (const auto& [word, meaning] : words) {
    if (word == value) return meaning;
  }
  throw UsageError(option + " is one of " + Join(GetWords(words), ", ") + ", not \"" + value + '"');
}

/// The number that `text` is; empty when it is not exactly one number of this type.
template <class Number>
[[nodiscard]] std::optional<Number> ParseNumber(const std::string& text) {
  Number number{};
  const char* const end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

/// The milliseconds that were typed for `option`; empty when it was not given. Errors: `UsageError`
/// when they are no number.
[[nodiscard]] std::optional<std::chrono::milliseconds> GetMilliseconds(
    const std::string& option, const std::optional<std::string>& typed);

/// Words of the command line as texts.
[[nodiscard]] std::vector<ustring> GetTexts(const std::vector<std::string>& words);

/// The variables of the environment that count, for help.
extern const char* const kEnvironmentNotes;

/// Answers -h, --help, -V and --version where a command is expected. Returns whether `word` is one of
/// them.
[[nodiscard]] bool AnswerHelp(const std::string& word, const std::string& help,
                              const char* examples);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_LINE_H
