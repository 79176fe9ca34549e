#ifndef SEARCHPATH_SRC_DIFF_POSITION_SET_H
#define SEARCHPATH_SRC_DIFF_POSITION_SET_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::detail {

/// A set of positions below a bound, which quickly finds the nearest one before or after a given
/// position. Position 0 is always in the set, so that every other position has one before it.
///
/// Cost: at most one step up and one down for every six bits of the bound. Memory: little over one
/// bit for each position below the bound.
class PositionSet {
 public:
  explicit PositionSet(std::uint32_t bound) {
    std::size_t count = bound;  // of the bits in a level
    std::size_t words = 0;
    do {
      count = count / kBits + 1;
      offsets[depth++] = words;
      words += count;
    } while (count > 1);
    tree.resize(words);
    Insert(0);
  }

  [[nodiscard]] bool Contains(std::uint32_t position) const {
    return (tree[position / kBits] & Bit(position)) != 0;
  }

  void Insert(std::uint32_t position) {
    for (std::size_t level = 0; level < depth; ++level, position /= kBits) {
      std::uint64_t& word = Word(level, position);
      const bool wasEmpty = word == 0;
      word |= Bit(position);
      if (!wasEmpty) return;
    }
  }

  /// Precondition: `position` is not 0.
  void Erase(std::uint32_t position) {
    for (std::size_t level = 0; level < depth; ++level, position /= kBits) {
      std::uint64_t& word = Word(level, position);
      word &= ~Bit(position);
      if (word != 0) return;
    }
  }

  /// The largest position of the set below `position`. Precondition: `position` is not 0.
  [[nodiscard]] std::uint32_t Before(std::uint32_t position) const {
    std::size_t level = 0;
    std::uint64_t smaller = Word(0, position) & (Bit(position) - 1);
    while (smaller == 0) {
      position /= kBits;
      smaller = Word(++level, position) & (Bit(position) - 1);
    }
    for (;; smaller = Word(--level, position)) {
      position = position / kBits * kBits + static_cast<std::uint32_t>(std::bit_width(smaller)) - 1;
      if (level == 0) return position;
      position *= kBits;
    }
  }

  /// The smallest position of the set above `position`. Precondition: there is one.
  [[nodiscard]] std::uint32_t After(std::uint32_t position) const {
    std::size_t level = 0;
    std::uint64_t larger = Word(0, position) & Above(position);
    while (larger == 0) {
      position /= kBits;
      larger = Word(++level, position) & Above(position);
    }
    for (;; larger = Word(--level, position)) {
      position = position / kBits * kBits + static_cast<std::uint32_t>(std::countr_zero(larger));
      if (level == 0) return position;
      position *= kBits;
    }
  }

 private:
  static constexpr std::uint32_t kBits = 64;  // in a word

  static std::uint64_t Bit(std::uint32_t position) { return std::uint64_t{1} << position % kBits; }
  /// The bits of all larger positions in the word of `position`.
  static std::uint64_t Above(std::uint32_t position) {
    return ~std::uint64_t{1} << position % kBits;
  }
  std::uint64_t& Word(std::size_t level, std::uint32_t position) {
    return tree[offsets[level] + position / kBits];
  }
  [[nodiscard]] std::uint64_t Word(std::size_t level, std::uint32_t position) const {
    return tree[offsets[level] + position / kBits];
  }

  // Levels of bits. The first level has a bit for each position; every other level has a bit for
  // each word of the level before, set while that word is not 0.
  std::vector<std::uint64_t> tree;
  std::array<std::size_t, 6> offsets = {};  // where each level begins; 6 levels suffice for 32 bits
  std::size_t depth = 0;                    // levels in use
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_POSITION_SET_H
