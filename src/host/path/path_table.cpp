#include "host/path/path_table.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "host/folder/folder_walk.h"

namespace Corvane::PathManagement::host {

PathTable::PathTable(const FolderEntries& mainFolders) {
  IdentifyAll(mainFolders);
  const auto list = [&](std::size_t folder) {
    WalkFolders(mainFolders[folder], [](const auto&, std::size_t /*depth*/) { return false; });
  };
  ForEachInParallel(mainFolders.size(), list, 1);
  rows.reserve(mainFolders.size());
  for (const auto& folder : mainFolders) Add(folder);
}

void PathTable::Add(const std::shared_ptr<const FolderEntry>& top) {
  const auto main = static_cast<std::uint32_t>(rows.size());
  std::vector<std::uint32_t> lastAtDepth;  // the chain of rows above the one that is added
  WalkFolders(top, [&](const auto& entry, std::size_t depth) {
    const auto row = static_cast<std::uint32_t>(rows.size());
    lastAtDepth.resize(depth);
    rows.push_back({entry, depth == 0 ? row : lastAtDepth.back(), main});
    lastAtDepth.push_back(row);
    byObject.emplace(entry.get(), row);
    byLocation.emplace(entry->GetCanonicalAbsoluteIRI(), row);
    return false;
  });
}

std::optional<std::uint32_t> PathTable::Find(const IPathEntry& entry) const {
  const auto found = byObject.find(&entry);
  if (found != byObject.end()) return found->second;
  // Compared as `AbsoluteIRI`: the further text of a canonical IRI does not tell folders apart.
  return Find(static_cast<const AbsoluteIRI&>(entry.GetCanonicalAbsoluteIRI()));
}

std::optional<std::uint32_t> PathTable::Find(const AbsoluteIRI& canonical) const {
  const auto found = byLocation.find(canonical);
  if (found == byLocation.end()) return std::nullopt;
  return found->second;
}

}  // namespace Corvane::PathManagement::host
