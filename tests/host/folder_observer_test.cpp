#include "searchpath/platform/file_folder_changed_event.h"
#include "searchpath/utilities.h"
#include "support/folder_contents.h"
#include "support/listings.h"
#include "support/setting.h"

#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <condition_variable>
#include <latch>
#include <linux/magic.h>
#include <random>
#include <semaphore>
#include <thread>

namespace {

std::string remoteFolder;     // as if on another machine; set while nothing is watched
std::string unwatchedFolder;  // as if the kernel had no watch left for it

}  // namespace

// In place of the C library's, also for the shared libraries.
extern "C" [[gnu::visibility("default")]] int statfs(const char* folder,
                                                     struct statfs* status) noexcept {
  const auto result = static_cast<int>(syscall(SYS_statfs, folder, status));
  if (folder == remoteFolder) status->f_type = NFS_SUPER_MAGIC;
  return result;
}
extern "C" [[gnu::visibility("default")]] int inotify_add_watch(int queue, const char* folder,
                                                                std::uint32_t events) noexcept {
  if (folder != unwatchedFolder) {
    return static_cast<int>(syscall(SYS_inotify_add_watch, queue, folder, events));
  }
  errno = ENOSPC;
  return -1;
}

namespace Corvane::PathManagement::host {
namespace {

namespace files = std::filesystem;
using namespace foundation::msg_svc::eventmgr;
using namespace storage::filefolderobserver;

/// A path of three folders, and an observer on a stream of events of its own.
struct FolderObserverTest : testing::Test {
  void Publish(const std::string& name) const {
    events->publish(std::make_unique<FileFolderChangedEvent>(tree.IRI(name).toString(),
                                                             FrozenInclusion::LocationItself));
  }
  void Set(const std::vector<std::string>& names) {
    std::vector<AbsoluteIRI> locations;
    for (const auto& name : names) locations.push_back(tree.IRI(name));
    foundation::core::except::Notification notification;
    manager.SetFolderIRIs(locations, notification);
  }
  test::Contents OnPath() const { return test::ContentsOf(*manager.GetPath(), tree); }
  test::Contents OnDisk() const { return test::ContentsOf({"a", "b", "c"}, tree); }
  void AwaitTheDisk(const std::string& after) {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, std::chrono::minutes(1), [&] { return OnPath() == OnDisk(); });
    EXPECT_EQ(OnPath(), OnDisk()) << after;
  }
  void AwaitEvents(const std::set<std::string>& names) {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, std::chrono::minutes(1), [&] { return published == names; });
    EXPECT_EQ(std::exchange(published, {}), names);
  }

  const test::TemporaryTree tree;
  MainSearchPathManager manager{test::FoldersIn(tree, {"a", "b", "c"})};
  const std::shared_ptr<EventMgr> events = createLocalEventMgr(EventMgrId{1});
  std::mutex mutex;
  std::condition_variable changed;  // the path, or what follows
  std::set<std::string> published;  // the locations of events, by their names in the tree
  const Subscription collecting = events->subscribe([this](const Event& event) {
    const auto& location = dynamic_cast<const FileFolderChangedEvent&>(event).GetLocation();
    const std::lock_guard lock(mutex);
    published.insert(BytesFromText(location.substr(tree.IRI().toString().size() + 1)).value());
    changed.notify_all();
  });
  const MainSearchPathManager::Subscription listening = manager.AddListener([this](const auto&) {
    const std::lock_guard lock(mutex);
    changed.notify_all();
  });
  FolderObserver observer{manager, *events};
};

TEST_F(FolderObserverTest, AnEventListsTheFoldersThatItNamesAndNoOthers) {
  tree.Files({"a/x", "b/+p/f", "b/@c/m", "b/private/g", "c/x"});
  EXPECT_EQ(OnPath(), OnDisk());
  test::Listings listings(tree);
  const std::pair<const char*, const char*> rows[] = {
      {"a", "a"},      {"b", "b"},  {"b/+p", "b b/+p"}, {"b/@c", "b b/@c"},
      {"b/@new", "b"}, {"a/x", ""}, {"elsewhere", ""}};
  for (const auto& [named, listed] : rows) {
    tree.Files({"a/y", "b/+p/g", "b/@c/n"});
    Publish(named);
    observer.Settle();
    EXPECT_EQ(listings.Take(), listed) << named;
  }
  FolderObserver ofSession(manager, *createLocalEventMgr(SessionEmId));
  NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges(tree.IRI("b/+p/f.zt"));
  ofSession.Settle();
  const std::string listed = listings.Take();  // two events, in one refresh or in two
  EXPECT_TRUE(listed == "b b/+p" || listed == "b b b/+p") << listed;
  EXPECT_EQ(OnPath(), OnDisk());
}

