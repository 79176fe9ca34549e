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

/// How files begin in every version of the format.
inline constexpr std::string_view kListingFormat = "searchpath listing ";

/// The most bytes that a body may have: its offsets are signed numbers of 32 bits.
inline constexpr std::size_t kMostBodyBytes = 0x7FFFFFFE;

struct ListingBody {
  std::unique_ptr<char[]> bytes;  // aligned for any type; more than size, see NameBlock::kSlack
  std::size_t size = 0;
};

/// Reads `stream` to its end, and returns the body if all that surrounds it is right.
///
/// Errors: `InvalidListingException`.
/// Cost: memory for at most twice the bytes that the stream really holds, whatever its header says.
[[nodiscard]] ListingBody ReadEnvelope(std::istream& stream);

void WriteEnvelope(std::ostream& stream, std::string_view body);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_LISTING_ENVELOPE_H
