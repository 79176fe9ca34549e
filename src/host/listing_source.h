#ifndef SEARCHPATH_SRC_HOST_LISTING_SOURCE_H
#define SEARCHPATH_SRC_HOST_LISTING_SOURCE_H

#include "host/folder_listing.h"
#include "host/saved_listings.h"
#include "searchpath/model/absolute_iri.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

/// Where the listings of folders come from: saved ones first, then the disk.
///
/// Threads: immutable.
class ListingSource {
 public:
  explicit ListingSource(std::vector<std::shared_ptr<const SavedListings>> listings)
      : saved(std::move(listings)) {}
  /// Null, which means the disk, when nothing was read into any of `caches`.
  [[nodiscard]] static std::shared_ptr<const ListingSource> From(
      const std::vector<PathEntryFactory>& caches);

  /// The listing of the folder at `location`; may view the saved ones, which live as long as this.
  [[nodiscard]] FolderListing List(const AbsoluteIRI& location) const;

  /// Whether a listing shows a folder as it is, not as it was when the listing was saved.
  [[nodiscard]] bool FollowsTheDisk() const noexcept;

  /// The stamp of a saved listing of the folder; empty when there is none.
  [[nodiscard]] std::optional<FolderStamp> FindStamp(const AbsoluteIRI& location) const;

 private:
  std::vector<std::shared_ptr<const SavedListings>> saved;  // the first that has a folder counts
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_LISTING_SOURCE_H
