#include "searchpath/host/filename_comparison.h"

#include "host/names/case_folding.h"

#include <cstddef>

namespace Corvane::PathManagement::host {

namespace {

constexpr char16_t FoldAscii(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
}

bool AreSameIgnoringCase(std::u16string_view left, std::u16string_view right) {
  for (std::size_t at = 0; at < left.size() && at < right.size(); ++at) {
    // From the first character beyond ASCII on, one may fold to several. What stands before is
    // equal.
    if (left[at] >= 0x80 || right[at] >= 0x80) {
      return SearchpathCaseFolding()->areSameFolded(left.substr(at), right.substr(at));
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

}  // namespace Corvane::PathManagement::host
