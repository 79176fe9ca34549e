#include "searchpath/utilities/filtered_path.h"

#include "paths/join.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Corvane::PathManagement {

/// Tells which entries and files a filtered path shows.
class FilteredPath::EntryFilter {
 public:
  explicit EntryFilter(const FilteredPath& filteredPath) noexcept : path(&filteredPath) {}

  [[nodiscard]] bool operator()(const IPathEntry& entry) const {
    return !path->excluded->IsEntryOnPath(entry);
  }
  [[nodiscard]] bool operator()(const std::shared_ptr<const IPathEntry>& entry) const {
    return entry != nullptr && (*this)(*entry);
  }
  [[nodiscard]] bool operator()(const FoundItem& found) const {
    return (*this)(*found.GetPathEntry());
  }

  /// `entry` itself, or null when it is hidden.
  [[nodiscard]] std::shared_ptr<const IPathEntry> Shown(
      std::shared_ptr<const IPathEntry> entry) const {
    return (*this)(entry) ? std::move(entry) : nullptr;
  }

  /// `list` without what is hidden.
  template <class Element>
  [[nodiscard]] std::vector<Element> Shown(std::vector<Element> list) const {
    std::erase_if(list, [this](const Element& element) { return !(*this)(element); });
    return detail::Fit(std::move(list));
  }

  /// `visitor`, called for shown entries only. It must outlive the result.
  [[nodiscard]] auto Wrap(const PathEntryVisitor& visitor) const {
    return [*this, &visitor](const std::shared_ptr<const IPathEntry>& entry) {
      return (*this)(*entry) && visitor(entry);
    };
  }

 private:
  const FilteredPath* path;
};

FilteredPath::FilteredPath(std::shared_ptr<const IPath> sourcePath,
                           std::shared_ptr<const IPath> excludedPath)
    : source(std::move(sourcePath)), excluded(std::move(excludedPath)) {}

FilteredPath::~FilteredPath() = default;

FilteredPath::EntryFilter FilteredPath::GetEntryFilter() const noexcept {
  return EntryFilter(*this);
}

std::shared_ptr<const PathEntries> FilteredPath::GetMainEntries() const {
  mainEntriesOnce.Call([this] {
    PathEntries shown;
    // Null when the source is a composite that was moved from.
    if (const auto entries = source->GetMainEntries()) {
      shown.reserve(entries->size());
      std::ranges::copy_if(*entries, std::back_inserter(shown), GetEntryFilter());
    }
    mainEntries = std::make_shared<const PathEntries>(detail::Fit(std::move(shown)));
  });
  return mainEntries;
}

PathEntries FilteredPath::GetMethodEntries() const {
  return GetEntryFilter().Shown(source->GetMethodEntries());
}

PathEntries FilteredPath::GetMethodEntriesByName(SearchScope scope, const ustring& name,
                                                 FilenameMatchingPolicy policy) const {
  return GetEntryFilter().Shown(source->GetMethodEntriesByName(scope, name, policy));
}

PathEntries FilteredPath::GetPartiallyMatchingEntries(SearchScope scope, const ustring& name,
                                                      FilenameMatchingPolicy policy) const {
  return GetEntryFilter().Shown(source->GetPartiallyMatchingEntries(scope, name, policy));
}

std::shared_ptr<const IPathEntry> FilteredPath::GetMainEntryForEntry(
    const IPathEntry& entry) const {
  return GetEntryFilter().Shown(source->GetMainEntryForEntry(entry));
}

std::shared_ptr<const IPathEntry> FilteredPath::GetParentEntryForEntry(
    const IPathEntry& entry) const {
  return GetEntryFilter().Shown(source->GetParentEntryForEntry(entry));
}

std::shared_ptr<const IPathEntry> FilteredPath::GetPathEntryFromAbsoluteIRI(
    const CanonicalAbsoluteIRI& iri) const {
  return GetEntryFilter().Shown(source->GetPathEntryFromAbsoluteIRI(iri));
}

std::shared_ptr<const IPathEntry> FilteredPath::GetPathEntryFromAbsoluteIRI(
    const AbsoluteIRI& iri, FilenameMatchingPolicy policy) const {
  return GetEntryFilter().Shown(source->GetPathEntryFromAbsoluteIRI(iri, policy));
}

boost::optional<FoundItem> FilteredPath::FindFirstInScope(SearchScope scope,
                                                          const detail::SearchTarget& target,
                                                          FilenameMatchingPolicy policy) const {
  const EntryFilter isShown = GetEntryFilter();
  auto first = source->FindFirstInScope(scope, target, policy);
  if (!first || isShown(*first)) return first;  // the usual case, cheaper than finding all
  const auto all = source->FindAllInScope(scope, target, policy);
  const auto found = std::ranges::find_if(all, isShown);
  return found == all.end() ? boost::none : boost::make_optional(*found);
}

std::vector<FoundItem> FilteredPath::FindAllInScope(SearchScope scope,
                                                    const detail::SearchTarget& target,
                                                    FilenameMatchingPolicy policy) const {
  return GetEntryFilter().Shown(source->FindAllInScope(scope, target, policy));
}

bool FilteredPath::ForEachEntry(SearchScope scope, const PathEntryVisitor& visitor) const {
  return source->ForEachEntry(scope, GetEntryFilter().Wrap(visitor));
}

bool FilteredPath::ConcurrentForEachEntry(SearchScope scope,
                                          const PathEntryVisitor& visitor) const {
  return source->ConcurrentForEachEntry(scope, GetEntryFilter().Wrap(visitor));
}

bool FilteredPath::FirstEntryIsBeforeSecondOnPath(const IPathEntry& first,
                                                  const IPathEntry& second) const {
  return source->FirstEntryIsBeforeSecondOnPath(first, second);
}

bool FilteredPath::IsEntryOnPath(const IPathEntry& entry) const {
  return source->IsEntryOnPath(entry) && GetEntryFilter()(entry);
}

}  // namespace Corvane::PathManagement
