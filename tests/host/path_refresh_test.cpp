#include "support/folder_contents.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

namespace Corvane::PathManagement::host {
namespace {

using test::Shown;
using test::TemporaryTree;
using ComparisonFilter = PathEntryVectorDifferentiator::ComparisonFilter;
using Entries = std::vector<std::shared_ptr<const IPathEntry>>;
using Folders = FolderEntries;

constexpr const char* kMakeTree =
    "mkdir -p a/private a/+pkg/@cls b c/@m; touch a/x a/y a/private/p a/+pkg/f a/+pkg/@cls/c b/x "
    "c/@m/m; ln -s .. a/+pkg/+loop; ln -s ../c/@m a/@linked; ln -s ../c a/ordinary";

/// All folders of a path; lists them.
Entries AllOf(const Folders& mainFolders) {
  Entries all;
  for (const auto& folder : mainFolders) {
    folder->ForEachEntryInScope(kAllKindsAndResourcesScope,
                                [&all](const auto& entry) { return all.push_back(entry), false; });
  }
  return all;
}

/// What is wrong with the folders of a path, special ones too.
std::string ProblemsOf(const Folders& mainFolders) {
  std::string all;
  for (const auto& entry : AllOf(mainFolders)) {
    for (const auto& problem : dynamic_cast<const FolderEntry&>(*entry).GetProblems()) {
      all += BytesFromText(problem.folder).value() + ": " + problem.GetText() + '\n';
    }
  }
  return all;
}

/// The folders of `path` whose entries `old` does not have.
std::string NewOf(const Folders& path, const Folders& old, const TemporaryTree& tree) {
  const Entries kept = AllOf(old);
  Entries all = AllOf(path);
  std::erase_if(all, [&](const auto& entry) { return std::ranges::count(kept, entry) > 0; });
  return Shown(all, tree);
}

TEST(PathRefreshTest, WhatHasChangedGetsANewEntryAndNothingElse) {
  struct Row {
    const char* change;
    const char* expected;  // the folders with new entries
  };
  const std::vector<Row> rows = {
      {"true", ""},
      {"touch a/z", "a"},
      {"touch a/+pkg/@cls/d", "a a/+pkg a/+pkg/@cls"},
      {"rm c/@m/m", "a a/@linked c c/@m"},
      {"mkdir a/@n", "a a/@n"},
      {"mkdir a/+pkg/@n", "a a/+pkg a/+pkg/@n"},
      {"rm -r a/private", "a"},
      {"mkdir a/sub; mkdir a/sub/@n; rm a/ordinary", ""},  // no path leads there
      {"rm a/x; touch a/w a/x; rm a/w; echo text >a/x", ""},
      {"mv a/x a/z", "a"},
      {"rm a/x; mkdir a/x", "a"},
      {"mv a/+pkg/+loop a/+pkg/+ring", "a a/+pkg"},
      {"rm a/@linked; ln -s ../a/+pkg/@cls a/@linked", "a a/@linked"},
      {"mv a/@linked a/@other", "a a/@other"},
      {"rm -r b", "b"},
      {"rm -r b; ln -s c b", "b b/@m"},
  };
  for (const Row& row : rows) {
    const TemporaryTree tree;
    tree.Do(kMakeTree);
    const Folders old = test::FoldersIn(tree, {"a", "b", "c"});
    std::stringstream stream;
    PathEntryFactory(old).WriteEntries(stream, tree.IRI());
    tree.Do(row.change);
    const Folders fresh = RefreshFolders(old);
    EXPECT_EQ(NewOf(fresh, old, tree), row.expected) << row.change;
    const Folders scanned = test::FoldersIn(tree, {"a", "b", "c"});
    EXPECT_EQ(Shown(AllOf(fresh), tree), Shown(AllOf(scanned), tree));
    EXPECT_EQ(ProblemsOf(fresh), ProblemsOf(scanned)) << row.change;
    // The same beside a path that is not refreshed: what is unchanged comes from there.
    PathEntryFactory saved(ListingUse::AsSaved);
    saved.ReadEntries(stream, tree.IRI());
    const Folders shared =
        ShareUnchangedFolders(test::FoldersIn(tree, {"c", "b", "a"}), saved.GetFolders());
    EXPECT_EQ(NewOf({shared[2], shared[1], shared[0]}, saved.GetFolders(), tree), row.expected)
        << row.change << ", saved";
  }
}

TEST(PathRefreshTest, OnlyWhatIsAskedForIsListedAnew) {
  const TemporaryTree tree;
  tree.Do(kMakeTree);
  const Folders old = test::FoldersIn(tree, {"a", "b", "b", "c", "gone"});
  AllOf({old[0], old[1], old[3]});  // the second "b" has taken no snapshot
  tree.Do("touch a/z b/z c/z c/@m/z");
  const auto refresh = [&](const std::string& changed) {
    const ChangedFolders folders(std::vector<AbsoluteIRI>{tree.IRI(changed)});
    const Folders rearranged = RearrangeFolders(
        old, {tree.IRI("c"), tree.IRI("b"), tree.IRI("b"), tree.IRI("b"), tree.IRI("a")});
    return RefreshFolders(rearranged, folders);
  };
  const auto differ = [&](const std::string& changed) {
    const Folders fresh = refresh(changed);
    EXPECT_TRUE(fresh[2] == old[2] && fresh[3] != old[1] && fresh[3] != old[2]) << changed;
    return std::string(fresh[0] != old[3] ? "c" : "") + (fresh[1] != old[1] ? "b" : "") +
           (fresh[4] != old[0] ? "a" : "");
  };
  EXPECT_EQ(differ("elsewhere"), "");
  EXPECT_EQ(differ("a/ordinary"), "c");  // leads to c
  EXPECT_EQ(differ("b"), "b");
  EXPECT_EQ(differ("a/private/@new"), "a");
  EXPECT_EQ(differ("c/@m"), "ca");
}

/// As in `Contents`, with spaces between; a folder that comes twice stands there twice.
std::string Sorted(Entries entries, const TemporaryTree& tree) {
  std::ranges::sort(entries, {}, [](const auto& entry) { return Shown(*entry); });
  std::string all;
  for (const auto& entry : entries) all += Shown(std::vector{entry}, tree) + "/ ";
  return all;
}

TEST(PathRefreshTest, RandomChangesAreReportedAsTheListingsDiffer) {
  constexpr std::uint64_t kSeed = 20261121;
  std::mt19937_64 random{kSeed};
  const auto anyOf = [&](const std::vector<std::string>& names) {
    return names[random() % names.size()];
  };
  const TemporaryTree tree;
  const std::vector<std::string> mains = {"a", "b", "c"};
  for (const auto& folder : mains) tree.Folder(folder);
  Folders path = test::FoldersIn(tree, mains);
  for (int round = 0; round < 100; ++round) {
    AllOf(path);
    const test::Contents before = test::ContentsOf(mains, tree);
    std::string commands = "true";
    for (std::size_t change = random() % 4; change-- > 0;) {
      const std::string folder = anyOf(mains) + anyOf({"", "/+p", "/+p/@m", "/private", "/+p/+q"});
      commands +=
          "; " + anyOf({"mkdir -p " + folder + "; touch " + folder + anyOf({"/f", "/g"}),
                        "rm -f " + folder + anyOf({"/f", "/g"}), "rm -rf " + folder + "/*"});
    }
    tree.Do(commands);
    const test::Contents after = test::ContentsOf(mains, tree);
    const Folders fresh = RefreshFolders(path);
    PathEntryVectorDifferentiator found;
    found.Compare({path.begin(), path.end()}, {fresh.begin(), fresh.end()},
                  ComparisonFilter::IncludeSubfolders);
    SCOPED_TRACE(std::to_string(kSeed) + " round " + std::to_string(round) + ": " + commands);
    test::Contents changed;
    std::ranges::set_symmetric_difference(before, after, std::inserter(changed, changed.end()));
    std::string added, removed, refreshed;
    for (const auto& name : after) {
      if (name.ends_with('/') && !before.contains(name)) added += name + ' ';
    }
    for (const auto& name : before) {
      const auto isBelow = [&](const auto& other) { return other.starts_with(name); };
      if (name.ends_with('/') && std::ranges::any_of(changed, isBelow)) {
        (after.contains(name) ? refreshed : removed) += name + ' ';
      }
    }
    ASSERT_EQ(Sorted(*found.GetAdded(), tree), added);
    ASSERT_EQ(Sorted(*found.GetRemoved(), tree), removed);
    ASSERT_EQ(Sorted(*found.GetRefreshedAfter(), tree), refreshed);
    path = fresh;
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::host
