#ifndef SEARCHPATH_SRC_HOST_SAVED_LISTING_ENVELOPE_H
#define SEARCHPATH_SRC_HOST_SAVED_LISTING_ENVELOPE_H

#include "searchpath/platform/filesystem.h"

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <ostream>
#include <string_view>

namespace Corvane::PathManagement::host {

// What a saved file has in front of its body: a line that names the format and its version, the
// length of the body and its XXH3 checksum, each in 64 bits, the lowest byte first.

struct SavedFormat {
  std::string_view begin;  // what a file begins with, up to the number of its version
  std::uint32_t version;   // the only one that this program writes and reads
};

/// The format of caches and saved listings.
inline constexpr SavedFormat kListingFormat = {.begin = "searchpath listing ", .version = 1};
/// The format of receipts: answers that are kept together with what they rest on.
inline constexpr SavedFormat kReceiptFormat = {.begin = "searchpath receipt ", .version = 3};

/// The most bytes that a body may have. Offsets in it are signed numbers of 32 bits, and the
/// library that verifies it refuses the largest of these as a size.
inline constexpr std::size_t kMostBodyBytes = 0x7FFFFFFE;

/// The body of a file in either format.
struct ListingBody {
  // `size` bytes, and as many more as a `NameBlock` may read after its names; aligned for any type.
  std::unique_ptr<char[]> bytes;
  std::size_t size = 0;
};

/// Checks that `stream`, which reads `file`, is open.
///
/// Errors: `InvalidListingException` when it is not, with the reason.
void CheckOpen(const fl::filesystem::ifstream& stream, const fl::filesystem::path& file);

/// Reads `stream` to its end, checks that it is a whole file of `format`, and returns the body.
///
/// Errors: `InvalidListingException`, also when `stream` did not open.
/// Cost: memory for at most twice the bytes that the stream really holds, whatever its header says.
[[nodiscard]] ListingBody ReadEnvelope(std::istream& stream, const SavedFormat& format);

/// Writes a whole file of `format`. A failure shows in the state of `stream`.
///
/// Precondition: `body` has at most `kMostBodyBytes`.
void WriteEnvelope(std::ostream& stream, const SavedFormat& format, std::string_view body);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_LISTING_ENVELOPE_H
