#include "support/setting.h"
#include "support/shown.h"
#include "support/small_stack.h"

#include <climits>

#include <sys/resource.h>

#include <atomic>
#include <random>
#include <set>
#include <thread>
#include <unordered_map>

// Sizes are modest unless SEARCHPATH_FOLDERS (of 100 files each), SEARCHPATH_LEVELS or
// SEARCHPATH_SCANS say more; TMPDIR then best is a file system in memory.

namespace Corvane::PathManagement::test {
namespace {

using detail::SearchTarget;
using host::FolderEntry;
using host::FolderPath;

constexpr auto kExact = FilenameMatchingPolicy::FileSystemDefault;
constexpr SearchScope kMain = kMainScope, kAll = kAllKindsScope;

std::string InCapitals(std::string name) {
  for (char& byte : name) byte = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte;
  return name;
}

FolderPath PathOf(const TemporaryTree& tree, std::size_t folderCount) {
  std::vector<std::shared_ptr<const FolderEntry>> folders;
  for (std::size_t folder = 0; folder < folderCount; ++folder) {
    folders.push_back(FolderEntry::Create(tree.IRI(std::to_string(folder))));
  }
  return FolderPath(std::move(folders));
}

/// Folders "0", "1", … of files whose names, of many lengths, come again in other folders and in
/// capitals in the same one; and the first place of each name, as written down when it was made.
struct ManyFolders {
  explicit ManyFolders(std::size_t folderCount) : count(folderCount) {
    const char* const stems[] = {"f", "file_", "xyz_[@{`_", "\xC3\x91_and_",
                                 "0123456789abcdefghijk"};
    for (std::size_t folder = 0; folder < count; ++folder) {
      std::set<std::string> here;  // the first of several spellings is the one of the lowest bytes
      for (std::size_t file = folder * 100; file < (folder + 1) * 100; ++file) {
        const std::size_t number = file / 2 * 2654435761U % (count * 33);
        const std::string name = stems[number % 5] + std::to_string(number) + ".zt";
        here.insert(file % 2 == 0 ? name : InCapitals(name));
      }
      for (const auto& name : here) {
        const std::pair place(folder, std::to_string(folder) + "/" + name);
        tree.File(place.second);
        names.push_back(name);
        exact.emplace(name, place);
        inAnyCase.emplace(InCapitals(name), place);
      }
    }
  }

  [[nodiscard]] std::string Question(std::uint64_t random) const {
    std::string name = names[random % names.size()];
    if (random % 7 == 0) name += "y";
    if (random % 7 == 1) name.pop_back();
    if (random % 7 == 2) name = InCapitals(name);
    if (random % 7 == 3) name += std::string("\0y", 2);
    return name;
  }

  [[nodiscard]] std::string Answer(const std::string& name, FilenameMatchingPolicy policy) const {
    const auto same = exact.find(name);
    if (policy == kExact) return same == exact.end() ? "" : same->second.second;
    const auto other = inAnyCase.find(InCapitals(name));
    if (other == inAnyCase.end()) return "";
    const bool isBest = same != exact.end() && same->second.first == other->second.first;
    return (isBest ? same : other)->second.second;
  }

