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

/// The longest common subsequence: the most elements that two sequences hold in the same order, not
/// necessarily side by side. Elements are shared pointers, the same when they point to the same
/// object. By the method of Hunt and Szymanski: the first sequence is walked once. For each length,
/// a candidate is kept: of the common subsequences of this length found so far, the one that ends
/// earliest in the second sequence.
///
/// These rules decide which of several longest ones is found. Each element of the first sequence
/// takes its positions in the second in descending order. At position j, the shortest candidate
/// that ends at or after j is replaced by one that ends at j; if there is none, a new, longest
/// candidate is made. The candidate that ends at j continues the present candidate that is one
/// shorter. A candidate that already ends at j is not replaced.
template <class Element, class Container>
class LongestCommonSubsequence {
 public:
  /// A candidate is a linked list of nodes, from its last element back to its first and on to node
  /// 0, which is no element. All nodes are in one vector and refer to one another by number, the
  /// index there.
  struct IndexNode {
    std::uint32_t index;       // of the element in the first sequence
    std::uint32_t previous;    // the number of the node before this one
    std::uint32_t references;  // from the candidate that ends here, and from nodes after this one
  };

  /// The longest common subsequence, as elements of `first`.
  ///
  /// Precondition: each sequence has fewer than 2^32 - 1 elements.
  /// Cost: with n and m the lengths and c the number of times that a candidate comes to end
  /// earlier, n + (m + c) log m; c is at most n when no element occurs twice in `second`. An equal
  /// front or back costs little more than its part of the result. Memory: some 50 bytes for each
  /// element, and the nodes of the candidates.
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

  // An equal front is the front of the result, and can be set apart: the result for the rest
  // follows it. Once the front has been walked, the candidates end at its positions, as early as
  // possible. So none of them changes any more, and all longer ones continue the longest of them.
  //
  // An equal back is the back of the result, and can be set apart, if its first element, x, does
  // not occur before it in the first sequence. Let L be the length of the result for what is before
  // the backs. The candidates of length L + 1, L + 2, … can only end at the first, the second, …
  // position of the back, and each continues the one before it. They leave the candidates up to
  // length L as they are. Since x is first met after all that is before the back, it continues the
  // final candidate of length L. Met sooner, it would continue an earlier one, which could consist
  // of other elements.

  /// The length of the equal front. Elements are compared in blocks, without a branch for each one:
  /// this halves the cost of equal sequences, apart from the copying.
  static std::size_t FrontLength(Sequence first, Sequence second) {
    constexpr std::size_t block = 16;
    const std::size_t most = std::min(first.size(), second.size());
    std::size_t length = 0;
    while (most - length >= block) {
      bool isEqual = true;
      for (std::size_t at = length; at < length + block; ++at) {
        isEqual &= first[at].get() == second[at].get();
      }
      if (!isEqual) break;
      length += block;
    }
    while (length < most && first[length] == second[length]) ++length;
    return length;
  }

  /// The length of the equal back if it can be set apart, else 0. Also 0 for a short back, which
  /// would save less than the search for its first element in what is before it costs.
  static std::size_t BackLength(Sequence first, Sequence second) {
    const auto [before, unused] =
        std::mismatch(first.rbegin(), first.rend(), second.rbegin(), second.rend());
    const auto back = before.base();
    // A long back is not empty, so it has a first element.
    const bool isLong = first.end() - back > (back - first.begin()) / 8;
    if (!isLong || std::find(first.begin(), back, *back) != back) return 0;
    return static_cast<std::size_t>(first.end() - back);
  }

  /// The longest common subsequence, as indices in `first`.
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
        lastNodes(positionCount + 1),
        repeated(following) {
    nodes.reserve(maximalLength + 1);
    nodes.push_back({.index = 0, .previous = 0, .references = 1});
  }

  /// Takes the next element of the first sequence that the second holds: the one at `index`.
  /// `position` is its first position in the second.
  void Meet(std::uint32_t index, std::uint32_t position) {
    const std::uint32_t firstPlace = repeated.Place(position);
    if (firstPlace == 0) {  // the element occurs once in the second sequence
      if (!ends.Contains(position)) EndCandidate(index, position, EndBefore(position));
      return;
    }
    // Of the element's positions between two ends, only the smallest matters: by the rules, each of
    // the others would make a candidate that is replaced at once. The walk goes from the last
    // position to the first, so that each continues a candidate that this element has not changed.
    // In one step, `FreeBefore` passes over positions at which candidates end.
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
    const IndexNode* node = &nodes[lastNodes[lastEnd]];
    for (std::size_t at = length; at > 0; node = &nodes[node->previous])
      indices[--at] = node->index;
    return indices;
  }

 private:
  /// The largest end below `position`; 0 is always one. In lists that are almost equal or almost
  /// reversed, most positions are before or after all ends, where no search in the set is needed.
  [[nodiscard]] std::uint32_t EndBefore(std::uint32_t position) const {
    if (position > lastEnd) return lastEnd;
    return position < firstEnd ? 0 : ends.Before(position);
  }
  /// The smallest end above `position`. Precondition: there is one.
  [[nodiscard]] std::uint32_t EndAfter(std::uint32_t position) const {
    return position < firstEnd ? firstEnd : ends.After(position);
  }

  /// Makes a candidate that ends at `position` with the element at `index` and continues the one
  /// that ends at `before`. It replaces the one that ends next after `position`, if there is one.
  void EndCandidate(std::uint32_t index, std::uint32_t position, std::uint32_t before) {
    ends.Insert(position);
    repeated.Occupy(position);
    lastNodes[position] = AddNode(index, lastNodes[before]);
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
    Release(lastNodes[replaced]);
  }

  /// Makes a node to which one candidate refers, and returns its number.
  std::uint32_t AddNode(std::uint32_t index, std::uint32_t previous) {
    ++nodes[previous].references;
    const IndexNode node = {.index = index, .previous = previous, .references = 1};
    if (spare == 0) {
      nodes.push_back(node);
      return static_cast<std::uint32_t>(nodes.size() - 1);
    }
    const std::uint32_t number = spare;
    spare = nodes[number].previous;
    nodes[number] = node;
    return number;
  }

  /// Drops a reference to a node. A node without references becomes spare, and drops its reference
  /// to the node before it: in a loop, since such a chain may be as long as the sequences.
  void Release(std::uint32_t number) {
    while (--nodes[number].references == 0) {
      const std::uint32_t previous = nodes[number].previous;
      nodes[number].previous = spare;
      spare = number;
      number = previous;
    }
  }

  Corvane::PathManagement::detail::PositionSet ends;  // of all candidates
  std::vector<std::uint32_t> lastNodes;               // numbers, by the end of the candidate
  std::uint32_t firstEnd = 0;                         // the smallest end but 0
  std::uint32_t lastEnd = 0;                          // the largest end
  std::size_t length = 0;                             // of the longest candidate
  Corvane::PathManagement::detail::RepeatedPositions repeated;  // free where no candidate ends
  std::vector<IndexNode> nodes;
  std::uint32_t spare = 0;  // a node for reuse, whose `previous` is the next such node; 0: none
};

#endif  // SEARCHPATH_SRC_DIFF_LONGEST_COMMON_SUBSEQUENCE_H
