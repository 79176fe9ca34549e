#ifndef SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H
#define SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H

#include "host/folder/folder_listing.h"
#include "host/saved/saved_listings.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// Saved listings first, then the disk. Listings view the saved ones, which live as long as this.
class SavedSource : public ListingSource {
 public:
  explicit SavedSource(std::vector<std::shared_ptr<const SavedListings>> listings)
      : saved(std::move(listings)) {}

  [[nodiscard]] FolderListing List(const AbsoluteIRI& location) const override;
  [[nodiscard]] bool FollowsTheDisk() const noexcept override;
  [[nodiscard]] std::optional<FolderStamp> FindStamp(const AbsoluteIRI& location) const override;

 private:
  std::vector<std::shared_ptr<const SavedListings>> saved;  // the first that has a folder counts
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_SAVED_SOURCE_H
