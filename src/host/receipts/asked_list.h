#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LIST_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LIST_H

#include "host/folder/folder_listing.h"
#include "host/names/short_hash.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// Lengths that names may have, in bytes. Lengths that differ by a multiple of 64 count as the same.
class NameLengths {
 public:
  void Add(std::size_t length) noexcept { lengths |= std::uint64_t{1} << length % 64U; }
  void AddAll() noexcept { lengths = ~std::uint64_t{0}; }
  [[nodiscard]] bool HasAnyOf(NameLengths other) const noexcept {
    return (lengths & other.lengths) != 0;
  }

 private:
  std::uint64_t lengths = 0;
};

/// Folders that questions ask, in their order.
class AskedList {
 public:
  /// What has been listed of the folders.
  struct Listings {
    /// Whether questions are answered from listings.
    std::function<bool()> areMade = [] { return false; };
    // Precondition of what follows: they are.
    /// The listing of a folder; null when the folder is asked for each name.
    std::function<const FolderListing*(std::size_t folder)> at = {};
    /// The first folder that may have a file of that name, whether or not it counts; null where all
    /// files count.
    std::function<std::size_t(std::string_view name)> firstWith = {};
  };

  /// `askedPlaces` are the numbers of the folders.
  AskedList(std::vector<std::uint32_t> askedPlaces, Listings folderListings);

  [[nodiscard]] const std::vector<std::uint32_t>& GetPlaces() const noexcept { return places; }
  /// The first position of a place; the number of folders when it is not in the list.
  [[nodiscard]] std::size_t PositionOf(std::uint32_t place) const;

  [[nodiscard]] bool IsListed() { return isListed = isListed || listings.areMade(); }

  /// Whether a name of one of these lengths may have a position. None has where there are listings, and
  /// nothing but plain files in them.
  [[nodiscard]] bool MayHoldAnyOf(NameLengths lengths);
  /// The positions, among the first `count`, where something other than a plain file may stand at a
  /// name: a link, a folder with "@"; and from the first that may have the file on, all when `all`.
  /// All positions as long as the folders are not listed.
  [[nodiscard]] std::vector<std::size_t> FindPositions(std::string_view name, std::size_t count,
                                                       bool all);

 private:
  [[nodiscard]] bool HasTable();

  std::vector<std::uint32_t> places;
  boost::unordered_flat_map<std::uint32_t, std::size_t> positions;  // of the places
  Listings listings;
  bool isListed = false;
  bool hasTable = false;     // what follows is made
  NameLengths tableLengths;  // of the names in the table
  std::vector<std::size_t> unlisted;
  boost::unordered_flat_map<std::string_view, std::vector<std::size_t>, NameBytesHash> table;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LIST_H
