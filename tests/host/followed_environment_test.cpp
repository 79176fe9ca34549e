#include "searchpath/host/followed_environment.h"

#include "support/setting.h"
#include "support/temporary_tree.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <random>

namespace Corvane::PathManagement::host {
namespace {

namespace fs = std::filesystem;
using test::TemporaryTree;

/// Changes a tree of few names at random, in every way that can change an answer.
class RandomChanges {
 public:
  explicit RandomChanges(const TemporaryTree& changed) : tree(changed) {}

  /// Makes one change and returns what it was.
  std::string Change() {
    const std::string target = Place();
    const fs::path path = tree.Path(target);
    std::error_code ignored;
    switch (Below(8)) {
      case 0:
        fs::remove_all(path, ignored);
        return "remove " + target;
      case 1:
        fs::create_directory(path, ignored);
        return "folder " + target;
      case 2:
      case 3: {
        const std::string link = Below(3) == 0 ? tree.Path(Place()) : "../t/" + Name();
        fs::create_symlink(link, path, ignored);
        return "link " + target + " to " + link;
      }
      case 4: {
        const std::string source = Place();
        fs::rename(tree.Path(source), path, ignored);
        return "rename " + source + " to " + target;
      }
      case 5: {
        const auto mode = Below(2) == 0 ? fs::perms::owner_all : fs::perms::owner_read;
        if (!fs::is_directory(path, ignored)) fs::permissions(path, mode, ignored);
        return "mode of " + target;
      }
      default:
        std::ofstream(path).close();
        return "file " + target;
    }
  }

 private:
  std::size_t Below(std::size_t end) { return random() % end; }
  std::string Name() { return std::string(1, "fgh"[Below(3)]); }
  std::string Place() {
    static const std::vector<std::string> kFolders = {
        "a",      "b",         "t",    "a/@f",    "a/+pkg",      "b/private",
        "b/+pkg", "b/+pkg/@g", "link", "outside", "outside/pkg", "quoted"};
    const std::string& folder = kFolders[Below(kFolders.size())];
    return Below(5) == 0 ? folder : folder + '/' + Name();
  }

  const TemporaryTree& tree;
  std::mt19937 random{20261122};
};

ustring PathOf(const boost::optional<FoundItem>& file) {
  return file ? GetNativePath(*file) : ustring();
}

TEST(FollowedEnvironmentTest, EveryAnswerIsThatOfAPathOpenedNow) {
  for (const auto& [name, rules] : kNamedRules) {
    SCOPED_TRACE(name);
    const TemporaryTree tree;
    for (const char* folder : {"a", "b", "t", "outside", "quoted"}) tree.Folder(folder);
    tree.Link("t", "link");
    const EnvironmentOptions options{
        .folders = {tree.Text("a"), tree.Text("missing"), tree.Text("link"), tree.Text("b")},
        .rules = rules,
        .quoteFolders = {tree.Text("quoted")}};
    FollowedEnvironment followed([&] {
      return OpenedEnvironment{.environment = Environment(options), .folders = {tree.IRI("b")}};
    });
    EXPECT_TRUE(followed.WatchesAll());
    RandomChanges changes(tree);
    const std::size_t count = test::Setting("SEARCHPATH_CHANGES", test::RandomCases(300));
    const bool isAskedFrom = rules.separator != LookupRules::Separator::ThatFile;
    for (std::size_t number = 0; number < count; ++number) {
      SCOPED_TRACE(std::to_string(number) + ": " + changes.Change());
      followed.Update();
      const Environment now(options);
      for (const char16_t* asked : {u"f", u"g", u"pkg/f", u"@f/f", u"private/h", u"h"}) {
        Lookup lookup{.name = asked, .extensions = {}};
        EXPECT_EQ(PathOf(followed.Get().Find(lookup)), PathOf(now.Find(lookup)));
        for (const char* asker : {"b", "outside"}) {
          if (!isAskedFrom || !fs::is_directory(fs::symlink_status(tree.Path(asker)))) continue;
          lookup.fromFolder = tree.Text(asker);
          EXPECT_EQ(PathOf(followed.Get().Find(lookup)), PathOf(now.Find(lookup)));
        }
      }
      const Lookup full{.name = tree.Text("outside/f"), .extensions = {}};
      EXPECT_EQ(PathOf(followed.Get().Find(full)), PathOf(now.Find(full)));
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(FollowedEnvironmentTest, OpensNothingWhileNothingHasChanged) {
  const TemporaryTree tree;
  tree.File("a/f");
  tree.Folder("elsewhere");
  int opened = 0;
  FollowedEnvironment followed([&] {
    ++opened;
    return OpenedEnvironment{.environment = Environment({tree.Text("a")})};
  });
  const int atFirst = opened;
  const auto isReady = [&] {
    pollfd source = {.fd = followed.GetDescriptor(), .events = POLLIN, .revents = 0};
    return poll(&source, 1, 0) == 1;
  };
  tree.File("elsewhere/f");
  tree.File("a/f", "other contents");
  EXPECT_FALSE(followed.Update());
  EXPECT_EQ(opened, atFirst);
  tree.File("a/g");
  EXPECT_TRUE(isReady());
  EXPECT_TRUE(followed.Update());
  EXPECT_FALSE(isReady());
  EXPECT_FALSE(followed.Update());
  EXPECT_EQ(opened, atFirst + 1);
}

TEST(FollowedEnvironmentTest, StaysAsItWasWhileItCannotBeOpened) {
  const TemporaryTree tree;
  tree.File("a/f");
  bool fails = false;
  FollowedEnvironment followed([&] {
    if (fails) throw std::runtime_error("not now");
    return OpenedEnvironment{.environment = Environment({tree.Text("a")})};
  });
  fails = true;
  tree.File("a/g");
  EXPECT_THROW(followed.Update(), std::runtime_error);
  EXPECT_TRUE(followed.Get().Find({.name = u"f"}));
  EXPECT_THROW(followed.Update(), std::runtime_error);
  fails = false;
  EXPECT_TRUE(followed.Update());
  EXPECT_TRUE(followed.Get().Find({.name = u"g"}));
}

}  // namespace
}  // namespace Corvane::PathManagement::host
