#include "command_line.h"
#include "fuzz_input.h"

#include <algorithm>
#include <cstdio>

using namespace Corvane::PathManagement;
using fuzz::Require;

namespace {

using Words = std::vector<std::string>;

constexpr std::size_t kLongest = 200;  // longer ones take time and show no more

constexpr tool::CommandText kText = {"ask", "[WORD...]", "Asks.", "", ""};

/// What a command line says.
struct Meaning {
  bool isForHelp = false;
  bool all = false;
  bool fromInput = false;
  std::optional<std::string> path = {};
  Words extensions = {};
  Words operands = {};

  bool operator==(const Meaning&) const = default;
};

/// Errors: `UsageError`.
Meaning Parse(const Words& words) {
  tool::CommandLine commandLine(kText);
  Meaning meaning;
  commandLine.AddFlag("-a,--all", meaning.all, "all");
  commandLine.AddValue("--path", "PATH", meaning.path, "a path");
  commandLine.AddValues("--ext", "EXT", meaning.extensions, "an extension");
  commandLine.AddFlagForOperands("--stdin", meaning.fromInput, "from standard input");
  if (!commandLine.Parse({.words = words})) return {.isForHelp = true};
  meaning.operands = commandLine.GetOperands();
  return meaning;
}

/// The plainest words of that meaning.
Words WordsOf(const Meaning& meaning) {
  Words words;
  if (meaning.all) words.emplace_back("--all");
  if (meaning.path) words.push_back("--path=" + *meaning.path);
  for (const std::string& extension : meaning.extensions) words.push_back("--ext=" + extension);
  if (meaning.fromInput) words.emplace_back("--stdin");
  words.emplace_back("--");
  words.insert(words.end(), meaning.operands.begin(), meaning.operands.end());
  return words;
}

}  // namespace

// Words, each ended by a NUL.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool isSilent =
      std::freopen("/dev/null", "w", stdout) != nullptr;  // help is not wanted
  Require(isSilent, "standard output can be silenced");
  if (size > kLongest) return -1;
  Words words;
  for (std::string rest(reinterpret_cast<const char*>(data), size); !rest.empty();) {
    words.emplace_back(rest.c_str());
    rest.erase(0, words.back().size() + 1);
  }
  const bool hasOptions =
      std::any_of(words.begin(), words.end(), [](const auto& word) { return word[0] == '-'; });
  try {
    const Meaning meaning = Parse(words);
    Require(hasOptions || meaning == Meaning{.operands = words}, "other words are operands");
    if (!meaning.isForHelp)
      Require(Parse(WordsOf(meaning)) == meaning, "the plainest words mean the same");
  } catch (const tool::UsageError& error) {
    Require(hasOptions && *error.what() != '\0', "a message, and for options alone");
  }
  return 0;
}
