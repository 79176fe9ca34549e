#include "host/saved/saved_source.h"

#include "host/folder/directory_scan.h"

#include <algorithm>

namespace Corvane::PathManagement::host {

FolderListing SavedSource::List(const AbsoluteIRI& location, DiskPatience& patience) const {
  for (const auto& cache : caches) {
    const auto folder = cache->Find(location);
    if (!folder) continue;
    if (auto listing = cache->FindListing(*folder, patience)) return std::move(*listing);
    break;  // later caches are not asked
  }
  return ListFolder(location, patience);
}

bool SavedSource::FollowsTheDisk() const noexcept {
  return std::ranges::all_of(caches, [](const auto& cache) { return cache->FollowsTheDisk(); });
}

std::optional<FolderStamp> SavedSource::FindStamp(const AbsoluteIRI& location) const {
  for (const auto& cache : caches) {
    if (const auto folder = cache->Find(location)) return cache->FindStamp(*folder);
  }
  return std::nullopt;
}

}  // namespace Corvane::PathManagement::host
