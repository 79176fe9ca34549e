#include "searchpath/host/receipt.h"
#include "support/shown.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace Corvane::PathManagement::host {
namespace {

using test::Shown;
using test::TemporaryTree;

struct EnvironmentTest : testing::Test {
  TemporaryTree tree;
};

struct ViewRow {
  std::vector<std::string> folders, without;
  FolderExpansion expansion;
  std::string expected;  // main entries; files called p/a.zt; what hides nothing; problems
};

TEST_F(EnvironmentTest, WhatIsHiddenOrComesAgainIsNotShown) {
  tree.Files({"one/private/a.zt", "two/+p/a.zt", "two/sub/a.zt", "old/+q/@m/a.zt"});
  tree.Link("one", "link");
  tree.Link("../two/+p", "old/+p");  // what a hidden folder links to is shown where else it is
  tree.Link("../two", "old/@up");
  using enum FolderExpansion;
  const std::vector<ViewRow> rows = {
      {{"one", "http://h/", "link", "gone", "one/private", "two", "gone"},
       {"http://host/", "two", "two/sub"},
       Alone,
       "one gone one/private; ; http://host/ two/sub; http://h/ gone"},
      {{"old", "two", "old/+q/@m"}, {"old"}, Alone, "two; two/+p/a.zt; ; "},
      {{"old", "two", "two/sub"}, {"old"}, Recursive, "two two/sub; two/+p/a.zt; ; "},
      {{"old", "two", "two/sub"}, {"old", "two"}, Recursive, "; ; ; "},
      {{"one", "two"}, {"two/sub", "one/private"}, Recursive, "one two; two/+p/a.zt; ; "},
      {{"old/+q", "two"}, {"old"}, Alone, "two; two/+p/a.zt; ; "},
  };
  for (const auto& [folders, without, expansion, expected] : rows) {
    EnvironmentOptions options{.folders = {}, .expansion = expansion};
    const auto text = [&](const std::string& name) {
      return name.starts_with("http") ? TextFromBytes(name) : tree.Text(name);
    };
    std::ranges::transform(folders, std::back_inserter(options.folders), text);
    std::ranges::transform(without, std::back_inserter(options.without), text);
    const Environment environment(options);
    std::vector<ustring> problems;
    for (const auto& problem : environment.FindProblems()) problems.push_back(problem.folder);
    EXPECT_EQ(Shown(*environment.GetPath()->GetMainEntries(), tree) + "; " +
                  Shown(environment.FindAll({.name = u"p/a.zt"}), tree) + "; " +
                  Shown(environment.FindIdleExclusions(), tree) + "; " + Shown(problems, tree),
              expected)
        << testing::PrintToString(folders) << testing::PrintToString(without);
    const Environment foldersOnly = Environment::WithoutFiles(options);
    const auto all = [&](const Environment& shown) {
      PathEntries entries;
      shown.GetPath()->ForEachEntry(kAllKindsAndResourcesScope, [&](const auto& entry) {
        return entries.push_back(entry), false;
      });
      return Shown(entries, tree);
    };
    EXPECT_EQ(all(foldersOnly), all(environment));
    EXPECT_FALSE(foldersOnly.ForEachFile([](const auto&) { return true; }));
    EXPECT_THROW((void)foldersOnly.FindWithReceipt({}), std::logic_error);
  }
}

TEST_F(EnvironmentTest, FoldersAreFoundByName) {
  tree.Files({"one/+pkg/@cls/f", "two/@cls/cls", "two/private/f", "Pkg/f"});
  const Environment environment(
      {tree.Text("one"), tree.Text("two"), tree.Text("Pkg"), tree.Text("two/private")});
  constexpr auto kIgnore = FilenameMatchingPolicy::IgnoreCase;
  const std::vector<std::pair<FolderLookup, std::string>> rows = {
      {{u"cls"}, "two/@cls"},
      {{u"pkg/cls"}, "one/+pkg/@cls"},
      {{u"pkg", kIgnore}, "one/+pkg Pkg"},
      {{.name = u"+pkg/cls", .isLiteral = true}, "one/+pkg/@cls"},
      {{.name = tree.Text("two/@cls"), .isLiteral = true}, "two/@cls"},
      {{.name = u"", .isLiteral = true}, ""},
  };
  for (const auto& [lookup, expected] : rows) {
    EXPECT_EQ(Shown(environment.FindFolders(lookup), tree), expected)
        << testing::PrintToString(lookup.name) << lookup.isLiteral;
  }
  const auto method = environment.FindFolders({u"cls"}).front();
  EXPECT_EQ(environment.FindOrigin(*method).folder, tree.Text("two"));
  const Environment hiding({.folders = {tree.Text("two")}, .without = {tree.Text("two/@cls")}});
  EXPECT_EQ(Shown(hiding.FindFolders({.name = u"cls", .isLiteral = true}), tree), "");
  EXPECT_TRUE(environment.Find({.name = u"cls"}) && !hiding.Find({.name = u"cls"}));
  EXPECT_EQ(Shown(environment.FindSimilarFolders({u"PRIVATE"}), tree), "two/private two/private")
      << "also where a main entry has it below";
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
  tree.Files({"a/plto.zt", "a/plot.y", "b/plot", "b/PLOT.zt", "b/plots.zt", "b/plto.zt", "b/bar"});
  tree.Files({"b/pilot.zt", "b/plat.zt", "b/lot.zt", "b/.rc", "b/@plot/plot.z", "b/bzx",
              "b/v1.2.zt", "a/v2.y", "b/v2.Z"});
  const Environment environment({tree.Text("a"), tree.Text("b")});
  const std::vector<SimilarRow> rows = {
      {{u"plot.zt"}, 2, "b/PLOT.zt a/plot.y"},
      {{u"plot.zt"}, 4, "b/PLOT.zt a/plot.y b/plot a/plto.zt"},
      {{u"plot", {u".zt", u".z"}}, 1, "b/PLOT.zt"},
      {{u"Bar", {u".q", u""}}, 9, "b/bar"},
      {{u"pplots.zt"}, 9, "b/plots.zt"},
      {{u"lt.zt"}, 9, "b/lot.zt"},
      {{u"baz"}, 9, "b/bar"},
      {{u"ba"}, 9, ""},  // of so short a name everything is one letter off
      {{u"plot.zt"}, 0, ""},
      {{u"b/plot.zt"}, 9, ""},
      {{u"v1.2"}, 9, "b/v1.2.zt"},
      {{u"v2", {u".zt", u".z"}}, 2, "b/v2.Z a/v2.y"},
      {{u"plto.y"}, 9, "a/plto.zt a/plot.y"},  // but not the other file of that name
      {{u"plot.y"}, 9, "b/plot"},              // but not the file of that very name
      {{u"plot", {u".y", u".q"}}, 9, "b/plot"},
  };
  for (const auto& [lookup, most, expected] : rows) {
    std::vector<FoundItem> files;
    for (const auto& similar : environment.FindSimilar(lookup, most)) files.push_back(similar.file);
    EXPECT_EQ(Shown(files, tree), expected) << testing::PrintToString(lookup.name) << most;
  }
}

TEST_F(EnvironmentTest, AFileInTheRootHasOneSeparator) {
  const AbsoluteIRI root(u"file:///");
  const auto item = std::make_shared<const PathItem>(root, u"fn", u".zt");
  EXPECT_EQ(GetNativePath(FoundItem(item, FolderEntry::Create(root))), u"/fn.zt");
}

TEST_F(EnvironmentTest, TheLogHasWhatIsAtLeastSoSevere) {
  using foundation::log::Severity;
  StartDiagnosticLog(tree.Text("log"), Severity::Warning);
  const foundation::log::basic_diagnostic_logger logger("tests::log");
  logger.Write(Severity::Information, "no");
  logger.Write(Severity::Warning, "yes");
  logger.Write(Severity::Error, "also");
  StopDiagnosticLog();
  logger.Write(Severity::Error, "too late");
  const std::string log = tree.Content("log");
  EXPECT_EQ(std::ranges::count(log, '\n'), 2);
  EXPECT_NE(log.find(" warning tests::log: yes\n"), log.npos);
  EXPECT_TRUE(log.ends_with(" error tests::log: also\n"));
}

TEST(FolderListTest, OneFolderALineNothingTrimmed) {
  std::istringstream list("/a:b\n\n file:///c \n/\xFF\r\n/last");
  EXPECT_EQ(ReadFolderList(list),
            (std::vector<ustring>{u"/a:b", u" file:///c ", ustring(u"/\xDCFF\r"), u"/last"}));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
