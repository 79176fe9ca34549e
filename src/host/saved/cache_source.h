#ifndef SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H
#define SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H

#include "host/folder/folder_listing.h"
#include "searchpath/host/path_entry_factory.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// The listings that were read into `caches`, and the disk for all other folders. Null, which means
/// the disk alone, when nothing was read into any cache.
[[nodiscard]] std::shared_ptr<const ListingSource> CreateSourceFrom(
    const std::vector<PathEntryFactory>& caches);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H
