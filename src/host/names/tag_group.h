#ifndef SEARCHPATH_SRC_HOST_NAMES_TAG_GROUP_H
#define SEARCHPATH_SRC_HOST_NAMES_TAG_GROUP_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Corvane::PathManagement::host {

/// What a hash table knows of fifteen slots without looking at them: of each, a byte of the hash of
/// its key, the tag. The tags of a group are compared at once. Trying one slot after the other cost
/// 10 ns a question, since the processor cannot foresee at which slot the search ends.
///
/// A key whose group is full is put into a later group, and the full one notes that it has
/// overflowed, for an eighth of all hashes: the search for another key mostly ends there.
class alignas(16) TagGroup {
 public:
  static constexpr std::size_t kSize = 15;  // slots

  /// Some slots of a group, by their numbers.
  class Marks {
   public:
    explicit Marks(unsigned oneBitEach) noexcept : bits(oneBitEach) {}
    [[nodiscard]] bool Any() const noexcept { return bits != 0; }
    /// The lowest number. Precondition: there is any.
    [[nodiscard]] std::size_t First() const noexcept {
      return static_cast<std::size_t>(std::countr_zero(bits));
    }
    void DropFirst() noexcept { bits &= bits - 1; }

   private:
    unsigned bits;
  };

  /// The slots whose key may have that hash.
  [[nodiscard]] Marks FindTag(std::uint64_t hash) const noexcept { return FindByte(TagOf(hash)); }
  [[nodiscard]] Marks FindEmpty() const noexcept { return FindByte(kEmpty); }
  void SetTag(std::size_t slot, std::uint64_t hash) noexcept { bytes[slot] = TagOf(hash); }

  /// Whether a key with that hash may be in a later group.
  [[nodiscard]] bool HasOverflowed(std::uint64_t hash) const noexcept {
    return (bytes[kSize] & OverflowOf(hash)) != 0;
  }
  void SetOverflowed(std::uint64_t hash) noexcept { bytes[kSize] |= OverflowOf(hash); }

 private:
  static constexpr std::uint8_t kEmpty = 0;

  // The bits in the middle of a hash are mixed best, and its upper half tells the group, mostly by
  // its upper bits.
  static std::uint8_t TagOf(std::uint64_t hash) noexcept {
    const auto tag = static_cast<std::uint8_t>(hash >> 32U);
    return tag == kEmpty ? 1 : tag;
  }
  static std::uint8_t OverflowOf(std::uint64_t hash) noexcept {
    return static_cast<std::uint8_t>(1U << (hash >> 29U & 7U));
  }

  [[nodiscard]] Marks FindByte(std::uint8_t byte) const noexcept {
    constexpr unsigned slots = (1U << kSize) - 1;
#ifdef __SSE2__
    const __m128i all = _mm_load_si128(reinterpret_cast<const __m128i*>(bytes));
    const __m128i same = _mm_cmpeq_epi8(all, _mm_set1_epi8(static_cast<char>(byte)));
    return Marks(static_cast<unsigned>(_mm_movemask_epi8(same)) & slots);
#else
    unsigned marks = 0;
    for (unsigned slot = 0; slot < kSize; ++slot) marks |= unsigned{bytes[slot] == byte} << slot;
    return Marks(marks & slots);
#endif
  }

  std::uint8_t bytes[kSize + 1] = {};  // the tags; last, a bit for each eighth of the hashes
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_TAG_GROUP_H
