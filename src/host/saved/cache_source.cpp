#include "host/saved/cache_source.h"

#include "host/saved/saved_source.h"

#include <utility>

namespace Corvane::PathManagement::host {

std::shared_ptr<const ListingSource> CreateSourceFrom(const std::vector<PathEntryFactory>& caches) {
  std::vector<std::shared_ptr<const SavedListings>> listings;
  for (const auto& cache : caches) {
    if (auto saved = SavedListingsOf(cache)) listings.push_back(std::move(saved));
  }
  if (listings.empty()) return nullptr;
  return std::make_shared<const SavedSource>(std::move(listings));
}

}  // namespace Corvane::PathManagement::host