TEST_F(FolderObserverTest, EventsDuringARefreshAreTheNextOneEachFolderOnce) {
  tree.Files({"a/x", "b/x", "c/x"});
  EXPECT_EQ(OnPath(), OnDisk());
  test::Listings listings(tree);
  const auto publishing = manager.AddListener([&](const auto&) {
    for (const char* const folder : {"b", "c", "b", "c"}) Publish(folder);
    std::jthread([&] { Publish("c"); });  // comes to its end: nobody waits for the refresh
    throw std::runtime_error("a listener's");
  });
  tree.File("a/y");
  Publish("a");
  EXPECT_THROW(observer.Settle(), std::runtime_error);
  EXPECT_EQ(listings.Take(), "a a b c");  // a refresh that failed is made again
}

TEST_F(FolderObserverTest, AfterASecondRefreshThatFailsAllFoldersAreListed) {
  tree.Files({"a/x", "b/x", "c/x"});
  EXPECT_EQ(OnPath(), OnDisk());
  test::Listings listings(tree);
  auto failing = manager.AddListener([](const auto&) { throw std::runtime_error("a listener's"); });
  for (const char* const named : {"a", "b"}) {
    tree.File(std::string("a/before ") + named);
    Publish(named);
    EXPECT_THROW(observer.Settle(), std::runtime_error);
    EXPECT_EQ(listings.Take(), "a") << named;
  }
  failing.reset();
  tree.File("b/y");
  Publish("c");
  observer.Settle();
  EXPECT_EQ(listings.Take(), "a b c c");
  EXPECT_EQ(OnPath(), OnDisk());
}

TEST_F(FolderObserverTest, ThePathFollowsTheDisk) {
  for (const bool onlyPolls : {false, true}) {
    EXPECT_NE(OnPath(), test::Contents());  // lists it, before it is watched
    tree.Do("rm -rf *; mkdir -p a b/@c c");
    const std::chrono::milliseconds interval(20);
    const DiskFeed feed(manager, events, {.pollInterval = interval, .onlyPolls = onlyPolls});
    AwaitTheDisk("at first");
    EXPECT_EQ(feed.FindPolledFolders().empty(), !onlyPolls);
    for (const char* const change :
         {"touch a/y c/y", "rm c/y", "mkdir -p a/+p/@n; touch a/+p/@n/f", "rm -r b/@c",
          "mv a/+p b/+q; mkdir a/private", "rm -r b", "mkdir -p b/+r; touch b/+r/f",
          "mkdir s; touch s/new; rm -r b/+r; mv s b/+r", "mv a a1; mv c a", "mv a1 c",
          "mv c d; ln -s d c; touch d/x", "mkdir -p e/f/@e; touch e/f/@e/e; ln -sfn $PWD/e/f c",
          "touch e/f/n", "mv e e1; mkdir -p e/f; touch e/f/other", "touch a/z; rm -r e",
          "mkdir -p e/f/private", "rm c; ln -s loop loop; ln -s loop c", "rm c; mkdir c c/+z"}) {
      const auto before = OnDisk();
      tree.Do(change);
      EXPECT_NE(OnDisk(), before) << change;
      AwaitTheDisk(change);
    }
  }
}

TEST_F(FolderObserverTest, FoldersThatCannotBeWatchedArePolled) {
  tree.Files({"a/x", "b/x", "b/+p/f", "c/x"});
  EXPECT_EQ(OnPath(), OnDisk());
  remoteFolder = tree.Path("b");
  unwatchedFolder = tree.Path("c");
  {
    const DiskFeed feed(manager, events, {.pollInterval = std::chrono::milliseconds(20)});
    const auto polled = feed.FindPolledFolders();
    EXPECT_EQ((std::set<AbsoluteIRI>{polled.begin(), polled.end()}),
              (std::set<AbsoluteIRI>{tree.IRI("b"), tree.IRI("b/+p"), tree.IRI("c")}));
    AwaitEvents({"a", "b", "b/+p", "c"});
    for (const char* const file : {"a/y", "b/y", "b/+p/g", "c/y"}) {
      tree.File(file);
      AwaitTheDisk(file);
    }
  }
  remoteFolder = unwatchedFolder = "";
}

TEST_F(FolderObserverTest, AScanPublishesAllFoldersAndFiles) {
  tree.Files({"a/x", "b/+p/f", "c/x", "lists/@list"});
  EXPECT_EQ(OnPath(), OnDisk());
  DiskFeed feed(manager, events, {.files = {tree.IRI("lists/@list")}});
  AwaitEvents({"a", "b", "b/+p", "c"});  // made just now, so perhaps after they were listed
  feed.ScanAgain();
  AwaitEvents({"a", "b", "b/+p", "c", "lists/@list"});
  tree.File("lists/@list");
  AwaitEvents({"lists/@list"});
  tree.File("a/y");
  std::unique_lock lock(mutex);
  changed.wait_for(lock, std::chrono::minutes(1), [&] { return published.contains("a"); });
  EXPECT_FALSE(published.contains("lists"));  // a list is no special folder
}

