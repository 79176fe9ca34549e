#include "cache_operations.h"
#include "diff_operations.h"
#include "edit_operations.h"
#include "host_operations.h"
#include "operations.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>

// The memory of this whole program, the shared library included: counted, and refused on demand.
namespace {

std::atomic<std::size_t> requests = 0;
std::atomic<std::size_t> firstRefused = 0;  // the number of a request; 0 refuses none
std::atomic<std::size_t> lastRefused = 0;
std::atomic<long> liveBlocks = 0;

void* Allocate(std::size_t size,
               std::size_t alignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__) noexcept {
  const std::size_t request = ++requests;
  if (firstRefused != 0 && request >= firstRefused && request <= lastRefused) return nullptr;
  ++liveBlocks;
  return std::aligned_alloc(alignment, (size / alignment + 1) * alignment);
}

void* AllocateOrThrow(std::size_t size, std::size_t alignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__) {
  void* const memory = Allocate(size, alignment);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Release(void* memory) noexcept {
  if (memory != nullptr) --liveBlocks;
  std::free(memory);
}

std::size_t Units(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

}  // namespace

using std::align_val_t;
using std::nothrow_t;
using std::size_t;

void* operator new(size_t size) { return AllocateOrThrow(size); }
void* operator new[](size_t size) { return AllocateOrThrow(size); }
void* operator new(size_t size, align_val_t unit) { return AllocateOrThrow(size, Units(unit)); }
void* operator new[](size_t size, align_val_t unit) { return AllocateOrThrow(size, Units(unit)); }
void* operator new(size_t size, const nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](size_t size, const nothrow_t&) noexcept { return Allocate(size); }
void* operator new(size_t size, align_val_t unit, const nothrow_t&) noexcept {
  return Allocate(size, Units(unit));
}
void* operator new[](size_t size, align_val_t unit, const nothrow_t&) noexcept {
  return Allocate(size, Units(unit));
}
void operator delete(void* memory) noexcept { Release(memory); }
void operator delete[](void* memory) noexcept { Release(memory); }
void operator delete(void* memory, size_t) noexcept { Release(memory); }
void operator delete[](void* memory, size_t) noexcept { Release(memory); }
void operator delete(void* memory, align_val_t) noexcept { Release(memory); }
void operator delete[](void* memory, align_val_t) noexcept { Release(memory); }
void operator delete(void* memory, size_t, align_val_t) noexcept { Release(memory); }
void operator delete[](void* memory, size_t, align_val_t) noexcept { Release(memory); }
void operator delete(void* memory, const nothrow_t&) noexcept { Release(memory); }
void operator delete[](void* memory, const nothrow_t&) noexcept { Release(memory); }
void operator delete(void* memory, align_val_t, const nothrow_t&) noexcept { Release(memory); }
void operator delete[](void* memory, align_val_t, const nothrow_t&) noexcept { Release(memory); }

namespace Corvane::PathManagement::test {
namespace {

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

std::ptrdiff_t OpenDescriptors() {
  std::ptrdiff_t open = 0;
  for (int descriptor = 0; descriptor < 1024; ++descriptor) {
    open += fcntl(descriptor, F_GETFD) >= 0 ? 1 : 0;
  }
  return open;
}

/// Refuses each request that `ask` makes, once or with all that follow; returns how many there are.
template <class Ask, class AnyWorld>
std::size_t Sweep(const char* name, const Ask& ask, AnyWorld& world, bool alsoFollowing) {
  world.Renew();
  const auto expected = ask(world);
  for (std::size_t refused = 1;; ++refused) {
    world.Forget();
    const std::ptrdiff_t openBefore = OpenDescriptors();
    const long before = liveBlocks;
    world.Renew();
    bool isRight = true;  // unless it answers, and wrongly
    requests = 0;
    lastRefused = alsoFollowing ? kNoLimit : refused;
    firstRefused = refused;
    try {
      isRight = ask(world) == expected;
    } catch (const std::bad_alloc&) {
    }
    firstRefused = 0;
    const bool wasRefused = requests >= refused;
    EXPECT_TRUE(isRight) << name << ", request " << refused;
    EXPECT_TRUE(ask(world) == expected) << name << " after request " << refused;
    world.Forget();
    EXPECT_EQ(liveBlocks, before) << name << " leaks after request " << refused;
    EXPECT_EQ(OpenDescriptors(), openBefore) << name << " after request " << refused;
    if (!wasRefused) return refused - 1;
  }
}

TEST(AllocationSweepTest, TheLibraryTakesItsMemoryFromHere) {
  const ustring text = u"file:///folder";
  const long before = liveBlocks;
  const AbsoluteIRI iri(text);
  EXPECT_EQ(liveBlocks, before + 1);
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
