#include "compilation_database.h"

#include "command_line.h"
#include "json_file.h"
#include "shell_words.h"
#include "standard_streams.h"

#include <cstddef>
#include <optional>
#include <set>
#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

using json::Field;

// `nullopt` if the file cannot be read: "@FILE" then stays a word, as it does for compilers.
std::optional<std::string> ReadFileOfArguments(const std::string& file) try {
  return ReadBytes(file);
} catch (const UsageError&) {
  return std::nullopt;
}

// Replaces each word "@FILE" by the words in FILE. Reads each file only once, since it may name
// itself.
void ReplaceFilesOfArguments(std::vector<std::string>& words, const std::string& folder) {
  std::set<std::string> seen;
  for (std::size_t i = 0; i < words.size();) {
    const std::string word = words[i];
    std::optional<std::string> text;
    if (word.starts_with('@') && seen.insert(word).second) {
      text = ReadFileOfArguments(GetAbsoluteName(folder, word.substr(1)));
    }
    if (!text) {
      ++i;
      continue;
    }
    // The next word to look at is the first of `more`, which may name a file of arguments, too.
    const std::vector<std::string> more = SplitShellWords(*text);
    const auto place = words.erase(words.begin() + static_cast<std::ptrdiff_t>(i));
    words.insert(place, more.begin(), more.end());
  }
}

// The words of a command that runs in `folder`; at least one.
std::vector<std::string> ReadWords(const Field& command, const std::string& folder) {
  const auto arguments = command.Find(u"arguments");
  const Field source = arguments ? *arguments : command.Get(u"command");
  std::vector<std::string> words;
  if (arguments) {
    for (const Field& word : source.GetElements()) {
      words.push_back(GetBytes(word.As<ustring>(u"a text")));  // `AsText` refuses empty ones
    }
  } else {
    words = SplitShellWords(GetBytes(source.AsText()));
  }
  ReplaceFilesOfArguments(words, folder);
  if (words.empty()) source.Refuse(json::JsonFault::WrongType, u"at least the compiler");
  return words;
}

}  // namespace

std::vector<CompileCommand> ReadCompilationDatabase(const std::string& file) {
  const auto bytes = ReadBytes(file);
  if (!bytes) throw UsageError("there is no compilation database " + Quoted(file));
  std::vector<CompileCommand> commands;
  // A large project has millions of words, so the limit on the number of values is one that no text
  // exceeds: each value takes at least a byte.
  ReadJson(file, *bytes, bytes->size(), [&](const Field& all) {
    for (const Field& each : all.GetElements()) {
      std::string folder = GetBytes(each.Get(u"directory").AsText());
      std::string source = GetBytes(each.Get(u"file").AsText());
      std::vector<std::string> words = ReadWords(each, folder);
      commands.push_back(
          {.folder = std::move(folder), .file = std::move(source), .words = std::move(words)});
    }
  });
  return commands;
}

std::string GetAbsoluteName(const std::string& folder, const std::string& name) {
  return name.starts_with('/') ? name : folder + '/' + name;
}

}  // namespace Corvane::PathManagement::tool
