#ifndef SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H
#define SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H

#include "host/folder/folder_listing.h"
#include "searchpath/host/path_entry_factory.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// The source of listings for a path with these caches: see `SavedSource`. A cache is a
/// `PathEntryFactory` into which listings were read. Null, which means the disk alone, when nothing
/// was read into any of them.
[[nodiscard]] std::shared_ptr<const ListingSource> CreateSourceFrom(
    const std::vector<PathEntryFactory>& caches);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_CACHE_SOURCE_H
