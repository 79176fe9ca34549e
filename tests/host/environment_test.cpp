#include "searchpath/host/environment.h"

#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Corvane::PathManagement::host {
namespace {

using test::TemporaryTree;

class EnvironmentTest : public testing::Test {
 protected:
  EnvironmentTest() {
    for (const char* name : {"one/a.x", "one/@fn/fn.x", "one/@fn/fn.y", "one/private/a.x",
                             "two/fn.x", "two/a.x", "two/@fn/fn.x", "two/below/low.x"}) {
      tree.File(name);
    }
  }

  [[nodiscard]] std::vector<std::string> FindAll(const Lookup& lookup) const {
    const Environment environment({tree.Text("one"), tree.Text("two")});
    const auto all = environment.FindAll(lookup);
    std::vector<std::string> paths;
    for (const auto& found : all) {
      paths.push_back(BytesFromText(GetNativePath(found).substr(tree.Path().size() + 1)).value());
    }
    const auto first = environment.Find(lookup);
    EXPECT_EQ(first.has_value(), !all.empty());
    if (first) {
      EXPECT_TRUE(*first == all.front()) << "the winner stands first";
    }
    return paths;
  }

  TemporaryTree tree;
};

TEST_F(EnvironmentTest, AllFilesThatANameCouldMeanInOrder) {
  using Paths = std::vector<std::string>;
  EXPECT_EQ(FindAll({.name = u"a.x"}), (Paths{"one/a.x", "two/a.x"}));
  EXPECT_EQ(FindAll({.name = u"fn", .extensions = {u".y", u".x"}}),
            (Paths{"one/@fn/fn.y", "one/@fn/fn.x", "two/fn.x", "two/@fn/fn.x"}));
  EXPECT_EQ(FindAll({.name = u"fn.x", .extensions = {u".y"}}), Paths{"two/fn.x"});
  EXPECT_EQ(FindAll({.name = u"a.x", .fromFolder = tree.Text("one")}),
            (Paths{"one/private/a.x", "one/a.x", "two/a.x"}));
  EXPECT_EQ(FindAll({.name = u"a.x", .fromFolder = tree.Text("two/below")}),
            (Paths{"one/a.x", "two/a.x"}));
  EXPECT_EQ(FindAll({.name = u"two/a.x", .fromFolder = tree.Text("one")}), Paths{"two/a.x"});
  EXPECT_EQ(FindAll({.name = u"A.X"}), Paths{});
  EXPECT_EQ(FindAll({.name = u"A.X", .policy = FilenameMatchingPolicy::IgnoreCase}),
            (Paths{"one/a.x", "two/a.x"}));
  EXPECT_THROW(FindAll({.name = u"a.x", .fromFolder = u"/absent"}),
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
  const auto found = recursive.Find({.name = u"low.x"});
  ASSERT_TRUE(found);
  EXPECT_EQ(GetNativePath(*found), tree.Text("two/below/low.x"));
  EXPECT_EQ(recursive.GetPath()->GetMainEntries()->size(), 4U);
}

TEST(FolderListTest, OneFolderALineNothingTrimmed) {
  std::istringstream list("/a:b\n\n file:///c \n/\xFF\r\n/last");
  EXPECT_EQ(ReadFolderList(list),
            (std::vector<ustring>{u"/a:b", u" file:///c ", ustring(u"/\xDCFF\r"), u"/last"}));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
