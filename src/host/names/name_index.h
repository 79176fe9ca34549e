#ifndef SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H
#define SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H

#include "host/names/name_block.h"
#include "host/names/name_key.h"
#include "searchpath/model/filename_matching_policy.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// Finds a file name among the names of many folders in a number of steps that does not depend on
/// how many there are: a hash table leads from a name to the first file in path order that has it,
/// and each file to the next one of the same name.
///
/// Threads: immutable once made.
/// Ownership: views the name blocks, which must outlive it.
/// Cost: 30 bytes a file; building reads each name once; `Next` is a binary search over the
/// folders.
/// Errors: `std::length_error` for more than 2^31 folders or 2^32 - 1 files.
class NameIndex {
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

 public:
  /// A file of the name that was looked up, by numbers.
  struct Match {
    std::uint32_t folder;  // which of the folders
    std::uint32_t file;    // which of that folder's files
    std::uint32_t record;  // which of all files, in path order
  };

  /// Runs through the matches of one name in path order; false after the last.
  class Cursor {
   public:
    [[nodiscard]] explicit operator bool() const noexcept { return record != kNone; }
    /// Whether the next match is in the same folder, where names that differ in case are the same.
    /// Precondition: `Find` returned this; `Next` does not keep the answer.
    [[nodiscard]] bool HasSibling() const noexcept { return sibling != 0; }

   private:
    friend class NameIndex;
    std::uint32_t record = kNone;
    // In one word, which passes through a register: as two members they cost 4 ns a question.
    std::uint32_t folder : 31 = 0;
    std::uint32_t sibling : 1 = 0;
  };

  /// Under `IgnoreCase`, names that differ in case alone are the same name.
  NameIndex(const std::vector<const NameBlock*>& folders, FilenameMatchingPolicy policy);

  /// The first match of `name` in path order; false when there is none.
  [[nodiscard]] Cursor Find(const NameKey& name) const;

  /// How many files there are.
  [[nodiscard]] std::size_t size() const noexcept { return nextRecords.size(); }

  [[nodiscard]] Cursor Next(Cursor cursor) const noexcept;
  [[nodiscard]] Match At(Cursor cursor) const noexcept {
    return {cursor.folder, cursor.record - firstRecords[cursor.folder], cursor.record};
  }

 private:
  struct Slot {
    const char* name = nullptr;  // of the first record, ends with NUL
    Cursor first;
  };

  void Link(std::uint32_t folder, std::uint32_t file, const char* name);
  [[nodiscard]] const Slot* FindSlot(const NameKey& key, std::uint64_t hash) const;
  [[nodiscard]] Slot& TakeSlot(std::uint64_t hash);
  [[nodiscard]] bool HasKey(const char* name, const NameKey& key) const;
  [[nodiscard]] NameKey KeyOf(std::string_view name) const;

  bool foldsCase;
  std::vector<std::uint32_t> firstRecords;  // of each folder; a record is a file, in path order
  std::vector<std::uint32_t> nextRecords;   // of the same name; kNone at the end
  std::vector<std::uint64_t> groups;  // each has the tags of eight slots, a byte each; zero: empty
  std::vector<Slot> slots;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_NAMES_NAME_INDEX_H
