#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_WALK_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_WALK_H

#include "searchpath/model/path_entry_type.h"
#include "searchpath/model/search_scope.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

[[nodiscard]] inline bool IsInScope(SearchScope scope, PathEntryType kind) {
  return scope.Contains(static_cast<std::uint32_t>(kind));
}

/// Whether `scope` holds kinds that only entries below the main entries have.
[[nodiscard]] inline bool ReachesBelowMainEntries(SearchScope scope) {
  return std::any_of(scope.begin(), scope.end(), [](std::uint32_t kind) {
    return kind != static_cast<std::uint32_t>(PathEntryType::Ordinary);
  });
}

/// Calls visit(entry, depth) for `top`, at depth 0, and all entries below it, in path order, until
/// it returns true; returns whether it did. An entry is asked for its special folders after its own
/// visit only. A loop and no recursion, since folders may nest deeper than the stack allows.
template <class Folder, class Visit>
bool WalkFolders(const std::shared_ptr<const Folder>& top, const Visit& visit) {
  std::vector<std::pair<std::shared_ptr<const Folder>, std::size_t>> pending = {{top, 0}};
  while (!pending.empty()) {
    const auto [entry, depth] = std::move(pending.back());
    pending.pop_back();
    if (visit(entry, depth)) return true;
    const auto& below = entry->GetSpecialFolders();
    for (auto child = below.rbegin(); child != below.rend(); ++child) {
      pending.emplace_back(*child, depth + 1);
    }
  }
  return false;
}

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_WALK_H