  std::size_t count;
  TemporaryTree tree;
  std::vector<std::string> names;
  std::unordered_map<std::string, std::pair<std::size_t, std::string>> exact, inAnyCase;
};

TEST(ScaleTest, ManyThreadsGetTheRightAnswersWhileTheIndexIsBuilt) {
  const ManyFolders world(Setting("SEARCHPATH_FOLDERS", 60));
  for (const auto policy : {kExact, FilenameMatchingPolicy::IgnoreCase}) {
    const FolderPath path = PathOf(world.tree, world.count);
    std::vector<std::jthread> threads;
    for (std::uint64_t seed = 0; seed < 8; ++seed) {
      threads.emplace_back([&, random = std::mt19937_64(seed)]() mutable {
        for (int question = 0; question < 4000; ++question) {
          const std::string name = world.Question(random());
          const ustring text = TextFromBytes(name);
          const std::size_t end = random() % (text.size() + 1);
          const SearchTarget whole(text), parted(text.substr(0, end), {text.substr(end)});
          const auto found =
              path.FindFirstInScope(kMain, question % 2 == 0 ? whole : parted, policy);
          ASSERT_EQ(found ? Shown(std::vector{*found}, world.tree) : "", world.Answer(name, policy))
              << testing::PrintToString(name);
        }
      });
    }
  }
}

TEST(ScaleTest, TheBeginningOfANameIsNotTheName) {
  const TemporaryTree tree;
  for (const char letter : std::string("abcdefghij")) {  // ten indexes: names meet there by chance
    const std::string folder(1, letter);
    for (std::size_t size = 2; size < 250; size += 2) {
      tree.File(folder + "/" + std::string(size, letter));
    }
    const FolderPath path({FolderEntry::Create(tree.IRI(folder))});
    for (std::size_t size = 1; size < 250; ++size) {
      const SearchTarget target(TextFromBytes(std::string(size, letter)));
      for (const auto policy : {kExact, FilenameMatchingPolicy::IgnoreCase}) {
        EXPECT_EQ(path.FindFirstInScope(kMain, target, policy).has_value(), size % 2 == 0)
            << size << " times " << letter;
      }
    }
  }
}

TEST(ScaleTest, DeepNestingNeedsLittleStackAndFewDescriptors) {
  const std::size_t levels = Setting("SEARCHPATH_LEVELS", 400);
  const TemporaryTree tree;
  const auto move = [&tree](const std::string& from, const std::string& to) {
    std::filesystem::rename(tree.Path(from), tree.Path(to));
  };
  const std::string below = "/+ten_letters";
  // So that one folder's path is just too long for the kernel.
  const std::string top((PATH_MAX - 2 - tree.Path().size()) % below.size() + 1, '0');
  tree.File(top + "/deep.zt");
  tree.Link("nothing", top + "/broken");
  for (std::size_t level = 0; level < levels; ++level) {  // from the inside: no path is too long
    move(top, "inside");
    tree.Folder(top);
    move("inside", top + below);
  }
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  const rlimit fewDescriptors{64, limit.rlim_max};
  setrlimit(RLIMIT_NOFILE, &fewDescriptors);
  OnASmallStack([&] {
    const FolderPath path({FolderEntry::Create(tree.IRI(top))});
    std::size_t count = 0;
    path.ForEachEntry(kAll, [&](const auto&) { return ++count, false; });
    EXPECT_EQ(count, levels + 1);
    const auto found = path.FindFirstInScope(kAll, SearchTarget(u"deep.zt"), kExact);
    ASSERT_TRUE(found);
    EXPECT_EQ(path.GetMainEntryForEntry(*found->GetPathEntry()), (*path.GetMainEntries())[0]);
    const auto deepest = FolderEntry::Create(found->GetPathEntry()->GetAbsoluteIRI());
    EXPECT_TRUE(deepest->GetProblems().empty());
    EXPECT_EQ(deepest->GetItemCount(), 1U);
    EXPECT_NE(deepest->GetFreshness(), host::Freshness::Gone);
    const AbsoluteIRI broken(deepest->GetAbsoluteIRI().toString() + u"/broken");
    EXPECT_EQ(FolderEntry::Create(broken)->GetProblems().at(0).reason,
              current_working_folder::AbsolutizeError::BrokenLink);
  });
  setrlimit(RLIMIT_NOFILE, &limit);
  for (std::size_t level = 0; level < levels; ++level) {
    move(top + below, "inside");
    std::filesystem::remove(tree.Path(top));
    move("inside", top);
  }
}

TEST(ScaleTest, WhatStaysIsFoundWhileOtherThingsComeAndGo) {
  const TemporaryTree tree;
  tree.Files({"0/@m/s.zt", "0/+p/s.zt", "0/private/s.zt", "0/s.zt", "1/@m/s.zt", "1/s.zt"});
  std::atomic<std::size_t> changes = 0;
  std::vector<std::jthread> threads;
  for (const std::string own : {"a", "b", "c", "d"}) {
    threads.emplace_back([&, own](const std::stop_token& stop) {
      for (; !stop.stop_requested(); ++changes) {
        for (const char* top : {"0/", "1/", "0/+p/"}) {
          tree.Files({top + own, top + ("@" + own) + "/s.y", top + ("+" + own) + "/@m/s.y"});
          for (const char* kind : {"@", "", "+"})
            std::filesystem::remove_all(tree.Path(top + (kind + own)));
        }
      }
    });
  }
  const std::size_t scans = Setting("SEARCHPATH_SCANS", 100);
  for (std::size_t scan = 0; scan < scans || changes < 4; ++scan) {
    const FolderPath path = PathOf(tree, 2);
    const auto found = [&](SearchScope scope) {
      return Shown(path.FindAllInScope(scope, SearchTarget(u"s.zt"), kExact), tree);
    };
    EXPECT_EQ(found(kAll), "0/s.zt 0/private/s.zt 0/+p/s.zt 0/@m/s.zt 1/s.zt 1/@m/s.zt");
    for (int question = 0; question < 2; ++question) EXPECT_EQ(found(kMain), "0/s.zt 1/s.zt");
    EXPECT_EQ(Shown(path.GetMethodEntriesByName(kMain, u"m", kExact), tree), "0/@m 1/@m");
    path.ForEachEntry(kAll, [](const auto& entry) {
      std::set<ustring> names;
      const auto items = entry->GetItems();
      for (const auto& item : *items) EXPECT_TRUE(names.insert(Shown(*item)).second);
      return false;
    });
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::test
