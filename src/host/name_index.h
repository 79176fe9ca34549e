#ifndef SEARCHPATH_SRC_HOST_NAME_INDEX_H
#define SEARCHPATH_SRC_HOST_NAME_INDEX_H

#include "host/folder_listing.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// Finds a file name among the names of many folders in a number of steps that does not depend on
/// how many there are: one hash table from name to the first place in path order that has it, each
/// place leading to the next.
///
/// Threads: immutable once made.
/// Ownership: views the name blocks, which must outlive it.
/// Cost: 28 bytes a file; building reads each name once; `Next` is a binary search over the
/// folders.
/// Errors: `std::length_error` for more than 2^24 folders or 2^32 - 1 files.
class NameIndex {
 public:
  /// Which names are the same one.
  enum class Sameness : std::uint8_t { Bytes, FoldedCase };

  /// A file: which of the folders, which of its names, and which of all files in path order.
  struct Place {
    std::uint32_t folder;
    std::uint32_t file;
    std::uint32_t record;
  };

  /// Where the places of one name begin; at the end it is null.
  class Cursor {
   public:
    [[nodiscard]] explicit operator bool() const noexcept { return record != kNone; }

   private:
    friend class NameIndex;
    Cursor(std::uint32_t atRecord, std::uint32_t inFolder) noexcept
        : record(atRecord), folder(inFolder) {}
    std::uint32_t record;
    std::uint32_t folder;
  };

  NameIndex(const std::vector<const NameBlock*>& folders, Sameness sameness);

  /// The first place in path order of a name that is the same as `name`, which is given as bytes.
  [[nodiscard]] Cursor Find(std::string_view name) const;

  /// How many files there are.
  [[nodiscard]] std::size_t size() const noexcept { return nextRecords.size(); }

  [[nodiscard]] Cursor Next(Cursor cursor) const noexcept;
  [[nodiscard]] Place At(Cursor cursor) const noexcept {
    return {cursor.folder, cursor.record - firstRecords[cursor.folder], cursor.record};
  }

 private:
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

  struct Slot {
    const char* name;           // of the first record, ends with NUL; null in an empty slot
    std::uint32_t tag : 8;      // of the name's hash
    std::uint32_t folder : 24;  // of the first record
    std::uint32_t record;       // the first of that name
  };

  void Link(std::uint32_t folder, std::uint32_t file, const char* name);
  [[nodiscard]] Cursor FindKey(std::string_view key) const;
  /// What the same names have in common; may be kept in `buffer`.
  [[nodiscard]] std::string_view KeyOf(std::string_view name, std::string& buffer) const;
  /// The slot of `key`, or the empty one where it would stand.
  [[nodiscard]] std::size_t SlotOf(std::string_view key, std::uint64_t hash) const;
  [[nodiscard]] bool HasKey(const char* name, std::string_view key) const;

  bool foldsCase;
  std::vector<std::uint32_t> firstRecords;  // of each folder; a record is a file, in path order
  std::vector<std::uint32_t> nextRecords;   // of the same name; kNone at the end
  std::vector<Slot> slots;                  // open addressing, never full
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAME_INDEX_H
