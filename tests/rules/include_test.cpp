#include "rules/other_programs.h"
#include "rules/random_tree.h"
#include "support/setting.h"

#include <algorithm>
#include <regex>

namespace Corvane::PathManagement::host {
namespace {

using test::Names;
using test::Plainly;
using test::Quoted;
using test::RandomTree;

/// How files ask for headers: the mark of the directive, and what stands around the name.
struct Form {
  const char* directive;
  char open, close;
};
constexpr Form kAngle = {"include", '<', '>'};
constexpr Form kQuote = {"include", '"', '"'};
constexpr Form kNext = {"include_next", '<', '>'};

/// A compiler, the folders it searches, and the file that asks.
struct Asking {
  std::string command;
  std::string file;   // asks for the names
  std::string start;  // is compiled; may be the same file
};

/// What a compiler takes each name for, and "" where it fails. All names are asked for in one run,
/// and again behind one that ended it.
class Compiler {
 public:
  Compiler(const RandomTree& randomTree, Asking how) : tree(randomTree), asking(std::move(how)) {}

  Names Ask(const Names& names, const Form& form) {
    answers.assign(names.size(), "");
    wasAsked = false;
    for (std::size_t begin = 0; begin < names.size(); begin = end) RunFrom(begin, names, form);
    return answers;
  }
  /// Whether the file that asks was reached, and without an error before it.
  [[nodiscard]] bool WasAsked() const { return wasAsked; }
  /// Whether the compiler may call one of these files by the name of the other: Clang gives each file
  /// the name by which it was first opened.
  [[nodiscard]] bool IsSame(const std::string& file, const std::string& other) const {
    std::error_code absent;
    return asking.command.find("clang") != std::string::npos && !file.empty() && !other.empty() &&
           std::filesystem::weakly_canonical(file, absent) ==
               std::filesystem::weakly_canonical(other, absent);
  }

 private:
  static constexpr std::size_t kLines = 4;  // of a question

  void RunFrom(std::size_t begin, const Names& names, const Form& form) {
    std::string source;
    for (std::size_t name = begin; name < names.size(); ++name) {
      const std::string header = form.open + names[name] + form.close;
      source += "@@ " + std::to_string(name) + "\n#if __has_" + form.directive + "(" + header +
                ")\n#" + form.directive + " " + header + "\n#endif\n";
    }
    std::ofstream(asking.file) << source;
    const auto output = test::Run(tree.GetScratch(), asking.command + " " + asking.start);
    Read(output.out);
    end = names.size();
    Strike(begin, output.error);
  }

  void Read(const std::string& out) {
    static const std::regex entered("# [0-9]+ \"(.*)\" 1");
    bool isAwaited = false;
    for (const std::string& line : test::LinesOf(out)) {
      std::smatch match;
      if (line.starts_with("@@ ")) {
        last = std::stoul(line.substr(3));
        wasAsked = isAwaited = true;
      } else if (isAwaited && std::regex_match(line, match, entered)) {
        answers[last] = Plainly(match[1]);
        isAwaited = false;
      }
    }
  }

  /// A name that an error is reported for has no answer; those behind it are asked again, since one
  /// compiler ends there and others report no more. Without a place, it is for the name asked last.
  void Strike(std::size_t begin, const std::string& errors) {
    static const std::regex reported("(?:.*/)?([^/:]+):([0-9]+):[0-9]+: (?:fatal )?error: .*");
    const std::string asker = std::filesystem::path(asking.file).filename();
    for (const std::string& line : test::LinesOf(errors)) {
      std::smatch match;
      const bool hasPlace = std::regex_match(line, match, reported);
      const bool isFatal = line.find("fatal error: ") != line.npos;
      if (hasPlace && isFatal && match[1] != asker) wasAsked = false;  // with more errors to report
      if (!wasAsked || (hasPlace ? match[1] != asker : !isFatal)) continue;
      const std::size_t name = hasPlace ? begin + (std::stoul(match[2]) - 1) / kLines : last;
      std::fill(answers.begin() + static_cast<std::ptrdiff_t>(name), answers.end(), "");
      end = name + 1;
      return;
    }
  }

  const RandomTree& tree;
  const Asking asking;
  Names answers;
  std::size_t end = 0;
  std::size_t last = 0;
  bool wasAsked = false;
};

Names Compilers() {
  // Without any folder for names in angle brackets, GCC takes those for names in quotes: it has one,
  // which is no other on the path, since GCC drops those that are the same.
  Names commands = {"gcc -E -nostdinc -idirafter start"};
  static const bool hasClang = test::IsInstalled("clang-19");
  if (hasClang) commands.emplace_back("clang-19 -E -nostdinc -ferror-limit=0");
  return commands;
}

/// The folders of one compilation.
struct Folders {
  Names searched;
  Names quoted;
  bool areInEnvironment;  // where parts may be empty

