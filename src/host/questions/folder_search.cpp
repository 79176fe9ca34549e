#include "host/questions/folder_search.h"

#include "searchpath/model/search_scope.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/utilities/matching_entries.h"
#include "searchpath/utilities/partial_pathname.h"

namespace Corvane::PathManagement::host {

PathEntries FindFoldersNamed(const IPath& path, const WorkingFolder& workingFolder,
                             const FolderLookup& lookup) {
  // Only a partial pathname can be read in two ways.
  const bool isPartial = !lookup.name.empty() &&
                         !fl::filesystem::detail::is_absolute_path_when_expanded(lookup.name, true);
  if (!lookup.isLiteral || !isPartial) {
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
