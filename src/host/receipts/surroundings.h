#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_SURROUNDINGS_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_SURROUNDINGS_H

#include "platform/canonical_path.h"

#include <cstdint>
#include <string>

namespace Corvane::PathManagement::host {

// What decides which files a path has, but does not show in the folders of the path.

using foundation::storage::vfs::detail::LinkResolver;

/// A hash of the effective user and the groups of this process, which decide what it may search.
[[nodiscard]] std::uint64_t RightsOfProcess();

/// `path` with all links resolved by `links`; `path` itself where that fails.
[[nodiscard]] std::string WithoutLinks(LinkResolver& links, const std::string& path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_SURROUNDINGS_H
