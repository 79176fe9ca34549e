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

/// A set of lengths of names, in bytes. Lengths that differ by a multiple of 64 count as the same.
class NameLengths {
 public:
  void Add(std::size_t length) noexcept { lengths |= std::uint64_t{1} << length % 64U; }
  void AddAll() noexcept { lengths = ~std::uint64_t{0}; }
  [[nodiscard]] bool HasAnyOf(NameLengths other) const noexcept {
    return (lengths & other.lengths) != 0;
  }

 private:
  std::uint64_t lengths = 0;  // bit n is for the lengths of which the remainder by 64 is n
};

/// The folders that questions ask for a file, in the order in which they ask. A place is the number
/// of a folder in the `ReceiptDraft`; a position is an index in this list.
class AskedList {
 public:
  /// The listings of the folders. They may be made after this object.
  struct Listings {
    /// Whether they have been made, so that questions are answered from them.
    std::function<bool()> areMade = [] { return false; };
    // Precondition of both functions that follow: areMade() is true.
    /// The listing of the folder at a position; null when the disk is asked for each name there.
    std::function<const FolderListing*(std::size_t position)> at = {};
    /// The first position that may have a file of that name, whether or not the file counts by the
    /// lookup rules. Not set where all files count.
    std::function<std::size_t(std::string_view name)> firstWith = {};
  };

  /// `askedPlaces` are the places of the folders, in order.
  AskedList(std::vector<std::uint32_t> askedPlaces, Listings folderListings);

  [[nodiscard]] const std::vector<std::uint32_t>& GetPlaces() const noexcept { return places; }
  /// The first position of a place; the number of folders when it is not in the list.
  [[nodiscard]] std::size_t PositionOf(std::uint32_t place) const;

  /// Whether there are listings; they stay from then on.
  [[nodiscard]] bool IsListed() { return isListed = isListed || listings.areMade(); }

  /// Whether `FindPositions` may find positions for a name of one of these lengths. False only when
  /// listings show that there is nothing but plain files at such names.
  [[nodiscard]] bool MayHoldAnyOf(NameLengths lengths);
  /// The positions, among the first `count`, where something other than a plain file may stand at
  /// `name`: a link, or a folder whose name begins with "@". With `plainFilesToo`, also every
  /// position from the first one that may have a file of that name. As long as there are no
  /// listings: all of the first `count`.
  [[nodiscard]] std::vector<std::size_t> FindPositions(std::string_view name, std::size_t count,
                                                       bool plainFilesToo);

 private:
  [[nodiscard]] bool MakeTable();

  std::vector<std::uint32_t> places;
  boost::unordered_flat_map<std::uint32_t, std::size_t> positions;  // of the places
  Listings listings;
  bool isListed = false;
  bool hasTable = false;              // whether MakeTable has filled in what follows
  NameLengths tableLengths;           // of the names in the table
  std::vector<std::size_t> unlisted;  // positions whose folders have no listing
  // By name: the positions where a link or a folder with "@" has it. Views the listings.
  boost::unordered_flat_map<std::string_view, std::vector<std::size_t>, NameBytesHash> table;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_ASKED_LIST_H
