#include "host/questions/folder_search.h"

#include "searchpath/model/search_scope.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/utilities/matching_entries.h"
#include "searchpath/utilities/partial_pathname.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::array<std::uint32_t, 5> kAllKinds = {0, 1, 2, 3, 5};

bool IsAbsolute(const ustring& name) {
  namespace names = fl::filesystem::detail;
  return names::is_absolute_path_when_expanded(names::make_native_form(name, true), true);
}

}  // namespace

std::vector<std::shared_ptr<const IPathEntry>> FindFoldersNamed(const IPath& path,
                                                                const WorkingFolder& workingFolder,
                                                                const FolderLookup& lookup) {
  const SearchScope scope(kAllKinds.data(), kAllKinds.size());
  if (!lookup.isLiteral || lookup.name.empty() || IsAbsolute(lookup.name)) {
    return GetMatchingEntries(scope, lookup.name, path, workingFolder, lookup.policy);
  }
  const auto partial = SplitPartialPathname(lookup.name);
  std::vector<std::shared_ptr<const IPathEntry>> matches;
  path.ForEachEntry(scope, [&](const auto& entry) {
    if (DoesPartialPathnameStrictlyMatchPathEntryIRI(partial, *entry, lookup.policy)) {
      matches.push_back(entry);
    }
    return false;
  });
  return matches;
}

}  // namespace Corvane::PathManagement::host
