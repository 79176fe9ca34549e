#ifndef SEARCHPATH_SRC_DIFF_REPEATED_POSITIONS_H
#define SEARCHPATH_SRC_DIFF_REPEATED_POSITIONS_H

#include "diff/position_set.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Corvane::PathManagement::detail {

/// The positions of the elements that occur more than once in a sequence, and which of them are
/// free. Each such position has a place: its number, from 1 on, in a list in which the positions of
/// an element are side by side, in ascending order.
class RepeatedPositions {
 public:
  /// All positions are free at first. `following` has for each position the next position of the
  /// same element, or 0; it may be empty when no element occurs twice.
  explicit RepeatedPositions(const std::vector<std::uint32_t>& following)
      : places(following.size()),
        ordered(1),  // no position has place 0
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

  /// One past the last place of the element whose first place is `first`.
  [[nodiscard]] std::uint32_t PlacesEnd(std::uint32_t first) const { return ordered[first].end; }

  /// The last free place before `place`, perhaps of another element; 0 when there is none.
  [[nodiscard]] std::uint32_t FreeBefore(std::uint32_t place) const { return free.Before(place); }

  /// The first of the places from `first` to `last` whose position is after `position`.
  /// Precondition: there is one, and all these places are those of one element.
  [[nodiscard]] std::uint32_t FirstAfter(std::uint32_t position, std::uint32_t first,
                                         std::uint32_t last) const {
    const auto begin = ordered.begin() + first;
    const auto end = ordered.begin() + last;  // without `last`, the one when no other is found
    const auto found = std::partition_point(
        begin, end, [position](const Repeated& at) { return at.position <= position; });
    return first + static_cast<std::uint32_t>(found - begin);
  }

  /// `position` is no longer free. Ignored when its element occurs once.
  void Occupy(std::uint32_t position) {
    if (const std::uint32_t place = Place(position)) free.Erase(place);
  }
  /// `position` is free again. Ignored when its element occurs once.
  void Vacate(std::uint32_t position) {
    if (const std::uint32_t place = Place(position)) free.Insert(place);
  }

 private:
  struct Repeated {
    std::uint32_t position;
    std::uint32_t end;  // only at the first place of an element: one past its last place
  };

  // The place of each position; 0 when its element occurs once. Empty when all elements do.
  std::vector<std::uint32_t> places;
  std::vector<Repeated> ordered;  // by place
  PositionSet free;               // the free places
};

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_DIFF_REPEATED_POSITIONS_H
