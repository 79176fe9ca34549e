#include "note_sections.h"

#include <algorithm>

namespace Corvane::PathManagement::tool {

namespace {

constexpr std::string_view kIndentation = "  ";
constexpr std::string_view kExit = "Exit: ";

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

}  // namespace

bool NoteSection::IsTable() const {
  return std::ranges::any_of(lines, [](const std::string& line) {
    // Lines have lost their own indentation: two blanks separate columns, or indent further.
    return line.find(kIndentation) != std::string::npos || line.starts_with('{');
  });
}

std::vector<NoteSection> SplitNotes(std::string_view notes) {
  std::vector<NoteSection> sections;
  bool isOpen = false;  // whether a line that is not indented continues the section
  for (std::string_view line : SplitLines(notes)) {
    const bool isIndented = line.starts_with(kIndentation);
    const bool isExit = line.starts_with(kExit);
    const bool isTitle = !isIndented && line.ends_with(':');
    if (isTitle) sections.push_back({std::string(line.substr(0, line.size() - 1)), {}});
    if (isExit) sections.push_back({"Exit status", {}});
    if (!isTitle && !isExit && !isIndented && !isOpen && !line.empty()) sections.push_back({});
    isOpen = !line.empty() && !isTitle;
    if (isExit) line.remove_prefix(kExit.size());
    if (isIndented) line.remove_prefix(kIndentation.size());
    if (!isTitle && !line.empty()) sections.back().lines.emplace_back(line);
  }
  return sections;
}

std::vector<std::string> SplitIndented(std::string_view text) {
  std::vector<std::string> lines;
  for (std::string_view line : SplitLines(text)) {
    if (line.starts_with(kIndentation)) line.remove_prefix(kIndentation.size());
    lines.emplace_back(line);
  }
  return lines;
}

}  // namespace Corvane::PathManagement::tool
