#include "host/receipts/asked_list.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace Corvane::PathManagement::host {

AskedList::AskedList(std::vector<std::uint32_t> askedPlaces, Listings folderListings)
    : places(std::move(askedPlaces)), listings(std::move(folderListings)) {
  // `emplace` keeps the first position of a place that comes twice.
  for (std::size_t at = 0; at < places.size(); ++at) positions.emplace(places[at], at);
}

std::size_t AskedList::PositionOf(std::uint32_t place) const {
  const auto found = positions.find(place);
  return found == positions.end() ? places.size() : found->second;
}

std::vector<std::size_t> AskedList::FindPositions(std::string_view name, std::size_t count,
                                                  bool plainFilesToo) {
  std::vector<std::size_t> found;
  const auto addFrom = [&](std::size_t first) {
    for (; first < count; ++first) found.push_back(first);
  };
  if (!MakeTable()) {
    addFrom(0);
    return found;
  }
  const auto add = [&](const std::vector<std::size_t>& more) {
    found.insert(found.end(), more.begin(), std::lower_bound(more.begin(), more.end(), count));
  };
  add(unlisted);
  if (const auto known = table.find(name); known != table.end()) add(known->second);
  if (plainFilesToo && listings.firstWith) addFrom(listings.firstWith(name));
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

bool AskedList::MayHoldAnyOf(NameLengths lengths) {
  return !MakeTable() || !unlisted.empty() || listings.firstWith || tableLengths.HasAnyOf(lengths);
}

/// Makes the table as soon as there are listings. Returns whether there is one.
bool AskedList::MakeTable() {
  if (hasTable || !IsListed()) return hasTable;
  hasTable = true;
  for (std::size_t at = 0; at < places.size(); ++at) {
    const FolderListing* const listing = listings.at(at);
    if (listing == nullptr) {
      unlisted.push_back(at);
      continue;
    }
    for (const auto& link : listing->links) table[link.name].push_back(at);
    for (const auto& folder : listing->specialFolders) {
      if (!folder.isLink && folder.kind == PathEntryType::AtFolder)
        table[folder.name].push_back(at);
    }
  }
  for (const auto& [name, positionsOfName] : table) tableLengths.Add(name.size());
  return true;
}

}  // namespace Corvane::PathManagement::host
