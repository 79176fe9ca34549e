#ifndef SEARCHPATH_SRC_MODEL_SHORT_HASH_H
#define SEARCHPATH_SRC_MODEL_SHORT_HASH_H

// Inlined: for a name of a few characters a call into the library costs as much as the hash.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Corvane::PathManagement::detail {

/// XXH3 with 64 bits and without a seed: the hash of names in memory, and the checksum of saved
/// listings, whose format fixes it.
[[nodiscard]] inline std::uint64_t ShortHash(const void* bytes, std::size_t size) noexcept {
  return XXH3_64bits(bytes, size);
}

/// For hash tables of names in bytes.
struct NameBytesHash {
  using is_avalanching = void;  // all bits of the hash are good, so tables need not mix them
  std::size_t operator()(std::string_view name) const noexcept {
    return ShortHash(name.data(), name.size());
  }
};

/// For hash tables of texts.
struct TextHash {
  using is_avalanching = void;
  using is_transparent = void;  // views are looked up without a copy
  std::size_t operator()(std::u16string_view text) const noexcept {
    return ShortHash(text.data(), text.size() * sizeof(char16_t));
  }
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_MODEL_SHORT_HASH_H
