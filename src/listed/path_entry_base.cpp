#include "searchpath/utilities/path_entry_base.h"

#include "listed/entry_walk.h"
#include "searchpath/utilities/filename_comparison.h"
#include "searchpath/utilities/path_strings.h"

#include <algorithm>
#include <iterator>

namespace Corvane::PathManagement {

namespace {

template <class IsWanted>
PathEntries Select(PathEntries folders, const IsWanted& isWanted) {
  std::erase_if(folders, [&](const auto& folder) { return !isWanted(folder->GetPathEntryType()); });
  return folders;
}

std::shared_ptr<const PathEntries> AllOfKind(PathEntries folders, PathEntryType kind) {
  return std::make_shared<const PathEntries>(
      Select(std::move(folders), [kind](PathEntryType candidate) { return candidate == kind; }));
}

std::shared_ptr<const IPathEntry> FirstOfKind(PathEntries folders, PathEntryType kind) {
  const auto found = AllOfKind(std::move(folders), kind);
  return found->empty() ? nullptr : found->front();
}

/// Whether another getter returns this kind: `GetSubfolderEntriesC` returns the rest.
bool HasOwnGetter(PathEntryType kind) {
  return kind == PathEntryType::PrivateFolder || kind == PathEntryType::ResourcesFolder ||
         kind == PathEntryType::PlusFolder || kind == PathEntryType::AtFolder;
}

}  // namespace

PathEntryBase::~PathEntryBase() = default;

PathEntryType PathEntryBase::GetPathEntryType() const {
  return GetPathEntryTypeFromBaseName(GetAbsoluteIRI().getName());
}

CanonicalAbsoluteIRI PathEntryBase::GetCanonicalAbsoluteIRI() const {
  return {GetAbsoluteIRI(), ustring()};
}

PathEntries PathEntryBase::GetFoldersBelow() const { return {}; }

std::shared_ptr<const IPathEntry> PathEntryBase::GetSingleSubfolderEntryA() const {
  return FirstOfKind(GetFoldersBelow(), PathEntryType::PrivateFolder);
}

std::shared_ptr<const IPathEntry> PathEntryBase::GetSingleSubfolderEntryB() const {
  return FirstOfKind(GetFoldersBelow(), PathEntryType::ResourcesFolder);
}

std::shared_ptr<const PathEntries> PathEntryBase::GetSubfolderEntriesA() const {
  return AllOfKind(GetFoldersBelow(), PathEntryType::PlusFolder);
}

std::shared_ptr<const PathEntries> PathEntryBase::GetSubfolderEntriesB() const {
  return AllOfKind(GetFoldersBelow(), PathEntryType::AtFolder);
}

std::shared_ptr<const PathEntries> PathEntryBase::GetSubfolderEntriesC() const {
  return std::make_shared<const PathEntries>(
      Select(GetFoldersBelow(), [](PathEntryType kind) { return !HasOwnGetter(kind); }));
}

std::shared_ptr<const PathItem> PathEntryBase::FindItem(const detail::SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  const PathItems items = FindItems(target, policy);
  return items.empty() ? nullptr : items.front();
}

PathItems PathEntryBase::FindItems(const detail::SearchTarget& target,
                                   FilenameMatchingPolicy policy) const {
  const auto equal = GetFilenameComparator(policy);
  const auto items = GetItems();
  PathItems found;
  const auto addNamed = [&](const ustring& name) {
    PathItems exact;
    PathItems others;
    for (const auto& item : *items) {
      const ustring candidate = item->GetName() + item->GetExtension();
      if ((*equal)(name, candidate)) (candidate == name ? exact : others).push_back(item);
    }
    exact.insert(exact.end(), others.begin(), others.end());
    // Extensions that differ only in case may find the same file.
    std::ranges::copy_if(exact, std::back_inserter(found), [&](const auto& item) {
      return std::ranges::find(found, item) == found.end();
    });
  };
  if (target.GetExtensions().empty()) addNamed(target.GetName());
  for (const ustring& extension : target.GetExtensions()) addNamed(target.GetName() + extension);
  return found;
}

bool PathEntryBase::ForEachEntryInScope(SearchScope scope, const PathEntryVisitor& visitor) const {
  return detail::WalkEntries(shared_from_this(), [&](const auto& entry, std::size_t /*depth*/) {
    return detail::IsInScope(scope, entry->GetPathEntryType()) && visitor(entry);
  });
}

bool PathEntryBase::ConcurrentForEachEntryInScope(SearchScope scope,
                                                  const PathEntryVisitor& visitor) const {
  return ForEachEntryInScope(scope, visitor);
}

std::shared_ptr<std::function<bool(const ustring&, const ustring&)>>
PathEntryBase::GetFilenameComparator(FilenameMatchingPolicy policy) const {
  return std::make_shared<std::function<bool(const ustring&, const ustring&)>>(
      [policy](const ustring& left, const ustring& right) {
        return AreSameFilename(left, right, policy);
      });
}

}  // namespace Corvane::PathManagement
