#include "host/names/name_index.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <stdexcept>

namespace Corvane::PathManagement::host {

namespace {

// The tags of eight slots are compared at once. Slots tried one after the other cost 10 ns a
// question, since the processor cannot foresee at which one the search ends.
constexpr std::size_t kGroup = 8;
constexpr std::uint64_t kEachTag = 0x0101010101010101U;
constexpr std::uint64_t kTaken = 0x80 * kEachTag;

constexpr std::size_t kMostFolders = std::size_t{1} << 31U;  // as many as a cursor can number

/// Seven bits of the hash from its middle, the best mixed, and one that marks a slot as taken.
std::uint64_t TagOf(std::uint64_t hash) noexcept { return (hash >> 32U & 0x7FU) | 0x80U; }

/// The group where the search for a hash begins, by the hash's upper half.
std::size_t FirstGroupOf(std::uint64_t hash, std::size_t count) noexcept {
  return static_cast<std::size_t>(((hash >> 32U) * count) >> 32U);
}

/// The slot that the lowest of `marks` is for. Precondition: there is one.
std::size_t LowestOf(std::uint64_t marks) noexcept {
  return static_cast<std::size_t>(std::countr_zero(marks)) / 8 % kGroup;
}

}  // namespace

NameIndex::NameIndex(const std::vector<const NameBlock*>& folders, FilenameMatchingPolicy policy)
    : foldsCase(policy == FilenameMatchingPolicy::IgnoreCase) {
  if (folders.size() > kMostFolders) throw std::length_error("more folders than an index takes");
  std::size_t count = 0;
  firstRecords.reserve(folders.size());
  for (const NameBlock* names : folders) {
    firstRecords.push_back(static_cast<std::uint32_t>(count));
    count += names->size();
    if (count >= kNone) throw std::length_error("more files than an index takes");
  }
  nextRecords.resize(count);
  groups.resize((count + count / 2) / kGroup + 1);  // never full
  slots.resize(groups.size() * kGroup);
  // From the last file to the first, so that each slot ends up with the first file of its name.
  for (std::size_t folder = folders.size(); folder-- > 0;) {
    const NameBlock& names = *folders[folder];
    for (std::size_t file = names.size(); file-- > 0;) {
      Link(static_cast<std::uint32_t>(folder), static_cast<std::uint32_t>(file),
           names[file].data());
    }
  }
}

void NameIndex::Link(std::uint32_t folder, std::uint32_t file, const char* name) {
  const NameKey key = KeyOf(name);
  const std::uint64_t hash = key.Hash();
  const Slot* const known = FindSlot(key, hash);
  Slot& slot =
      known == nullptr ? TakeSlot(hash) : slots[static_cast<std::size_t>(known - slots.data())];
  const Cursor second = slot.first;
  slot.name = name;
  slot.first.record = firstRecords[folder] + file;
  slot.first.folder = folder & 0x7FFFFFFFU;
  slot.first.sibling = second && second.folder == folder ? 1 : 0;
  nextRecords[slot.first.record] = second.record;
}

NameIndex::Cursor NameIndex::Next(Cursor cursor) const noexcept {
  Cursor next;
  next.record = nextRecords[cursor.record];
  if (!next) return next;
  // The last of the folders that begin at or before the record: one that begins there and is not
  // the last is empty.
  const auto after = std::upper_bound(firstRecords.begin(), firstRecords.end(), next.record);
  next.folder = static_cast<std::uint32_t>(after - firstRecords.begin() - 1) & 0x7FFFFFFFU;
  return next;
}

NameIndex::Cursor NameIndex::Find(const NameKey& name) const {
  if (foldsCase) {
    NameKey key;
    key.SetFolded(name);
    const Slot* const slot = FindSlot(key, key.Hash());
    return slot == nullptr ? Cursor() : slot->first;
  }
  const Slot* const slot = FindSlot(name, name.Hash());
  return slot == nullptr ? Cursor() : slot->first;
}

/// The slot of `key`; null when there is none.
const NameIndex::Slot* NameIndex::FindSlot(const NameKey& key, std::uint64_t hash) const {
  const std::uint64_t tags = TagOf(hash) * kEachTag;
  std::size_t group = FirstGroupOf(hash, groups.size());
  for (;;) {
    // A byte becomes zero, and is marked, where the tag is the same. The byte above it may be
    // marked by mistake, which comparing the names finds out; an empty slot is never marked.
    const std::uint64_t differences = groups[group] ^ tags;
    std::uint64_t marks = (differences - kEachTag) & ~differences & kTaken;
    for (; marks != 0; marks &= marks - 1) {
      const Slot& slot = slots[group * kGroup + LowestOf(marks)];
      if (HasKey(slot.name, key)) return &slot;
    }
    if ((~groups[group] & kTaken) != 0) return nullptr;
    if (++group == groups.size()) group = 0;
  }
}

/// Takes an empty slot for a key that has none.
NameIndex::Slot& NameIndex::TakeSlot(std::uint64_t hash) {
  std::size_t group = FirstGroupOf(hash, groups.size());
  while ((~groups[group] & kTaken) == 0) {
    if (++group == groups.size()) group = 0;
  }
  const std::size_t slot = LowestOf(~groups[group] & kTaken);
  groups[group] |= TagOf(hash) << 8 * slot;
  return slots[group * kGroup + slot];
}

bool NameIndex::HasKey(const char* name, const NameKey& key) const {
  // Never past the end of the name, which may be the shorter one.
  const std::string_view bytes = key.View();
  const bool isKey =
      std::strncmp(name, bytes.data(), bytes.size()) == 0 && name[bytes.size()] == '\0';
  // Most names are written as they fold, and comparing bytes is the faster question.
  return isKey || (foldsCase && key.IsFoldOf(name));
}

/// The key under which `name` is filed: folded, when case is ignored.
NameKey NameIndex::KeyOf(std::string_view name) const {
  NameKey key;
  key.Set(name);
  if (!foldsCase) return key;
  NameKey folded;
  folded.SetFolded(key);
  return folded;
}

}  // namespace Corvane::PathManagement::host
