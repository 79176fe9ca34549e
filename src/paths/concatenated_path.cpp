#include "searchpath/utilities/concatenated_path.h"

#include "paths/join.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>

namespace Corvane::PathManagement {

namespace {

using Parts = std::vector<std::shared_ptr<const IPath>>;

/// The elements of ask(part) for all `parts`, in their order.
template <class Element, class Ask>
std::vector<Element> Concatenate(const Parts& parts, const Ask& ask) {
  std::vector<std::vector<Element>> answers;
  answers.reserve(parts.size());
  for (const auto& part : parts) answers.push_back(ask(*part));
  return detail::Join(std::move(answers));
}

/// The main entries of all `parts`. A part that was moved from returns null, and counts as empty.
PathEntries ConcatenateMainEntries(const Parts& parts) {
  std::vector<std::shared_ptr<const PathEntries>> lists;
  lists.reserve(parts.size());
  std::size_t count = 0;
  for (const auto& part : parts) {
    lists.push_back(part->GetMainEntries());
    if (lists.back() != nullptr) count += lists.back()->size();
  }
  PathEntries all;
  all.reserve(count);
  for (const auto& list : lists) {
    if (list != nullptr) all.insert(all.end(), list->begin(), list->end());
  }
  return all;
}

}  // namespace

ConcatenatedPath::ConcatenatedPath(const std::shared_ptr<const IPath>& first,
                                   const std::shared_ptr<const IPath>& second)
    : parts({first, second}) {}

ConcatenatedPath::ConcatenatedPath(std::vector<std::shared_ptr<const IPath>>&& pathParts)
    : parts(std::move(pathParts)) {}

ConcatenatedPath::ConcatenatedPath(std::initializer_list<std::shared_ptr<const IPath>> pathParts)
    : parts(pathParts) {}

// `mainEntriesOnce` is copied first: another thread may still be building the list of `other`,
// which may be read only when the copy says that it is built.
ConcatenatedPath::ConcatenatedPath(const ConcatenatedPath& other)
    : IPath(other),
      parts(other.parts),
      mainEntriesOnce(other.mainEntriesOnce),
      mainEntries(mainEntriesOnce.IsBuilt() ? other.mainEntries : nullptr) {}

ConcatenatedPath::ConcatenatedPath(ConcatenatedPath&& other)
    : IPath(other),
      parts(other.parts),
      mainEntriesOnce(other.mainEntriesOnce),
      mainEntries(mainEntriesOnce.IsBuilt() ? std::move(other.mainEntries) : nullptr) {}

ConcatenatedPath::~ConcatenatedPath() = default;

std::shared_ptr<const PathEntries> ConcatenatedPath::GetMainEntries() const {
  mainEntriesOnce.Call(
      [this] { mainEntries = std::make_shared<const PathEntries>(ConcatenateMainEntries(parts)); });
  return mainEntries;
}

PathEntries ConcatenatedPath::GetMethodEntries() const {
  return Concatenate<PathEntries::value_type>(
      parts, [](const IPath& part) { return part.GetMethodEntries(); });
}

PathEntries ConcatenatedPath::GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                     FilenameMatchingPolicy policy) const {
  return Concatenate<PathEntries::value_type>(
      parts, [&](const IPath& part) { return part.GetMethodEntriesByName(scope, name, policy); });
}

PathEntries ConcatenatedPath::GetPartiallyMatchingEntries(SearchScope scope, const ustring& name,
                                                          FilenameMatchingPolicy policy) const {
  return Concatenate<PathEntries::value_type>(parts, [&](const IPath& part) {
    return part.GetPartiallyMatchingEntries(scope, name, policy);
  });
}

const IPath& ConcatenatedPath::PartHolding(const IPathEntry& entry) const {
  const auto holder = std::ranges::find_if(
      parts, [&entry](const auto& part) { return part->IsEntryOnPath(entry); });
  assert(holder != parts.end() && "the entry must be on the path");
  return **holder;
}

std::shared_ptr<const IPathEntry> ConcatenatedPath::GetMainEntryForEntry(
    const IPathEntry& entry) const {
  return PartHolding(entry).GetMainEntryForEntry(entry);
}

std::shared_ptr<const IPathEntry> ConcatenatedPath::GetParentEntryForEntry(
    const IPathEntry& entry) const {
  return PartHolding(entry).GetParentEntryForEntry(entry);
}

std::shared_ptr<const IPathEntry> ConcatenatedPath::GetPathEntryFromAbsoluteIRI(
    const CanonicalAbsoluteIRI& iri) const {
  for (const auto& part : parts) {
    if (auto entry = part->GetPathEntryFromAbsoluteIRI(iri)) return entry;
  }
  return nullptr;
}

std::shared_ptr<const IPathEntry> ConcatenatedPath::GetPathEntryFromAbsoluteIRI(
    const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const {
  if (auto exact = GetPathEntryFromAbsoluteIRI(CanonicalAbsoluteIRI(iri, ustring()))) return exact;
  for (const auto& part : parts) {
    if (auto entry = part->GetPathEntryFromAbsoluteIRI(iri, policy)) return entry;
  }
  return nullptr;
}

boost::optional<FoundItem> ConcatenatedPath::FindFirstInScope(SearchScope scope,
                                                              const detail::SearchTarget& target,
                                                              FilenameMatchingPolicy policy) const {
  for (const auto& part : parts) {
    if (auto found = part->FindFirstInScope(scope, target, policy)) return found;
  }
  return boost::none;
}

std::vector<FoundItem> ConcatenatedPath::FindAllInScope(SearchScope scope,
                                                        const detail::SearchTarget& target,
                                                        FilenameMatchingPolicy policy) const {
  return Concatenate<FoundItem>(
      parts, [&](const IPath& part) { return part.FindAllInScope(scope, target, policy); });
}

bool ConcatenatedPath::ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const {
  return std::ranges::any_of(parts,
                             [&](const auto& part) { return part->ForEachEntry(scope, visitor); });
}

bool ConcatenatedPath::ConcurrentForEachEntry(SearchScope scope,
                                              const PathEntryVisitor& visitor) const {
  return std::ranges::any_of(
      parts, [&](const auto& part) { return part->ConcurrentForEachEntry(scope, visitor); });
}

bool ConcatenatedPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                      const IPathEntry& second) const {
  for (const auto& part : parts) {
    const bool holdsFirst = part->IsEntryOnPath(first);
    const bool holdsSecond = part->IsEntryOnPath(second);
    if (holdsFirst) {
      return !holdsSecond || part->FirstEntryIsBeforeSecondOnPath(first, second);
    }
    if (holdsSecond) return false;
  }
  return false;
}

bool ConcatenatedPath::IsEntryOnPath(const IPathEntry& entry) const {
  return std::ranges::any_of(parts,
                             [&entry](const auto& part) { return part->IsEntryOnPath(entry); });
}

}  // namespace Corvane::PathManagement
