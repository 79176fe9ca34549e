#include "searchpath/host/environment.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/utilities/concatenated_path.h"
#include "searchpath/utilities/path_base.h"
#include "support/listed_tree.h"
#include "support/setting.h"

#include <gtest/gtest.h>

// The questions of an environment, on paths that are no folders on disk.

namespace Corvane::PathManagement::host {
namespace {

using test::ListedTree;

std::string InWords(const ustring& text) { return BytesFromText(text).value(); }
std::string InWords(const FoundItem& file) { return InWords(GetLocationText(file)); }
std::string InWords(const std::shared_ptr<const IPathEntry>& entry) {
  return InWords(entry->GetAbsoluteIRI().toString());
}
std::string InWords(const SimilarFile& file) {
  return InWords(file.file) + " " + GetText(file.similarity);
}
std::string InWords(const HiddenFile& file) {
  const std::string reason = file.problem ? ": " + file.problem->reason.message() : "";
  return InWords(file.file) + " " + GetText(file.kind) + reason;
}
std::string InWords(const AskedFolder& asked);
std::string InWords(const Shadow& shadow);
std::string InWords(const PathFinding& finding);
template <class Thing>
std::string InWords(const std::vector<Thing>& list) {
  std::string all;
  for (const auto& thing : list) all += (all.empty() ? "" : " ") + InWords(thing);
  return all;
}
std::string InWords(const AskedFolder& asked) {
  return "\n" + InWords(asked.folder) + " " + GetText(asked.outcome) + " [" + InWords(asked.files) +
         "] [" + InWords(asked.inOtherCase) + "] " + InWords(asked.origin.folder) + " " +
         InWords(asked.instead);
}
std::string InWords(const Explanation& explanation) {
  return InWords(explanation.files) + " " + GetText(explanation.rule) + InWords(explanation.asked);
}
std::string InWords(const Shadow& shadow) {
  return "\n" + InWords(shadow.name) + ": " + InWords(shadow.winner) + " hides " +
         InWords(shadow.hidden);
}
std::string InWords(const ShadowReport& report) {
  return InWords(report.shadows) + "\nunknown " + InWords(report.unknown);
}
std::string InWords(const PathFinding& finding) {
  return std::string("\n") + GetText(finding.kind) + " " + InWords(finding.folder) + " " +
         InWords(finding.origin) + " " + InWords(finding.other) + " " + InWords(finding.files);
}

/// Every answer to a question, and to those that need none.
std::string Ask(const Environment& environment, const Lookup& lookup) {
  const auto first = environment.Find(lookup);
  std::string said = first ? InWords(*first) : "none";
  said += "\n" + InWords(environment.FindAll(lookup));
  said += "\n" + InWords(environment.Explain(lookup));
  said += "\nsimilar " + InWords(environment.FindSimilar(lookup, 5));
  for (const bool isLiteral : {false, true}) {
    const FolderLookup folder{.name = lookup.name, .policy = lookup.policy, .isLiteral = isLiteral};
    said += "\nfolders " + InWords(environment.FindFolders(folder));
    said += "\n" + InWords(environment.FindSimilarFolders(folder));
  }
  const ShadowLookup shadows{.extensions = lookup.extensions, .policy = lookup.policy};
  said += "\n" + InWords(environment.FindShadows(shadows));
  return said + InWords(environment.Examine({.slow = std::chrono::hours(1)}));
}

Lookup AnyLookup(ListedTree& tree) {
  const std::vector<ustring> names = {u"f",      u"f.zt",      u"F.zt",  u"f.ZT", u"ff",
                                      u"+f/f",   u"f/f.zt",    u"+f",    u"@f",   u"private/f.zt",
                                      u"g/f.zt", u"resources", u"f/f.y", u"fz.t"};
  Lookup lookup{.name = tree.AnyOf(names)};
  while (tree.Below(2) == 0) {
    lookup.extensions.push_back(tree.AnyOf(std::vector<ustring>{u".zt", u".ZT", u".y"}));
  }
  if (tree.Below(4) == 0) lookup.name = tree.tree.Text("a/+f/f");
  if (tree.Below(3) == 0) lookup.fromFolder = tree.tree.Text(tree.Below(2) == 0 ? "a" : "b");
  lookup.policy = static_cast<FilenameMatchingPolicy>(tree.Below(3));
  return lookup;
}

TEST(AnyPathTest, AListingAnswersEveryQuestionAsTheSameFoldersOnDiskDo) {
  const std::size_t trees = test::Setting("SEARCHPATH_LISTED_TREES", test::RandomCases(40));
  for (std::size_t seed = 0; seed < trees; ++seed) {
    ListedTree tree(seed, false);
    const Environment listed(CreateListedPath(tree.folders));
    const Environment onDisk(std::make_shared<FolderPath>(tree.onDisk));
    const Environment both(std::make_shared<ConcatenatedPath>(
        std::make_shared<FolderPath>(FolderEntries{tree.onDisk.front()}),
        CreateListedPath({tree.folders.begin() + 1, tree.folders.end()})));
    for (int number = 0; number < 4; ++number) {
      const Lookup lookup = AnyLookup(tree);
      const std::string expected = Ask(onDisk, lookup);
      ASSERT_EQ(Ask(listed, lookup), expected) << "tree " << seed << ", " << InWords(lookup.name);
      ASSERT_EQ(Ask(both, lookup), expected) << "tree " << seed << ", " << InWords(lookup.name);
    }
  }
}

TEST(AnyPathTest, FilesInAnArchiveAndOnDiskAreOneQuestion) {
  const test::TemporaryTree tree;
  tree.Files({"mine/area.zt", "etc/passwd", "mine/only.zt"});
  const AbsoluteIRI inside(u"archive://lib.zip/geo%20metry");
  const ListedFolder secret{AbsoluteIRI(u"archive://lib.zip/geo%20metry/private"), {u"edge.zt"}};
  const auto archive = CreateListedPath({{inside, {u"area.zt", u"edge.zt", u"Edge.zt"}, {secret}}});
  const auto mine = FolderEntry::Create(tree.IRI("mine"));
  const auto gone = FolderEntry::Create(tree.IRI("gone"));
  const Environment environment(
      std::make_shared<ConcatenatedPath>(std::vector<std::shared_ptr<const IPath>>{
          archive, std::make_shared<FolderPath>(FolderEntries{mine, gone}), archive}));

  const ustring folder = u"archive://lib.zip/geo%20metry";
  const auto seen = environment.Find({.name = u"edge.zt", .fromFolder = folder});
  EXPECT_EQ(InWords(GetLocationText(seen.value())), "archive://lib.zip/geo metry/private/edge.zt");

  const auto files = environment.FindAll({.name = u"area", .extensions = {u".zt"}});
  ASSERT_EQ(InWords(files), "archive://lib.zip/geo metry/area.zt " + tree.Path("mine/area.zt") +
                                " archive://lib.zip/geo metry/area.zt");
  EXPECT_EQ(GetNativePath(files[0]), u"");
  EXPECT_EQ(GetNativePath(files[1]), tree.Text("mine/area.zt"));
  const auto explained = environment.Explain({.name = u"area.zt"}).asked;
  ASSERT_EQ(explained.size(), 4U);
  EXPECT_EQ(explained[0].outcome, FolderOutcome::HoldsIt);
  EXPECT_EQ(explained[1].outcome, FolderOutcome::HiddenByEarlier);
  EXPECT_EQ(explained[2].outcome, FolderOutcome::Unreadable);
  EXPECT_EQ(explained[1].origin.folder, tree.Text("mine"));

  EXPECT_EQ(InWords(environment.FindFolders({.name = folder})), InWords(folder));
  EXPECT_THROW((void)environment.Find({.name = u"f", .fromFolder = u"archive://lib.zip/none"}),
               current_working_folder::FailedToAbsolutizeException);
  EXPECT_THROW((void)environment.Find({.name = u"f", .fromFolder = u"archive://[/"}),
               current_working_folder::FailedToAbsolutizeException);
  EXPECT_EQ(environment.FindFolders({.name = u"archive://[/"}).size(), 0U);
  EXPECT_EQ(InWords(environment.FindSimilar({.name = u"aera.zt"})),
            "archive://lib.zip/geo metry/area.zt one letter off");

  EXPECT_EQ(
      InWords(environment.FindShadows({.names = {u"area.zt"}}).shadows),
      "\narea.zt: archive://lib.zip/geo metry/area.zt hides " + tree.Path("mine/area.zt") +
          " unreadable: Operation not supported archive://lib.zip/geo metry/area.zt same file");
  EXPECT_EQ(environment.GetMainFolders(), (FolderEntries{mine, gone}));
  EXPECT_EQ(environment.FindProblems().size(), 1U);
  EXPECT_THROW((void)environment.CreateManager(), std::logic_error);
  EXPECT_EQ(InWords(environment.Examine()),
            "\nmissing " + tree.Path("gone") + " " + tree.Path("gone") +
                "   \nthe same folder as an earlier one archive://lib.zip/geo metry "
                "archive://lib.zip/geo metry archive://lib.zip/geo metry  "
                "\nnames that are equal where case is ignored archive://lib.zip/geo metry "
                "archive://lib.zip/geo metry  "
                "archive://lib.zip/geo metry/Edge.zt archive://lib.zip/geo metry/edge.zt");
}

/// Visits no entry, and looks no file up in them unless it answers.
struct SilentPath : PathBase {
  explicit SilentPath(bool isAnswering) : answers(isAnswering) {}
  std::shared_ptr<const PathEntries> GetMainEntries() const override {
    return listed->GetMainEntries();
  }
  bool ForEachEntry(SearchScope /*scope*/, const PathEntryVisitor& /*visitor*/) const override {
    return false;
  }
  std::vector<FoundItem> FindAllInScope(SearchScope scope,
                                        const PathManagement::detail::SearchTarget& target,
                                        FilenameMatchingPolicy policy) const override {
    if (!answers) return {};
    return listed->FindAllInScope(scope, target, policy);
  }

  std::shared_ptr<const IPath> listed =
      CreateListedPath({{AbsoluteIRI(u"archive://lib.zip/a"), {u"f.zt", u"F.zt"}}});
  bool answers;
};

TEST(AnyPathTest, APathThatContradictsItselfIsExplainedByItsAnswer) {
  const Environment answering(std::make_shared<SilentPath>(true));
  const auto asked = answering.Explain({.name = u"f.zt"}).asked;
  ASSERT_EQ(asked.size(), 1U);
  EXPECT_EQ(asked.front().outcome, FolderOutcome::HoldsIt);
  EXPECT_EQ(answering.Examine().size(), 1U);
  EXPECT_TRUE(Environment(std::make_shared<SilentPath>(false)).Examine().empty());
}

}  // namespace
}  // namespace Corvane::PathManagement::host
