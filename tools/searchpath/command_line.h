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

/// A command cannot do what its command line asks for: the words are wrong, or what they name
/// cannot be used. The message is one line that says why and, where something would help, what to
/// type instead.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The texts of a command's help, without the texts on its options.
struct CommandText {
  const char* name;
  const char* operands;  ///< "NAME..."; "[NAME...]" if they may be left out; "" for no operands
  const char* purpose;
  const char* examples;
  const char* notes;  ///< further paragraphs, which --help shows and -h does not
};

class CommandLine;

/// What a command is called with: the words typed, or instead a request to describe itself.
struct Arguments {
  std::vector<std::string> words = {};  ///< what was typed after the name of the command
  /// If set, the command does not run: `CommandLine::Parse` only calls this function, with the
  /// options and texts of the command in `commandLine`.
  std::function<void(const CommandLine& commandLine)> describe = {};
};

/// An option as the help shows it.
struct OptionText {
  std::vector<std::string> names;  ///< "-a", "--all"
  std::string valueName;           ///< empty for a flag
  std::string help;
  std::vector<std::string> words = {};  ///< values that completion offers, if some can be named
  bool isRepeated = false;              ///< whether all its values count, not only the last
  bool isListed = true;                 ///< whether -h and --help list it; the manual always does
};

/// The options, the operands and the help of one command.
class CommandLine {
 public:
  explicit CommandLine(const CommandText& description);
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;
  ~CommandLine();

  // `Parse` sets the variables of the options that were typed; all variables have to exist until it
  // returns. `names` is "--all" or "-a,--all".
  void AddFlag(const std::string& names, bool& value, const std::string& help);
  // For an option with a value; the last value typed counts. `words` are values that completion
  // offers; `Parse` accepts any other value, too.
  void AddValue(const std::string& name, const char* valueName, std::optional<std::string>& value,
                const std::string& help, std::vector<std::string> words = {});
  // The same for an option whose values all count.
  void AddValues(const std::string& name, const char* valueName, std::vector<std::string>& values,
                 const std::string& help, std::vector<std::string> words = {});

  /// As `AddFlag`, for the one flag with which the command reads its operands from standard input;
  /// `Parse` then refuses operands that are typed.
  void AddFlagForOperands(const std::string& name, bool& value, const std::string& help);

  /// Has `Parse` call `work` at its end, when all variables are set. If several functions are
  /// added, they are called in the order in which they were added.
  void AfterParse(std::function<void()> work) { afterParse.push_back(std::move(work)); }

  /// Adds text to the notes, which --help shows.
  void AddNotes(const char* more) { notes += more; }

  /// Sets the variables and the operands. Returns false when the command is not to run: the
  /// arguments ask for help or the version, which `Parse` writes, or `Arguments::describe` is set.
  ///
  /// Precondition: called once.
  /// Errors: `UsageError`, also when operands are missing, or typed beside the flag of
  /// `AddFlagForOperands`; what the work of `AfterParse` throws.
  [[nodiscard]] bool Parse(const Arguments& arguments);

  [[nodiscard]] const std::vector<std::string>& GetOperands() const noexcept { return operands; }

  [[nodiscard]] const CommandText& GetText() const noexcept { return text; }
  [[nodiscard]] const std::string& GetNotes() const noexcept { return notes; }
  [[nodiscard]] const std::vector<OptionText>& GetOptions() const noexcept { return options; }

  /// The command line as it was typed, quoted for a shell, with `addition` right after the name of
  /// the command.
  [[nodiscard]] std::string GetLineWith(const std::string& addition) const;

 private:
  void AddHelp();
  /// Null when there is no option of that name.
  [[nodiscard]] const OptionText* FindOption(const std::string& name) const;
  [[nodiscard]] std::vector<std::string> GetWordsForParser() const;
  void TakeOperands();
  void CheckOperands() const;
  [[noreturn]] void RefuseOption(const std::string& argument) const;
  [[nodiscard]] std::string GetHelp(bool full) const;

  CommandText text;
  std::string notes;               // those of `text`, and those of `AddNotes`
  std::unique_ptr<CLI::App> app;   // the parser
  std::vector<std::string> typed;  // all words after the name of the command
  std::vector<std::function<void()>> afterParse;
  std::vector<OptionText> options;
  bool asksForBriefHelp = false;
  bool asksForFullHelp = false;
  bool asksForVersion = false;
  std::string flagForOperands;                 // the name of the flag of `AddFlagForOperands`
  const bool* operandsAreElsewhere = nullptr;  // the variable of that flag; null when there is none
  std::vector<std::string> operands;
};

/// The words that an option takes, each with its meaning.
template <class Meaning>
using WordList = std::vector<std::pair<std::string, Meaning>>;

/// The words of `words`, without their meanings.
template <class Meaning>
[[nodiscard]] std::vector<std::string> GetWords(const WordList<Meaning>& words) {
  std::vector<std::string> known;
  for (const auto& [word, meaning] : words) known.push_back(word);
  return known;
}

/// The meaning of the word `value`. Errors: `UsageError`, which names `option`, when it is not
/// among `words`.
template <class Meaning>
[[nodiscard]] Meaning ChooseValue(const std::string& option, const std::string& value,
                                  const WordList<Meaning>& words) {
  for (const auto& [word, meaning] : words) {
    if (word == value) return meaning;
  }
  throw UsageError(option + " is one of " + Join(GetWords(words), ", ") + ", not \"" + value + '"');
}

/// `text` as a number; `nullopt` unless the whole text is a number of this type.
template <class Number>
[[nodiscard]] std::optional<Number> ParseNumber(const std::string& text) {
  Number number{};
  const char* const end = text.data() + text.size();
  const auto [last, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

/// The value `typed` for `option`; `nullopt` when none was typed. Errors: `UsageError` when the
/// value is not a whole number from 0 to 2^32 - 1.
[[nodiscard]] std::optional<std::chrono::milliseconds> GetMilliseconds(
    const std::string& option, const std::optional<std::string>& typed);

/// Words of the command line as texts.
[[nodiscard]] std::vector<ustring> GetTexts(const std::vector<std::string>& words);

/// The paragraph of the help on environment variables.
extern const char* const kEnvironmentNotes;

/// Answers -h, --help, -V and --version, typed where a command is expected: -h with `help`, --help
/// with `help`, `examples` and `kEnvironmentNotes`. Returns whether `word` is one of these options;
/// if not, writes nothing.
[[nodiscard]] bool AnswerHelp(const std::string& word, const std::string& help,
                              const char* examples);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_COMMAND_LINE_H
