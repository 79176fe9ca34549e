#ifndef SEARCHPATH_SRC_HOST_NAMES_SHORT_HASH_H
#define SEARCHPATH_SRC_HOST_NAMES_SHORT_HASH_H

// Compiled in: for a name of a few characters the call into the library costs as much as the hash.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <cstddef>
#include <cstdint>

namespace Corvane::PathManagement::host {

/// The hash of a name, for tables in memory.
[[nodiscard]] inline std::uint64_t ShortHash(const void* bytes, std::size_t size) noexcept {
  return XXH3_64bits(bytes, size);
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_SHORT_HASH_H
