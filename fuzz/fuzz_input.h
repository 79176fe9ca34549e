#ifndef SEARCHPATH_FUZZ_FUZZ_INPUT_H
#define SEARCHPATH_FUZZ_FUZZ_INPUT_H

#include "searchpath/model/absolute_iri.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

namespace fuzz {

/// Ends the run when a promise is broken: the driver's way to report.
inline void Require(bool kept, const char* promise) {
  if (kept) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

/// Any UTF-16 text, written so that seeds stay readable: a byte is the unit of its number, but 0xFF
/// says that the next two bytes are a unit.
inline foundation::ustring TextFrom(const std::uint8_t* data, std::size_t size) {
  foundation::ustring text;
  for (const std::uint8_t* const end = data + size; data < end; ++data) {
    text.push_back(*data);
    if (*data != 0xFF || end - data < 3) continue;
    text.back() = static_cast<char16_t>(data[1] << 8 | data[2]);
    data += 2;
  }
  return text;
}

/// The bytes of a saved file with the length and the checksum that belong to them, so that what is
/// behind these gets looked at; `header` is the size of all three.
inline std::string WithRightHeader(const std::uint8_t* data, std::size_t size, std::size_t header) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  if (size < header) return bytes;
  const std::uint64_t numbers[] = {size - header,
                                   XXH3_64bits(bytes.data() + header, size - header)};
  std::memcpy(bytes.data() + header - sizeof(numbers), numbers, sizeof(numbers));
  return bytes;
}

/// What `work` gives, or nothing when it raises the one error that texts may cause.
template <class Work>
auto Try(const Work& work) -> std::optional<decltype(work())> {
  try {
    return work();
  } catch (const foundation::storage::vfs::InvalidIRIException&) {
    return std::nullopt;
  }
}

}  // namespace fuzz

#endif  // SEARCHPATH_FUZZ_FUZZ_INPUT_H
