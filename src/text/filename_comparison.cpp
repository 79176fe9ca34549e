#include "searchpath/utilities/filename_comparison.h"

#include "text/case_folding.h"

#include <algorithm>
#include <cstddef>

namespace Corvane::PathManagement {

namespace {

constexpr char16_t FoldAscii(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
}

bool AreSameIgnoringCase(std::u16string_view left, std::u16string_view right) {
  for (std::size_t at = 0; at < left.size() && at < right.size(); ++at) {
    // A character beyond ASCII may fold to several, so the rest cannot be compared unit by unit.
    if (left[at] >= 0x80 || right[at] >= 0x80) {
      return detail::SearchpathCaseFolding()->areSameFolded(left.substr(at), right.substr(at));
    }
    if (FoldAscii(left[at]) != FoldAscii(right[at])) return false;
  }
  return left.size() == right.size();
}

}  // namespace

bool AreSameFilename(std::u16string_view left, std::u16string_view right,
                     FilenameMatchingPolicy policy) {
  return policy == FilenameMatchingPolicy::IgnoreCase ? AreSameIgnoringCase(left, right)
                                                      : left == right;
}

ustring FoldFilename(std::u16string_view name) {
  ustring folded(name);
  if (std::ranges::any_of(name, [](char16_t unit) { return unit >= 0x80; })) {
    return detail::SearchpathCaseFolding()->fold(folded);
  }
  std::ranges::transform(folded, folded.begin(), FoldAscii);
  return folded;
}

}  // namespace Corvane::PathManagement
