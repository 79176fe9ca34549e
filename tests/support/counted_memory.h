#ifndef SEARCHPATH_TESTS_SUPPORT_COUNTED_MEMORY_H
#define SEARCHPATH_TESTS_SUPPORT_COUNTED_MEMORY_H

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <malloc.h>
#include <new>

// The memory of the whole program, shared libraries included, if one of its sources includes this:
// counted, and refused on demand.
namespace Corvane::PathManagement::test {

struct CountedMemory {
  std::atomic<std::size_t> requests = 0;
  std::atomic<std::size_t> firstRefused = 0;  // the number of a request; 0 refuses none
  std::atomic<std::size_t> lastRefused = 0;
  std::atomic<std::size_t> blocksInUse = 0;
  std::atomic<std::size_t> bytesInUse = 0;
  std::atomic<std::size_t> mostBytesInUse = 0;
};

inline constinit CountedMemory memory;

}  // namespace Corvane::PathManagement::test

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  auto& memory = Corvane::PathManagement::test::memory;
  const std::size_t request = ++memory.requests;
  const std::size_t first = memory.firstRefused;
  if (first != 0 && request >= first && request <= memory.lastRefused) return nullptr;
  void* const block = std::malloc(size);
  if (block == nullptr) return nullptr;
  ++memory.blocksInUse;
  const std::size_t now = memory.bytesInUse += malloc_usable_size(block);
  if (now > memory.mostBytesInUse) memory.mostBytesInUse = now;
  return block;
}
void* operator new(std::size_t size) {
  void* const block = operator new(size, std::nothrow);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* block) noexcept {
  auto& memory = Corvane::PathManagement::test::memory;
  if (block == nullptr) return;
  --memory.blocksInUse;
  memory.bytesInUse -= malloc_usable_size(block);
  std::free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept { operator delete(block); }
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { operator delete(block); }

#endif  // SEARCHPATH_TESTS_SUPPORT_COUNTED_MEMORY_H
