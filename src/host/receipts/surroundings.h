#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_SURROUNDINGS_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_SURROUNDINGS_H

#include "platform/canonical_path.h"

#include <cstdint>
#include <string>

namespace Corvane::PathManagement::host {

// What decides about the folders of a path without being seen in them.

using foundation::storage::vfs::detail::LinkResolver;

/// A number for what this process may do, as far as that decides which files it finds.
[[nodiscard]] std::uint64_t RightsOfProcess();

/// `path` as `links` resolves it; itself where that fails.
[[nodiscard]] std::string WithoutLinks(LinkResolver& links, const std::string& path);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_SURROUNDINGS_H
