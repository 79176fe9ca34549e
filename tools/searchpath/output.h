#ifndef SEARCHPATH_TOOLS_SEARCHPATH_OUTPUT_H
#define SEARCHPATH_TOOLS_SEARCHPATH_OUTPUT_H

#include "json/json_text.h"
#include "searchpath/model/ustring.h"
#include "standard_streams.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Corvane::PathManagement::tool {

class CommandLine;
class SilentStreams;

/// The exit code of a command. A question has the outcomes Found and NotFound, a check Clean and
/// Findings. Work that answers no question is Done. All of them can be Failed.
enum class Outcome : std::uint8_t {
  Found = 0,
  NotFound = 1,
  Clean = Found,
  Findings = NotFound,
  Done = Found,
  Failed = 2
};

/// What the colour of a word expresses.
enum class Paint : std::uint8_t { Emphasis, Good, Bad, Notice };

/// The options that say how data is written.
struct OutputOptions {
  bool json = false;
  bool print0 = false;
  std::optional<std::string> color;
  bool exitCodeOnly = false;
  /// Silences standard output and standard error while it exists; null without --exit-code.
  std::shared_ptr<const SilentStreams> silence = {};

  /// Adds all options but --exit-code.
  void AddTo(CommandLine& commandLine);
  /// Adds --exit-code, for a command whose exit code is an answer. It silences the program from the
  /// end of `CommandLine::Parse` until these options are destroyed. An exception that ends the
  /// command destroys them before it is caught, so it is still reported.
  void AddExitCodeTo(CommandLine& commandLine);
};

/// Writes data to standard output.
///
/// Errors: `std::system_error` when the data cannot be written.
class Output {
 public:
  explicit Output(const OutputOptions& options);

  [[nodiscard]] bool IsJson() const noexcept { return isJson; }

  /// `bytes` as they are printed: unchanged, or on a terminal as `GetTextForTerminal` shows them.
  [[nodiscard]] std::string GetShown(const std::string& bytes) const;
  [[nodiscard]] std::string GetShown(const ustring& text) const { return GetShown(GetBytes(text)); }

  /// `text` in colour, if the output has colour.
  [[nodiscard]] std::string GetPainted(std::string_view text, Paint paint) const;

  /// Writes a line with `path`, its last part emphasised. Passes `path` through `GetShown`.
  void WritePath(const ustring& path) const;
  /// Writes a line with any other data. The caller has passed all names in `text` through
  /// `GetShown`.
  void WriteLine(std::string_view text) const;
  /// Writes the line "label: value". Passes `value` through `GetShown`.
  void WriteField(std::string_view label, const std::string& value) const;
  /// Writes `object` as JSON on one line.
  void WriteObject(const nlohmann::ordered_json& object) const;

  /// What `WriteLine` and `WriteObject` write. Threads: any; so much data can be made ready by
  /// several threads, to be written by `WriteData`.
  [[nodiscard]] std::string GetLine(std::string text) const;
  [[nodiscard]] std::string GetObjectLine(const nlohmann::ordered_json& object) const;

 private:
  bool isJson;
  char lineEnd;
  bool toTerminal;
  bool color;
};

/// How many code points the UTF-8 `text` has. Columns are aligned by this number.
[[nodiscard]] std::size_t GetWidth(std::string_view text);

/// `text`, filled up with blanks at its end to a `GetWidth` of at least `width`.
[[nodiscard]] std::string GetPadded(std::string text, std::size_t width);

/// Adds a text to a JSON object. Commands fill the objects for `Output::WriteObject` so.
using json::AddText;

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_OUTPUT_H
