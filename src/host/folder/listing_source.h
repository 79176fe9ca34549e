#ifndef SEARCHPATH_SRC_HOST_FOLDER_LISTING_SOURCE_H
#define SEARCHPATH_SRC_HOST_FOLDER_LISTING_SOURCE_H

#include "host/folder/folder_listing.h"
#include "searchpath/model/absolute_iri.h"

#include <optional>

namespace Corvane::PathManagement::host {

/// Where entries take the listings of their folders from, when that is not the disk alone.
///
/// Threads: immutable.
class ListingSource {
 public:
  virtual ~ListingSource() = default;

  /// The listing of the folder at `location`; may view what this object holds.
  [[nodiscard]] virtual FolderListing List(const AbsoluteIRI& location) const = 0;

  /// Whether a listing shows a folder as it is, not as it was when the listing was saved.
  [[nodiscard]] virtual bool FollowsTheDisk() const noexcept = 0;

  /// The stamp of a saved listing of the folder; empty when there is none.
  [[nodiscard]] virtual std::optional<FolderStamp> FindStamp(const AbsoluteIRI& location) const = 0;

 protected:  // copied by derived classes only
  ListingSource() = default;
  ListingSource(const ListingSource&) = default;
  ListingSource& operator=(const ListingSource&) = default;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_LISTING_SOURCE_H
