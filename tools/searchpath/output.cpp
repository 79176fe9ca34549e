#include "output.h"

#include "command_line.h"
#include "searchpath/model/byte_text.h"
#include "text_for_terminal.h"

#include <nlohmann/json.hpp>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

bool IsColorRefused() {
  const char* value = std::getenv("NO_COLOR");
  return value != nullptr && *value != '\0';
}

bool UsesColor(const OutputOptions& options, bool toTerminal) {
  const auto choice = ChooseValue<std::optional<bool>>(
      "--color", options.color.value_or("auto"),
      {{"auto", std::nullopt}, {"always", true}, {"never", false}});
  return choice.value_or(toTerminal && !IsColorRefused() && TerminalTakesEscapeSequences());
}

}  // namespace

void OutputOptions::AddTo(CommandLine& commandLine) {
  commandLine.AddFlag("--json", json, "one JSON object a line");
  commandLine.AddFlag("-0,--print0", print0, "end each line with NUL instead of a line break");
  commandLine.AddValue("--color", "WHEN", color, "auto, always or never",
                       {"auto", "always", "never"});
}

void OutputOptions::AddExitCodeTo(CommandLine& commandLine) {
  commandLine.AddFlag("--exit-code", exitCodeOnly, "print nothing: the exit code is the answer");
  commandLine.AfterParse([this] {
    if (exitCodeOnly) silence = std::make_shared<const SilentStreams>();
  });
}

Output::Output(const OutputOptions& options)
    : isJson(options.json),
      lineEnd(options.print0 ? '\0' : '\n'),
      toTerminal(isatty(STDOUT_FILENO) != 0),
      // With --print0 a program reads the names. Escape sequences would become part of them.
      color(UsesColor(options, toTerminal) && !options.print0) {
  if (options.json && options.print0) {
    throw UsageError(
        "--json and --print0 cannot be given together; JSON escapes line breaks in names");
  }
}

std::string Output::GetShown(const std::string& bytes) const {
  return toTerminal ? GetTextForTerminal(bytes) : bytes;
}

void Output::WritePath(const ustring& path) const {
  const std::string shown = GetShown(path);
  const std::size_t nameBegin = shown.rfind('/') + 1;  // 0 without a "/"
  WriteLine(shown.substr(0, nameBegin) +
            GetPainted(std::string_view(shown).substr(nameBegin), Paint::Emphasis));
}

void Output::WriteLine(std::string_view text) const {
  WriteData(text);
  WriteData({&lineEnd, 1});
}

void Output::WriteField(std::string_view label, const std::string& value) const {
  WriteLine(GetPainted(label, Paint::Emphasis) + ": " + GetShown(value));
}

void Output::WriteObject(const nlohmann::ordered_json& object) const {
  WriteData(GetObjectLine(object));
}

std::string Output::GetLine(std::string text) const {
  text.push_back(lineEnd);
  return text;
}

std::string Output::GetObjectLine(const nlohmann::ordered_json& object) const {
  std::string line = json::GetLine(object);
  // A terminal gets no control sequences. The escapes of `GetTextForTerminal` would not be JSON.
  if (toTerminal && GetTextForTerminal(line) != line) {
    line = json::GetLine(object, /*asciiOnly=*/true);
  }
  line.push_back('\n');
  return line;
}

std::string Output::GetPainted(std::string_view text, Paint paint) const {
  // In the order of the enumerators of `Paint`.
  constexpr std::array kStarts = {"\x1b[1m", "\x1b[32m", "\x1b[31m", "\x1b[33m"};
  if (!color) return std::string(text);
  return kStarts.at(static_cast<std::size_t>(paint)) + std::string(text) + "\x1b[0m";
}

std::size_t GetWidth(std::string_view text) {
  const auto beginsCharacter = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80;
  };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

std::string GetPadded(std::string text, std::size_t width) {
  const std::size_t own = GetWidth(text);
  return own < width ? std::move(text) + std::string(width - own, ' ') : text;
}

}  // namespace Corvane::PathManagement::tool
