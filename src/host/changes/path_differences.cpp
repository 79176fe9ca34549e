#include "searchpath/host/path_differences.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Entry = std::shared_ptr<const IPathEntry>;
using Entries = std::vector<Entry>;
using ComparisonFilter = PathEntryVectorDifferentiator::ComparisonFilter;

/// Where the entries of a path stand that a comparison may tell.
class Places {
 public:
  struct Place {
    std::size_t main = 0;   // the place of the main folder
    std::size_t order = 0;  // of all entries here
  };

  explicit Places(const Entries& mainEntries) : mainCount(mainEntries.size()) {
    for (std::size_t main = 0; main < mainEntries.size(); ++main) Add(mainEntries[main], main);
  }

  [[nodiscard]] const Place* Find(const Entry& entry) const {
    const auto found = places.find(entry.get());
    return found == places.end() ? nullptr : &found->second;
  }

  /// Only what hangs below a changed main entry is told: the others need not be listed.
  void AddBelow(const Entries& changedEntries) {
    static constexpr std::array<std::uint32_t, 6> kAllKinds = {0, 1, 2, 3, 4, 5};
    for (const Entry& changed : changedEntries) {
      const Place* const place = Find(changed);
      if (place == nullptr || place->order >= mainCount) continue;  // their main entry is told, too
      changed->ForEachEntryInScope(SearchScope(kAllKinds.data(), kAllKinds.size()),
                                   [this, main = place->main](const Entry& below) {
                                     Add(below, main);
                                     return false;
                                   });
    }
  }

 private:
  void Add(const Entry& entry, std::size_t main) {
    places.try_emplace(entry.get(), Place{main, places.size()});
  }

  std::size_t mainCount;  // at least as many as there are main entries
  boost::unordered_flat_map<const IPathEntry*, Place> places;
};

class Differences {
 public:
  Differences(const Entries& before, const Entries& after, ComparisonFilter filter)
      : placesBefore(before), placesAfter(after) {
    PathEntryVectorDifferentiator told;
    told.Compare(before, after, filter);
    if (filter == ComparisonFilter::IncludeSubfolders) {
      placesBefore.AddBelow(*told.GetRemoved());
      placesBefore.AddBelow(*told.GetRefreshedBefore());
      placesAfter.AddBelow(*told.GetAdded());
      placesAfter.AddBelow(*told.GetRefreshedAfter());
    }
    for (const auto& entry : *told.GetRemoved()) Add(FolderChange::Removed, entry, nullptr);
    for (const auto& entry : *told.GetAdded()) Add(FolderChange::Added, nullptr, entry);
    for (const auto& entry : *told.GetReordered()) Add(FolderChange::Moved, entry, entry);
    const Entries& refreshed = *told.GetRefreshedBefore();
    for (std::size_t at = 0; at < refreshed.size(); ++at) {
      Add(FolderChange::Refreshed, refreshed[at], (*told.GetRefreshedAfter())[at]);
    }
  }

  [[nodiscard]] std::vector<FolderDifference> InOrder() && {
    std::sort(found.begin(), found.end(), [](const auto& left, const auto& right) {
      const auto key = [](const auto& ordered) {
        const auto& [place, difference] = ordered;
        return std::make_tuple(difference.change, place.main, place.order);
      };
      return key(left) < key(right);
    });
    std::vector<FolderDifference> differences;
    differences.reserve(found.size());
    for (auto& ordered : found) differences.push_back(std::move(ordered.second));
    return differences;
  }

 private:
  void Add(FolderChange change, const Entry& before, const Entry& after) {
    const auto* const placeBefore = before == nullptr ? nullptr : placesBefore.Find(before);
    const auto* const placeAfter = after == nullptr ? nullptr : placesAfter.Find(after);
    FolderDifference difference = {
        .change = change, .before = before, .after = after, .placeBefore = {}, .placeAfter = {}};
    if (placeBefore != nullptr) difference.placeBefore = placeBefore->main;
    if (placeAfter != nullptr) difference.placeAfter = placeAfter->main;
    const auto* const place = placeAfter != nullptr ? placeAfter : placeBefore;
    found.emplace_back(place == nullptr ? Places::Place() : *place, std::move(difference));
  }

  Places placesBefore;
  Places placesAfter;
  std::vector<std::pair<Places::Place, FolderDifference>> found;  // with where it is told
};

}  // namespace

std::vector<FolderDifference> FindPathDifferences(const IPath& before, const IPath& after,
                                                  ComparisonFilter filter) {
  const auto entriesBefore = before.GetMainEntries();
  const auto entriesAfter = after.GetMainEntries();
  return Differences(*entriesBefore, *entriesAfter, filter).InOrder();
}

}  // namespace Corvane::PathManagement::host
