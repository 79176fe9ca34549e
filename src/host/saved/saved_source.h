#ifndef SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H
#define SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H

#include "host/folder/folder_listing.h"
#include "host/saved/saved_listings.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// Takes the listing of a folder from a cache, or from the disk. The first cache that has the
/// folder decides: if its listing may not be used, because it is stale or may be, the disk is read,
/// not a later cache. A folder that is in no cache is read from the disk.
///
/// Listings that are returned may view the caches; they are valid as long as this object.
class SavedSource : public ListingSource {
 public:
  /// Each of `allCaches` is what was read from one cache.
  explicit SavedSource(std::vector<std::shared_ptr<const SavedListings>> allCaches)
      : caches(std::move(allCaches)) {}

  [[nodiscard]] FolderListing List(const AbsoluteIRI& location,
                                   DiskPatience& patience) const override;
  [[nodiscard]] bool FollowsTheDisk() const noexcept override;
  [[nodiscard]] std::optional<FolderStamp> FindStamp(const AbsoluteIRI& location) const override;

 private:
  std::vector<std::shared_ptr<const SavedListings>> caches;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H
