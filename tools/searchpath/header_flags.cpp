#include "header_flags.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string_view>

namespace Corvane::PathManagement::tool {

namespace {

// Flags that change the folders; the value is joined to the flag, or is the next word.
constexpr std::array<std::string_view, 23> kFolderFlags = {"-iquote",
                                                           "-isystem-after",
                                                           "-isystem",
                                                           "-idirafter",
                                                           "-isysroot",
                                                           "-iwithsysroot",
                                                           "-iwithprefixbefore",
                                                           "-iwithprefix",
                                                           "-iprefix",
                                                           "-imultilib",
                                                           "-iframework",
                                                           "-stdlib++-isystem",
                                                           "-cxx-isystem",
                                                           "--sysroot",
                                                           "--include-directory",
                                                           "--include-directory-after",
                                                           "-iframeworkwithsysroot",
                                                           "--config",
                                                           "--gcc-toolchain",
                                                           "-resource-dir",
                                                           "-I",
                                                           "-B",
                                                           "-F"};
// Flags that change the folders, too; the value, if any, is always joined. -m... chooses the
// machine, and so its folders.
constexpr std::array<std::string_view, 9> kOneWordFolderFlags = {
    "-nostdinc", "-nostdlibinc", "-nobuiltininc",  "-stdlib=", "--target=",
    "-specs=",   "--specs=",     "--driver-mode=", "-m"};
// Other flags, whose next word is their value, even if it looks like a flag.
constexpr std::array<std::string_view, 16> kOtherFlags = {"-mthread-model",
                                                          "-Xclang",
                                                          "-Xpreprocessor",
                                                          "-Xassembler",
                                                          "-Xlinker",
                                                          "-mllvm",
                                                          "-o",
                                                          "-D",
                                                          "-U",
                                                          "-MF",
                                                          "-MT",
                                                          "-MQ",
                                                          "-include",
                                                          "-imacros",
                                                          "-arch",
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

// The language that the extension of the file stands for, as -x takes it; "" when it is none of the
// C family.
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
  const std::size_t dot = name.rfind('.');
  const auto found = dot == name.npos ? languages.end() : languages.find(name.substr(dot + 1));
  if (found == languages.end()) return "";
  // A driver for C++, such as c++, compiles C files as C++.
  const bool isCxxDriver =
      GetLastPart(compiler).find("++") != std::string::npos ||
      std::ranges::find(command.words, "--driver-mode=g++") != command.words.end();
  return found->second == "c" && isCxxDriver ? "c++" : found->second;
}

// Picks the language and the flags that change the folders out of the words of a command.
class FlagReader {
 public:
  // `sourceFile` is compiled as `languageOfFile`, unless a flag says otherwise.
  FlagReader(const std::vector<std::string>& commandWords, const std::string& sourceFile,
             const std::string& languageOfFile)
      : words(commandWords), file(GetLastPart(sourceFile)), usualLanguage(languageOfFile) {}

  // Sets the language and the flags of `call`. Ends at "--", after which only names of files come.
  void Read(CompilerCall& call) {
    call.language = usualLanguage;
    bool isFilePassed = false;  // -x counts for the files after it
    for (; at < words.size() && words[at] != "--"; ++at) {
      const std::string& word = words[at];
      if (word == "-I-") continue;  // obsolete: compilers refuse it now
      if (word.starts_with("-x")) {
        const std::string language = word == "-x" ? TakeNext() : word.substr(2);
        if (!isFilePassed) call.language = language == "none" ? usualLanguage : language;
      } else if (IsAny(word, kOtherFlags)) {
        ++at;
      } else if (word == "-target" || IsAny(word, kFolderFlags)) {  // -target is never joined
        if (at + 1 < words.size()) call.flags.insert(call.flags.end(), {word, TakeNext()});
      } else if (StartsWithAny(word, kFolderFlags) || StartsWithAny(word, kOneWordFolderFlags)) {
        call.flags.push_back(word);
      } else if (GetLastPart(word) == file) {
        isFilePassed = true;
      }
    }
  }

 private:
  // The next word, which is the value of a flag; "" at the end.
  std::string TakeNext() { return at + 1 < words.size() ? words[++at] : ""; }

  const std::vector<std::string>& words;
  std::string file;
  const std::string& usualLanguage;
  std::size_t at = 1;  // the index of the word; word 0 is the compiler
};

// `words`, from the compiler on.
std::vector<std::string> WithoutLauncher(const std::vector<std::string>& words) {
  constexpr std::array<std::string_view, 5> kLaunchers = {"ccache", "sccache", "distcc", "icecc",
                                                          "buildcache"};
  // Followed by a flag, a launcher is called in the place of the compiler.
  const bool isLaunched =
      words.size() > 1 && IsAny(GetLastPart(words[0]), kLaunchers) && !words[1].starts_with('-');
  return {words.begin() + (isLaunched ? 1 : 0), words.end()};
}

}  // namespace

std::optional<CompilerCall> FindCompilerCall(const CompileCommand& command) {
  const std::vector<std::string> words = WithoutLauncher(command.words);
  CompilerCall call = {.words = {words.front()}, .folder = command.folder};
  const std::string usualLanguage = GetLanguage(command, words.front());
  FlagReader(words, command.file, usualLanguage).Read(call);
  if (call.language.empty()) return std::nullopt;
  return call;
}

}  // namespace Corvane::PathManagement::tool
