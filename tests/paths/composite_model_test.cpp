#include "support/path_programs.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

namespace Corvane::PathManagement {
namespace {

TEST(CompositeModelTest, RandomNestingsAnswerAndAskAsTheModelDoes) {
  constexpr std::uint64_t seed = 20261122;
  constexpr int programs = 100000;
  std::mt19937_64 random(seed);
  test::PathPrograms all;
  std::vector<std::uint8_t> program;
  for (int at = 0; at < programs; ++at) {
    program.resize(24 + random() % 48);
    for (auto& byte : program) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(all.Run(program), "") << testing::PrintToString(program);
  }
  std::printf("seed %llu, %d programs\n", static_cast<unsigned long long>(seed), programs);
}

}  // namespace
}  // namespace Corvane::PathManagement
