#ifndef SEARCHPATH_SRC_DIFF_ELEMENT_POSITIONS_H
#define SEARCHPATH_SRC_DIFF_ELEMENT_POSITIONS_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Corvane::PathManagement::detail {

/// Finds the positions of an element in a sequence. Elements are the same when they point to the
/// same object. Positions count from 1, so that 0 can mean that the element is not there.
///
/// Precondition: the sequence has fewer than 2^32 - 1 elements.
/// Ownership: refers to the sequence, which must outlive this.
/// Cost: 16 to 32 bytes for each element; four more for each when any element occurs twice.
template <class Element>
class ElementPositions {
 public:
  explicit ElementPositions(std::span<const Element> sequence)
      : elements(sequence), slots(std::bit_ceil(2 * sequence.size() + 2)) {
    // Backwards, so that a slot ends up with the smallest position of its element.
    for (std::size_t position = elements.size(); position > 0; --position) {
      if (position > kAhead) Prefetch(elements[position - 1 - kAhead]);
      Add(static_cast<std::uint32_t>(position));
    }
  }

  /// For each of `others` that the sequence holds, in order, calls visit(index, position) with its
  /// index in `others` and its smallest position in the sequence.
  template <class Visit>
  void ForEachShared(std::span<const Element> others, const Visit& visit) const {
    for (std::size_t index = 0; index < others.size(); ++index) {
      if (others.size() - index > kAhead) Prefetch(others[index + kAhead]);
      const std::uint32_t position = slots[Find(others[index])].position;
      if (position != 0) visit(static_cast<std::uint32_t>(index), position);
    }
  }

  /// By position: the next position of the same element, or 0. Empty when no element occurs twice.
  [[nodiscard]] const std::vector<std::uint32_t>& Following() const { return following; }

 private:
  struct Slot {
    std::uint32_t tag = 0;  // some bits of the hash: if they differ, so does the element
    std::uint32_t position = 0;
  };

  // Slots are prefetched for elements this far ahead: otherwise, half of the cost of a long list
  // is waiting for memory.
  static constexpr std::size_t kAhead = 16;

  // The factor is 2^64 divided by the golden ratio. It spreads addresses over the highest bits,
  // from which `FirstSlot` is taken.
  static std::uint64_t Hash(const Element& element) {
    return reinterpret_cast<std::uintptr_t>(element.get()) * 0x9E3779B97F4A7C15U;
  }
  static std::uint32_t Tag(std::uint64_t hash) { return static_cast<std::uint32_t>(hash >> 8); }

  [[nodiscard]] std::size_t FirstSlot(std::uint64_t hash) const {
    return hash >> std::countl_zero(slots.size() - 1);
  }
  void Prefetch(const Element& element) const {
    __builtin_prefetch(&slots[FirstSlot(Hash(element))]);
  }

  /// The slot that holds the element, or else the free slot in which it would be put.
  [[nodiscard]] std::size_t Find(const Element& element) const {
    const std::uint64_t hash = Hash(element);
    for (std::size_t at = FirstSlot(hash);; at = (at + 1) & (slots.size() - 1)) {
      const Slot& slot = slots[at];
      if (slot.position == 0) return at;
      if (slot.tag == Tag(hash) && elements[slot.position - 1].get() == element.get()) return at;
    }
  }

  void Add(std::uint32_t position) {
    const Element& element = elements[position - 1];
    Slot& slot = slots[Find(element)];
    if (slot.position != 0) {  // that of the same element, added before since it is larger
      following.resize(elements.size() + 1);
      following[position] = slot.position;
    }
    slot = {.tag = Tag(Hash(element)), .position = position};
  }

  std::span<const Element> elements;
  std::vector<Slot> slots;               // open addressing, at most half full
  std::vector<std::uint32_t> following;  // see `Following`
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_ELEMENT_POSITIONS_H
