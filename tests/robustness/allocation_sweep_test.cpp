#include "host_operations.h"
#include "operations.h"
#include "searchpath/utilities/toolbox_path_cache.h"
#include "support/counted_memory.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <cstdio>
#include <istream>
#include <limits>

namespace Corvane::PathManagement::test {
namespace {

/// A cache on the disk, alone in its folder, and the factory of what it holds.
struct CacheWorld : IPathEntryFactory {
  void Renew() { WriteToolboxPathCache(tree.Text("cache"), u"/a-folder-on-the-heap", *this); }
  void Forget() {
    const std::filesystem::directory_iterator names(tree.Path());
    if (std::distance(begin(names), end(names)) > 1) throw std::runtime_error("left behind");
  }
  void ReadEntries(std::istream& stream, const AbsoluteIRI& /*root*/) override {
    if (stream.get() != 'x') throw std::bad_alloc();
  }
  void WriteEntries(std::ostream& stream, const AbsoluteIRI& /*root*/) const override {
    stream << 'x';
  }

  TemporaryTree tree;
};

/// As `ForEachPathOperation`. What the operations raise without memory says no more than that.
template <class Visit>
void ForEachCacheOperation(const Visit& visit) {
  visit("write a cache", [](CacheWorld& w) {
    try {
      return w.Renew(), true;
    } catch (const UnableToSaveToolboxCacheException&) {
      throw std::bad_alloc();
    }
  });
  visit("load a cache", [](CacheWorld& w) {
    try {
      return LoadToolboxPathCache(w.tree.Text("cache"), u"/a-folder-on-the-heap", w), true;
    } catch (const ToolboxCacheWrongFormatException&) {
      throw std::bad_alloc();
    }
  });
}

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

std::ptrdiff_t OpenDescriptors() {
  std::ptrdiff_t open = 0;
  for (int descriptor = 0; descriptor < 1024; ++descriptor) {
    open += fcntl(descriptor, F_GETFD) >= 0 ? 1 : 0;
  }
  return open;
}

/// How much room a list has; 0 of any other answer.
template <class Answer>
std::size_t Capacity(const Answer& /*answer*/) {
  return 0;
}
template <class Element>
std::size_t Capacity(const std::vector<Element>& list) {
  return list.capacity();
}

/// Refuses each request that `ask` makes, once or with all that follow; returns how many there are.
template <class Ask, class AnyWorld>
std::size_t Sweep(const char* name, const Ask& ask, AnyWorld& world, bool alsoFollowing) {
  world.Renew();
  const auto expected = ask(world);
  for (std::size_t refused = 1;; ++refused) {
    world.Forget();
    const std::ptrdiff_t openBefore = OpenDescriptors();
    const std::size_t before = memory.blocksInUse;
    world.Renew();
    bool isRight = true;  // unless it answers, and wrongly
    memory.requests = 0;
    memory.lastRefused = alsoFollowing ? kNoLimit : refused;
    memory.firstRefused = refused;
    try {
      const auto answer = ask(world);
      isRight = answer == expected && Capacity(answer) == Capacity(expected);
    } catch (const std::bad_alloc&) {
    }
    memory.firstRefused = 0;
    const bool wasRefused = memory.requests >= refused;
    EXPECT_TRUE(isRight) << name << ", request " << refused;
    EXPECT_TRUE(ask(world) == expected) << name << " after request " << refused;
    world.Forget();
    EXPECT_EQ(memory.blocksInUse, before) << name << " leaks after request " << refused;
    EXPECT_EQ(OpenDescriptors(), openBefore) << name << " after request " << refused;
    if (!wasRefused) return refused - 1;
  }
}

TEST(AllocationSweepTest, TheLibraryTakesItsMemoryFromHere) {
  const ustring text = u"file:///folder";
  const std::size_t before = memory.blocksInUse;
  const AbsoluteIRI iri(text);
  EXPECT_EQ(memory.blocksInUse, before + 1);
}

TEST(AllocationSweepTest, EightShortFoldersOfAPathnameStandInPlace) {
  const std::size_t before = memory.requests;
  EXPECT_EQ(SplitPartialPathname(u"/a/b/c/d/e/f/g/folder").size(), 8U);
  EXPECT_EQ(memory.requests, before);
}

TEST(AllocationSweepTest, AnOperationWithoutMemorySaysSoAndLeavesNothingBehind) {
  for (const bool alsoFollowing : {false, true}) {
    std::size_t points = 0;
    const auto sweepIn = [&](auto& world) {
      return [&](const char* name, const auto& ask) {
        points += Sweep(name, ask, world, alsoFollowing);
      };
    };
    for (const Composite kind : kComposites) {
      World world(kind, 3);
      ForEachPathOperation(sweepIn(world));
    }
    World world(Composite::Concatenated, 3);
    HostWorld hostWorld;
    CacheWorld cacheWorld;
    EditWorld editWorld;
    ForEachTextOperation(sweepIn(world));
    ForEachDiffOperation(nullptr, sweepIn(world));
    ForEachEditOperation(sweepIn(editWorld));
    ForEachHostOperation(sweepIn(hostWorld));
    ForEachCacheOperation(sweepIn(cacheWorld));
    std::printf("%zu requests refused%s\n", points, alsoFollowing ? ", with all that follow" : "");
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::test
