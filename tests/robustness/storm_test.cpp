#include "host_operations.h"
#include "operations.h"

#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <latch>
#include <thread>

namespace Corvane::PathManagement::test {
namespace {

/// Runs `work(0)`, `work(1)`, … on as many threads, all let go at once.
template <class Work>
void OnThreads(std::size_t count, const Work& work) {
  std::latch start(static_cast<std::ptrdiff_t>(count));
  std::vector<std::jthread> threads;
  for (std::size_t index = 0; index < count; ++index) {
    threads.emplace_back([&start, &work, index] {
      start.arrive_and_wait();
      work(index);
    });
  }
}

struct Refusal {};

/// Refuses its main entries to the first callers, and counts them all.
struct ReluctantPath : FakePath {
  ReluctantPath(const FakePath& path, int refusalCount) : FakePath(path), refusals(refusalCount) {}

  SharedEntryList GetMainEntries() const override {
    if (++asked <= refusals) throw Refusal();
    return FakePath::GetMainEntries();
  }

  int refusals;
  mutable std::atomic<int> asked = 0;
};

SharedEntryList Insist(const IPath& path) {
  for (;;) {
    try {
      return path.GetMainEntries();
    } catch (const Refusal&) {
    }
  }
}

EntryList Visited(const IPath& path) {
  EntryList visited;
  path.ForEachEntry(kScope, [&](const auto& entry) { return visited.push_back(entry), false; });
  return visited;
}

void StormFirstBuild(Composite kind, std::size_t threadCount) {
  World world(kind, 2);
  const auto front = std::make_shared<ReluctantPath>(*world.parts[0], 3);
  const auto below = std::make_shared<ReluctantPath>(*world.parts[1], 2);
  world.parts = {front, below};
  world.Renew();
  const auto copy = [&] { return kind == Composite::Filtered ? world.path : world.Copy(); };
  const EntryList visited = Visited(*world.path);
  std::vector<SharedEntryList> lists(threadCount);
  std::atomic<int> others = 0;
  OnThreads(threadCount, [&](std::size_t index) {
    if (index % 3 == 0 && Visited(*world.path) != visited) ++others;
    lists[index] = Insist(index % 2 == 1 ? *copy() : *world.path);
    if (index % 3 == 1 && Visited(*world.path) != visited) ++others;
  });
  EXPECT_EQ(others, 0);
  const std::set<SharedEntryList> distinct(lists.begin(), lists.end());
  for (std::size_t index = 0; index < threadCount; index += 2) EXPECT_EQ(lists[index], lists[0]);
  EXPECT_EQ(copy()->GetMainEntries(), lists[0]);
  EXPECT_EQ(below->asked, 2 + 1);
  EXPECT_EQ(front->asked, 3 + 2 + static_cast<int>(distinct.size()));
}

TEST(StormTest, EveryListIsBuiltOnceWhileBuildsFailAndCopiesAndTraversalsAreMade) {
  for (const Composite kind : kComposites) {
    for (const std::size_t threadCount : {8U, 16U}) {
      for (int round = 0; round < 100; ++round) StormFirstBuild(kind, threadCount);
    }
  }
}

TEST(StormTest, TheLastOfTheCopiesOfAnIRIReleasesIt) {
  for (int round = 0; round < 100; ++round) {
    std::vector<AbsoluteIRI> copies(8, AbsoluteIRI(kHostText));
    OnThreads(copies.size(), [&copies](std::size_t index) {
      const AbsoluteIRI last = std::exchange(copies[index], kFile);
      EXPECT_EQ(last.getScheme(), u"http");
    });
  }
}

/// The rows of a table as questions whether `world` answers as it does on one thread.
template <class AnyWorld>
struct Rows {
  template <class Ask>
  void operator()(const char* name, const Ask& ask) {
    world.Renew();
    rows.emplace_back(name, [this, ask, right = ask(world)] { return ask(world) == right; });
  }

  void Storm(std::size_t threadCount) {
    world.Renew();
    std::atomic<const char*> wrong = nullptr;
    OnThreads(threadCount, [&](std::size_t index) {
      for (std::size_t at = 0; at < rows.size(); ++at) {
        // Half of the threads begin with the first row, the others with one another's.
        const std::size_t first = index % 2 == 0 ? 0 : index * rows.size() / threadCount;
        const auto& [name, isRight] = rows[(first + at) % rows.size()];
        if (!isRight()) wrong = name;
      }
    });
    EXPECT_EQ(wrong, nullptr) << wrong;
  }

  AnyWorld& world;
  std::vector<std::pair<const char*, std::function<bool()>>> rows = {};
};

TEST(StormTest, EveryOperationAnswersTheSameOnAnyNumberOfThreads) {
  World worlds[] = {World(kComposites[0], 5), World(kComposites[1], 5), World(kComposites[2], 5)};
  std::deque<Rows<World>> pathRows;
  for (World& world : worlds) {
    auto& rows = pathRows.emplace_back(world);
    ForEachPathOperation([&rows](const char* name, const auto& ask) { rows(name, ask); });
  }
  const auto addRow = [&](const char* name, const auto& ask) { pathRows[0](name, ask); };
  ForEachTextOperation(addRow);
  ForEachDiffOperation(nullptr, addRow);
  HostWorld hostWorld;
  Rows<HostWorld> hostRows{hostWorld};
  ForEachHostOperation([&hostRows](const char* name, const auto& ask) { hostRows(name, ask); });
  for (int round = 0; round < 20; ++round) {
    for (const std::size_t threadCount : {8U, 16U}) {
      for (auto& rows : pathRows) rows.Storm(threadCount);
      hostRows.Storm(threadCount);
    }
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::test
