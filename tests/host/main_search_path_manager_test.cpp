#include "searchpath/utilities.h"
#include "support/shown.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

namespace Corvane::PathManagement::host {
namespace {

using test::Shown;
using test::TemporaryTree;
using ComparisonFilter = PathEntryVectorDifferentiator::ComparisonFilter;

struct MainSearchPathManagerTest : testing::Test {
  MainSearchPathManagerTest() { tree.Files({"a/x", "b/x", "b/+p/f", "c/x"}); }

  std::vector<AbsoluteIRI> IRIs(const std::vector<std::string>& names) const {
    std::vector<AbsoluteIRI> locations;
    for (const auto& name : names) locations.push_back(tree.IRI(name));
    return locations;
  }

  void Set(const std::vector<std::string>& names) {
    foundation::core::except::Notification notification;
    manager.SetFolderIRIs(IRIs(names), notification);
    EXPECT_TRUE(notification.empty());
  }

  /// Keeps in `reported` the differences of a change.
  MainSearchPathManager::Subscription Listen(std::string& reported, ComparisonFilter filter) {
    const auto listener = [&](const PathEntryVectorDifferentiator& change) {
      reported = "+" + Shown(*change.GetAdded(), tree) + " -" + Shown(*change.GetRemoved(), tree) +
                 " <>" + Shown(*change.GetReordered(), tree) + " *" +
                 Shown(*change.GetRefreshedAfter(), tree);
    };
    return manager.AddListener(listener, filter);
  }

