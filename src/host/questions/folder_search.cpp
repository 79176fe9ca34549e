#include "host/questions/folder_search.h"

#include "searchpath/model/search_scope.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/utilities/matching_entries.h"
#include "searchpath/utilities/partial_pathname.h"

namespace Corvane::PathManagement::host {

namespace {

bool IsAbsolute(const ustring& name) {
  namespace names = fl::filesystem::detail;
  return names::is_absolute_path_when_expanded(names::make_native_form(name, true), true);
}

}  // namespace

PathEntries FindFoldersNamed(const IPath& path, const WorkingFolder& workingFolder,
                             const FolderLookup& lookup) {
  if (!lookup.isLiteral || lookup.name.empty() || IsAbsolute(lookup.name)) {
    return GetMatchingEntries(kAllKindsAndResourcesScope, lookup.name, path, workingFolder,
                              lookup.policy);
  }
  const auto partial = SplitPartialPathname(lookup.name);
  PathEntries matches;
  path.ForEachEntry(kAllKindsAndResourcesScope, [&](const auto& entry) {
    if (DoesPartialPathnameStrictlyMatchPathEntryIRI(partial, *entry, lookup.policy)) {
      matches.push_back(entry);
    }
    return false;
  });
  return matches;
}

}  // namespace Corvane::PathManagement::host
