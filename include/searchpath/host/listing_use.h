#ifndef SEARCHPATH_HOST_LISTING_USE_H
#define SEARCHPATH_HOST_LISTING_USE_H

#include <cstdint>

namespace Corvane::PathManagement::host {

/// When a saved listing is used.
enum class ListingUse : std::uint8_t {
  WhileFresh,  ///< as a cache: while the folder is `Freshness::Fresh`; otherwise the disk is read
  AsSaved,     ///< as a record: always, whatever has become of the folder
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_LISTING_USE_H
