#ifndef SEARCHPATH_TOOLS_SEARCHPATH_CACHE_FILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_CACHE_FILE_H

#include "searchpath/host/listing_file.h"

#include <string>

namespace Corvane::PathManagement::tool {

// Caches and saved listings, by the names given on the command line.

[[nodiscard]] bool IsListing(const std::string& file);

/// Errors: `UsageError`, which says what is wrong with the file.
[[nodiscard]] host::PathEntryFactory ReadListing(
    const std::string& file, host::ListingUse use = host::ListingUse::WhileFresh);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_CACHE_FILE_H
