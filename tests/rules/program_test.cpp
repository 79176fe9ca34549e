#include "rules/other_programs.h"
#include "rules/random_tree.h"
#include "support/setting.h"

namespace Corvane::PathManagement::host {
namespace {

using test::Names;
using test::Plainly;
using test::RandomTree;

std::string Joined(const Names& parts) {
  std::string list = parts.front();
  for (std::size_t part = 1; part < parts.size(); ++part) list += ":" + parts[part];
  return list;
}

/// What `which -a` lists for each name. An absolute name stands between them as a mark.
std::vector<Names> AskWhich(const RandomTree& tree, const Names& parts, const Names& names) {
  const std::string mark = "/bin/echo";
  std::string command = "PATH=" + test::Quoted(Joined(parts)) + " /usr/bin/which -a --";
  for (const std::string& name : names) command += " " + test::Quoted(name) + " " + mark;
  std::vector<Names> answers(1);
  for (const std::string& line : test::LinesOf(test::Run(tree.GetScratch(), command).out)) {
    if (line == mark) {
      answers.emplace_back();
    } else {
      answers.back().push_back(Plainly(line));
    }
  }
  answers.pop_back();
  return answers;
}

/// What `execvp` starts for a name; it prints its path.
std::string Start(const RandomTree& tree, const Names& parts, const std::string& name) {
  const std::string out = tree.GetScratch().Path(".out");
  const pid_t child = fork();
  if (child == 0) {
    std::string word = name;
    char* const words[] = {word.data(), nullptr};
    setenv("PATH", Joined(parts).c_str(), 1);
    if (std::freopen(out.c_str(), "w", stdout) != nullptr) execvp(name.c_str(), words);
    _exit(1);
  }
  waitpid(child, nullptr, 0);
  const auto lines = test::LinesOf(tree.GetScratch().Content(".out"));
  return lines.empty() ? "" : Plainly(lines.front());
}

Environment ProgramsOn(const Names& parts) {
  EnvironmentOptions options{.folders = {}, .rules = kProgramRules};
  for (const std::string& part : parts) options.folders.push_back(TextFromBytes(part));
  return Environment(options);
}

std::string PathOf(const FoundItem& file) {
  return Plainly(BytesFromText(GetNativePath(file)).value());
}

void CompareProgramTree(std::uint64_t number) {
  const bool hasLoops = number % 2 == 0;
  RandomTree tree(number, test::kPrograms, hasLoops);
  const Names parts = tree.Parts();
  const Names& names = test::kPrograms.questions;
  SCOPED_TRACE("tree " + std::to_string(number) + ", PATH=" + Joined(parts));
  const Environment environment = ProgramsOn(parts);
  std::vector<Names> answers;
  for (const std::string& name : names) {
    const Lookup lookup{.name = TextFromBytes(name)};
    Names& all = answers.emplace_back();
    for (const FoundItem& file : environment.FindAll(lookup)) all.push_back(PathOf(file));
    const auto first = ProgramsOn(parts).Find(lookup);
    EXPECT_EQ(first ? PathOf(*first) : "", all.empty() ? "" : all.front()) << name;
    if (hasLoops) continue;  // where execvp ends at one, and shells go on
    EXPECT_EQ(all.empty() ? "" : all.front(), Start(tree, parts, name)) << name;
  }
  if (Joined(parts).empty()) return;  // no folder to some shells, the working folder to others
  EXPECT_EQ(answers, AskWhich(tree, parts, names));
}

// SEARCHPATH_TREES says how many trees.
TEST(ProgramRulesTest, RandomTreesAnswerAsShellsAndExecvpDo) {
  test::RunUnprivileged([] {
    const std::size_t trees = test::Setting("SEARCHPATH_TREES", test::RandomCases(30));
    for (std::size_t tree = 0; tree < trees && !testing::Test::HasFailure(); ++tree) {
      CompareProgramTree(tree);
    }
  });
}

}  // namespace
}  // namespace Corvane::PathManagement::host
