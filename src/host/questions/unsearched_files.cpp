#include "host/questions/unsearched_files.h"

#include "host/rules/tree_folder.h"
#include "listed/entry_walk.h"
#include "searchpath/host/native_location.h"
#include "searchpath/model/byte_text.h"
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

/// An entry of any path; used like `TreeFolder`, which is for folders on disk.
struct AnyFolder {
  std::shared_ptr<const IPathEntry> entry;

  /// The entries below, in the order of the bytes of their names.
  [[nodiscard]] std::vector<AnyFolder> FindBelow() const {
    std::vector<AnyFolder> folders;
    for (const auto& below : PathManagement::detail::EntriesBelow(*entry)) {
      folders.push_back({below});
    }
    std::ranges::stable_sort(folders, {}, [](const AnyFolder& folder) {
      return BytesFromText(folder.entry->GetAbsoluteIRI().getName());
    });
    return folders;
  }
};

template <class Folder>
PathEntryType KindOf(const Folder& folder) {
  return GetPathEntryTypeFromBaseName(folder.entry->GetAbsoluteIRI().getName());
}

template <class Folder>
std::optional<UnsearchedFile> FindIn(const Folder& folder, const SearchTarget& target,
                                     FilenameMatchingPolicy policy, PathEntryType kind) {
  auto item = folder.entry->FindItem(target, policy);
  if (item == nullptr) return std::nullopt;
  return UnsearchedFile{folder.entry, GetLocationText(FoundItem(std::move(item), folder.entry)),
                        kind};
}

/// Finds the file below `folder`, or in `folder` unless that is private: files directly in a
/// private folder are searched, by names such as private/plot.zt.
template <class Folder>
std::optional<UnsearchedFile> FindAnywhere(const Folder& folder, const SearchTarget& target,
                                           FilenameMatchingPolicy policy) {
  const PathEntryType kind = KindOf(folder);
  std::vector<Folder> pending = {folder};
  while (!pending.empty()) {
    const Folder next = std::move(pending.back());
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

/// Finds the file by following the parts of its name down from `folder`; no file unless one of the
/// parts is a private or resources folder.
template <class Folder>
std::optional<UnsearchedFile> FindAt(Folder folder, const SearchTarget& target,
                                     FilenameMatchingPolicy policy) {
  auto parts = SplitPartialPathname(target.GetName());
  const SearchTarget file(ustring(parts.back()), target.GetExtensions());
  parts.pop_back();
  std::optional<PathEntryType> kind;
  for (const auto& part : parts) {
    const auto below = folder.FindBelow();
    const auto found = std::find_if(below.begin(), below.end(), [&](const Folder& candidate) {
      return candidate.entry->GetAbsoluteIRI().getName() == part;
    });
    if (found == below.end()) return std::nullopt;
    folder = *found;
    if (!kind && IsUnsearched(KindOf(folder))) kind = KindOf(folder);  // of the topmost one
  }
  return kind ? FindIn(folder, file, policy, *kind) : std::nullopt;
}

/// Finds the file below `top`. makeFolder(entry) makes an `AnyFolder` or a `TreeFolder`.
template <class MakeFolder>
std::optional<UnsearchedFile> FindBelow(const std::shared_ptr<const IPathEntry>& top,
                                        const SearchTarget& target, FilenameMatchingPolicy policy,
                                        const MakeFolder& makeFolder) {
  if (PathManagement::detail::HasSeparator(target.GetName())) {
    return FindAt(makeFolder(top), target, policy);
  }
  // The private folder, then the resources folder.
  for (const auto& special : {top->GetSingleSubfolderEntryA(), top->GetSingleSubfolderEntryB()}) {
    if (special == nullptr) continue;
    if (auto found = FindAnywhere(makeFolder(special), target, policy)) return found;
  }
  return std::nullopt;
}

}  // namespace

std::optional<UnsearchedFile> FindUnsearchedFile(const std::shared_ptr<const IPathEntry>& top,
                                                 const SearchTarget& target,
                                                 FilenameMatchingPolicy policy) {
  if (target.GetName().starts_with(u'/')) return std::nullopt;
  if (dynamic_cast<const FolderEntry*>(top.get()) != nullptr) {
    return FindBelow(top, target, policy, [](const std::shared_ptr<const IPathEntry>& entry) {
      return TreeFolder{std::static_pointer_cast<const FolderEntry>(entry), /*links=*/{}};
    });
  }
  return FindBelow(top, target, policy,
                   [](const std::shared_ptr<const IPathEntry>& entry) { return AnyFolder{entry}; });
}

}  // namespace Corvane::PathManagement::host
