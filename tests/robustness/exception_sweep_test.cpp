#include "operations.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace Corvane::PathManagement::test {
namespace {

std::vector<std::string> Sorted(std::vector<std::string> calls) {
  std::ranges::sort(calls);
  return calls;
}

/// Lets each call that `ask` leads to throw once, and returns how many there are.
template <class Ask, class AnyWorld>
std::size_t Sweep(const char* name, const Ask& ask, AnyWorld& world, CallLog& log) {
  world.Renew();
  const auto expected = ask(world);
  const std::vector<std::string> calls = log.Take();
  for (std::size_t failing = 1; failing <= calls.size(); ++failing) {
    world.Renew();
    const std::exception_ptr thrown = std::make_exception_ptr(failing);
    log.onCall = [&](const std::string&) {
      if (log.calls.size() == failing) std::rethrow_exception(thrown);
    };
    std::exception_ptr arrived;
    try {
      static_cast<void>(ask(world));
    } catch (...) {
      arrived = std::current_exception();
    }
    log.onCall = nullptr;
    EXPECT_TRUE(arrived == thrown) << name << ": " << calls[failing - 1];
    EXPECT_EQ(log.Take().size(), failing) << name << " went on after " << calls[failing - 1];
    EXPECT_TRUE(ask(world) == expected) << name << " after " << calls[failing - 1];
    // A list that a nested path had built by then is not built again.
    const auto again = log.Take();
    EXPECT_TRUE(again == calls || (again.size() + failing > calls.size() &&
                                   std::ranges::includes(Sorted(calls), Sorted(again))))
        << name << " after " << calls[failing - 1];
  }
  return calls.size();
}

TEST(ExceptionSweepTest, WhatACalledObjectThrowsArrivesUnchangedAndChangesNothing) {
  std::size_t points = 0;
  CallLog log;
  const auto sweepIn = [&](auto& world) {
    return [&](const char* name, const auto& ask) {
      const std::size_t calls = Sweep(name, ask, world, log);
      EXPECT_GT(calls, 0U) << name << " calls nothing";
      points += calls;
    };
  };
  for (const Composite kind : kComposites) {
    for (std::size_t partCount = 2; partCount <= 12; ++partCount) {
      World world(kind, partCount, &log);
      ForEachPathOperation(sweepIn(world));
    }
  }
  World world(Composite::Concatenated, 2, &log);
  ForEachDiffOperation(&log, sweepIn(world));
  EditWorld editWorld(&log);
  ForEachEditOperation(sweepIn(editWorld));
  std::printf("%zu calls threw\n", points);
}

}  // namespace
}  // namespace Corvane::PathManagement::test
