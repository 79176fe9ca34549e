#include "support/slow_disk.h"

#include "support/shown.h"

#include <gtest/gtest.h>

#include <thread>

// Folders on a disk that takes its time, or never answers.

namespace Corvane::PathManagement::host {
namespace {

using current_working_folder::AbsolutizeError;
using std::chrono::milliseconds;
using test::Shown;
using test::SlowDisk;

struct SlowDiskTest : testing::Test {
  SlowDiskTest() {
    for (int folder = 0; folder < 100; ++folder) {
      const std::string name = "f" + std::to_string(100 + folder);
      tree.Files({name + "/plot" + std::to_string(folder) + ".zt", name + "/area.zt"});
      options.folders.push_back(tree.Text(name));
    }
  }
  ~SlowDiskTest() override {
    disk.Silence("");
    disk.Delay("", {});
  }
  [[nodiscard]] static std::string Found(const Environment& environment, const ustring& name,
                                         const test::TemporaryTree& in) {
    const auto found = environment.Find({.name = name});
    return found ? Shown(std::vector{*found}, in) : "none";
  }
  [[nodiscard]] std::string Missing(const std::vector<FolderProblem>& problems) const {
    std::vector<ustring> folders;
    for (const auto& problem : problems) {
      EXPECT_EQ(problem.reason, AbsolutizeError::NoAnswer);
      folders.push_back(problem.folder);
    }
    return Shown(folders, tree);
  }
  /// How long `work` takes.
  template <class Work>
  [[nodiscard]] static milliseconds Time(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
  }

