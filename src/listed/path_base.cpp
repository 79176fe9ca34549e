#include "searchpath/utilities/path_base.h"

#include "listed/entry_table.h"
#include "listed/last_folders.h"
#include "listed/partial_target.h"
#include "searchpath/utilities/filename_comparison.h"
#include "searchpath/utilities/once_flag.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <utility>

namespace Corvane::PathManagement {

using detail::SearchTarget;

struct PathBase::State {
  using Table = detail::EntryTable<IPathEntry>;

  detail::OnceFlag once = {};
  Table table = {};                                // guarded by once
  std::optional<detail::LastFolders> lastFolders;  // guarded by once

  [[nodiscard]] std::uint32_t RowOf(const IPathEntry& entry) const {
    const auto row = table.Find(entry);
    assert(row && "the entry must be on the path");
    return *row;
  }

  /// Visits, in path order until `visit` returns true, all rows whose folder is called `name`, or
  /// `name` with "+" or "@" in front. When case is ignored, visits all rows.
  template <class Visit>
  void ForEachNamed(const ustring& name, FilenameMatchingPolicy policy, const Visit& visit) const {
    // `any_of` is used for the loop, which `visit` can stop; its result does not matter.
    if (policy == FilenameMatchingPolicy::IgnoreCase) {
      static_cast<void>(std::ranges::any_of(table.Rows(), visit));
    } else {
      const auto& candidates = lastFolders->CandidatesFor(name);
      static_cast<void>(std::ranges::any_of(
          candidates, [&](const auto& candidate) { return visit(table.Rows()[candidate.row]); }));
    }
  }

  /// Visits the entries in `scope` that the partial pathname `partial` matches, in path order until
  /// `visit` returns true. `path` is the path that owns this state.
  template <class Partial, class Visit>
  void ForEachMatch(const IPath& path, SearchScope scope, const Partial& partial,
                    FilenameMatchingPolicy policy, const Visit& visit) const {
    const auto visitMatch = [&](const Table::Row& row) {
      return detail::IsInScope(scope, row.entry->GetPathEntryType()) &&
             DoesPartialPathnameMatchPathEntryIRI(path, partial, row.entry, policy) &&
             visit(row.entry);
    };
    if (partial.empty()) {
      static_cast<void>(std::ranges::any_of(table.Rows(), visitMatch));
    } else {
      ForEachNamed(partial.back(), policy, visitMatch);
    }
  }
};

PathBase::PathBase() : state(std::make_unique<State>()) {}

PathBase::~PathBase() = default;

const PathBase::State& PathBase::Ready() const {
  state->once.Call([this] {
    State::Table made;
    const auto mainEntries = GetMainEntries();
    for (const auto& entry : *mainEntries) made.Add(entry, detail::EntriesBelow);
    state->lastFolders.emplace(made);
    state->table = std::move(made);
  });
  return *state;
}

// Method entries are those for "@" folders: the entry for "@name" is the one called `name`.
PathEntries PathBase::GetMethodEntries() const {
  PathEntries methods;
  for (const auto& row : Ready().table.Rows()) {
    if (row.entry->GetPathEntryType() == PathEntryType::AtFolder) methods.push_back(row.entry);
  }
  return methods;
}

PathEntries PathBase::GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                             FilenameMatchingPolicy policy) const {
  PathEntries methods;
  const State& ready = Ready();
  const ustring folderName = u'@' + name;
  ready.ForEachNamed(folderName, policy, [&](const State::Table::Row& row) {
    const auto& above = ready.table.Rows()[row.parent].entry;
    const bool isMeant = row.entry->GetPathEntryType() == PathEntryType::AtFolder &&
                         above != row.entry &&  // else it is a main entry, its own parent here
                         detail::IsInScope(scope, above->GetPathEntryType()) &&
                         AreSameFilename(row.entry->GetAbsoluteIRI().getName(), folderName, policy);
    if (isMeant) methods.push_back(row.entry);
    return false;
  });
  return methods;
}

