#include "host/saved/saved_source.h"

#include "host/folder/directory_scan.h"

#include <algorithm>

namespace Corvane::PathManagement::host {

FolderListing SavedSource::List(const AbsoluteIRI& location, DiskPatience& patience) const {
  for (const auto& listings : saved) {
    const auto folder = listings->Find(location);
    if (!folder) continue;
    if (auto listing = listings->FindListing(*folder, patience)) return std::move(*listing);
    break;  // listings of the folder in later caches do not count
  }
  return ListFolder(location, patience);
}

bool SavedSource::FollowsTheDisk() const noexcept {
  return std::ranges::all_of(saved,
                             [](const auto& listings) { return listings->FollowsTheDisk(); });
}

std::optional<FolderStamp> SavedSource::FindStamp(const AbsoluteIRI& location) const {
  for (const auto& listings : saved) {
    if (const auto folder = listings->Find(location)) return listings->FindStamp(*folder);
  }
  return std::nullopt;
}

}  // namespace Corvane::PathManagement::host
