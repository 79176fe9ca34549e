#include "host/saved/listing_envelope.h"

#include "host/names/name_block.h"
#include "host/saved/checksum.h"
#include "platform/native_path.h"
#include "searchpath/host/invalid_listing_exception.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <system_error>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

static_assert(std::endian::native == std::endian::little, "numbers are read as they are stored");

constexpr std::size_t kMostVersionDigits = 9;               // always fit into 32 bits
constexpr std::size_t kFirstBlock = std::size_t{1} << 20U;  // in bytes; see `ReadBody`

using Numbers = std::array<std::uint64_t, 2>;  // length and checksum of the body

/// Reads up to `size` bytes and returns how many there were. Does not change the stream's state.
std::size_t ReadBytes(std::istream& stream, char* bytes, std::size_t size) try {
  return static_cast<std::size_t>(stream.rdbuf()->sgetn(bytes, static_cast<std::streamsize>(size)));
} catch (const std::ios_base::failure& failure) {
  throw InvalidListingException(std::string("it cannot be read: ") + failure.what());
}

void CheckBegin(std::istream& stream, std::string_view expected) {
  // A stream that a program hands in, for which nobody has called `CheckOpen`.
  if (stream.rdbuf() == nullptr || stream.fail()) {
    throw InvalidListingException("it cannot be opened");
  }
  std::string begin(expected.size(), '\0');
  begin.resize(ReadBytes(stream, begin.data(), begin.size()));
  if (begin.empty()) throw InvalidListingException("it is empty");
  if (begin != expected) {
    // The message leaves out the space in front of the version.
    throw InvalidListingException("its first line is not \"" +
                                  std::string(expected.substr(0, expected.size() - 1)) +
                                  "\" and a version");
  }
}

void CheckVersion(std::istream& stream, std::uint32_t expected) {
  std::string digits;
  char next = '\0';
  while (digits.size() <= kMostVersionDigits && ReadBytes(stream, &next, 1) == 1 && next != '\n') {
    digits.push_back(next);
  }
  std::uint32_t version = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), version);
  if (next != '\n' || error != std::errc() || end != digits.data() + digits.size()) {
    throw InvalidListingException("its first line has no version");
  }
  if (version == expected) return;
  throw InvalidListingException(
      "it has version " + digits + " of the format, and this program reads version " +
      std::to_string(expected) +
      (version > expected ? ": a newer program wrote it; write it again with this one" : " only"));
}

/// How many bytes the stream still holds, or `kMostBodyBytes` if there are more; 0 if that cannot
/// be told, as of a pipe.
std::size_t RemainingBytes(std::istream& stream) {
  auto& buffer = *stream.rdbuf();
  const auto here = buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
  if (here < 0) return 0;
  const auto end = buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
  if (buffer.pubseekpos(here, std::ios_base::in) != here) {
    throw InvalidListingException("it cannot be read: seeking failed");
  }
  return end < here ? 0 : std::min(static_cast<std::size_t>(end - here), kMostBodyBytes);
}

/// Reads `size` bytes, or as many as there are. `size` comes from the file and may be wrong: if the
/// bytes left in the stream cannot be counted, memory is taken step by step, as bytes are read.
ListingBody ReadBody(std::istream& stream, std::size_t size) {
  std::size_t capacity = std::min(size, std::max(RemainingBytes(stream), kFirstBlock));
  ListingBody body{std::make_unique_for_overwrite<char[]>(capacity + NameBlock::kSlack), 0};
  for (;;) {
    const std::size_t wanted = capacity - body.size;
    const std::size_t count = ReadBytes(stream, body.bytes.get() + body.size, wanted);
    body.size += count;
    if (count < wanted || body.size == size) return body;
    capacity = std::min(size, 2 * capacity);
    auto larger = std::make_unique_for_overwrite<char[]>(capacity + NameBlock::kSlack);
    std::memcpy(larger.get(), body.bytes.get(), body.size);
    body.bytes = std::move(larger);
  }
}

/// Why `file`, whose stream is not open, cannot be read: the stream opens regular files only.
std::string ErrorOf(const fl::filesystem::ifstream& stream, const fl::filesystem::path& file) try {
  struct stat status = {};
  const bool exists =
      stat(fl::filesystem::detail::NativeBytes(file.native()).c_str(), &status) == 0;
  return exists && !S_ISREG(status.st_mode) ? "it is not a regular file"
                                            : stream.openError().message();
} catch (const std::system_error& invalidName) {
  return invalidName.code().message();  // no file can be called so
}

}  // namespace

void CheckOpen(const fl::filesystem::ifstream& stream, const fl::filesystem::path& file) {
  if (!stream.is_open())
    throw InvalidListingException("it cannot be opened: " + ErrorOf(stream, file));
}

ListingBody ReadEnvelope(std::istream& stream, const SavedFormat& format) {
  CheckBegin(stream, format.begin);
  CheckVersion(stream, format.version);
  Numbers numbers = {};
  if (ReadBytes(stream, reinterpret_cast<char*>(numbers.data()), sizeof(numbers)) !=
      sizeof(numbers)) {
    throw InvalidListingException("it ends in its header");
  }
  const auto [length, checksum] = numbers;
  if (length > kMostBodyBytes) throw InvalidListingException("its length is damaged");
  ListingBody body = ReadBody(stream, static_cast<std::size_t>(length));
  if (body.size < length) throw InvalidListingException("it is cut off");
  char next = '\0';
  if (ReadBytes(stream, &next, 1) != 0) {
    throw InvalidListingException("more bytes follow its end");
  }
  if (Checksum({body.bytes.get(), body.size}) != checksum) {
    throw InvalidListingException("it is damaged: its checksum differs");
  }
  return body;
}

void WriteEnvelope(std::ostream& stream, const SavedFormat& format, std::string_view body) {
  const Numbers numbers = {body.size(), Checksum(body)};
  stream << format.begin << format.version << '\n';
  stream.write(reinterpret_cast<const char*>(numbers.data()), sizeof(numbers));
  stream.write(body.data(), static_cast<std::streamsize>(body.size()));
}

}  // namespace Corvane::PathManagement::host
