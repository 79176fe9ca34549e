#include "support/tsan/tbb/parallel_sort.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <vector>

namespace {

std::vector<int> RandomNumbers(std::size_t count, std::mt19937& random) {
  std::vector<int> numbers(count);
  for (int& number : numbers) number = static_cast<int>(random() % (count + 1));
  return numbers;
}

constexpr std::size_t kSizes[] = {0, 1, 2, 3, 4, 5, 16, 17, 100, 1000};

TEST(ParallelSortStandInTest, SortsLikeTheStandard) {
  std::mt19937 random(20260101);
  for (const std::size_t size : kSizes) {
    for (int round = 0; round < 20; ++round) {
      std::vector<int> ascending = RandomNumbers(size, random);
      std::vector<int> plain = ascending, whole = ascending, compared = ascending;
      std::sort(ascending.begin(), ascending.end());
      tbb::parallel_sort(plain.begin(), plain.end());
      tbb::parallel_sort(whole);
      tbb::parallel_sort(compared, std::greater<>());
      EXPECT_EQ(plain, ascending) << "size " << size;
      EXPECT_EQ(whole, ascending) << "size " << size;
      EXPECT_TRUE(std::equal(compared.begin(), compared.end(), ascending.rbegin())) << size;
    }
  }
}

TEST(ParallelSortStandInTest, ExceptionsOfTheComparatorReachTheCaller) {
  std::mt19937 random(20260102);
  for (const std::size_t size : kSizes) {
    for (int failing = 1; failing < 300; failing += 7) {
      std::vector<int> numbers = RandomNumbers(size, random);
      std::atomic<int> calls = 0;
      const auto comesBefore = [&](int left, int right) {
        if (++calls == failing) throw failing;
        return left < right;
      };
      int arrived = 0;
      try {
        tbb::parallel_sort(numbers.begin(), numbers.end(), comesBefore);
      } catch (const int& thrown) {
        arrived = thrown;
      }
      EXPECT_EQ(arrived, calls < failing ? 0 : failing) << "size " << size;
      EXPECT_TRUE(arrived != 0 || std::is_sorted(numbers.begin(), numbers.end()));
    }
  }
}

}  // namespace
