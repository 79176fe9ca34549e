#include "host/name_index.h"

#include "host/folded_name.h"
#include "host/short_hash.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

namespace Corvane::PathManagement::host {

namespace {

std::uint64_t HashOf(std::string_view key) noexcept { return ShortHash(key.data(), key.size()); }

constexpr std::size_t kMostFolders = std::size_t{1} << 24U;  // as many as a slot can number

std::uint32_t TagOf(std::uint64_t hash) noexcept {
  return static_cast<std::uint32_t>(hash) & 0xFFU;
}

/// Spreads the upper half of the hash over `count` slots; the lower half is the tag.
std::size_t FirstSlotOf(std::uint64_t hash, std::size_t count) noexcept {
  return static_cast<std::size_t>(((hash >> 32U) * count) >> 32U);
}

}  // namespace

NameIndex::NameIndex(const std::vector<const NameBlock*>& folders, Sameness sameness)
    : foldsCase(sameness == Sameness::FoldedCase) {
  if (folders.size() > kMostFolders) throw std::length_error("more folders than an index takes");
  std::size_t count = 0;
  firstRecords.reserve(folders.size());
  for (const NameBlock* names : folders) {
    firstRecords.push_back(static_cast<std::uint32_t>(count));
    count += names->size();
    if (count >= kNone) throw std::length_error("more files than an index takes");
  }
  nextRecords.resize(count);
  slots.assign(count + count / 2 + 1, {nullptr, 0, 0, kNone});
  // From the last on, so that each name's slot ends with its first record.
  for (std::size_t folder = folders.size(); folder-- > 0;) {
    const NameBlock& names = *folders[folder];
    for (std::size_t file = names.size(); file-- > 0;) {
      Link(static_cast<std::uint32_t>(folder), static_cast<std::uint32_t>(file),
           names[file].data());
    }
  }
}

void NameIndex::Link(std::uint32_t folder, std::uint32_t file, const char* name) {
  std::string buffer;
  const std::string_view key = KeyOf(name, buffer);
  const std::uint64_t hash = HashOf(key);
  const std::uint32_t record = firstRecords[folder] + file;
  Slot& slot = slots[SlotOf(key, hash)];
  nextRecords[record] = slot.record;
  slot.name = name;
  slot.tag = TagOf(hash) & 0xFFU;
  slot.folder = folder & 0xFFFFFFU;
  slot.record = record;
}

NameIndex::Cursor NameIndex::Next(Cursor cursor) const noexcept {
  const std::uint32_t record = nextRecords[cursor.record];
  if (record == kNone) return {kNone, 0};
  // The last of the folders that begin at the record: those before it are empty.
  const auto after = std::upper_bound(firstRecords.begin(), firstRecords.end(), record);
  return {record, static_cast<std::uint32_t>(after - firstRecords.begin() - 1)};
}

NameIndex::Cursor NameIndex::Find(std::string_view name) const {
  if (foldsCase) {
    std::string buffer;
    return FindKey(FoldName(name, buffer));
  }
  return FindKey(name);
}

NameIndex::Cursor NameIndex::FindKey(std::string_view key) const {
  const Slot& slot = slots[SlotOf(key, HashOf(key))];
  return {slot.record, slot.folder};
}

std::string_view NameIndex::KeyOf(std::string_view name, std::string& buffer) const {
  return foldsCase ? FoldName(name, buffer) : name;
}

std::size_t NameIndex::SlotOf(std::string_view key, std::uint64_t hash) const {
  std::size_t at = FirstSlotOf(hash, slots.size());
  while (slots[at].name != nullptr &&
         (slots[at].tag != TagOf(hash) || !HasKey(slots[at].name, key))) {
    if (++at == slots.size()) at = 0;
  }
  return at;
}

bool NameIndex::HasKey(const char* name, std::string_view key) const {
  if (foldsCase) {
    std::string buffer;
    return FoldName(name, buffer) == key;
  }
  // Never past the end of the name, which may be the shorter one.
  return std::strncmp(name, key.data(), key.size()) == 0 && name[key.size()] == '\0';
}

}  // namespace Corvane::PathManagement::host