  [[nodiscard]] std::string CommandOf(const std::string& compiler) const {
    std::string command = areInEnvironment ? "CPATH='" : compiler;
    for (const std::string& folder : searched) {
      command += areInEnvironment ? folder + ":" : " -I " + Quoted(folder);
    }
    // A variable that is empty counts as not set, so a sole empty part stands there twice.
    if (areInEnvironment && searched != Names{""}) command.pop_back();
    if (areInEnvironment) command += "' " + compiler;
    for (const std::string& folder : quoted) command += " -iquote " + Quoted(folder);
    return command;
  }

  [[nodiscard]] Environment Open() const {
    EnvironmentOptions options{.folders = {}, .rules = kIncludeRules};
    for (const auto& folder : searched) options.folders.push_back(TextFromBytes(folder));
    for (const auto& folder : quoted) options.quoteFolders.push_back(TextFromBytes(folder));
    return Environment(options);
  }
};

Folders FoldersOf(RandomTree& tree) {
  Folders folders{tree.Parts(), {}, tree.Below(3) == 0};
  if (tree.Below(2) == 0) folders.quoted = tree.Parts();
  std::erase(folders.quoted, "");
  // GCC alone drops the last folder for names in quotes where it is the first of the others.
  if (!folders.quoted.empty()) folders.quoted.emplace_back("end");
  if (!folders.areInEnvironment) std::erase(folders.searched, "");
  return folders;
}

Names AnswersOf(const Environment& environment, const Names& names, Lookup lookup) {
  Names answers;
  for (const std::string& name : names) {
    lookup.name = TextFromBytes(name);
    const auto found = environment.Find(lookup);
    answers.push_back(found ? Plainly(BytesFromText(GetNativePath(*found)).value()) : "");
  }
  return answers;
}

/// Compares what a compiler, when it compiles at all, takes the names for. Without any answer GCC ends
/// where it may not look at a folder of the path.
bool Compare(Compiler& compiler, const Form& form, const Folders& folders, const Lookup& lookup) {
  const Names& names = test::kHeaders.questions;
  Names expected = compiler.Ask(names, form);
  if (!compiler.WasAsked()) return false;
  const Names answers = AnswersOf(folders.Open(), names, lookup);
  for (std::size_t name = 0; name < names.size(); ++name) {
    if (compiler.IsSame(expected[name], answers[name])) expected[name] = answers[name];
  }
  EXPECT_EQ(answers, expected) << form.directive << form.open;
  return true;
}

void CompareNext(RandomTree& tree, const Folders& folders, const std::string& command) {
  Names all = folders.searched;
  all.insert(all.end(), folders.quoted.begin(), folders.quoted.end());
  all.emplace_back("p");
  std::erase(all, "");
  std::erase(all, "end");
  const std::string after = tree.Any(all);
  const std::string file = std::filesystem::absolute(after) / "next.h";
  if (!std::ofstream(file)) return;
  std::ofstream("start/start.c") << "#include \"next.h\"\n";
  SCOPED_TRACE("after " + after);
  Compiler compiler(tree, {command, file, tree.Path("start/start.c")});
  Compare(compiler, kNext, folders, {.name = {}, .afterFolder = TextFromBytes(after)});
  std::filesystem::remove(file);
}

/// Returns how many compilers compiled.
std::size_t CompareHeaderTree(std::uint64_t number) {
  RandomTree tree(number, test::kHeaders);
  const Folders folders = FoldersOf(tree);
  const std::string file = tree.Path("src/ask.c");
  std::size_t compiled = 0;
  for (const std::string& compiler : Compilers()) {
    const std::string command = folders.CommandOf(compiler);
    SCOPED_TRACE("tree " + std::to_string(number) + ", " + command);
    Compiler asked(tree, {command, file, file});
    if (!Compare(asked, kAngle, folders, {})) continue;
    Compare(asked, kQuote, folders, {.name = {}, .fromFolder = u"src"});
    CompareNext(tree, folders, command);
    ++compiled;
  }
  return compiled;
}

// SEARCHPATH_TREES says how many trees, SEARCHPATH_FIRST_TREE from which on.
TEST(IncludeRulesTest, RandomTreesAnswerAsCompilersDo) {
  test::RunUnprivileged([] {
    const std::size_t trees =
        test::Setting("SEARCHPATH_TREES", std::max<std::size_t>(1, test::RandomCases(6)));
    const std::size_t first = test::Setting("SEARCHPATH_FIRST_TREE", 0);
    std::size_t compiled = 0;
    for (std::size_t tree = first; tree < trees && !testing::Test::HasFailure(); ++tree) {
      compiled += CompareHeaderTree(tree);
    }
    EXPECT_GE(2 * compiled, (trees - first) * Compilers().size()) << "compared";
  });
}

}  // namespace
}  // namespace Corvane::PathManagement::host
