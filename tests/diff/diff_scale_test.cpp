#include "diff/longest_common_subsequence.h"
#include "searchpath/utilities/path_entry_vector_differentiator.h"
#include "support/counted_memory.h"
#include "support/recording.h"
#include "support/setting.h"
#include "support/small_stack.h"

#include <random>

namespace Corvane::PathManagement::test {
namespace {

using Differentiator = PathEntryVectorDifferentiator;
constexpr auto kAll = Differentiator::ComparisonFilter::IncludeSubfolders;

/// Expects that `work` needs little stack, and at most `most` bytes beside what is there.
void ExpectLittle(const char* name, std::size_t most, const std::function<void()>& work) {
  const std::size_t before = memory.mostBytesInUse = memory.bytesInUse.load();
  OnASmallStack(work);
  EXPECT_LE(memory.mostBytesInUse - before, most) << name;
}

TEST(DiffScaleTest, AMillionEntriesNeedLittleStackAndMemory) {
  constexpr std::size_t count = RandomCases(1'000'000);
  const std::vector<FakeEntry> objects(count, FakeEntry("", u"file:///folder"));
  EntryList before;
  for (const FakeEntry& object : objects) before.emplace_back(EntryPointer(), &object);
  EntryList after = before;
  std::mt19937 random(20260213);
  const std::pair<const char*, std::function<void()>> steps[] = {
      {"identical", [] {}},
      {"rotated", [&] { std::rotate(after.begin(), after.end() - count / 2, after.end()); }},
      {"edited", [&] { std::erase_if(after, [&](const auto&) { return random() % 100 == 0; }); }},
      {"reversed", [&] { std::reverse(after.begin(), after.end()); }},
      {"one object often", [&] { std::fill_n(after.begin(), 10000, before[0]); }},
      {"in both", [&] { std::fill_n(before.begin() + 500, 10000, before[0]); }},
      {"shuffled", [&] { std::shuffle(after.begin() + 10000, after.end(), random); }}};
  for (const auto& [name, change] : steps) {
    change();
    EntryPointer first;
    ExpectLittle(name, 50 * count, [&] {
      first = LongestCommonSubsequence<EntryPointer, EntryList>::Compute(before, after).front();
    });
    // Of the two halves that changed places, the rules take the one that comes later in the first.
    EXPECT_TRUE(name != std::string("rotated") || first == before[count / 2]);
  }
  Differentiator differentiator;
  ExpectLittle("compared", 100 * count, [&] { differentiator.Compare(before, after, kAll); });
  EXPECT_GT(differentiator.GetReordered()->size(), count / 2);
}

TEST(DiffScaleTest, AHundredThousandLevelsNeedLittleStackAndMemory) {
  constexpr std::size_t levels = 100000;
  std::vector<FakeEntry> objects(2 * levels, FakeEntry("", u"file:///folder"));
  EntryList entries;
  for (const FakeEntry& object : objects) entries.emplace_back(EntryPointer(), &object);
  for (std::size_t at = 2; at < 2 * levels; ++at) objects[at - 2].singleA = entries[at];
  Differentiator differentiator;
  ExpectLittle("levels", 50 * 2 * levels,
               [&] { differentiator.Compare({entries[0]}, {entries[1]}, kAll); });
  EXPECT_EQ(differentiator.GetRefreshedBefore()->size(), levels);
}

}  // namespace
}  // namespace Corvane::PathManagement::test
