#include "host/rules/relative_lookup.h"

#include <string>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::size_t kFirstTableSize = 16;  // a power of two

struct RelativeName {
  std::string_view folder;
  std::string_view file;
};

RelativeName Split(std::string_view relative) {
  const std::size_t last = relative.rfind('/');
  if (last == relative.npos) return {{}, relative};
  return {relative.substr(0, last), relative.substr(last + 1)};
}

std::size_t HashOf(std::string_view name) { return NameBytesHash()(name); }

}  // namespace

RelativeFolder::Answer RelativeLookup::FindFirst(std::string_view relative) {
  const auto [folder, file] = Split(relative);
  // A name that ends with "/" is that of a folder.
  return file.empty() ? RelativeFolder::Answer() : FolderNamed(folder).FindFirst(file);
}

RelativeFolder::Sight RelativeLookup::LookIn(std::size_t root, std::string_view relative) {
  const auto [folder, file] = Split(relative);
  if (file.empty()) return {Standing::Absent, nullptr};
  return FolderNamed(folder).LookIn(root, file);
}

const RelativeFolder* RelativeLookup::FindListed(std::string_view folder) const {
  const Table* const table = current.load(std::memory_order_acquire);
  const RelativeFolder* const known = table == nullptr ? nullptr : Find(*table, folder);
  return known != nullptr && known->IsListed() ? known : nullptr;
}

RelativeFolder& RelativeLookup::FolderNamed(std::string_view name) {
  const Table* const table = current.load(std::memory_order_acquire);
  RelativeFolder* const known = table == nullptr ? nullptr : Find(*table, name);
  return known == nullptr ? Add(name) : *known;
}

/// Null when `table` has no such folder. The loop ends at an empty slot: no table is ever full.
RelativeFolder* RelativeLookup::Find(const Table& table, std::string_view name) {
  for (std::size_t at = HashOf(name);; ++at) {
    RelativeFolder* const folder = table.slots[at & table.mask].load(std::memory_order_acquire);
    if (folder == nullptr || folder->GetName() == name) return folder;
  }
}

RelativeFolder& RelativeLookup::Add(std::string_view name) {
  const std::lock_guard lock(mutex);
  if (tables.empty() || 2 * folders.size() > tables.back()->mask) Grow();
  // Another thread may have added it meanwhile.
  if (RelativeFolder* const added = Find(*tables.back(), name)) return *added;
  folders.push_back(std::make_unique<RelativeFolder>(roots, files, std::string(name)));
  Put(*tables.back(), *folders.back());
  return *folders.back();
}

/// Makes the first table, or one of twice the size. The mutex is locked.
void RelativeLookup::Grow() {
  const std::size_t size = tables.empty() ? kFirstTableSize : 2 * (tables.back()->mask + 1);
  auto larger = std::make_unique<Table>(size);
  for (const auto& folder : folders) Put(*larger, *folder);
  tables.push_back(std::move(larger));
  current.store(tables.back().get(), std::memory_order_release);
}

void RelativeLookup::Put(Table& table, RelativeFolder& folder) {
  std::size_t at = HashOf(folder.GetName());
  while (table.slots[at & table.mask].load(std::memory_order_relaxed) != nullptr) ++at;
  table.slots[at & table.mask].store(&folder, std::memory_order_release);
}

}  // namespace Corvane::PathManagement::host
