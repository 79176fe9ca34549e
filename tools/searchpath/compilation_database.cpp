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

std::vector<std::string> ReadWords(const Field& command) {
  if (const auto arguments = command.Find(u"arguments")) {
    std::vector<std::string> words;
    for (const Field& word : arguments->GetElements()) {
      words.push_back(GetBytes(word.As<ustring>(u"a text")));
    }
    if (!words.empty()) return words;
    arguments->Refuse(json::JsonFault::WrongType, u"the compiler at least");
  }
  const Field line = command.Get(u"command");
  std::vector<std::string> words = SplitShellWords(GetBytes(line.AsText()));
  if (words.empty()) line.Refuse(json::JsonFault::WrongType, u"the compiler at least");
  return words;
}

// As for compilers, "@FILE" stays a word if there is no such file. Each file is read only once,
// since it may include itself.
void ReplaceFilesOfArguments(CompileCommand& command) {
  std::set<std::string> read;
  for (std::size_t i = 0; i < command.words.size();) {
    const std::string word = command.words[i];
    std::optional<std::string> text;
    if (word.starts_with('@') && read.insert(word).second) {
      text = ReadBytes(GetAbsoluteName(command.folder, word.substr(1)));
    }
    if (!text) {
      ++i;
      continue;
    }
    // The next word to look at is the first of these, which may be a file of arguments, too.
    const std::vector<std::string> more = SplitShellWords(*text);
    const auto place = command.words.erase(command.words.begin() + static_cast<std::ptrdiff_t>(i));
    command.words.insert(place, more.begin(), more.end());
  }
}

}  // namespace

std::vector<CompileCommand> ReadCompilationDatabase(const std::string& file) {
  const auto bytes = ReadBytes(file);
  if (!bytes) throw UsageError("there is no compilation database " + Quoted(file));
  std::vector<CompileCommand> commands;
  // A large project has millions of words. No text exceeds the limit: each value takes a byte at
  // least.
  ReadJson(file, *bytes, bytes->size(), [&](const Field& all) {
    for (const Field& each : all.GetElements()) {
      CompileCommand command = {.folder = GetBytes(each.Get(u"directory").AsText()),
                                .file = GetBytes(each.Get(u"file").AsText()),
                                .words = ReadWords(each)};
      ReplaceFilesOfArguments(command);
      commands.push_back(std::move(command));
    }
  });
  return commands;
}

std::string GetAbsoluteName(const std::string& folder, const std::string& name) {
  return name.starts_with('/') ? name : folder + '/' + name;
}

}  // namespace Corvane::PathManagement::tool
