#ifndef SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H
#define SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H

#include "host/folder/folder_listing.h"
#include "searchpath/host/path_entry_factory.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// What was read into `caches`, then the disk; null, which means the disk, when that is nothing.
[[nodiscard]] std::shared_ptr<const ListingSource> CreateSourceFrom(
    const std::vector<PathEntryFactory>& caches);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H
