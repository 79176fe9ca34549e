#include "host/names/name_index.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <stdexcept>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::size_t kMostFolders = std::size_t{1} << 31U;  // as many as a cursor can number

/// The memory for a file is fetched while this many files before it are linked. Waiting for the
/// memory would be more than half of the cost of a large index.
constexpr std::size_t kAhead = 32;

/// The number of groups is a power of two, so that a shift finds the first one for a hash. Of their
/// slots, seven in eight are taken at most: a small table is faster, until many groups overflow.
std::size_t GroupCountFor(std::size_t files) {
  constexpr std::size_t most = TagGroup::kSize * 7 / 8;
  return std::max<std::size_t>(2, std::bit_ceil(files / most + 1));
}

}  // namespace

/// A file that is not linked yet.
struct NameIndex::Pending {
  const char* name;  // ends with NUL
  std::uint64_t hash;
  std::uint32_t folder;
  std::uint32_t record;
};

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
  groups.resize(GroupCountFor(count));
  groupShift = 64 - static_cast<unsigned>(std::countr_zero(groups.size()));
  slots.resize(groups.size() * TagGroup::kSize);
  LinkAll(folders);
}

/// Links the last file first, so that each slot ends up with the first file of its name.
void NameIndex::LinkAll(const std::vector<const NameBlock*>& folders) {
  std::array<Pending, kAhead> pending = {};  // a ring: the next file takes the place of the oldest
  std::size_t count = 0;
  for (std::size_t folder = folders.size(); folder-- > 0;) {
    const NameBlock& names = *folders[folder];
    for (std::size_t file = names.size(); file-- > 0; ++count) {
      Pending& place = pending[count % kAhead];
      if (count >= kAhead) Link(place);
      place = {.name = names[file].data(),
               .hash = KeyOf(names[file]).Hash(),
               .folder = static_cast<std::uint32_t>(folder),
               .record = firstRecords[folder] + static_cast<std::uint32_t>(file)};
      __builtin_prefetch(&groups[FirstGroupOf(place.hash)], 1);
      // For the file of half a ring ago, whose group has arrived by now. At the start there is no
      // such file; fetching for the zero hash in its place does no harm.
      FetchSlot(pending[(count + kAhead / 2) % kAhead].hash);
    }
  }
  for (std::size_t at = count - std::min(count, kAhead); at < count; ++at) {
    Link(pending[at % kAhead]);
  }
}

/// Fetches the memory of the slot that a name with that hash will most likely take.
void NameIndex::FetchSlot(std::uint64_t hash) const noexcept {
  const std::size_t group = FirstGroupOf(hash);
  const auto empty = groups[group].FindEmpty();
  __builtin_prefetch(&slots[group * TagGroup::kSize + (empty.Any() ? empty.First() : 0)], 1);
}

void NameIndex::Link(const Pending& file) {
  const Found known = FindSame(file);
  Slot& slot = slots[known.first ? known.slot : TakeSlot(file.hash)];
  const Cursor second = known.first;  // the first so far; from now on `file` comes before it
  slot.name = file.name;
  slot.first.record = file.record;
  slot.first.folder = file.folder & 0x7FFFFFFFU;  // no bit is lost: see `kMostFolders`
  slot.first.sibling = second && second.folder == file.folder ? 1 : 0;
  nextRecords[file.record] = second.record;
}

/// The first file linked so far that has the same name as `file`.
NameIndex::Found NameIndex::FindSame(const Pending& file) const {
  return FindSlot(file.hash, [&](const char* name) {
    // Bytes first: that is faster, and decides wherever a name is spelled in one way alone.
    return std::strcmp(name, file.name) == 0 || (foldsCase && KeyOf(file.name).IsFoldOf(name));
  });
}

NameIndex::Cursor NameIndex::Next(Cursor cursor) const noexcept {
  Cursor next;
  next.record = nextRecords[cursor.record];
  if (!next) return next;
  // The last folder that begins at or before the record holds it: other folders that begin at the
  // same record are empty.
  const auto after = std::upper_bound(firstRecords.begin(), firstRecords.end(), next.record);
  next.folder = static_cast<std::uint32_t>(after - firstRecords.begin() - 1) & 0x7FFFFFFFU;
  return next;
}

NameIndex::Found NameIndex::FindFolded(const NameKey& name) const {
  NameKey key;
  key.SetFolded(name);
  return FindSlot(key.Hash(),
                  [&key](const char* known) { return key.Is(known) || key.IsFoldOf(known); });
}

/// Takes an empty slot for a key that has none.
std::size_t NameIndex::TakeSlot(std::uint64_t hash) {
  std::size_t group = FirstGroupOf(hash);
  while (!groups[group].FindEmpty().Any()) {
    groups[group].SetOverflowed(hash);
    group = GroupAfter(group);
  }
  const std::size_t slot = groups[group].FindEmpty().First();
  groups[group].SetTag(slot, hash);
  return group * TagGroup::kSize + slot;
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
