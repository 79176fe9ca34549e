#include "host/questions/unsearched_files.h"

#include "host/rules/tree_folder.h"
#include "searchpath/host/native_location.h"
#include "searchpath/model/found_item.h"
#include "searchpath/utilities/partial_pathname.h"
#include "searchpath/utilities/path_strings.h"
#include "text/separators.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;

bool IsUnsearched(PathEntryType kind) {
  return kind == PathEntryType::PrivateFolder || kind == PathEntryType::ResourcesFolder;
}

PathEntryType KindOf(const TreeFolder& folder) {
  return GetPathEntryTypeFromBaseName(folder.entry->GetAbsoluteIRI().getName());
}

std::optional<UnsearchedFile> FindIn(const TreeFolder& folder, const SearchTarget& target,
                                     FilenameMatchingPolicy policy, PathEntryType kind) {
  auto item = folder.entry->FindItem(target, policy);
  if (item == nullptr) return std::nullopt;
  return UnsearchedFile{folder.entry, GetNativePath(FoundItem(std::move(item), folder.entry)),
                        kind};
}

/// Anywhere below `folder`, or in itself unless it is private: the files of a private folder have
/// names of their own, such as private/plot.zt.
std::optional<UnsearchedFile> FindAnywhere(const TreeFolder& folder, const SearchTarget& target,
                                           FilenameMatchingPolicy policy) {
  const PathEntryType kind = KindOf(folder);
  std::vector<TreeFolder> pending = {folder};
  while (!pending.empty()) {
    const TreeFolder next = std::move(pending.back());
    pending.pop_back();
    const bool isItself = next.entry == folder.entry;
    if (!isItself || kind != PathEntryType::PrivateFolder) {
      if (auto found = FindIn(next, target, policy, kind)) return found;
    }
    auto below = next.FindBelow();
    std::move(below.rbegin(), below.rend(), std::back_inserter(pending));
  }
  return std::nullopt;
}

/// In the folder that stands below `folder` as the parts in front of the name say.
std::optional<UnsearchedFile> FindAt(TreeFolder folder, const SearchTarget& target,
                                     FilenameMatchingPolicy policy) {
  auto parts = SplitPartialPathname(target.GetName());
  const SearchTarget file(ustring(parts.back()), target.GetExtensions());
  parts.pop_back();
  std::optional<PathEntryType> kind;
  for (const auto& part : parts) {
    const auto below = folder.FindBelow();
    const auto found = std::find_if(below.begin(), below.end(), [&](const TreeFolder& candidate) {
      return candidate.entry->GetAbsoluteIRI().getName() == part;
    });
    if (found == below.end()) return std::nullopt;
    folder = *found;
    if (!kind && IsUnsearched(KindOf(folder))) kind = KindOf(folder);
  }
  return kind ? FindIn(folder, file, policy, *kind) : std::nullopt;
}

}  // namespace

std::optional<UnsearchedFile> FindUnsearchedFile(const std::shared_ptr<const FolderEntry>& top,
                                                 const SearchTarget& target,
                                                 FilenameMatchingPolicy policy) {
  if (target.GetName().starts_with(u'/')) return std::nullopt;
  if (PathManagement::detail::HasSeparator(target.GetName())) {
    return FindAt({top, {}}, target, policy);
  }
  for (const auto& special : top->GetSpecialFolders()) {
    if (!IsUnsearched(special->GetPathEntryType())) continue;
    if (auto found = FindAnywhere({special, {}}, target, policy)) return found;
  }
  return std::nullopt;
}

}  // namespace Corvane::PathManagement::host