PathEntries PathBase::GetPartiallyMatchingEntries(SearchScope scope, const ustring& name,
                                                  FilenameMatchingPolicy policy) const {
  PathEntries matches;
  Ready().ForEachMatch(*this, scope, SplitPartialPathname(name), policy, [&](const auto& entry) {
    matches.push_back(entry);
    return false;
  });
  return matches;
}

std::shared_ptr<const IPathEntry> PathBase::GetMainEntryForEntry(const IPathEntry& entry) const {
  const State& ready = Ready();
  const auto& rows = ready.table.Rows();
  return rows[rows[ready.RowOf(entry)].main].entry;
}

std::shared_ptr<const IPathEntry> PathBase::GetParentEntryForEntry(const IPathEntry& entry) const {
  const State& ready = Ready();
  return ready.table.Parent(ready.RowOf(entry));
}

std::shared_ptr<const IPathEntry> PathBase::GetPathEntryFromAbsoluteIRI(
    const CanonicalAbsoluteIRI& iri) const {
  return Ready().table.FindExactly(iri);
}

std::shared_ptr<const IPathEntry> PathBase::GetPathEntryFromAbsoluteIRI(
    const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const {
  return Ready().table.FindNamed(iri, policy);
}

namespace {

/// Calls ask(entry, file) for the entries in which `target` is to be looked for, in path order,
/// until a call returns true; `file` is `target` without folders. `forEachMatch` is as for
/// `AskMatchingFolders`.
template <class ForEachMatch, class Ask>
void AskFolders(const IPath& path, SearchScope scope, const SearchTarget& target,
                FilenameMatchingPolicy policy, const ForEachMatch& forEachMatch, const Ask& ask) {
  if (const auto parts = detail::SplitTarget(target)) {
    detail::AskMatchingFolders(path, scope, *parts, policy, forEachMatch, ask);
  } else {
    path.ForEachEntry(scope, [&](const auto& entry) { return ask(entry, target); });
  }
}

}  // namespace

boost::optional<FoundItem> PathBase::FindFirstInScope(SearchScope scope, const SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const {
  boost::optional<FoundItem> found;
  const auto forEachMatch = [&](const auto& partial, const auto& visit) {
    Ready().ForEachMatch(*this, scope, partial, policy, visit);
  };
  AskFolders(*this, scope, target, policy, forEachMatch, [&](const auto& entry, const auto& file) {
    if (auto item = entry->FindItem(file, policy)) found.emplace(std::move(item), entry);
    return found.has_value();
  });
  return found;
}

std::vector<FoundItem> PathBase::FindAllInScope(SearchScope scope, const SearchTarget& target,
                                                FilenameMatchingPolicy policy) const {
  std::vector<FoundItem> found;
  const auto forEachMatch = [&](const auto& partial, const auto& visit) {
    Ready().ForEachMatch(*this, scope, partial, policy, visit);
  };
  AskFolders(*this, scope, target, policy, forEachMatch, [&](const auto& entry, const auto& file) {
    for (auto& item : entry->FindItems(file, policy)) found.emplace_back(std::move(item), entry);
    return false;
  });
  return found;
}

bool PathBase::ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const {
  const auto mainEntries = GetMainEntries();
  const bool descends = detail::ReachesBelowMainEntries(scope);
  return std::ranges::any_of(*mainEntries, [&](const auto& entry) {
    // Asking an entry for the entries below it may be expensive, so it is done only when needed.
    if (descends) return entry->ForEachEntryInScope(scope, visitor);
    return detail::IsInScope(scope, entry->GetPathEntryType()) && visitor(entry);
  });
}

bool PathBase::ConcurrentForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const {
  return ForEachEntry(scope, visitor);
}

bool PathBase::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                              const IPathEntry& second) const {
  return Ready().table.IsBefore(first, second);
}

bool PathBase::IsEntryOnPath(const IPathEntry& entry) const {
  return Ready().table.Find(entry).has_value();
}

}  // namespace Corvane::PathManagement
