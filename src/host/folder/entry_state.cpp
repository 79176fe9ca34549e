#include "host/folder/entry_state.h"

#include <utility>

namespace Corvane::PathManagement::host {

std::shared_ptr<const FolderEntry> CreateEntry(std::unique_ptr<FolderState> state,
                                               std::unique_ptr<FolderEntries> specialFolders) {
  return std::shared_ptr<const FolderEntry>(
      new FolderEntry(std::move(state), std::move(specialFolders)));
}

std::shared_ptr<const FolderEntry> CreateMainFolder(const AbsoluteIRI& location,
                                                    std::shared_ptr<const ListingSource> source) {
  return CreateEntry(std::make_unique<FolderState>(location, std::move(source)));
}

}  // namespace Corvane::PathManagement::host