  SlowDisk& disk = SlowDisk::Get();
  test::TemporaryTree tree;
  EnvironmentOptions options;
};

TEST_F(SlowDiskTest, AsManyThreadsAskAsTheDiskNeeds) {
  const auto ask = [&](int questions) {
    const Environment environment(options);
    for (int question = 0; question < questions; ++question) {
      EXPECT_EQ(Found(environment, u"plot99.zt", tree), "f199/plot99.zt");
    }
    return environment.FindProblems().size();
  };
  for (const int questions : {0, 1, 9}) {  // looks at all folders, asks for a name, lists
    const std::size_t most = questions < 9 ? 1 : std::thread::hardware_concurrency();
    std::size_t fewest = 1000;
    for (int round = 0; round < 5 && fewest > most;
         ++round) {  // other programs may keep this waiting
      disk.TakeThreadCount();
      EXPECT_EQ(ask(questions), 0U);
      fewest = std::min(fewest, disk.TakeThreadCount());
    }
    EXPECT_LE(fewest, most) << questions << " questions of a fast disk";
    disk.Delay("/f1", milliseconds(10));
    // A thread after the other would take a second for each.
    EXPECT_LT(Time([&] { EXPECT_EQ(ask(questions), 0U); }), milliseconds(700)) << questions;
    EXPECT_GT(disk.TakeThreadCount(), 20U) << questions;
    disk.Delay("", {});
  }
}

TEST_F(SlowDiskTest, AHitDoesNotWaitForAFolderBehindIt) {
  const Environment environment(options);
  disk.Delay("/f100", milliseconds(5));  // then the others are asked ahead
  disk.Silence("/f103");
  EXPECT_EQ(Found(environment, u"plot2.zt", tree), "f102/plot2.zt");
  EXPECT_EQ(environment.GetProblemsMet().size(), 0U);
  disk.Silence("");
  EXPECT_EQ(Found(environment, u"plot3.zt", tree), "f103/plot3.zt");
}

TEST_F(SlowDiskTest, AFolderThatWasAskedAheadForOneFileAnswersForAll) {
  tree.Files({"f101/both.zt", "f150/both.c", "f150/both.zt"});
  disk.Delay("/f100", milliseconds(5));  // then the others are asked ahead
  options.keepDuplicates = true;
  const Environment environment(options);
  const PathManagement::detail::SearchTarget both(u"both", {u".c", u".zt"});
  const auto policy = FilenameMatchingPolicy::FileSystemDefault;
  EXPECT_TRUE(environment.GetPath()->FindFirstInScope(kMainScope, both, policy));
  const auto all = environment.GetPath()->FindAllInScope(kMainScope, both, policy);
  EXPECT_EQ(Shown(all, tree), "f101/both.zt f150/both.c f150/both.zt");
}

TEST_F(SlowDiskTest, FoldersThatDoNotAnswerInTimeAreReportedAndTheOthersAreRight) {
  options.timeout = milliseconds(500);
  disk.Silence("/f119");
  for (const int questions : {1, 9}) {  // one asks for the name, the ninth lists
    const Environment environment(options);
    EXPECT_EQ(Found(environment, u"plot0.zt", tree), "f100/plot0.zt");
    EXPECT_EQ(environment.GetProblemsMet().size(), 0U);
    for (int question = 0; question < questions; ++question) {
      EXPECT_EQ(Found(environment, u"plot99.zt", tree), "f199/plot99.zt");
    }
    EXPECT_EQ(Found(environment, u"plot19.zt", tree), "none");
    const std::string silent = "f119";
    EXPECT_EQ(Missing(environment.GetProblemsMet()), silent);
    EXPECT_EQ(Missing(environment.FindProblems()), silent);
    EXPECT_EQ(environment.FindAll({.name = u"area.zt"}).size(), 99U);
    disk.Silence("");
    EXPECT_EQ(Found(environment, u"plot19.zt", tree), "none") << "what was answered stays";
    EXPECT_EQ(Found(Environment(options), u"plot19.zt", tree), "f119/plot19.zt");
    disk.Silence("/f119");
  }
}

TEST_F(SlowDiskTest, RulesOfOtherProgramsWaitNoLonger) {
  options.timeout = milliseconds(500);
  for (const LookupRules& rules : {kPlainRules, kIncludeRules}) {
    options.rules = rules;
    disk.Silence("/f119");
    const Environment environment(options);
    for (int question = 0; question < 10; ++question) {  // the ninth lists
      EXPECT_EQ(Found(environment, u"plot99.zt", tree), "f199/plot99.zt");
      EXPECT_EQ(Found(environment, u"sub/none.zt", tree), "none");
    }
    EXPECT_EQ(Found(environment, u"plot19.zt", tree), "none");
    EXPECT_EQ(Missing(environment.GetProblemsMet()), "f119");
    disk.Silence("");
  }
}

TEST_F(SlowDiskTest, ReceiptsWaitNoLonger) {
  tree.Link("../f102", "f101/linked.zt");
  tree.Do("touch -d '9 hours ago' f*; sleep 0.02");  // as if they had changed long ago
  options.folders.resize(2);
  options.timeout = milliseconds(300);
  options.expansion = FolderExpansion::Recursive;
  const std::vector<Lookup> onPath = {{.name = u"linked.zt"}, {.name = u"area.zt"}};
  std::vector<Lookup> all = onPath;
  all.push_back({.name = u"none.zt", .fromFolder = tree.Text("f102")});
  const struct {
    std::string silent;
    std::vector<Lookup> lookups;
    bool mattersToEnvironment;
    bool mattersToInclude;
  } rows[] = {{"/linked.zt", all, true, true},
              {"/area.zt", all, false, true},
              {"/private", all, true, false},
              {tree.Path(), onPath, true, true}};
  for (const auto& [silent, lookups, mattersToEnvironment, mattersToInclude] : rows) {
    for (const LookupRules& rules : {kEnvironmentRules, kIncludeRules}) {
      const bool matters = rules.foldersHaveMeaning ? mattersToEnvironment : mattersToInclude;
      options.rules = rules;
      const Receipt before = Environment(options).FindWithReceipt(lookups);
      EXPECT_TRUE(before.IsFresh()) << silent;
      disk.Silence(silent);
      EXPECT_EQ(before.IsFresh(), !matters) << silent;
      const Receipt meanwhile = Environment(options).FindWithReceipt(lookups);
      disk.Silence("");
      EXPECT_EQ(meanwhile.IsFresh(), !matters) << silent;
    }
  }
}

TEST_F(SlowDiskTest, RefreshedFoldersAreWaitedForNoLonger) {
  options.timeout = milliseconds(500);
  options.folders.resize(2);
  const FolderEntries folders = Environment(options).GetMainFolders();
  for (const auto& folder : folders) EXPECT_EQ(folder->GetItemCount(), 2U);
  const AbsoluteIRI silent = tree.IRI("f101");
  const ChangedFolders changed(std::vector{silent});
  disk.Silence("/f101");
  for (const FolderEntries& refreshed :
       {RefreshFolders(folders), RefreshFolders(folders, changed),
        RearrangeFolders({folders.front()}, {folders.front()->GetAbsoluteIRI(), silent})}) {
    ASSERT_EQ(refreshed.size(), 2U);
    EXPECT_EQ(refreshed.front()->GetItemCount(), 2U);
    EXPECT_EQ(refreshed.back()->GetItemCount(), 0U);
    EXPECT_EQ(Missing(refreshed.back()->GetProblems()), "f101");
  }
}

TEST_F(SlowDiskTest, AskingFoldersAreWaitedForNoLonger) {
  options.timeout = milliseconds(500);
  options.rules = kIncludeRules;
  options.folders.resize(2);
  const Environment environment(options);
  const auto found = [&](const char* from, const char* after) {
    Lookup lookup{.name = u"area.zt"};
    if (from != nullptr) lookup.fromFolder = tree.Text(from);
    if (after != nullptr) lookup.afterFolder = tree.Text(after);
    const auto file = environment.Find(lookup);
    return file ? Shown(std::vector{*file}, tree) : "none";
  };
  disk.Silence("/f105/");  // what is in the folder, but not the folder itself
  EXPECT_EQ(found("f105", nullptr), "f100/area.zt");
  EXPECT_EQ(found("f106", nullptr), "f106/area.zt") << "another folder";
  disk.Silence("/f107");
  EXPECT_THROW(static_cast<void>(found("f107", nullptr)),
               current_working_folder::FailedToAbsolutizeException);
  EXPECT_THROW(static_cast<void>(found(nullptr, "f107")),
               current_working_folder::FailedToAbsolutizeException);
  EXPECT_EQ(found(nullptr, "f100"), "f101/area.zt");
}

TEST_F(SlowDiskTest, AFolderBehindALinkIsWaitedForNoLongerWhenItIsReadAgain) {
  tree.File("other/+pkg/plot.zt");
  tree.Link("../other/+pkg", "f100/+pkg");
  options.folders = {tree.Text("f100")};
  options.timeout = milliseconds(500);
  const FolderEntries folders = Environment(options).GetMainFolders();
  EXPECT_EQ(folders[0]->GetSpecialFolders()[0]->GetItemCount(), 1U);
  const ChangedFolders changed(std::vector<AbsoluteIRI>{tree.IRI("other/+pkg")});
  disk.Silence("/+pkg");
  const FolderEntries refreshed = RefreshFolders(folders, changed);
  EXPECT_EQ(Missing(refreshed[0]->GetSpecialFolders()[0]->GetProblems()), "f100/+pkg");
}

TEST_F(SlowDiskTest, QuoteFoldersAreWaitedForNoLonger) {
  options = {.folders = {tree.Text("f100")},
             .rules = kIncludeRules,
             .quoteFolders = {tree.Text("f119")},
             .timeout = milliseconds(500)};
  disk.Silence("/f119");
  const Environment environment(options);
  const Lookup lookup{.name = u"plot0.zt", .extensions = {}, .fromFolder = tree.Text("f101")};
  EXPECT_EQ(environment.FindAll(lookup).size(), 1U);
  EXPECT_EQ(Missing(environment.FindProblems()), "f119");
}

}  // namespace
}  // namespace Corvane::PathManagement::host
