#ifndef SEARCHPATH_SRC_HOST_SAVED_CHECKSUM_H
#define SEARCHPATH_SRC_HOST_SAVED_CHECKSUM_H

#include <cstdint>
#include <string_view>

namespace Corvane::PathManagement::host {

/// XXH3 with 64 bits and without a seed, as the formats of saved files prescribe it.
///
/// Cost: for a name, that of `ShortHash`, which computes the same; for megabytes, half of that.
[[nodiscard]] std::uint64_t Checksum(std::string_view bytes) noexcept;

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_CHECKSUM_H
