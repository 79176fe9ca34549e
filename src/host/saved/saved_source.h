#ifndef SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H
#define SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H

#include "host/folder/folder_listing.h"
#include "host/saved/saved_listings.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// Takes the listing of a folder from saved listings, or from the disk where these have none that
/// may be used. Listings that it returns may view the saved ones; they are valid as long as this
/// object.
class SavedSource : public ListingSource {
 public:
  explicit SavedSource(std::vector<std::shared_ptr<const SavedListings>> listings)
      : saved(std::move(listings)) {}

  [[nodiscard]] FolderListing List(const AbsoluteIRI& location,
                                   DiskPatience& patience) const override;
  [[nodiscard]] bool FollowsTheDisk() const noexcept override;
  [[nodiscard]] std::optional<FolderStamp> FindStamp(const AbsoluteIRI& location) const override;

 private:
  // Each is what one cache holds. For each folder, the first of them that has it counts.
  std::vector<std::shared_ptr<const SavedListings>> saved;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H
