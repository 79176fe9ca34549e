#ifndef SEARCHPATH_SRC_HOST_SAVED_SAVED_LISTINGS_H
#define SEARCHPATH_SRC_HOST_SAVED_SAVED_LISTINGS_H

#include "host/common/held_hash.h"
#include "host/folder/folder_listing.h"
#include "host/saved/listing_envelope.h"
#include "searchpath/host/listing_use.h"
#include "searchpath/model/absolute_iri.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

namespace saved {
struct Listing;
}  // namespace saved

/// What a cache or saved listing holds, in the bytes that it was read as. Nothing is copied out of
/// them: listings view them.
///
/// Threads: immutable once made.
class SavedListings {
 public:
  /// Reads and verifies all of `stream`, which begins with the first line of the format.
  ///
  /// Errors: `InvalidListingException`.
  /// Cost: twice the bytes of the stream in memory at most, and one pass over them for the
  /// checksum and one for the names.
  SavedListings(std::istream& stream, const AbsoluteIRI& root, ListingUse listingUse);

  /// Whether only fresh listings are found.
  [[nodiscard]] bool FollowsTheDisk() const noexcept { return use == ListingUse::WhileFresh; }

  /// The folders in the order of the file, with their places in it.
  [[nodiscard]] const std::vector<AbsoluteIRI>& Locations() const noexcept { return locations; }

  /// The places of the main folders, in path order.
  [[nodiscard]] std::vector<std::uint32_t> MainFolders() const;

  /// The place of the folder at `location`.
  [[nodiscard]] std::optional<std::uint32_t> Find(const AbsoluteIRI& location) const;

  [[nodiscard]] std::optional<FolderStamp> FindStamp(std::uint32_t folder) const;

  /// The listing of a folder; views this object. Empty when there is none, or when it is not fresh
  /// and has to be.
  [[nodiscard]] std::optional<FolderListing> FindListing(std::uint32_t folder) const;

 private:
  void CheckFolders(const AbsoluteIRI& root);

  ListingUse use;
  ListingBody body;
  const saved::Listing* listing = nullptr;  // in body
  std::vector<AbsoluteIRI> locations;
  boost::unordered_flat_map<AbsoluteIRI, std::uint32_t, HeldHash> places;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_SAVED_LISTINGS_H
