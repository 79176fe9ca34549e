#include "support/shown.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Corvane::PathManagement::host {
namespace {

using test::Shown;
using test::TemporaryTree;

struct EnvironmentTest : testing::Test {
  EnvironmentTest() { tree.Files({"one/a.x", "one/fn", "two/a.x", "two/fn.x", "two/below/low.x"}); }

  TemporaryTree tree;
};

TEST_F(EnvironmentTest, NamesMayCarryAnExtensionOrFolders) {
  const Environment environment({tree.Text("one"), tree.Text("two")});
  const auto all = [&](const Lookup& lookup) { return Shown(environment.FindAll(lookup), tree); };
  EXPECT_EQ(all({.name = u"fn.x", .extensions = {u".y"}}), "two/fn.x");
  EXPECT_EQ(all({.name = u"a.x", .fromFolder = tree.Text("two/below")}), "one/a.x two/a.x");
  EXPECT_EQ(all({.name = u"two/a.x", .fromFolder = tree.Text("one")}), "two/a.x");
  EXPECT_THROW(all({.name = u"a.x", .fromFolder = u"/absent"}),
               current_working_folder::FailedToAbsolutizeException);
}

TEST_F(EnvironmentTest, FoldersAreExpandedAndBadOnesReported) {
  const Environment alone({u"http://host/", tree.Text("absent"), tree.Text("two")});
  EXPECT_FALSE(alone.Find({.name = u"low.x"}));
  const auto problems = alone.FindProblems();
  ASSERT_EQ(problems.size(), 2U);
  EXPECT_EQ(problems[0].folder, u"http://host/");
  EXPECT_EQ(problems[1].folder, tree.Text("absent"));
  const Environment recursive({tree.Text()}, FolderExpansion::Recursive);
  EXPECT_EQ(Shown(recursive.FindAll({.name = u"low.x"}), tree), "two/below/low.x");
  EXPECT_EQ(recursive.GetPath()->GetMainEntries()->size(), 4U);
}

TEST_F(EnvironmentTest, HiddenAndRepeatedFoldersAreNotAsked) {
  tree.Files({"one/private/a.x", "one/private/b.x", "two/+p/a.x"});
  tree.Link("one", "link");
  std::vector<ustring> folders;
  for (const char* folder : {"one", "link", "gone", "one/private", "two", "gone"}) {
    folders.push_back(tree.Text(folder));
  }
  const std::vector<ustring> idle = {u"", tree.Text("gone"), tree.Text("two/below")};
  const Environment environment(
      {.folders = folders, .without = {idle[0], tree.Text("two"), idle[2]}});
  EXPECT_EQ(environment.FindIdleExclusions(), (std::vector<ustring>{idle[0], idle[2]}));
  EXPECT_EQ(Shown(*environment.GetPath()->GetMainEntries(), tree), "one gone one/private");
  EXPECT_EQ(environment.FindProblems().size(), 1U);
  const auto all = [&](const Lookup& lookup) { return Shown(environment.FindAll(lookup), tree); };
  EXPECT_EQ(all({.name = u"b.x", .fromFolder = tree.Text("link")}), "one/private/b.x");
  EXPECT_EQ(all({.name = u"p/a.x"}), "");
  const auto explanation = environment.Explain({.name = u"b.x", .fromFolder = tree.Text("one")});
  std::vector<FolderOutcome> outcomes;
  for (const auto& asked : explanation.asked) outcomes.push_back(asked.outcome);
  using enum FolderOutcome;
  EXPECT_EQ(outcomes, (std::vector{HoldsIt, Absent, DroppedAsRepeat, Unreadable, DroppedAsRepeat,
                                   FilteredOut, DroppedAsRepeat}));
  EXPECT_EQ(explanation.asked[4].repeated, explanation.asked[0].folder);
  EXPECT_EQ(explanation.asked[5].hider, tree.Text("two"));
  const Environment below({.folders = {tree.Text()},
                           .expansion = FolderExpansion::Recursive,
                           .without = {tree.Text("two"), tree.Text("one/private")}});
  EXPECT_EQ(Shown(*below.GetPath()->GetMainEntries(), tree), tree.Path() + " one");
  EXPECT_FALSE(below.Find({.name = u"b.x", .fromFolder = tree.Text("one")}));
  EXPECT_FALSE(below.Find({.name = u"low.x"}));
  EXPECT_TRUE(below.FindIdleExclusions().empty());
}

TEST_F(EnvironmentTest, WhatAHiddenFolderLinksToIsShownWhereElseItIs) {
  tree.Files({"two/+p/a.x", "two/sub/a.x"});
  tree.Link("../two/+p", "old/+p");
  tree.Link("../two", "old/@up");
  EnvironmentOptions options{.folders = {tree.Text("old"), tree.Text("two")},
                             .without = {tree.Text("old")}};
  EXPECT_EQ(Shown(Environment(options).FindAll({.name = u"p/a.x"}), tree), "two/+p/a.x");
  options.expansion = FolderExpansion::Recursive;
  options.folders.push_back(tree.Text("two/sub"));
  EXPECT_EQ(Shown(*Environment(options).GetPath()->GetMainEntries(), tree),
            "two two/below two/sub");
  options.without.push_back(tree.Text("two"));
  EXPECT_EQ(Shown(*Environment(options).GetPath()->GetMainEntries(), tree), "");
}

TEST_F(EnvironmentTest, FoldersAreFoundByName) {
  tree.Files({"one/+pkg/@cls/f", "two/@cls/f", "two/private/f", "Pkg/f"});
  const Environment environment({tree.Text("one"), tree.Text("two"), tree.Text("Pkg")});
  constexpr auto kIgnore = FilenameMatchingPolicy::IgnoreCase;
  const std::vector<std::pair<FolderLookup, std::string>> rows = {
      {{u"cls"}, "two/@cls"},
      {{u"pkg/cls"}, "one/+pkg/@cls"},
      {{u"pkg", kIgnore}, "one/+pkg Pkg"},
      {{.name = u"pkg", .isLiteral = true}, ""},
      {{.name = u"+pkg/cls", .isLiteral = true}, "one/+pkg/@cls"},
      {{.name = tree.Text("two/@cls"), .isLiteral = true}, "two/@cls"},
      {{tree.Text("absent")}, ""},
      {{.name = u"", .isLiteral = true}, ""},
  };
  for (const auto& [lookup, expected] : rows) {
    EXPECT_EQ(Shown(environment.FindFolders(lookup), tree), expected)
        << testing::PrintToString(lookup.name) << lookup.isLiteral;
  }
  EXPECT_EQ(Shown(environment.FindSimilarFolders({u"no/PKG"}, 2), tree), "one/+pkg Pkg");
  EXPECT_EQ(Shown(environment.FindSimilarFolders({u"clas"}), tree), "one/+pkg/@cls two/@cls");
  EXPECT_EQ(Shown(environment.FindSimilarFolders({u"/"}), tree), "");
}

struct SimilarRow {
  Lookup lookup;
  std::size_t most;
  std::string expected;
};

TEST(FindSimilarTest, NamesTheMostSimilarFilesFirstAndEachOnce) {
  const TemporaryTree tree;
  tree.Files({"a/plto.x", "a/plot.y", "b/plot", "b/PLOT.x", "b/plots.x", "b/plto.x", "b/bar"});
  tree.Files({"b/pilot.x", "b/plat.x", "b/lot.x", "b/.rc", "b/@plot/plot.z", "b/foo.xy"});
  const Environment environment({tree.Text("a"), tree.Text("b")});
  const std::vector<SimilarRow> rows = {
      {{u"plot.x"}, 2, "b/PLOT.x a/plot.y"},
      {{u"plot.x"}, 4, "b/PLOT.x a/plot.y b/plot a/plto.x"},
      {{u"plot", {u".x", u".z"}}, 1, "b/PLOT.x"},
      {{u"Bar", {u".q", u""}}, 9, "b/bar"},
      {{u"pplots.x"}, 9, "b/plots.x"},
      {{u"lt.x"}, 9, "b/lot.x"},
      {{u"baz"}, 9, "b/bar"},
      {{u"ba"}, 9, ""},  // of so short a name everything is one letter off
      {{u"plot.x"}, 0, ""},
      {{u"b/plot.x"}, 9, ""},
      {{u"plto.y"}, 9, "a/plto.x a/plot.y"},  // but not the other file of that name
  };
  for (const auto& [lookup, most, expected] : rows) {
    std::vector<FoundItem> files;
    for (const auto& similar : environment.FindSimilar(lookup, most)) files.push_back(similar.file);
    EXPECT_EQ(Shown(files, tree), expected) << testing::PrintToString(lookup.name) << most;
  }
}

TEST(FolderListTest, OneFolderALineNothingTrimmed) {
  std::istringstream list("/a:b\n\n file:///c \n/\xFF\r\n/last");
  EXPECT_EQ(ReadFolderList(list),
            (std::vector<ustring>{u"/a:b", u" file:///c ", ustring(u"/\xDCFF\r"), u"/last"}));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
