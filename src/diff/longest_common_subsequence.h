#ifndef SEARCHPATH_SRC_DIFF_LONGEST_COMMON_SUBSEQUENCE_H
#define SEARCHPATH_SRC_DIFF_LONGEST_COMMON_SUBSEQUENCE_H

#include "diff/element_positions.h"
#include "diff/position_set.h"
#include "diff/repeated_positions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// The longest run of elements that two sequences hold in the same order, by the method of Hunt and
/// Szymanski: the first sequence is walked once, and for each length the candidate is kept that
/// ends earliest in the second. Elements are shared pointers, the same when they point to the same
/// object.
///
/// Which of several longest runs it is follows from these rules: each element of the first sequence
/// takes its positions in the second in descending order; position j becomes the end of the
/// shortest candidate that ends at or after j, or of a new, longest one, and continues the
/// candidate that is one shorter, as that stands; a candidate that ends at j already stays.
template <class Element, class Container>
class LongestCommonSubsequence {
 public:
  /// A link of a candidate. Links stand in one vector and name one another by their places there;
  /// at place 0 is the one that every candidate begins with and that stands for no element.
  struct IndexNode {
    std::uint32_t index;       // in the first sequence
    std::uint32_t previous;    // the link before this one
    std::uint32_t references;  // by candidates and by links after this one
  };

  /// The run, as elements of `first` in its order.
  ///
  /// Precondition: each sequence has fewer than 2^32 - 1 elements.
  /// Cost: with n and m the lengths and c the number of times that a candidate comes to end
  /// earlier, n + (m + c) log m; c is at most n when no element occurs twice in `second`. An equal
  /// front or back costs little more than its part of the result. Some 50 bytes an element, and the
  /// links of the candidates.
  static Container Compute(const Container& first, const Container& second) {
    const std::span<const Element> all(first);
    const std::span<const Element> others(second);
    const std::size_t front = FrontLength(all, others);
    const std::size_t back = BackLength(all.subspan(front), others.subspan(front));
    const auto middle = all.subspan(front, all.size() - front - back);
    const auto kept = ComputeMiddle(middle, others.subspan(front, others.size() - front - back));

    Container result;
    result.reserve(front + kept.size() + back);
    result.insert(result.end(), all.begin(), middle.begin());
    for (const std::uint32_t index : kept) result.push_back(middle[index]);
    result.insert(result.end(), middle.end(), all.end());
    return result;
  }

 private:
  using Sequence = std::span<const Element>;

  // An equal front is the front of the result, and what the rules give for the rest follows it:
  // when it has been walked the candidates end at its positions, as early as can be, so that none
  // of them changes any more and all that is longer continues the longest of them.
  //
  // An equal back is the back of the result if its first element, x, does not stand before it in
  // the first sequence. Let L be the length for what is before the backs. The candidates of length
  // L + 1, L + 2, … can only end at the positions of the back one by one, each continuing the one
  // before; ends in the back do not touch the candidates up to L; and x continues the candidate of
  // length L when it is first met, that is after all that is before the back. Met sooner, x would
  // continue an earlier candidate, and that one could be made of other elements.

  /// The length of the equal front. Elements are compared by blocks, without a branch for each:
  /// that halves what equal sequences cost beyond the copying.
  static std::size_t FrontLength(Sequence first, Sequence second) {
    constexpr std::size_t block = 16;
    const std::size_t most = std::min(first.size(), second.size());
    std::size_t length = 0;
    for (bool isEqual = true; isEqual && most - length >= block; length += isEqual ? block : 0) {
      for (std::size_t at = length; at < length + block; ++at) {
        isEqual &= first[at].get() == second[at].get();
      }
    }
    while (length < most && first[length] == second[length]) ++length;
    return length;
  }

  /// The number of elements to set apart at the end: the equal back, if it is so long that it pays
  /// for the look at what is before it.
  static std::size_t BackLength(Sequence first, Sequence second) {
    const auto [before, unused] =
        std::mismatch(first.rbegin(), first.rend(), second.rbegin(), second.rend());
    const auto back = before.base();
    const bool isLong = first.end() - back > (back - first.begin()) / 8;
    if (!isLong || std::find(first.begin(), back, *back) != back) return 0;
    return static_cast<std::size_t>(first.end() - back);
  }

  /// The indices in `first` of the run's elements.
  static std::vector<std::uint32_t> ComputeMiddle(Sequence first, Sequence second) {
    if (first.empty() || second.empty()) return {};
    const Corvane::PathManagement::detail::ElementPositions<Element> positions(second);
    Candidates candidates(positions.Following(), second.size(),
                          std::min(first.size(), second.size()));
    positions.ForEachShared(first, [&candidates](std::uint32_t index, std::uint32_t position) {
      candidates.Meet(index, position);
    });
    return candidates.Longest();
  }

