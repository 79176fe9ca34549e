#ifndef SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H
#define SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H

#include "host/names/name_block.h"
#include "host/names/name_key.h"
#include "searchpath/model/filename_matching_policy.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// Finds a file name among the names of many folders, in a number of steps that does not depend on
/// how many names or folders there are: a hash table leads from a name to the first file in path
/// order that has it, and from each file a link leads to the next file of the same name.
///
/// Threads: immutable once made.
/// Ownership: views the name blocks, which must outlive it.
/// Cost: 38 bytes a file; building reads each name once; `Next` is a binary search over the
/// folders.
/// Errors: `std::length_error` for more than 2^31 folders or 2^32 - 2 files.
class NameIndex {
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

 public:
  /// A file that has the name looked up.
  struct Match {
    std::uint32_t folder;  // the number of its folder
    std::uint32_t file;    // its number among the files of that folder
  };

  /// Stands at a match of one name; `Next` goes on in path order. False without a match, or after
  /// the last.
  class Cursor {
   public:
    [[nodiscard]] explicit operator bool() const noexcept { return record != kNone; }
    [[nodiscard]] std::uint32_t GetFolder() const noexcept { return folder; }
    /// Whether the next match is in the same folder, which happens only where case is ignored.
    /// Precondition: this cursor comes from `Find`; those from `Next` do not know.
    [[nodiscard]] bool HasSibling() const noexcept { return sibling != 0; }

   private:
    friend class NameIndex;
    std::uint32_t record = kNone;  // the number of the file among all files, in path order
    // In one word, so that a cursor passes through a register: two words cost 4 ns a question.
    std::uint32_t folder : 31 = 0;
    std::uint32_t sibling : 1 = 0;  // see `HasSibling`
  };

  /// The answer about a name.
  struct Found {
    Cursor first;          // the first match in path order
    std::size_t slot = 0;  // the number of the name, below `SlotCount`; only if there is a match
  };

  /// Under `IgnoreCase`, names that differ in case alone are the same name.
  NameIndex(const std::vector<const NameBlock*>& folders, FilenameMatchingPolicy policy);

  [[nodiscard]] Found Find(const NameKey& name) const {
    if (foldsCase) return FindFolded(name);
    return FindSlot(name.Hash(), [&name](const char* known) { return name.Is(known); });
  }

  /// How many files there are.
  [[nodiscard]] std::size_t size() const noexcept { return nextRecords.size(); }
  /// How many numbers there are for names: more than there are names.
  [[nodiscard]] std::size_t SlotCount() const noexcept { return slots.size(); }

  /// Precondition of both functions: the cursor stands at a match of this index.
  [[nodiscard]] Cursor Next(Cursor cursor) const noexcept;
  [[nodiscard]] Match At(Cursor cursor) const noexcept {
    return {cursor.folder, cursor.record - firstRecords[cursor.folder]};
  }

 private:
  // The slots are in groups of eight, whose tags are compared at once. Trying one slot after the
  // other cost 10 ns a question, since the processor cannot foresee at which slot the search ends.
  static constexpr std::size_t kGroup = 8;
  static constexpr std::uint64_t kEachTag = 0x0101010101010101U;  // the lowest bit of each tag
  static constexpr std::uint64_t kTaken = 0x80 * kEachTag;        // the highest bit of each tag

  /// One for each name; the others are empty.
  struct Slot {
    const char* name = nullptr;  // as the first file spells it, ends with NUL
    Cursor first;                // the first file of that name
  };
  struct Pending;

  /// The tag of a slot, a byte: seven bits from the middle of the hash, which are mixed best, and
  /// the highest bit, which marks the slot as taken.
  static std::uint64_t TagOf(std::uint64_t hash) noexcept { return (hash >> 32U & 0x7FU) | 0x80U; }
  /// The group where the search for a hash begins, by the hash's upper half.
  [[nodiscard]] std::size_t FirstGroupOf(std::uint64_t hash) const noexcept {
    return static_cast<std::size_t>(((hash >> 32U) * groups.size()) >> 32U);
  }
  /// The number, within its group, of the slot that the lowest bit of `marks` stands for.
  /// Precondition: a bit is set.
  static std::size_t LowestOf(std::uint64_t marks) noexcept {
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8 % kGroup;
  }

  /// The name with that hash for which isName(name) returns true. In the header, to be inlined: a
  /// call would cost a tenth of a question.
  template <class IsName>
  [[nodiscard]] Found FindSlot(std::uint64_t hash, const IsName& isName) const {
    const std::uint64_t tags = TagOf(hash) * kEachTag;
    std::size_t group = FirstGroupOf(hash);
    for (;;) {
      // Where the tag is the same, the byte of `differences` is zero, and is marked. The byte above
      // may be marked by mistake: comparing the names finds that out. An empty slot is never
      // marked.
      const std::uint64_t differences = groups[group] ^ tags;
      std::uint64_t marks = (differences - kEachTag) & ~differences & kTaken;
      for (; marks != 0; marks &= marks - 1) {
        const std::size_t slot = group * kGroup + LowestOf(marks);
        if (isName(slots[slot].name)) return {slots[slot].first, slot};
      }
      if ((~groups[group] & kTaken) != 0) return {};  // an empty slot ends the search
      if (++group == groups.size()) group = 0;
    }
  }
  [[nodiscard]] Found FindFolded(const NameKey& name) const;

  void LinkAll(const std::vector<const NameBlock*>& folders);
  void FetchSlot(std::uint64_t hash) const noexcept;
  void Link(const Pending& file);
  [[nodiscard]] Found FindSame(const Pending& file) const;
  [[nodiscard]] std::size_t TakeSlot(std::uint64_t hash);
  [[nodiscard]] NameKey KeyOf(std::string_view name) const;

  bool foldsCase;
  // A record is the number of a file among all files, in path order.
  std::vector<std::uint32_t> firstRecords;  // by folder: the record of its first file
  std::vector<std::uint32_t> nextRecords;   // by record: the next of the same name, kNone if last
  std::vector<std::uint64_t> groups;  // the tags of eight slots each, a byte a tag; zero: empty
  std::vector<Slot> slots;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H
