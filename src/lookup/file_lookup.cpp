#include "searchpath/utilities/file_lookup.h"

#include "lookup/method_files.h"
#include "searchpath/model/path.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/platform/filesystem.h"
#include "text/separators.h"

#include <utility>

namespace Corvane::PathManagement {

namespace {

/// Finds a name without separators, in ordinary folders and in method entries. All returns are of
/// one variable, so that it is built in place: moving it took 3 of 70 ns.
boost::optional<FoundItem> FindPlainName(const IPath& path, const detail::SearchTarget& target,
                                         FilenameMatchingPolicy policy) {
  auto found = path.FindFirstInScope(kMainScope, target, policy);
  for (const auto& entry : detail::GetMethodEntriesFor(path, target)) {
    auto item = entry->FindItem(target, policy);
    if (item == nullptr) continue;
    if (!found || detail::MethodEntryWins(path, *entry, *found->GetPathEntry())) {
      found = FoundItem(std::move(item), entry);
    }
    break;  // method entries are in path order, so the later ones lose to this one
  }
  return found;
}

void AppendFilesByExtensions(const std::shared_ptr<const IPathEntry>& entry,
                             const std::vector<ustring>& extensions, FilenameMatchingPolicy policy,
                             std::vector<FoundItem>& files) {
  const auto equal = entry->GetFilenameComparator(policy);
  const auto items = entry->GetItems();
  for (const auto& item : *items) {
    for (const ustring& extension : extensions) {
      if ((*equal)(extension, item->GetExtension())) files.emplace_back(item, entry);
    }
  }
}

}  // namespace

detail::SearchTarget CreateSearchTargetWithExtensionInFilenamePreferred(
    const ustring& name, const std::vector<ustring>& extensions) {
  // A dot at the end counts as an extension, also in "." itself.
  if (extensions.empty() || name.ends_with(u'.')) return detail::SearchTarget(name);
  const fl::filesystem::path path(name, /*convertToNativeForm=*/true);
  if (!fl::filesystem::detail::extract_extension(path).empty()) return detail::SearchTarget(name);
  return {name, extensions};
}

boost::optional<FoundItem> FindFirstFileVisibleOnPath(const IPath& path,
                                                      const detail::SearchTarget& target,
                                                      FilenameMatchingPolicy policy) {
  if (detail::HasSeparator(target.GetName())) {
    return path.FindFirstInScope(kAllKindsScope, target, policy);
  }
  return FindPlainName(path, target, policy);
}

boost::optional<FoundItem> FindFirstFileVisibleFromFolder(const IPath& path,
                                                          const AbsoluteIRI& folder,
                                                          const detail::SearchTarget& target,
                                                          FilenameMatchingPolicy policy) {
  if (detail::HasSeparator(target.GetName())) {
    return FindFirstFileVisibleOnPath(path, target, policy);
  }
  const auto entry =
      path.GetPathEntryFromAbsoluteIRI(folder, FilenameMatchingPolicy::FileSystemDefault);
  if (entry != nullptr) {
    if (auto privateFolder = entry->GetSingleSubfolderEntryA()) {
      if (auto item = privateFolder->FindItem(target, policy)) {
        return FoundItem(std::move(item), std::move(privateFolder));
      }
    }
  }
  return FindPlainName(path, target, policy);
}

boost::optional<FoundItem> FindFirstFileVisibleFromFolder(
    const IPath& path, const foundation::storage::vfs::Folder& folder,
    const detail::SearchTarget& target, FilenameMatchingPolicy policy) {
  return FindFirstFileVisibleFromFolder(path, folder.getLocation(), target, policy);
}

std::vector<FoundItem> FindFilesByExtensions(const std::shared_ptr<const IPathEntry>& entry,
                                             const std::vector<ustring>& extensions,
                                             FilenameMatchingPolicy policy) {
  std::vector<FoundItem> files;
  AppendFilesByExtensions(entry, extensions, policy, files);
  return files;
}

std::vector<FoundItem> FindFilesByExtensions(const IPath& path, SearchScope scope,
                                             const std::vector<ustring>& extensions,
                                             FilenameMatchingPolicy policy) {
  std::vector<FoundItem> files;
  path.ForEachEntry(scope, [&](const std::shared_ptr<const IPathEntry>& entry) {
    AppendFilesByExtensions(entry, extensions, policy, files);
    return false;
  });
  return files;
}

}  // namespace Corvane::PathManagement