  class Candidates;
};

/// The candidate of each length. Positions in the second sequence count from 1; the candidate of
/// length 0 ends at 0.
template <class Element, class Container>
class LongestCommonSubsequence<Element, Container>::Candidates {
 public:
  Candidates(const std::vector<std::uint32_t>& following, std::size_t positionCount,
             std::size_t maximalLength)
      : ends(static_cast<std::uint32_t>(positionCount + 1)),
        links(positionCount + 1),
        repeated(following) {
    nodes.reserve(maximalLength + 1);
    nodes.push_back({.index = 0, .previous = 0, .references = 1});
  }

  /// Walks over the element at `index` of the first sequence, whose first position this is.
  void Meet(std::uint32_t index, std::uint32_t position) {
    const std::uint32_t firstPlace = repeated.Place(position);
    if (firstPlace == 0) {
      if (!ends.Contains(position)) EndCandidate(index, position, EndBefore(position));
      return;
    }
    // Only the smallest position between two ends matters: the rules let the others end the same
    // candidate before it does. From the last to the first, so that each continues a candidate that
    // this element has not changed; positions at which a candidate ends are passed over in one
    // step.
    std::uint32_t place = repeated.FreeBefore(repeated.PlacesEnd(firstPlace));
    for (; place >= firstPlace; place = repeated.FreeBefore(place)) {
      const std::uint32_t before = EndBefore(repeated.Position(place));
      place = repeated.FirstAfter(before, firstPlace, place);
      EndCandidate(index, repeated.Position(place), before);
    }
  }

  /// The indices of the elements of the longest candidate.
  [[nodiscard]] std::vector<std::uint32_t> Longest() const {
    std::vector<std::uint32_t> indices(length);
    const IndexNode* node = &nodes[links[lastEnd]];
    for (std::size_t at = length; at > 0; node = &nodes[node->previous])
      indices[--at] = node->index;
    return indices;
  }

 private:
  // Lists that are almost the same or almost turned round meet most positions outside of all ends.
  [[nodiscard]] std::uint32_t EndBefore(std::uint32_t position) const {
    if (position > lastEnd) return lastEnd;
    return position < firstEnd ? 0 : ends.Before(position);
  }
  [[nodiscard]] std::uint32_t EndAfter(std::uint32_t position) const {
    return position < firstEnd ? firstEnd : ends.After(position);
  }

  /// Lets the candidate that ends next after `before` end at `position`; at the end of all, a new
  /// one.
  void EndCandidate(std::uint32_t index, std::uint32_t position, std::uint32_t before) {
    ends.Insert(position);
    repeated.Occupy(position);
    links[position] = AddLink(index, links[before]);
    const bool isLongest = position > lastEnd;
    const std::uint32_t replaced = isLongest ? 0 : EndAfter(position);
    if (before == 0) firstEnd = position;
    if (isLongest) {
      lastEnd = position;
      ++length;
      return;
    }
    if (replaced == lastEnd) lastEnd = position;
    ends.Erase(replaced);
    repeated.Vacate(replaced);
    Release(links[replaced]);
  }

  /// The place of a new link, held by one candidate.
  std::uint32_t AddLink(std::uint32_t index, std::uint32_t previous) {
    ++nodes[previous].references;
    const IndexNode node = {.index = index, .previous = previous, .references = 1};
    if (spare == 0) {
      nodes.push_back(node);
      return static_cast<std::uint32_t>(nodes.size() - 1);
    }
    const std::uint32_t place = spare;
    spare = nodes[place].previous;
    nodes[place] = node;
    return place;
  }

  /// Gives up a reference to the link, and with the last one the link: a loop, since what a link
  /// alone held may be as long as the sequences.
  void Release(std::uint32_t place) {
    while (--nodes[place].references == 0) {
      const std::uint32_t previous = nodes[place].previous;
      nodes[place].previous = spare;
      spare = place;
      place = previous;
    }
  }

  Corvane::PathManagement::detail::PositionSet ends;            // of all candidates
  std::vector<std::uint32_t> links;                             // by end: the candidate's last link
  std::uint32_t firstEnd = 0;                                   // the smallest but 0
  std::uint32_t lastEnd = 0;                                    // the largest of ends
  std::size_t length = 0;                                       // of the longest candidate
  Corvane::PathManagement::detail::RepeatedPositions repeated;  // free: no candidate ends there
  std::vector<IndexNode> nodes;
  std::uint32_t spare = 0;  // the first link given up, which names the next; 0 when there is none
};

#endif  // SEARCHPATH_SRC_DIFF_LONGEST_COMMON_SUBSEQUENCE_H
