#include "host/questions/folder_search.h"

#include "searchpath/model/search_scope.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/matching_entries.h"
#include "searchpath/utilities/partial_pathname.h"

#include <utility>

namespace Corvane::PathManagement::host {

namespace {

/// Whether `name` is a location that no folder on disk has: an IRI of another scheme than "file".
bool IsNotOnDisk(const ustring& name) {
  return foundation::storage::vfs::hasIRIPrefix(name) && !name.starts_with(u"file:");
}

PathEntries EntryAt(const IPath& path, const FolderLookup& lookup) try {
  auto entry = path.GetPathEntryFromAbsoluteIRI(GetIRIFromString(lookup.name), lookup.policy);
  return entry == nullptr ? PathEntries() : PathEntries{std::move(entry)};
} catch (const foundation::storage::vfs::InvalidIRIException&) {
  return {};
}

}  // namespace

PathEntries FindFoldersNamed(const IPath& path, const WorkingFolder& workingFolder,
                             const FolderLookup& lookup) {
  if (IsNotOnDisk(lookup.name)) return EntryAt(path, lookup);
  // A partial pathname is relative, and matches the end of a location. Others mean the same whether
  // they are taken literally or not.
  const bool isPartial =
      !lookup.name.empty() &&
      !fl::filesystem::detail::is_absolute_path_when_expanded(lookup.name, /*expand=*/true);
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
