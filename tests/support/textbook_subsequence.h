#ifndef SEARCHPATH_TESTS_SUPPORT_TEXTBOOK_SUBSEQUENCE_H
#define SEARCHPATH_TESTS_SUPPORT_TEXTBOOK_SUBSEQUENCE_H

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Corvane::PathManagement::test {

/// The longest common subsequence by its rules, step by step: for every pair of equal elements,
/// those of the second sequence from its end, the run that ends there, written out whole.
template <class Sequence>
Sequence TextbookSubsequence(const Sequence& first, const Sequence& second) {
  std::vector<std::size_t> ends;  // of the runs of length 1, 2, …
  std::vector<Sequence> runs(1);  // of length 0, 1, …
  for (const auto& element : first) {
    for (std::size_t position = second.size(); position-- > 0;) {
      if (second[position] != element) continue;
      const auto slot = std::lower_bound(ends.begin(), ends.end(), position);
      const auto shorter = static_cast<std::size_t>(slot - ends.begin());
      if (slot != ends.end() && *slot == position) continue;
      ends.resize(std::max(ends.size(), shorter + 1));
      ends[shorter] = position;
      runs.resize(ends.size() + 1);
      runs[shorter + 1] = runs[shorter];
      runs[shorter + 1].push_back(element);
    }
  }
  return runs.back();
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_TEXTBOOK_SUBSEQUENCE_H
