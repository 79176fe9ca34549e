#include "support/shown.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

// That shadows are exactly what a look-up of each name finds is checked in lookup_model_test.cpp.

namespace Corvane::PathManagement::host {
namespace {

using test::Shown;

/// Folders "a", "b", "c" and "d" on a path.
struct ShadowsTest : testing::Test {
  /// Each shadow as "name: winner > kind file, kind file;".
  [[nodiscard]] std::string List(const std::vector<Shadow>& shadows) const {
    std::string list;
    for (const auto& shadow : shadows) {
      list += BytesFromText(shadow.name).value() + ": " + Shown(std::vector{shadow.winner}, tree);
      for (const auto& [file, kind, problem] : shadow.hidden) {
        list += (&file == &shadow.hidden.front().file ? " > " : ", ") + std::string(GetText(kind)) +
                ' ' + Shown(std::vector{file}, tree);
        if (problem) list += " (" + problem->reason.message() + ')';
      }
      list += ";\n";
    }
    return list;
  }

  test::TemporaryTree tree;
  std::vector<ustring> folders = {tree.Text("a"), tree.Text("b"), tree.Text("c"), tree.Text("d")};
};

TEST_F(ShadowsTest, EachHiddenFileIsComparedWithTheOneThatHidesIt) {
  const std::string large(100000, 'x');
  const std::vector<std::pair<std::string, std::string>> files = {
      {"a/size", "1"},          {"b/size", "12"},         {"a/bytes", "12"},
      {"b/bytes", "13"},        {"c/bytes", "12"},        {"b/large", large + "z"},
      {"a/large", large + "y"}, {"c/large", large + "y"}, {"a/empty", ""},
      {"b/empty", ""},          {"a/link", "same"},       {"b/hard", "same"},
      {"c/Link", "same"},       {"b/lost", "12"},         {"c/lost", "12"},
      {"a/only", ""},           {"a/private/size", "1"},  {"a/+p/size", ""},
      {"b/@one/one", "1"},      {"c/one", "1"},           {"b/turned", "1"},
      {"c/turned", "1"},        {"a/shut", "1"},          {"d/shut", "1"}};
  for (const auto& [file, content] : files) tree.File(file, content);
  tree.Link("../a/link", "b/link");
  tree.Link("../b/link", "c/LINK");
  ASSERT_EQ(link(tree.Path("b/hard").c_str(), tree.Path("a/hard").c_str()), 0);
  const Environment environment(folders);
  for (const auto& folder : environment.GetMainFolders()) EXPECT_GT(folder->GetItemCount(), 0U);
  std::filesystem::remove(tree.Path("c/lost"));
  std::filesystem::remove(tree.Path("c/turned"));
  tree.Folder("c/turned");
  std::filesystem::remove_all(tree.Path("d"));
  tree.File("d");
  EXPECT_EQ(List(environment.FindShadows().shadows),
            "bytes: a/bytes > different b/bytes, identical c/bytes;\n"
            "empty: a/empty > identical b/empty;\n"
            "hard: a/hard > same file b/hard;\n"
            "large: a/large > different b/large, identical c/large;\n"
            "link: a/link > same file b/link;\n"
            "lost: b/lost > unreadable c/lost (No such file or directory);\n"
            "one: b/@one/one > identical c/one;\n"
            "shut: a/shut > unreadable d/shut (Not a directory);\n"
            "size: a/size > different b/size;\n"
            "turned: b/turned > unreadable c/turned (Invalid argument);\n");
  const ShadowLookup respelled{.names = {u"LINK"}, .policy = FilenameMatchingPolicy::IgnoreCase};
  EXPECT_EQ(List(environment.FindShadows(respelled).shadows),
            "LINK: a/link > same file b/link, same file c/LINK, other case c/Link;\n");
}

struct AskedRow {
  ShadowLookup lookup;
  std::string shadows;
  std::vector<ustring> unknownAndIdle = {};
};

TEST_F(ShadowsTest, NamesAreThoseThatALookUpTakes) {
  constexpr auto kIgnoreCase = FilenameMatchingPolicy::IgnoreCase;
  tree.Files({"a/fn.zt", "a/fn.c", "b/fn.zt", "b/a.b.zt", "c/a.b.zt", "a/a.b", "b/a.b", "b/.zt",
              "c/.zt", "a/@m/m.zt", "c/m.zt", "a/@n.zt/n.zt", "b/n.zt", "c/@FN/fn.ZT",
              "a/k.\xE2\x84\xAA", "b/k.k", "b/.h.q", "c/.h.q"});
  const std::vector<AskedRow> rows = {
      {{.extensions = {u".zt"}},
       "a.b.zt: b/a.b.zt > identical c/a.b.zt;\nfn: a/fn.zt > identical b/fn.zt;\n"
       "m: a/@m/m.zt > identical c/m.zt;\n"},
      {{.extensions = {u".c", u".zt"}, .allowed = {u"m", u"a.b.zt", u"fn.zt", u"\xD800"}},
       "fn: a/fn.c > identical a/fn.zt, identical b/fn.zt;\n",
       {u"fn.zt", u"\xD800"}},
      {{.names = {u"fn.zt", u"a.b", u"no", u"b/fn.zt"}, .allowed = {u"a.b", u"no", u"never"}},
       "fn.zt: a/fn.zt > identical b/fn.zt;\n",
       {u"no", u"no"}},
      {{.extensions = {u".ZT"}, .policy = kIgnoreCase, .allowed = {u"A.B.ZT", u"M"}},
       "FN: a/fn.zt > identical b/fn.zt, other case c/@FN/fn.ZT;\nfn: a/fn.zt > identical "
       "b/fn.zt;\n",
       {}},
      {{.extensions = {u".K"},
        .policy = kIgnoreCase},  // the sign for kelvin is a k, in three bytes
       "k: a/k.\xE2\x84\xAA > other case b/k.k;\n"},
      {{.extensions = {u".q", u"\xD800"}}, ".h: b/.h.q > identical c/.h.q;\n"},
  };
  const Environment environment(folders);
  for (const auto& [lookup, shadows, unknownAndIdle] : rows) {
    ShadowReport report = environment.FindShadows(lookup);
    report.unknown.insert(report.unknown.end(), report.idleAllowances.begin(),
                          report.idleAllowances.end());
    EXPECT_EQ(List(report.shadows), shadows) << testing::PrintToString(lookup.extensions);
    EXPECT_EQ(report.unknown, unknownAndIdle) << testing::PrintToString(lookup.extensions);
  }
  const ShadowSummary summary = GetSummary(environment.FindShadows().shadows);
  EXPECT_EQ(summary.counts.Of(ShadowKind::Identical), 6U);
  ASSERT_EQ(summary.folders.size(), 3U);
  EXPECT_EQ(Shown(std::vector{summary.folders[0].winner, summary.folders[0].hidden}, tree), "b c");
}

}  // namespace
}  // namespace Corvane::PathManagement::host
