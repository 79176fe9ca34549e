#ifndef SEARCHPATH_SRC_LISTED_ENTRY_WALK_H
#define SEARCHPATH_SRC_LISTED_ENTRY_WALK_H

#include "searchpath/model/path_entry.h"
#include "searchpath/model/search_scope.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::detail {

[[nodiscard]] inline bool IsInScope(SearchScope scope, PathEntryType kind) {
  return scope.Contains(static_cast<std::uint32_t>(kind));
}

/// Whether `scope` holds kinds that only entries below the main entries have: the main entries,
/// those of the path itself, are all `Ordinary`.
[[nodiscard]] inline bool ReachesBelowMainEntries(SearchScope scope) {
  return std::any_of(scope.begin(), scope.end(), [](std::uint32_t kind) {
    return kind != static_cast<std::uint32_t>(PathEntryType::Ordinary);
  });
}

/// The entries directly below `entry`, in path order: private and resources folder, "+" folders,
/// "@" folders, further ones.
[[nodiscard]] PathEntries EntriesBelow(const IPathEntry& entry);

/// Calls visit(entry, depth) for `top`, at depth 0, and all entries below it, in path order, until
/// a call returns true. Returns whether one did. entriesBelow(entry), which returns the entries
/// directly below, is called after the visit of `entry`. This is a loop and no recursion, since
/// folders may nest deeper than the stack allows.
template <class Entry, class Visit, class Below>
bool WalkEntries(const std::shared_ptr<const Entry>& top, const Visit& visit,
                 const Below& entriesBelow) {
  std::vector<std::pair<std::shared_ptr<const Entry>, std::size_t>> pending = {{top, 0}};
  while (!pending.empty()) {
    const auto [entry, depth] = std::move(pending.back());
    pending.pop_back();
    if (visit(entry, depth)) return true;
    const auto& below = entriesBelow(*entry);
    // Backwards, since the last pending entry is visited next.
    for (auto child = below.rbegin(); child != below.rend(); ++child) {
      pending.emplace_back(*child, depth + 1);
    }
  }
  return false;
}

template <class Visit>
bool WalkEntries(const std::shared_ptr<const IPathEntry>& top, const Visit& visit) {
  return WalkEntries(top, visit, EntriesBelow);
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_LISTED_ENTRY_WALK_H
