#ifndef SEARCHPATH_SRC_DIFF_REPEATED_POSITIONS_H
#define SEARCHPATH_SRC_DIFF_REPEATED_POSITIONS_H

#include "diff/position_set.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::detail {

/// The positions of the elements that occur more than once, and which of them are free. Those of an
/// element have consecutive places, in ascending order; places count from 1.
class RepeatedPositions {
 public:
  /// All are free until `Occupy` takes them. `following`: for each position, the next one of the
  /// same element or 0; may be empty when there is none.
  explicit RepeatedPositions(const std::vector<std::uint32_t>& following)
      : places(following.size()),
        ordered(1),
        free(static_cast<std::uint32_t>(following.size() + 1)) {
    for (std::uint32_t first = 0; first < following.size(); ++first) {
      if (following[first] == 0 || places[first] != 0) continue;
      const auto firstPlace = ordered.size();
      for (std::uint32_t position = first; position != 0; position = following[position]) {
        places[position] = static_cast<std::uint32_t>(ordered.size());
        free.Insert(places[position]);
        ordered.push_back({.position = position, .end = 0});
      }
      ordered[firstPlace].end = static_cast<std::uint32_t>(ordered.size());
    }
  }

  /// The place of a position; 0 when its element occurs once.
  [[nodiscard]] std::uint32_t Place(std::uint32_t position) const {
    return places.empty() ? 0 : places[position];
  }

  [[nodiscard]] std::uint32_t Position(std::uint32_t place) const {
    return ordered[place].position;
  }

  /// Past the last place of the element whose first place is `first`.
  [[nodiscard]] std::uint32_t PlacesEnd(std::uint32_t first) const { return ordered[first].end; }

  /// The last free place before `place`, of whatever element; 0 when there is none.
  [[nodiscard]] std::uint32_t FreeBefore(std::uint32_t place) const { return free.Before(place); }

  /// The first of the places `first` to `last`, of one element, with a position after `position`.
  /// Precondition: there is one.
  [[nodiscard]] std::uint32_t FirstAfter(std::uint32_t position, std::uint32_t first,
                                         std::uint32_t last) const {
    const auto begin = ordered.begin() + first;
    const auto end = ordered.begin() + last;
    const auto found = std::partition_point(
        begin, end, [position](const Repeated& at) { return at.position <= position; });
    return first + static_cast<std::uint32_t>(found - begin);
  }

  void Occupy(std::uint32_t position) {
    if (const std::uint32_t place = Place(position)) free.Erase(place);
  }
  void Vacate(std::uint32_t position) {
    if (const std::uint32_t place = Place(position)) free.Insert(place);
  }

 private:
  struct Repeated {
    std::uint32_t position;
    std::uint32_t end;  // at the first place of an element: past its last
  };

  std::vector<std::uint32_t> places;  // by position; empty when there is none
  std::vector<Repeated> ordered;      // by place
  PositionSet free;                   // places
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_REPEATED_POSITIONS_H
