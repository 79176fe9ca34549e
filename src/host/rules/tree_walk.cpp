#include "host/rules/tree_walk.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Link = TreeFolder::Link;

bool IsAtOrAbove(const AbsoluteIRI& above, const AbsoluteIRI& folder) {
  const std::u16string_view whole = folder.toStringView();
  const std::u16string_view start = above.toStringView();
  return whole.starts_with(start) &&
         (whole.size() == start.size() || start.ends_with(u'/') || whole[start.size()] == u'/');
}

/// Whether a link in `folder` to `target` leads back to where the walk has come from.
bool LeadsBack(const AbsoluteIRI& target, const TreeFolder& folder) {
  if (IsAtOrAbove(target, folder.entry->GetCanonicalAbsoluteIRI())) return true;
  for (const Link* link = folder.links.get(); link != nullptr; link = link->before.get()) {
    if (IsAtOrAbove(target, link->target)) return true;
  }
  return false;
}

bool DescendsInto(const RuledPath& path) {
  return path.GetRules().separator == LookupRules::Separator::FileBelow;
}

/// The folders directly below, merged by their names.
std::vector<MergedFolder> FindMergedBelow(const MergedFolder& above, bool sharedOnly) {
  std::map<std::string, std::vector<TreeFolder>> byName;
  for (const TreeFolder& folder : above.folders) {
    for (TreeFolder& below : folder.FindBelow()) {
      byName[below.GetName()].push_back(std::move(below));
    }
  }
  std::vector<MergedFolder> merged;
  for (auto& [name, folders] : byName) {
    if (sharedOnly && folders.size() < 2) continue;
    for (const TreeFolder& folder : folders) StateOf(*folder.entry).List();
    merged.push_back({above.name + name + '/', std::move(folders)});
  }
  return merged;
}

}  // namespace

std::vector<TreeFolder> TreeFolder::FindBelow() const {
  FolderEntries entries = entry->CreateOrdinaryFolders();
  const FolderEntries& special = entry->GetSpecialFolders();
  entries.insert(entries.end(), special.begin(), special.end());
  std::vector<TreeFolder> below;
  below.reserve(entries.size());
  const AbsoluteIRI here = entry->GetCanonicalAbsoluteIRI();
  for (auto& folder : entries) {
    AbsoluteIRI target = folder->GetCanonicalAbsoluteIRI();
    const bool isLink = !target.hasParent() || target.getParent() != here;
    if (isLink && LeadsBack(target, *this)) continue;
    below.push_back(
        {std::move(folder),
         isLink ? std::make_shared<const Link>(Link{std::move(target), links}) : links});
  }
  std::sort(below.begin(), below.end(), [](const TreeFolder& left, const TreeFolder& right) {
    return left.GetName() < right.GetName();
  });
  return below;
}

std::string TreeFolder::GetName() const {
  return BytesFromText(entry->GetAbsoluteIRI().getName()).value_or("");
}

std::vector<TreeFolder> FindRoots(const RuledPath& path) {
  CountingPlaces counting(path.GetView());
  std::vector<TreeFolder> roots;
  for (const RuledPath::Place& place : path.GetPlacesOnPath()) {
    if (counting.Counts(place)) roots.push_back({place.folder, nullptr});
  }
  return roots;
}

bool WalkTrees(const RuledPath& path, const std::function<bool(const TreeFolder&)>& visit) {
  std::vector<TreeFolder> pending = FindRoots(path);
  std::reverse(pending.begin(), pending.end());
  while (!pending.empty()) {
    const TreeFolder folder = std::move(pending.back());
    pending.pop_back();
    if (visit(folder)) return true;
    if (!DescendsInto(path)) continue;
    auto below = folder.FindBelow();
    std::move(below.rbegin(), below.rend(), std::back_inserter(pending));
  }
  return false;
}

void WalkMerged(const RuledPath& path, bool sharedOnly,
                const std::function<void(const MergedFolder&)>& visit) {
  std::vector<MergedFolder> level = {{{}, FindRoots(path)}};
  const auto& roots = level.front().folders;
  ForEachInParallel(roots.size(), [&](std::size_t at) { StateOf(*roots[at].entry).List(); });
  while (!level.empty()) {
    std::vector<std::vector<MergedFolder>> below(level.size());
    ForEachInParallel(level.size(), [&](std::size_t at) {
      visit(level[at]);
      if (DescendsInto(path)) below[at] = FindMergedBelow(level[at], sharedOnly);
    });
    level.clear();
    for (auto& folders : below)
      std::move(folders.begin(), folders.end(), std::back_inserter(level));
  }
}

}  // namespace Corvane::PathManagement::host
