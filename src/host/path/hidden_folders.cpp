#include "host/path/hidden_folders.h"

#include "host/folder/entry_state.h"
#include "searchpath/utilities/path_strings.h"

#include <utility>

namespace Corvane::PathManagement::host {

HiddenFolders::HiddenFolders(FolderEntries hiddenFolders, FolderExpansion folderExpansion)
    : folders(std::move(hiddenFolders)), expansion(folderExpansion) {
  for (std::size_t index = 0; index < folders.size(); ++index) {
    indices.emplace(folders[index]->GetCanonicalAbsoluteIRI(), index);
  }
}

std::optional<std::size_t> HiddenFolders::FindHider(const IPathEntry& entry) const {
  if (folders.empty()) return std::nullopt;
  const auto* const onDisk = dynamic_cast<const FolderEntry*>(&entry);
  if (onDisk == nullptr) return FindAtOrAbove(entry.GetCanonicalAbsoluteIRI());
  std::optional<std::size_t> hider;
  // Every folder that the entry was reached through is one of these bottoms, or above one.
  static_cast<void>(StateOf(*onDisk).Identity().AnyBottom([&](const AbsoluteIRI& folder) {
    hider = FindAtOrAbove(folder);
    return hider.has_value();
  }));
  return hider;
}

std::optional<std::size_t> HiddenFolders::FindAtOrAbove(AbsoluteIRI folder) const {
  while (true) {
    const auto found = indices.find(folder);
    if (found != indices.end()) return found->second;
    // A special folder belongs to its parent; where folders are expanded, so does every folder.
    const bool belongsToParent =
        folder.hasParent() &&
        (expansion == FolderExpansion::Recursive ||
         GetPathEntryTypeFromBaseName(folder.getName()) != PathEntryType::Ordinary);
    if (!belongsToParent) return std::nullopt;
    folder = folder.getParent();
  }
}

}  // namespace Corvane::PathManagement::host
