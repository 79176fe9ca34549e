#include "searchpath/host/filename_comparison.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace Corvane::PathManagement::host {

namespace {

constexpr char16_t FoldAscii(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
}

std::int32_t LengthOf(std::u16string_view text) {
  if (text.size() > std::numeric_limits<std::int32_t>::max()) {
    throw std::length_error("a file name of more than 2^31 units");
  }
  return static_cast<std::int32_t>(text.size());
}

bool AreSameFolded(std::u16string_view left, std::u16string_view right) {
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t order = u_strCaseCompare(left.data(), LengthOf(left), right.data(),
                                              LengthOf(right), U_FOLD_CASE_DEFAULT, &status);
  return U_SUCCESS(status) && order == 0;
}

bool AreSameIgnoringCase(std::u16string_view left, std::u16string_view right) {
  for (std::size_t at = 0; at < left.size() && at < right.size(); ++at) {
    // From the first character beyond ASCII on, one may fold to several. What stands before is
    // equal.
    if (left[at] >= 0x80 || right[at] >= 0x80) {
      return AreSameFolded(left.substr(at), right.substr(at));
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
