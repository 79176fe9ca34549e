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

/// The content of a cache or saved listing, kept as the bytes that were read. In the listings that
/// it returns, file names view these bytes; names of folders and links are copies.
///
/// Threads: immutable once made.
class SavedListings {
 public:
  /// Reads and verifies all of `stream`, which holds a file in the format of caches. `root` is the
  /// folder to which locations in the file may be relative.
  ///
  /// Errors: `InvalidListingException`.
  /// Cost: memory for at most twice the bytes of the stream; one pass over them for the checksum
  /// and one for the names.
  SavedListings(std::istream& stream, const AbsoluteIRI& root, ListingUse listingUse);

  /// Whether a listing is used only if its folder has not changed since it was listed.
  [[nodiscard]] bool FollowsTheDisk() const noexcept { return use == ListingUse::WhileFresh; }

  /// The locations of all folders, in the order of the file. Where other members take a folder,
  /// they take its index in this vector.
  [[nodiscard]] const std::vector<AbsoluteIRI>& Locations() const noexcept { return locations; }

  /// The main folders, which are those of the path that was saved, in path order: their indexes in
  /// `Locations`.
  [[nodiscard]] std::vector<std::uint32_t> MainFolders() const;

  /// The index of the folder at `location`; empty when the file has no such folder.
  [[nodiscard]] std::optional<std::uint32_t> Find(const AbsoluteIRI& location) const;

  /// The stamp of a folder's listing; empty when it was saved without one.
  [[nodiscard]] std::optional<FolderStamp> FindStamp(std::uint32_t folder) const;

  /// The listing of a folder, which views this object. If `FollowsTheDisk`, the result is empty
  /// unless the folder was listed and is certain not to have changed since; the disk is asked anew
  /// where its links lead. Otherwise the listing is as saved, and the result never empty: the
  /// listing of a folder that could not be listed holds the problem and no names.
  [[nodiscard]] std::optional<FolderListing> FindListing(std::uint32_t folder,
                                                         DiskPatience& patience) const;

 private:
  /// Fills `locations` and `indexes`.
  void CheckFolders(const AbsoluteIRI& root);

  ListingUse use;
  ListingBody body;
  const saved::Listing* listing = nullptr;  // in body
  std::vector<AbsoluteIRI> locations;
  boost::unordered_flat_map<AbsoluteIRI, std::uint32_t, HeldHash> indexes;  // in `locations`
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_SAVED_LISTINGS_H
