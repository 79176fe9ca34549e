#include "rules/other_programs.h"
#include "searchpath/host/environment.h"
#include "support/shown.h"

#include <sys/stat.h>

#include <algorithm>

namespace Corvane::PathManagement::host {
namespace {

using test::Shown;
using test::TemporaryTree;
using enum FolderOutcome;
using Rule = DecidingRule;

struct Row {
  LookupRules rules;
  std::string name, folders;  // these with spaces between
  Rule rule;
  std::vector<FolderOutcome> outcomes;
  std::string instead;  // what stands there instead, of all folders
  std::string from = {}, after = {};
  std::string quoted = {};
};

void MakeFolders(const TemporaryTree& tree) {
  tree.Files({"run/tool", "run/plain", "data/tool", "data/plain", "deep/sub/a.h", "empty/other"});
  tree.Files({"ask/a.h", "one/a.h", "two/a.h", "closed/a.h", "two/sub/a.h", "shut/a.h"});
  tree.Files({"listed/a.h", "shut/sub/a.h", "flat/sub"});
  tree.Link("/dev/null", "devices/a.h");
  tree.Link("a.h", "rings/a.h");
  tree.Link("../pipe/tool", "pipes/tool");
  tree.Folder("folder/tool");
  tree.Link("nowhere", "broken/tool");
  tree.Link("run", "again");
  tree.Link("ring", "ring");
  tree.Folder("pipe");
  mkfifo(tree.Path("pipe/tool").c_str(), 0755);
  chmod(tree.Path("run/tool").c_str(), 0755);
  chmod(tree.Path("closed/a.h").c_str(), 0000);
  chmod(tree.Path("shut").c_str(), 0000);
  chmod(tree.Path("listed").c_str(), 0444);
}

std::vector<ustring> FoldersOf(const TemporaryTree& tree, const std::string& names) {
  std::vector<ustring> folders;
  std::istringstream list(names);
  for (std::string name; list >> name;) folders.push_back(tree.Text(name));
  return folders;
}

/// Explains after so many questions: none, or so many that the folders have been listed.
void Check(const TemporaryTree& tree, const Row& row, int questions) {
  const Environment environment({.folders = FoldersOf(tree, row.folders),
                                 .rules = row.rules,
                                 .quoteFolders = FoldersOf(tree, row.quoted)});
  Lookup lookup{.name = TextFromBytes(row.name)};
  if (!row.from.empty()) lookup.fromFolder = tree.Text(row.from);
  if (!row.after.empty()) lookup.afterFolder = tree.Text(row.after);
  SCOPED_TRACE(row.name + " on " + row.folders + " after " + std::to_string(questions));
  const std::string below = row.name.substr(0, row.name.rfind('/') + 1);
  for (int asked = 0; asked < questions; ++asked) {
    static_cast<void>(environment.Find({.name = TextFromBytes(below + "absent")}));
  }
  const auto found = environment.Find(lookup);
  const Explanation explanation = environment.Explain(lookup);
  std::vector<FolderOutcome> outcomes;
  std::vector<ustring> instead;
  for (const AskedFolder& asked : explanation.asked) {
    outcomes.push_back(asked.outcome);
    if (!asked.instead.empty()) instead.push_back(asked.instead);
  }
  EXPECT_EQ(explanation.rule, row.rule) << GetText(explanation.rule);
  EXPECT_EQ(outcomes, row.outcomes);
  EXPECT_EQ(Shown(instead, tree), row.instead);
  EXPECT_EQ(found.has_value(), std::ranges::find(row.outcomes, HoldsIt) != row.outcomes.end());
  EXPECT_TRUE(explanation.files == environment.FindAll(lookup));
}

TEST(FindRulesTest, KnowsTheNamesAndNoOther) {
  for (const NamedRules& named : kNamedRules) EXPECT_EQ(FindRules(named.name), named.rules);
  EXPECT_EQ(FindRules("Program"), std::nullopt);
}

TEST(RuleOutcomesTest, EachFolderHasOneAndOneRuleDecides) {
  test::RunUnprivileged([] {
    const TemporaryTree tree;
    MakeFolders(tree);
    const std::string working = tree.Path("run");
    ASSERT_EQ(chdir(working.c_str()), 0);
    const LookupRules &plain = kPlainRules, &program = kProgramRules, &include = kIncludeRules;
    const std::vector<Row> rows = {
        {program,
         "tool",
         "data run again",
         Rule::FirstFolder,
         {NotExecutable, HoldsIt, HiddenByEarlier},
         "data/tool"},
        {program,
         "tool",
         "folder broken pipe none shut empty",
         Rule::NothingFound,
         {IsFolder, BrokenLink, OtherType, Unreadable, Unreadable, Absent},
         "folder/tool broken/tool pipe/tool"},
        {program,
         "plain",
         "run data",
         Rule::NoneMayBeExecuted,
         {NotExecutable, NotExecutable},
         "run/plain data/plain"},
        {program, "./tool", "data", Rule::ThatFile, {HoldsIt}, ""},
        {program, "./plain", "data", Rule::ThatFile, {NotExecutable}, "run/plain"},
        {program, tree.Path("data/none"), "data", Rule::ThatFile, {Absent}, ""},
        {program, "/no such file", "data", Rule::ThatFile, {Absent}, ""},
        {plain,
         "tool",
         "data again run",
         Rule::FirstFolder,
         {HoldsIt, HiddenByEarlier, DroppedAsRepeat},
         ""},
        {plain,
         "sub/a.h",
         "one deep two",
         Rule::FirstFolder,
         {Absent, HoldsIt, HiddenByEarlier},
         ""},
        {include, "sub/a.h", "flat two", Rule::FirstFolder, {Absent, HoldsIt}, ""},
        {plain, "a.h", "closed", Rule::FirstFolder, {HoldsIt}, ""},
        {plain,
         "tool",
         "ring run/tool pipe",
         Rule::NothingFound,
         {Unreadable, Unreadable, OtherType},
         "pipe/tool"},
        {include,
         "a.h",
         "empty closed one",
         Rule::SearchEnded,
         {Absent, NotReadable},
         "closed/a.h"},
        {include, "a.h", "one closed two", Rule::FirstFolder, {HoldsIt, NotReadable}, "closed/a.h"},
        {include, "tool", "pipes run", Rule::SearchEnded, {NotReadable}, "pipes/tool"},
        {include, "tool", "pipe run", Rule::SearchEnded, {NotReadable}, "pipe/tool"},
        {plain, tree.Path("one/a.h"), "two", Rule::ThatFile, {HoldsIt}, ""},
        {plain, "a.h", "listed one", Rule::FirstFolder, {Unreadable, HoldsIt}, ""},
        {plain,
         "a.h",
         "devices rings one",
         Rule::FirstFolder,
         {OtherType, NotReadable, HoldsIt},
         "devices/a.h rings/a.h"},
        {include, "a.h", "devices one", Rule::FirstFolder, {HoldsIt, HiddenByEarlier}, ""},
        {include, "a.h", "rings one", Rule::SearchEnded, {NotReadable}, "rings/a.h"},
        {include, "a.h", "shut/sub one", Rule::FirstFolder, {Unreadable, HoldsIt}, ""},
        {include, "a.h", "shut one", Rule::SearchEnded, {Unreadable}, ""},
        {include, "a.h", "one", Rule::AskersFolder, {HoldsIt, HiddenByEarlier}, "", "ask"},
        {include, "a.h", "one", Rule::FirstFolder, {Absent, HoldsIt}, "", "empty"},
        {plain, "tool", "", Rule::AskersFolder, {HoldsIt}, "", "run"},
        {include, "a.h", "", Rule::NothingFound, {Absent}, "", "empty"},
        {include, "a.h", "", Rule::SearchEnded, {NotReadable}, "closed/a.h", "closed"},
        {include, "a.h", "one", Rule::FirstFolder, {HoldsIt}, "", "", "", "two"},
        {include,
         "a.h",
         "one",
         Rule::AskersFolder,
         {HoldsIt, HiddenByEarlier, HiddenByEarlier},
         "",
         "ask",
         "",
         "two"},
        {include,
         "a.h",
         "one two ask",
         Rule::FirstFolder,
         {HoldsIt, HiddenByEarlier},
         "",
         "",
         "one"},
        {include, "a.h", "one two one", Rule::FirstFolder, {HoldsIt}, "", "", "one"},
        {include, "a.h", "one two", Rule::NothingFound, {}, "", "", "two"},
        {include, "a.h", "one two", Rule::FirstFolder, {HoldsIt, HiddenByEarlier}, "", "", "ask"},
        {include,
         "a.h",
         "two one",
         Rule::FirstFolder,
         {HoldsIt, HiddenByEarlier},
         "",
         "",
         "two",
         "two"},
    };
    for (const Row& row : rows) {
      Check(tree, row, 0);
      Check(tree, row, 20);
    }
    for (const char* folder : {"shut", "listed"}) chmod(tree.Path(folder).c_str(), 0755);
  });
}

TEST(RuleOutcomesTest, WhatEndsTheSearchIsNoMeaning) {
  test::RunUnprivileged([] {
    const TemporaryTree tree;
    MakeFolders(tree);
    const auto open = [&](const std::string& folders) {
      return Environment({.folders = FoldersOf(tree, folders), .rules = kIncludeRules});
    };
    const Environment before = open("one"), after = open("closed one");
    const auto changes = after.FindNameChangesSince(before);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].name, u"a.h");
    EXPECT_TRUE(changes[0].before && !changes[0].after);
    EXPECT_TRUE(open("closed two").FindNameChangesSince(after).size() == 1);  // two/sub/a.h is new
    EXPECT_FALSE(open("closed").ForEachFile([](const auto&) { return true; }));
    for (const char* folder : {"shut", "listed"}) chmod(tree.Path(folder).c_str(), 0755);
  });
}

