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
/// Findings.
enum class Outcome : std::uint8_t {
  Found = 0,
  NotFound = 1,
  Clean = Found,
  Findings = NotFound,
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
  std::shared_ptr<const SilentStreams> silence = {};  // set by --exit-code; null without it

  void AddTo(CommandLine& commandLine);
  /// Adds --exit-code, for a command whose exit code is an answer. With --exit-code, nothing is
  /// written while these options live; an exception outlives them and is still reported.
  void AddExitCodeTo(CommandLine& commandLine);
};

/// Writes data to standard output.
///
/// Errors: `std::system_error` when the data cannot be written.
class Output {
 public:
  explicit Output(const OutputOptions& options);

  [[nodiscard]] bool IsJson() const noexcept { return json; }

  /// `bytes` as they are printed: unchanged, or on a terminal as `GetTextForTerminal`.
  [[nodiscard]] std::string GetShown(const std::string& bytes) const;
  [[nodiscard]] std::string GetShown(const ustring& text) const { return GetShown(GetBytes(text)); }

  /// `text` in colour, if the output has colour.
  [[nodiscard]] std::string GetPainted(std::string_view text, Paint paint) const;

  /// Writes a line with `path`, its last part emphasised.
  void WritePath(const ustring& path) const;
  /// Writes a line of other data. Names in `text` must come from `GetShown`.
  void WriteLine(std::string_view text) const;
  /// Writes the line "label: value"; `value` need not come from `GetShown`.
  void WriteField(std::string_view label, const std::string& value) const;
  /// Writes `object` as JSON on one line.
  void WriteObject(const nlohmann::ordered_json& object) const;

 private:
  bool json;
  char lineEnd;
  bool toTerminal;
  bool color;
};

/// How many characters the UTF-8 `text` has.
[[nodiscard]] std::size_t GetWidth(std::string_view text);

/// `text`, filled up with blanks at its end to at least `width` characters.
[[nodiscard]] std::string GetPadded(std::string text, std::size_t width);

using json::AddText;

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_OUTPUT_H
