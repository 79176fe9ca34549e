#include "shell_words.h"

#include <cstddef>

namespace Corvane::PathManagement::tool {

std::vector<std::string> SplitShellWords(std::string_view line) {
  std::vector<std::string> words;
  char quote = '\0';
  bool isInWord = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (quote == '\0' && std::string_view(" \t\r\n").find(c) != std::string_view::npos) {
      isInWord = false;
      continue;
    }
    if (quote == '\0' && line.substr(i, 2) == "\\\n") {  // a continued line: both are dropped
      ++i;
      continue;
    }
    if (!isInWord) words.emplace_back();
    isInWord = true;
    // Within double quotes, a backslash stands for itself before most characters.
    const bool escapes =
        c == '\\' && quote != '\'' && i + 1 < line.size() &&
        (quote == '\0' || std::string_view("$`\"\\\n").find(line[i + 1]) != std::string_view::npos);
    if (escapes) {
      if (line[++i] != '\n') words.back() += line[i];
    } else if (c == quote) {
      quote = '\0';
    } else if (quote == '\0' && (c == '\'' || c == '"')) {
      quote = c;
    } else {
      words.back() += c;
    }
  }
  return words;
}

}  // namespace Corvane::PathManagement::tool
