#include "diff/longest_common_subsequence.h"
#include "searchpath/utilities/path_entry_vector_differentiator.h"
#include "support/recording.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <pthread.h>
#include <random>

// The memory of this whole program, the library included: counted, with its highest mark.
namespace {

std::atomic<std::size_t> bytesInUse = 0;
std::atomic<std::size_t> mostBytesInUse = 0;

}  // namespace

void* operator new(std::size_t size) {
  void* const memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  const std::size_t now = bytesInUse += malloc_usable_size(memory);
  if (now > mostBytesInUse) mostBytesInUse = now;
  return memory;
}
void operator delete(void* memory) noexcept {
  if (memory != nullptr) bytesInUse -= malloc_usable_size(memory);
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace Corvane::PathManagement::test {
namespace {

using Differentiator = PathEntryVectorDifferentiator;
constexpr auto kAll = Differentiator::ComparisonFilter::IncludeSubfolders;

/// Runs `work` on a thread with a stack of 512 KiB; returns the memory that it takes at most.
std::size_t OnASmallStack(const std::function<void()>& work) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  EXPECT_EQ(pthread_attr_setstacksize(&attributes, 512 * 1024), 0);
  const auto run = [](void* given) -> void* {
    (*static_cast<const std::function<void()>*>(given))();
    return nullptr;
  };
  const std::size_t before = mostBytesInUse = bytesInUse.load();
  pthread_t thread = {};
  EXPECT_EQ(pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)),
            0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  return mostBytesInUse - before;
}

TEST(DiffScaleTest, AMillionEntriesNeedLittleStackAndMemory) {
  constexpr std::size_t count = 1000000;
  const std::vector<FakeEntry> objects(count, FakeEntry("", u"file:///folder"));
  EntryList before;
  for (const FakeEntry& object : objects) before.emplace_back(EntryPointer(), &object);
  EntryList after = before;
  std::mt19937 random(20260213);
  const std::pair<const char*, std::function<void()>> steps[] = {
      {"identical", [] {}},
      {"edited", [&] { std::erase_if(after, [&](const auto&) { return random() % 100 == 0; }); }},
      {"reversed", [&] { std::reverse(after.begin(), after.end()); }},
      {"one object often", [&] { std::fill_n(after.begin(), 10000, before[0]); }},
      {"in both", [&] { std::fill_n(before.begin() + 500, 10000, before[0]); }},
      {"shuffled", [&] { std::shuffle(after.begin() + 10000, after.end(), random); }}};
  const auto expect = [](const char* name, std::size_t bytes) {
    std::printf("%s: %zu bytes an entry\n", name, bytes / count);
    EXPECT_LE(bytes, 400 * count) << name;
  };
  for (const auto& [name, change] : steps) {
    change();
    expect(name, OnASmallStack([&] {
             LongestCommonSubsequence<EntryPointer, EntryList>::Compute(before, after);
           }));
  }
  Differentiator differentiator;
  expect("compared", OnASmallStack([&] { differentiator.Compare(before, after, kAll); }));
  EXPECT_GT(differentiator.GetReordered()->size(), count / 2);
}

TEST(DiffScaleTest, AHundredThousandLevelsNeedLittleStackAndMemory) {
  constexpr std::size_t levels = 100000;
  std::vector<FakeEntry> objects(2 * levels, FakeEntry("", u"file:///folder"));
  EntryList entries;
  for (const FakeEntry& object : objects) entries.emplace_back(EntryPointer(), &object);
  for (std::size_t at = 2; at < 2 * levels; ++at) objects[at - 2].singleA = entries[at];
  Differentiator differentiator;
  const std::size_t bytes =
      OnASmallStack([&] { differentiator.Compare({entries[0]}, {entries[1]}, kAll); });
  EXPECT_EQ(differentiator.GetRefreshedBefore()->size(), levels);
  EXPECT_LE(bytes, 400 * 2 * levels);
}

}  // namespace
}  // namespace Corvane::PathManagement::test
