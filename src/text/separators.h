#ifndef SEARCHPATH_SRC_TEXT_SEPARATORS_H
#define SEARCHPATH_SRC_TEXT_SEPARATORS_H

#include "searchpath/model/constants.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Corvane::PathManagement::detail {

/// Whether any unit of `Constants::PathnameSeparatorStr` occurs in `text`. Every look-up asks this,
/// so eight units are compared at once.
[[nodiscard]] inline bool HasSeparator(std::u16string_view text) noexcept {
  constexpr std::size_t count = 8;
  if (text.size() < count) return text.find_first_of(Constants::PathnameSeparatorStr) != text.npos;
  using Units = std::uint16_t __attribute__((vector_size(2 * count)));
  using Halves = std::uint64_t __attribute__((vector_size(2 * count)));
  const auto load = [&text](std::size_t at) {
    Units units = {};
    std::memcpy(&units, text.data() + at, sizeof(units));
    return units;
  };
  const std::size_t last = text.size() - count;
  auto found = Units{} != Units{};  // zeros, of the type of a comparison; each separator sets bits
  for (const std::uint16_t separator : Constants::PathnameSeparatorStr) {
    found |= load(last) == separator;  // the last 8 units, which may overlap the loop's
    for (std::size_t at = 0; at < last; at += count) found |= load(at) == separator;
  }
  const auto halves = std::bit_cast<Halves>(found);
  return (halves[0] | halves[1]) != 0;
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_SEPARATORS_H
