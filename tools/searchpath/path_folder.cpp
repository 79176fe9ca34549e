#include "path_folder.h"

#include "searchpath/host/folder_entry.h"
#include "searchpath/utilities/iri_conversion.h"

namespace Corvane::PathManagement::tool {

namespace {

// Every folder on a path of this program is a `FolderEntry`.
const host::FolderEntry& GetOnDisk(const IPathEntry& folder) {
  return dynamic_cast<const host::FolderEntry&>(folder);
}

}  // namespace

std::size_t GetItemCount(const IPathEntry& folder) { return GetOnDisk(folder).GetItemCount(); }

ustring GetNativePath(const IPathEntry& folder) {
  return GetStringFromIRI(folder.GetAbsoluteIRI());
}

}  // namespace Corvane::PathManagement::tool