TEST_F(FolderObserverTest, WatchesEndWithTheFoldersOnThePath) {
  const auto countWatches = [] {
    std::size_t count = 0;
    for (const auto& descriptor : files::directory_iterator("/proc/self/fdinfo")) {
      std::ifstream info(descriptor.path());
      for (std::string line; std::getline(info, line);) count += line.starts_with("inotify ");
    }
    return count;
  };
  tree.Files({"a/x", "b/x", "c/x", "d/x", "e/x"});
  const DiskFeed feed(manager, events);
  Set({"a", "d"});
  AwaitEvents({"d"});  // which are published when they are watched
  const std::size_t watches = countWatches();
  Set({"a", "e"});
  AwaitEvents({"e"});
  EXPECT_EQ(countWatches(), watches);
}

TEST_F(FolderObserverTest, WhatASubscriberMissesIsPublishedAgain) {
  tree.Files({"a/x", "b/x", "c/x"});
  EXPECT_EQ(OnPath(), OnDisk());
  tree.Files({"a/y", "b/y", "c/y"});
  int calls = 0;
  const auto failing = events->subscribe([&](const Event&) {
    if (++calls <= 2) throw std::runtime_error("a subscriber's");
  });
  const DiskFeed feed(manager, events, {.pollInterval = std::chrono::milliseconds(20)});
  AwaitTheDisk("two failures");
}

TEST_F(FolderObserverTest, WhatGoesUnseenIsLookedFor) {
  tree.Files({"a/x", "b/x"});
  const DiskFeed feed(manager, events);
  std::counting_semaphore<1000> stalled(0);
  std::latch mayGoOn(1);
  const auto stalling = events->subscribe([&](const Event&) { stalled.release(), mayGoOn.wait(); });
  tree.File("a/y");
  stalled.acquire();
  std::size_t most = 0;  // events that the kernel keeps
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> most;
  for (std::size_t event = 0; event < most; event += 2) {
    std::ofstream{tree.Path("a/passing")};
    files::remove(tree.Path("a/passing"));
  }
  tree.Files({"b/late", "b/+late/f"});
  mayGoOn.count_down();
  AwaitTheDisk("lost events");
}

TEST_F(FolderObserverTest, AFolderMadeInOneThatIsNotWatchedYetIsFound) {
  tree.Folder("a");
  const auto putTreeOnPath = [&](const std::function<void()>& beforeItIsWatched) {
    const auto folders = CreateFolderTree(tree.IRI("a"));
    if (folders.size() == 2) beforeItIsWatched();
    std::vector<std::string> names;
    for (const auto& folder : folders) names.push_back(test::Shown(std::vector{folder}, tree));
    Set(names);
  };
  const auto walking =
      events->subscribe([&](const Event&) { putTreeOnPath([&] { tree.Folder("a/new/below"); }); });
  const DiskFeed feed(manager, events);
  tree.Folder("a/new");
  std::unique_lock lock(mutex);
  const auto isFound = [&] { return manager.GetFolderIRIs()->size() == 3; };
  EXPECT_TRUE(changed.wait_for(lock, std::chrono::minutes(1), isFound));
}

TEST_F(FolderObserverTest, AStormOfChangesEndsInWhatIsOnTheDisk) {
  constexpr std::uint64_t kSeed = 20261121;
  const std::size_t changes = test::Setting("SEARCHPATH_CHANGES", 3000) / 2;  // of each thread
  std::latch isHalfDone(2);
  const auto stalling = manager.AddListener([&](const auto&) { isHalfDone.wait(); });
  const auto change = [&](std::uint64_t seed) {
    std::mt19937_64 random{seed};
    const auto anyFolder = [&] {
      constexpr const char* kBelow[] = {"", "", "/+p", "/@c", "/private", "/+p/@c"};
      return tree.Path(std::string(1, "abc"[random() % 3]) + kBelow[random() % 6]);
    };
    const auto anyFile = [&] { return anyFolder() + "/f" + std::to_string(random() % 100); };
    for (std::size_t made = 0; made < changes; ++made) {
      std::error_code ignored;
      if (made % 100 == 0) files::remove_all(anyFolder(), ignored);
      if (made % 100 == 50) files::rename(anyFolder(), anyFolder(), ignored);
      if (made % 4 == 0) files::create_directories(anyFolder(), ignored);
      if (made % 4 == 1) std::ofstream{anyFile()};
      if (made % 4 == 2) files::rename(anyFile(), anyFile(), ignored);
      if (made % 4 == 3) files::remove(anyFile(), ignored);
      if (made == changes / 2) isHalfDone.count_down();
    }
  };
  const DiskFeed feed(manager, events);
  {
    const std::jthread first(change, kSeed);
    const std::jthread second(change, kSeed + 1);
    for (int time = 0; time < 10; ++time) const DiskFeed passing(manager, events);
  }
  AwaitTheDisk(std::to_string(kSeed));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
