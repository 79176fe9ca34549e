#ifndef SEARCHPATH_HOST_LISTING_USE_H
#define SEARCHPATH_HOST_LISTING_USE_H

#include <cstdint>

namespace Corvane::PathManagement::host {

/// What saved listings are good for.
enum class ListingUse : std::uint8_t {
  WhileFresh,  ///< as a cache: a folder that is not `Freshness::Fresh` is read from the disk
  AsSaved,  ///< as a record of what was: a listing counts as it is, whatever became of the folder
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_LISTING_USE_H
