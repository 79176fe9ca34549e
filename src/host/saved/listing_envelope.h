#ifndef SEARCHPATH_SRC_HOST_SAVED_LISTING_ENVELOPE_H
#define SEARCHPATH_SRC_HOST_SAVED_LISTING_ENVELOPE_H

#include <cstddef>
#include <istream>
#include <memory>
#include <ostream>
#include <string_view>

namespace Corvane::PathManagement::host {

// What surrounds the body of a cache or saved listing: a line that names the format and its
// version, the length of the body and its XXH3 checksum, each in 64 bits, the lowest first.

/// With which every version of the format begins.
inline constexpr std::string_view kListingFormat = "searchpath listing ";

/// The most bytes that a body may have, as its offsets have 32 bits, one for the sign.
inline constexpr std::size_t kMostBodyBytes = 0x7FFFFFFE;

struct ListingBody {
  std::unique_ptr<char[]> bytes;  // aligned for any type
  std::size_t size = 0;
};

/// The body in `stream`, which holds nothing behind it; its checksum is right.
///
/// Errors: `InvalidListingException`.
/// Cost: at most twice the bytes that the stream really holds, whatever it says that it does.
[[nodiscard]] ListingBody ReadEnvelope(std::istream& stream);

void WriteEnvelope(std::ostream& stream, std::string_view body);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_LISTING_ENVELOPE_H
