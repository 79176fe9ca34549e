#include "host/listing_source.h"

#include "host/directory_scan.h"

#include <algorithm>

namespace Corvane::PathManagement::host {

std::shared_ptr<const ListingSource> ListingSource::From(
    const std::vector<PathEntryFactory>& caches) {
  std::vector<std::shared_ptr<const SavedListings>> listings;
  for (const auto& cache : caches) {
    if (auto read = SavedListingsOf(cache)) listings.push_back(std::move(read));
  }
  if (listings.empty()) return nullptr;
  return std::make_shared<const ListingSource>(std::move(listings));
}

FolderListing ListingSource::List(const AbsoluteIRI& location) const {
  for (const auto& listings : saved) {
    const auto folder = listings->Find(location);
    if (!folder) continue;
    if (auto listing = listings->FindListing(*folder)) return std::move(*listing);
    break;
  }
  return ListFolder(location);
}

bool ListingSource::FollowsTheDisk() const noexcept {
  return std::all_of(saved.begin(), saved.end(),
                     [](const auto& listings) { return listings->FollowsTheDisk(); });
}

std::optional<FolderStamp> ListingSource::FindStamp(const AbsoluteIRI& location) const {
  for (const auto& listings : saved) {
    if (const auto folder = listings->Find(location)) return listings->FindStamp(*folder);
  }
  return std::nullopt;
}

}  // namespace Corvane::PathManagement::host
