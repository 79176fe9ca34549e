#include "suggestion.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace Corvane::PathManagement::tool {

namespace {

// How many bytes must be added, removed or replaced to turn `left` into `right`.
std::size_t GetDistance(std::string_view left, std::string_view right) {
  // row[j]: the distance of the letters of `left` so far from the first j letters of `right`.
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (const char letter : left) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < right.size(); ++j) {
      const std::size_t replaced = diagonal + (letter == right[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

// Two words are near if one begins with the other, or if at most two letters differ, which must be
// at most half of the longer word.
bool IsNear(std::string_view typed, std::string_view known, std::size_t distance) {
  if (typed.empty()) return false;  // every word starts with ""
  return (distance <= 2 && 2 * distance <= std::max(typed.size(), known.size())) ||
         known.starts_with(typed) || typed.starts_with(known);
}

}  // namespace

std::string FindNearest(std::string_view typed, const std::vector<std::string>& known) {
  std::string nearest;
  std::size_t least = std::string::npos;
  for (const std::string& candidate : known) {
    const std::size_t distance = GetDistance(typed, candidate);
    if (distance >= least || !IsNear(typed, candidate, distance)) continue;
    nearest = candidate;
    least = distance;
  }
  return nearest;
}

}  // namespace Corvane::PathManagement::tool