TEST(RuleOutcomesTest, AFolderComesFromTheNearestFolderAboveItOnThePath) {
  const TemporaryTree tree;
  tree.Files({"deep/sub/a.h"});
  const ustring deep = tree.Text("deep");
  for (const auto& folders :
       std::initializer_list<std::vector<ustring>>{{u"/"}, {deep, u"/"}, {u"/", deep}}) {
    const Environment environment({.folders = folders, .rules = kPlainRules});
    const auto found = environment.Find({.name = deep.substr(1) + u"/sub/a.h"});
    ASSERT_TRUE(found);
    EXPECT_EQ(environment.FindOrigin(*found->GetPathEntry()).folder,
              folders.size() == 1 ? u"/" : deep);
  }
}

TEST(RuleOutcomesTest, AMissReportsProblemsWhicheverSpellingEndsTheSearch) {
  const TemporaryTree tree;
  tree.Link("a.h", "rings/a.h");
  tree.Files({"one/a.c"});
  const Environment environment(
      {.folders = FoldersOf(tree, "rings one none"), .rules = kIncludeRules});
  for (int asked = 0; asked < 20; ++asked) {
    EXPECT_FALSE(environment.Find({.name = u"a", .extensions = {u".h", u".c"}}));
  }
  EXPECT_EQ(environment.GetProblemsMet().size(), 1U);
}

TEST(RuleOutcomesTest, AQuoteFolderWithoutALocationIsAProblem) {
  const ustring unknown = u"\xD800";
  const Environment environment({.rules = kIncludeRules, .quoteFolders = {unknown}});
  EXPECT_FALSE(environment.Find({.name = u"a.h", .extensions = {}, .fromFolder = u"/"}));
  for (const auto& problems : {environment.GetProblemsMet(), environment.FindProblems(),
                               environment.ExamineTrust().unexamined}) {
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].folder, unknown);
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::host
