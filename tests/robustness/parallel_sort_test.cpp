#include "support/tsan/tbb/parallel_sort.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <vector>

namespace {

TEST(ParallelSortStandInTest, SortsLikeTheStandardOrPassesOnWhatTheComparatorThrows) {
  std::mt19937 random(20260101);
  for (const std::size_t size : {0U, 1U, 2U, 3U, 4U, 5U, 16U, 17U, 100U, 1000U}) {
    for (int failing = 0; failing < 300; failing += 7) {  // the number of a call; 0 of none
      std::vector<int> descending(size);
      for (int& number : descending) number = static_cast<int>(random() % (size + 1));
      std::vector<int> plain = descending, compared = descending;
      std::sort(descending.begin(), descending.end(), std::greater<>());
      tbb::parallel_sort(plain.begin(), plain.end());
      EXPECT_TRUE(std::equal(plain.begin(), plain.end(), descending.rbegin())) << "size " << size;
      std::atomic<int> calls = 0;
      int arrived = 0;
      try {
        tbb::parallel_sort(compared.begin(), compared.end(), [&](int left, int right) {
          if (++calls == failing) throw failing;
          return left > right;
        });
        EXPECT_EQ(compared, descending) << "size " << size;
      } catch (const int& thrown) {
        arrived = thrown;
      }
      EXPECT_EQ(arrived, calls < failing ? 0 : failing) << "size " << size;
    }
  }
}

}  // namespace
