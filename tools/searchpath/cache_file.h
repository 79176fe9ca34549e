#ifndef SEARCHPATH_TOOLS_SEARCHPATH_CACHE_FILE_H
#define SEARCHPATH_TOOLS_SEARCHPATH_CACHE_FILE_H

#include "searchpath/host/listing_file.h"

#include <string>

namespace Corvane::PathManagement::tool {

// Caches, which keep a path and the listings of its folders. `file` is a name as it was typed.

/// Whether `file` is a regular file that begins as a cache does, in any version of the format.
[[nodiscard]] bool IsListing(const std::string& file);

/// The listings in `file`, to be used as `use` says.
///
/// Errors: `UsageError`, which says what is wrong with the file.
[[nodiscard]] host::PathEntryFactory ReadListing(
    const std::string& file, host::ListingUse use = host::ListingUse::WhileFresh);

}  // namespace Corvane::PathManagement::tool

#endif  // SEARCHPATH_TOOLS_SEARCHPATH_CACHE_FILE_H