  TemporaryTree tree;
  MainSearchPathManager manager;
};

TEST_F(MainSearchPathManagerTest, ListenersHearExactlyWhatChanges) {
  std::string top;
  std::string deep;
  auto subscription = Listen(top, ComparisonFilter::TopLevelOnly);
  const auto deepSubscription = Listen(deep, ComparisonFilter::IncludeSubfolders);
  struct Row {
    const char* name;
    std::function<void()> change;
    const char* top;
    const char* deep;
  };
  const std::vector<Row> rows = {
      {"set", [&] { Set({"a", "b", "gone"}); }, "+a b gone - <> *", "+a b gone b/+p - <> *"},
      {"same", [&] { Set({"a", "b", "gone"}); }, "", ""},
      {"move", [&] { Set({"gone", "a", "b"}); }, "+ - <>gone *", "+ - <>gone *"},
      {"replace", [&] { Set({"a", "c", "b"}); }, "+c -gone <> *", "+c -gone <> *"},
      {"no change", [&] { manager.RefreshAllFolders(); }, "", ""},
      {"not named", [&] { tree.File("b/+p/g"), manager.RefreshFolders(IRIs({"a"})); }, "", ""},
      {"nor looked for", [&] { Set({"a", "c", "b"}); }, "", ""},
      {"named", [&] { manager.RefreshFolders(IRIs({"b/+p"})); }, "+ - <> *b", "+ - <> *b b/+p"},
      {"all", [&] { tree.File("a/y"), manager.RefreshAllFolders(); }, "+ - <> *a", "+ - <> *a"},
      {"unsubscribe", [&] { subscription.reset(), Set({}); }, "", "+ -a b c b/+p <> *"},
  };
  for (const Row& row : rows) {
    top.clear();
    deep.clear();
    row.change();
    EXPECT_EQ(top, row.top) << row.name;
    EXPECT_EQ(deep, row.deep) << row.name;
  }
}

TEST_F(MainSearchPathManagerTest, AListenerMayAskButNotChange) {
  std::string log;
  MainSearchPathManager::Subscription second;
  const auto first = manager.AddListener([&](const auto& /*change*/) {
    log += std::to_string(manager.GetFolderIRIs()->size()) + " first ";
    EXPECT_THROW(manager.RefreshAllFolders(), RecursivePathChangeException);
    EXPECT_TRUE(AddIRIsToZentraPath(IRIs({"c"}), manager, Position::End).empty());
    throw std::runtime_error("first");
  });
  second = manager.AddListener([&](const auto& /*change*/) {
    log += "second ";
    second.reset();
    throw std::logic_error("second");
  });
  const auto third = manager.AddListener([&](const auto& before, const auto& after) {
    const auto count = [](const auto& path) {
      return std::to_string(path->GetMainFolders().size());
    };
    log += "third " + count(before) + count(after) + ' ';
  });
  EXPECT_THROW(Set({"a", "b"}), std::runtime_error);
  EXPECT_EQ(*manager.GetFolderIRIs(), IRIs({"a", "b"}));
  EXPECT_THROW(Set({"a"}), std::runtime_error);
  EXPECT_EQ(log, "2 first second third 02 1 first third 21 ");
}

TEST_F(MainSearchPathManagerTest, AListenerThatIsAddedDuringAChangeHearsOfTheNext) {
  int calls = 0;
  std::vector<MainSearchPathManager::Subscription> added;
  const auto first = manager.AddListener([&](const auto& /*change*/) {
    while (added.size() < 1000) {
      added.push_back(manager.AddListener([&](const auto& /*change*/) { ++calls; }));
    }
  });
  const auto last = manager.AddListener([&](const auto& /*change*/) { calls += 1'000'000; });
  Set({"a"});
  EXPECT_EQ(calls, 1'000'000);
  Set({"b"});
  EXPECT_EQ(calls, 2'001'000);
}

TEST_F(MainSearchPathManagerTest, PackagesAreOnThePathWithAllTheirFolders) {
  const CanonicalAbsoluteIRI a(tree.IRI("a"), u"");
  const CanonicalAbsoluteIRI b(tree.IRI("b"), u"");
  manager.SetKnownPackages({{{u"one", u"1"}, {a}}, {{u"two", u"1"}, {a, b}}, {{u"none", u""}, {}}});
  EXPECT_TRUE(manager.GetPackagesOnPath()->empty());
  Set({"a", "c"});
  EXPECT_EQ(manager.GetPackagesOnPath()->size(), 1U);
  Set({"b", "a"});
  EXPECT_TRUE(PackageIsOnPath({u"two", u"1"}, manager));
  EXPECT_FALSE(PackageIsOnPath({u"none", u""}, manager));
}

TEST_F(MainSearchPathManagerTest, ReadersSeeWholePathsWhileWritersChangeThem) {
  constexpr int kChanges = 100;
  std::atomic<int> calls = 0;
  std::atomic<int> writing = 2;
  const auto subscription = manager.AddListener([&](const auto& /*change*/) { ++calls; });
  const auto write = [&](const std::vector<std::string>& folders) {
    for (int change = 0; change < kChanges; ++change) {
      Set(change % 2 == 0 ? std::vector<std::string>{"a", "b", "c"} : folders);
      if (change % 8 == 0) manager.RefreshAllFolders();
    }
    --writing;
  };
  const auto readPaths = [&] {
    while (writing > 0) {
      const auto path = manager.GetPath();
      const auto found =
          path->FindFirstInScope(kMainScope, PathManagement::detail::SearchTarget(u"x"),
                                 FilenameMatchingPolicy::CaseSensitive);
      ASSERT_EQ(found.has_value(), !path->GetMainFolders().empty());
      ASSERT_LE(manager.GetFolderIRIs()->size(), 3U);
    }
  };
  const auto listen = [&] {
    while (writing > 0) {
      const auto passing = manager.AddListener(
          [](const auto& before, const auto& after) { EXPECT_NE(before, after); });
    }
  };
  {
    std::vector<std::jthread> threads;
    for (int reader = 0; reader < 6; ++reader) threads.emplace_back(readPaths);
    for (int listener = 0; listener < 2; ++listener) threads.emplace_back(listen);
    threads.emplace_back(write, std::vector<std::string>{"b"});
    threads.emplace_back(write, std::vector<std::string>{"b", "b"});
  }
  EXPECT_GE(calls, kChanges);
  EXPECT_LE(manager.GetFolderIRIs()->size(), 2U);
}

}  // namespace
}  // namespace Corvane::PathManagement::host
