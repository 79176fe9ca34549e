#include "host/rules/tree_walk.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

/// Whether names with a separator are searched below the folders of the path.
bool SearchesBelow(const RuledPath& path) {
  return path.GetRules().separator == LookupRules::Separator::FileBelow;
}

/// The folders directly below those of `above`, merged by their names and listed.
std::vector<MergedFolder> FindMergedBelow(const RuledPath& path, const MergedFolder& above,
                                          bool sharedOnly) {
  std::map<std::string, std::vector<TreeFolder>> byName;
  for (const TreeFolder& folder : above.folders) {
    for (TreeFolder& below : path.GetTree().Below(folder)) {
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

std::vector<TreeFolder> FindRoots(const RuledPath& path) {
  PlaceFilter filter(path.GetView());
  std::vector<TreeFolder> roots;
  for (const RuledPath::Place& place : path.GetPlacesOnPath()) {
    if (filter.Admits(place)) roots.push_back({.entry = place.folder, .links = nullptr});
  }
  return roots;
}

bool WalkTrees(const RuledPath& path, const std::function<bool(const TreeFolder&)>& visit) {
  std::vector<TreeFolder> pending = FindRoots(path);  // reversed: the next one last
  std::reverse(pending.begin(), pending.end());
  while (!pending.empty()) {
    const TreeFolder folder = std::move(pending.back());
    pending.pop_back();
    if (visit(folder)) return true;
    if (!SearchesBelow(path)) continue;
    auto below = path.GetTree().Below(folder);
    std::move(below.rbegin(), below.rend(), std::back_inserter(pending));
  }
  return false;
}

void WalkMerged(const RuledPath& path, bool sharedOnly,
                const std::function<void(const MergedFolder&)>& visit) {
  // The folders at the same depth below the roots.
  std::vector<MergedFolder> level = {{.name = {}, .folders = FindRoots(path)}};
  const auto& roots = level.front().folders;
  ForEachInParallel(roots.size(), [&](std::size_t at) { StateOf(*roots[at].entry).List(); });
  while (!level.empty()) {
    std::vector<std::vector<MergedFolder>> below(level.size());
    ForEachInParallel(level.size(), [&](std::size_t at) {
      visit(level[at]);
      if (SearchesBelow(path)) below[at] = FindMergedBelow(path, level[at], sharedOnly);
    });
    level.clear();
    for (auto& folders : below)
      std::move(folders.begin(), folders.end(), std::back_inserter(level));
  }
}

}  // namespace Corvane::PathManagement::host
