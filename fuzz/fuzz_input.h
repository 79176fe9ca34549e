#ifndef SEARCHPATH_FUZZ_FUZZ_INPUT_H
#define SEARCHPATH_FUZZ_FUZZ_INPUT_H

#include "searchpath/model/absolute_iri.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>

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
