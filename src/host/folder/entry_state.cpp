#include "host/folder/entry_state.h"

#include "host/common/parallel.h"
#include "searchpath/utilities/iri_conversion.h"

#include <cstddef>
#include <utility>

namespace Corvane::PathManagement::host {

std::shared_ptr<const FolderEntry> CreateEntry(std::unique_ptr<FolderState> state,
                                               std::unique_ptr<FolderEntries> specialFolders) {
  return std::shared_ptr<const FolderEntry>(
      new FolderEntry(std::move(state), std::move(specialFolders)));
}

std::shared_ptr<const FolderEntry> CreateMainFolder(const AbsoluteIRI& location,
                                                    std::shared_ptr<const ListingSource> source,
                                                    DiskPatience::Limit limit) {
  return CreateEntry(std::make_unique<FolderState>(location, std::move(source), limit));
}

std::optional<FolderProblem> FindOwnProblem(const FolderEntry& folder) {
  if (folder.GetItemCount() != 0) return std::nullopt;  // what shows files could be searched
  const ustring path = GetStringFromIRI(folder.GetAbsoluteIRI());
  for (FolderProblem& problem : folder.GetProblems()) {
    if (problem.folder == path) return std::move(problem);
  }
  return std::nullopt;
}

void IdentifyAll(const FolderEntries& folders) {
  const auto links = std::make_shared<LinkResolver>();
  const auto identify = [&](std::size_t folder) {
    // The state stores the result.
    static_cast<void>(StateOf(*folders[folder]).Identity(links));
  };
  // More threads once the disk turns out slow.
  ForEachInParallel(folders.size(), identify, /*threadsAtFirst=*/1);
}

}  // namespace Corvane::PathManagement::host
