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

// What surrounds the body of a saved file: a line that names the format and its version, the length
// of the body and its XXH3 checksum, each in 64 bits, the lowest first.

struct SavedFormat {
  std::string_view begin;  // of the file, in every version
  std::uint32_t version;
};

/// Of caches and saved listings.
inline constexpr SavedFormat kListingFormat = {.begin = "searchpath listing ", .version = 1};
inline constexpr SavedFormat kReceiptFormat = {.begin = "searchpath receipt ", .version = 3};

/// The most bytes that a body may have: its offsets are signed numbers of 32 bits.
inline constexpr std::size_t kMostBodyBytes = 0x7FFFFFFE;

struct ListingBody {
  std::unique_ptr<char[]> bytes;  // aligned for any type; more than size, see NameBlock::kSlack
  std::size_t size = 0;
};

/// Errors: `InvalidListingException` when `stream`, which reads `file`, is not open; it says why.
void CheckOpen(const fl::filesystem::ifstream& stream, const fl::filesystem::path& file);

/// Reads `stream` to its end, and returns the body if all that surrounds it is right for `format`.
///
/// Errors: `InvalidListingException`.
/// Cost: memory for at most twice the bytes that the stream really holds, whatever its header says.
[[nodiscard]] ListingBody ReadEnvelope(std::istream& stream, const SavedFormat& format);

void WriteEnvelope(std::ostream& stream, const SavedFormat& format, std::string_view body);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_SAVED_LISTING_ENVELOPE_H
