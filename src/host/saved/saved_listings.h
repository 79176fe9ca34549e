#ifndef SEARCHPATH_SRC_HOST_SAVED_SAVED_LISTINGS_H
#define SEARCHPATH_SRC_HOST_SAVED_SAVED_LISTINGS_H

#include "host/common/disk_patience.h"
#include "host/common/held_hash.h"
#include "host/folder/folder_listing.h"
#include "host/saved/listing_envelope.h"
#include "searchpath/host/listing_use.h"
#include "searchpath/model/absolute_iri.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <istream>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

namespace saved {
struct Listing;
}  // namespace saved

/// The content of a cache or saved listing, kept as the bytes that were read. Listings view these
/// bytes; nothing is copied.
///
/// Threads: immutable once made.
class SavedListings {
 public:
  /// Reads and verifies all of `stream`, which begins with the first line of the format.
  ///
  /// Errors: `InvalidListingException`.
  /// Cost: memory for at most twice the bytes of the stream; one pass over them for the checksum
  /// and one for the names.
  SavedListings(std::istream& stream, const AbsoluteIRI& root, ListingUse listingUse);

  /// Whether listings of folders that have changed since are left out.
  [[nodiscard]] bool FollowsTheDisk() const noexcept { return use == ListingUse::WhileFresh; }

  /// All folders, in the order of the file.
  [[nodiscard]] const std::vector<AbsoluteIRI>& Locations() const noexcept { return locations; }

  /// The main folders in path order, as indexes of `Locations`.
  [[nodiscard]] std::vector<std::uint32_t> MainFolders() const;

  /// The index of the folder at `location`.
  [[nodiscard]] std::optional<std::uint32_t> Find(const AbsoluteIRI& location) const;

  [[nodiscard]] std::optional<FolderStamp> FindStamp(std::uint32_t folder) const;

  /// The listing of a folder, which views this object. If `FollowsTheDisk`, empty for a folder that
  /// could not be listed or has changed since.
  [[nodiscard]] std::optional<FolderListing> FindListing(std::uint32_t folder,
                                                         DiskPatience& patience) const;

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
