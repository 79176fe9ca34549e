#include "host/path/path_table.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "host/folder/folder_walk.h"

namespace Corvane::PathManagement::host {

PathTable TableOf(const FolderEntries& mainFolders) {
  IdentifyAll(mainFolders);
  const auto list = [&](std::size_t folder) {
    // Nothing to visit: the walk lists the folders.
    WalkFolders(mainFolders[folder], [](const auto&, std::size_t /*depth*/) { return false; });
  };
  ForEachInParallel(mainFolders.size(), list, /*threadsAtFirst=*/1);
  PathTable table;
  for (const auto& folder : mainFolders) {
    table.Add(folder, [](const auto& above) -> const auto& { return above.GetSpecialFolders(); });
  }
  return table;
}

}  // namespace Corvane::PathManagement::host
