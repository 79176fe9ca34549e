#include "path_source.h"

#include "command_line.h"
#include "compiler_folders.h"
#include "program_output.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/path_strings.h"
#include "shell_words.h"
#include "standard_streams.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <map>

namespace Corvane::PathManagement::tool {

namespace {

constexpr const char* kOtherwise = "or give the folders with --path";

SourcedPath ReadVariable(const std::string& name, const host::LookupRules& rules) {
  const char* const value = std::getenv(name.c_str());
  if (value == nullptr) {
    throw UsageError("the variable " + name + " is not set; export it, " + kOtherwise);
  }
  return {.folders = SplitFolders(value, rules)};
}

// The folders for headers of `source`, "cc" or "c++", unless the variable CC or CXX names another
// compiler.
SourcedPath AskForHeaders(const std::string& source, const std::vector<std::string>& flags) {
  const std::string variable = source == "cc" ? "CC" : "CXX";
  const char* const named = std::getenv(variable.c_str());
  CompilerCall call = {.words = SplitShellWords(named == nullptr ? "" : named),
                       .flags = flags,
                       .language = source == "cc" ? "c" : "c++",
                       .advice = "name a compiler in " + variable + ", " + kOtherwise};
  if (call.words.empty()) call.words = {source};
  const CompilerFolders folders = AskCompiler(call);
  return {.folders = GetTexts(folders.searched), .quoteFolders = GetTexts(folders.quoted)};
}

// The texts in `output`, each of which ends with NUL, as up to `lists` lists. An empty text ends a
// list; in the last list, an empty text is a text as any other.
std::vector<std::vector<ustring>> SplitAtNul(const std::string& output, std::size_t lists) {
  std::vector<std::vector<ustring>> split(1);
  for (std::size_t begin = 0, end = 0; (end = output.find('\0', begin)) != std::string::npos;) {
    if (end == begin && split.size() < lists) {
      split.emplace_back();
    } else {
      split.back().push_back(TextFromBytes(output.substr(begin, end - begin)));
    }
    begin = end + 1;
  }
  return split;
}

// Runs `program`, which must print `lists` lists for `SplitAtNul`; the last one is its path.
std::vector<std::vector<ustring>> AskInterpreter(const std::string& program,
                                                 const std::vector<std::string>& arguments,
                                                 std::size_t lists) {
  ProgramQuestion question = {.program = program,
                              .words = {program},
                              .advice = "install it, put it on PATH, " + std::string(kOtherwise)};
  question.words.insert(question.words.end(), arguments.begin(), arguments.end());
  auto answer = SplitAtNul(AskProgram(question).out, lists);
  if (answer.size() != lists || answer.back().empty()) {
    RefuseAnswer(question, "it prints no folders");
  }
  return answer;
}

SourcedPath AskPerl() {
  // References in @INC are left out: they are hooks, which may find anything.
  constexpr const char* kProgram = "binmode STDOUT; print map { \"$_\\0\" } grep { !ref } @INC";
  return {.folders = AskInterpreter("perl", {"-e", kProgram}, /*lists=*/1).back()};
}

SourcedPath AskPython() {
  // Prints the suffixes in the order of the attempts in a folder, an empty text, then the folders.
  // A package comes before a module; of each, an extension module comes before source text. In
  // sys.path, '' is the working folder.
  constexpr const char* kProgram =
      "import os, sys\n"
      "from importlib.machinery import EXTENSION_SUFFIXES, SOURCE_SUFFIXES, BYTECODE_SUFFIXES\n"
      "suffixes = EXTENSION_SUFFIXES + SOURCE_SUFFIXES + BYTECODE_SUFFIXES\n"
      "texts = ['/__init__' + suffix for suffix in suffixes] + suffixes + ['']\n"
      "texts += [folder or '.' for folder in sys.path if isinstance(folder, str)]\n"
      "sys.stdout.buffer.write(b''.join(os.fsencode(text) + b'\\0' for text in texts))\n";
  auto answer = AskInterpreter("python3", {"-c", kProgram}, /*lists=*/2);
  return {.folders = std::move(answer.back()), .suffixes = std::move(answer.front())};
}

bool IsVariable(std::string_view source) {
  return !source.empty() && std::all_of(source.begin(), source.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  });
}

}  // namespace

bool IsCompiler(std::string_view source) { return source == "cc" || source == "c++"; }

bool IsPathSource(std::string_view source) {
  return IsCompiler(source) || source == "perl" || source == "python" || IsVariable(source);
}

std::optional<std::string> GetUsualRules(std::string_view source) {
  static const std::map<std::string_view, const char*> rules = {{"PATH", "program"},
                                                                {"cc", "include"},
                                                                {"c++", "include"},
                                                                {"CPATH", "include"},
                                                                {"C_INCLUDE_PATH", "include"},
                                                                {"CPLUS_INCLUDE_PATH", "include"},
                                                                {"perl", "plain"},
                                                                {"python", "plain"},
                                                                {"PERL5LIB", "plain"},
                                                                {"PYTHONPATH", "plain"},
                                                                {"LD_LIBRARY_PATH", "plain"},
                                                                {"LIBRARY_PATH", "plain"},
                                                                {"MANPATH", "plain"},
                                                                {"PKG_CONFIG_PATH", "plain"},
                                                                {"XDG_CONFIG_DIRS", "plain"},
                                                                {"XDG_DATA_DIRS", "plain"}};
  const auto known = rules.find(source);
  if (known == rules.end()) return std::nullopt;
  return known->second;
}

SourcedPath ReadPathSource(const std::string& source, const std::vector<std::string>& flags,
                           const host::LookupRules& rules) {
  if (IsCompiler(source)) return AskForHeaders(source, flags);
  if (source == "perl") return AskPerl();
  if (source == "python") return AskPython();
  return ReadVariable(source, rules);
}

std::vector<ustring> SplitFolders(const std::string& list, const host::LookupRules& rules) {
  // Only the rules "environment" give names of folders a meaning.
  if (rules.foldersHaveMeaning) return SplitZentraPath(TextFromBytes(list));
  std::vector<ustring> folders;
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(':', begin), list.size());
    folders.push_back(TextFromBytes(list.substr(begin, end - begin)));
    begin = end + 1;
  }
  return folders;
}

}  // namespace Corvane::PathManagement::tool
