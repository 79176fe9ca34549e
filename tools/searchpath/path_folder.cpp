#include "path_folder.h"

#include "searchpath/host/folder_entry.h"
#include "searchpath/utilities/iri_conversion.h"

namespace Corvane::PathManagement::tool {

const char* FindProblemText(const IPathEntry& folder) {
  const auto* onDisk = dynamic_cast<const host::FolderEntry*>(&folder);
  if (onDisk == nullptr || onDisk->GetItemCount() != 0) return nullptr;
  const ustring path = GetNativePath(folder);
  // The problems of a folder include those of links in it.
  for (const host::FolderProblem& problem : onDisk->GetProblems()) {
    if (problem.folder == path) return problem.GetText();
  }
  return nullptr;
}

std::size_t GetItemCount(const IPathEntry& folder) {
  const auto* onDisk = dynamic_cast<const host::FolderEntry*>(&folder);
  return onDisk != nullptr ? onDisk->GetItemCount() : folder.GetItems()->size();
}

ustring GetNativePath(const IPathEntry& folder) {
  return GetStringFromIRI(folder.GetAbsoluteIRI());
}

}  // namespace Corvane::PathManagement::tool
