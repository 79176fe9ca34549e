#include "header_flags.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string_view>

namespace Corvane::PathManagement::tool {

namespace {

// Flags with a value, joined or as the next word. What begins as another one comes first.
constexpr std::array<std::string_view, 20> kWithValue = {
    "-iquote",         "-isystem-after",     "-isystem",     "-idirafter", "-isysroot",
    "-iwithsysroot",   "-iwithprefixbefore", "-iwithprefix", "-iprefix",   "-imultilib",
    "-iframework",     "-stdlib++-isystem",  "-cxx-isystem", "--sysroot",  "--include-directory",
    "--gcc-toolchain", "-resource-dir",      "-I",           "-B",         "-F"};
// Flags whose value, if any, is always joined. -m... chooses among the folders of several machines.
constexpr std::array<std::string_view, 10> kAlone = {
    "-nostdinc", "-nostdlibinc", "-nobuiltininc", "-stdlib=",       "--target=",
    "-specs=",   "--specs=",     "--config=",     "--driver-mode=", "-m"};
// Flags whose next word is not a flag, whatever it looks like.
constexpr std::array<std::string_view, 15> kOthersWithValue = {"-Xclang",     "-Xpreprocessor",
                                                               "-Xassembler", "-Xlinker",
                                                               "-mllvm",      "-o",
                                                               "-D",          "-U",
                                                               "-MF",         "-MT",
                                                               "-MQ",         "-include",
                                                               "-imacros",    "-arch",
                                                               "-L"};

template <std::size_t Count>
bool StartsWithAny(std::string_view word, const std::array<std::string_view, Count>& starts) {
  return std::any_of(starts.begin(), starts.end(),
                     [&](std::string_view start) { return word.starts_with(start); });
}

template <std::size_t Count>
bool IsAny(std::string_view word, const std::array<std::string_view, Count>& words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

std::string GetLastPart(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string GetLanguage(const CompileCommand& command, const std::string& compiler) {
  static const std::map<std::string, std::string> languages = {{"c", "c"},
                                                               {"h", "c"},
                                                               {"cc", "c++"},
                                                               {"cp", "c++"},
                                                               {"cpp", "c++"},
                                                               {"cxx", "c++"},
                                                               {"c++", "c++"},
                                                               {"C", "c++"},
                                                               {"CPP", "c++"},
                                                               {"hh", "c++"},
                                                               {"hpp", "c++"},
                                                               {"hxx", "c++"},
                                                               {"m", "objective-c"},
                                                               {"mm", "objective-c++"},
                                                               {"M", "objective-c++"},
                                                               {"S", "assembler-with-cpp"},
                                                               {"sx", "assembler-with-cpp"}};
  const std::string name = GetLastPart(command.file);
  const auto found = languages.find(name.substr(name.rfind('.') + 1));
  if (found == languages.end()) return "";
  // The driver for C++ takes files of C as C++, too.
  const bool isForBoth = GetLastPart(compiler).find("++") != std::string::npos;
  return found->second == "c" && isForBoth ? "c++" : found->second;
}

// Takes the flags out of the words, one after the other.
class FlagReader {
 public:
  explicit FlagReader(const std::vector<std::string>& itsWords) : words(itsWords) {}

  void Read(CompilerCall& call) {
    for (; at < words.size() && words[at] != "--"; ++at) {
      const std::string& word = words[at];
      if (word == "-I-") continue;  // taken back by those who had it
      if (word.starts_with("-x")) {
        const std::string language = word == "-x" ? TakeNext() : word.substr(2);
        if (language != "none") call.language = language;
      } else if (IsAny(word, kOthersWithValue)) {
        ++at;
      } else if (word == "-target" || IsAny(word, kWithValue)) {
        if (at + 1 < words.size()) call.flags.insert(call.flags.end(), {word, TakeNext()});
      } else if (StartsWithAny(word, kWithValue) || StartsWithAny(word, kAlone)) {
        call.flags.push_back(word);
      }
    }
  }

 private:
  std::string TakeNext() { return at + 1 < words.size() ? words[++at] : ""; }

  const std::vector<std::string>& words;
  std::size_t at = 1;
};

std::vector<std::string> WithoutLauncher(const std::vector<std::string>& words) {
  constexpr std::array<std::string_view, 5> kLaunchers = {"ccache", "sccache", "distcc", "icecc",
                                                          "buildcache"};
  const bool isLaunched =
      words.size() > 1 && IsAny(GetLastPart(words[0]), kLaunchers) && !words[1].starts_with('-');
  return {words.begin() + (isLaunched ? 1 : 0), words.end()};
}

}  // namespace

std::optional<CompilerCall> FindCompilerCall(const CompileCommand& command) {
  const std::vector<std::string> words = WithoutLauncher(command.words);
  CompilerCall call = {.words = {words.front()}, .folder = command.folder};
  call.language = GetLanguage(command, words.front());
  FlagReader(words).Read(call);
  if (call.language.empty()) return std::nullopt;
  return call;
}

}  // namespace Corvane::PathManagement::tool
