#include "host/questions/entry_names.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "searchpath/model/byte_text.h"

#include <utility>

namespace Corvane::PathManagement::host {

EntryNames::EntryNames(std::shared_ptr<const IPathEntry> namedEntry)
    : entry(std::move(namedEntry)) {
  if (const auto* const folder = dynamic_cast<const FolderEntry*>(entry.get())) {
    onDisk = &StateOf(*folder);
    onDisk->List();
    return;
  }
  const auto all = entry->GetItems();
  for (const auto& item : *all) {
    const auto name = BytesFromText(item->GetName() + item->GetExtension());
    if (!name) continue;
    names.Add(*name);
    items.push_back(item);
  }
}

const NameBlock& EntryNames::Get() const noexcept {
  return onDisk == nullptr ? names : onDisk->Files();
}

FoundItem EntryNames::At(std::size_t index) const {
  if (onDisk == nullptr) return {items[index], entry};
  return {ShareItem(entry, onDisk->ItemAt(index)), entry};
}

std::vector<EntryNames> NamesOf(const PathEntries& entries) {
  std::vector<EntryNames> names(entries.size());
  ForEachInParallel(entries.size(), [&](std::size_t at) { names[at] = EntryNames(entries[at]); });
  return names;
}

}  // namespace Corvane::PathManagement::host
