#ifndef SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H
#define SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H

#include "host/names/name_block.h"
#include "host/names/name_key.h"
#include "host/names/tag_group.h"
#include "searchpath/model/filename_matching_policy.h"

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
/// Cost: 24 to 43 bytes a file; building reads each name once; `Next` is a binary search over the
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
  /// One for each name; the others are empty.
  struct Slot {
    const char* name = nullptr;  // as the first file spells it, ends with NUL
    Cursor first;                // the first file of that name
  };
  struct Pending;

  /// The group where the search for a hash begins, by the upper bits of the hash.
  [[nodiscard]] std::size_t FirstGroupOf(std::uint64_t hash) const noexcept {
    return static_cast<std::size_t>(hash >> groupShift);
  }
  [[nodiscard]] std::size_t GroupAfter(std::size_t group) const noexcept {
    return (group + 1) & (groups.size() - 1);
  }

  /// The name with that hash for which isName(name) returns true. In the header, to be inlined: a
  /// call would cost a tenth of a question.
  template <class IsName>
  [[nodiscard]] Found FindSlot(std::uint64_t hash, const IsName& isName) const {
    std::size_t group = FirstGroupOf(hash);
    for (;;) {
      const TagGroup& tags = groups[group];
      for (auto marks = tags.FindTag(hash); marks.Any(); marks.DropFirst()) {
        const std::size_t slot = group * TagGroup::kSize + marks.First();
        if (isName(slots[slot].name)) return {slots[slot].first, slot};
      }
      if (!tags.HasOverflowed(hash)) return {};
      group = GroupAfter(group);
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
  unsigned groupShift = 63;  // there are 2^(64 - groupShift) groups
  // A record is the number of a file among all files, in path order.
  std::vector<std::uint32_t> firstRecords;  // by folder: the record of its first file
  std::vector<std::uint32_t> nextRecords;   // by record: the next of the same name, kNone if last
  std::vector<TagGroup> groups;
  std::vector<Slot> slots;  // those of a group are side by side
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H
