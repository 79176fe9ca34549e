#include "text/case_folding.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>

namespace Corvane::PathManagement::detail {

namespace {

constexpr std::size_t kMostUnits = std::numeric_limits<std::int32_t>::max();

std::int32_t LengthOf(std::u16string_view text) {
  if (text.size() > kMostUnits) throw std::length_error("a file name of 2^31 units or more");
  return static_cast<std::int32_t>(text.size());
}

/// Throws when `status` is that of a failure. Lengths have been checked before.
void CheckSuccess(UErrorCode status) {
  if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
  if (U_FAILURE(status)) {
    throw std::runtime_error(std::string("cannot fold the case of a file name: ") +
                             u_errorName(status));
  }
}

bool AreSameFolded(std::u16string_view left, std::u16string_view right) {
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t order = u_strCaseCompare(left.data(), LengthOf(left), right.data(),
                                              LengthOf(right), U_FOLD_CASE_DEFAULT, &status);
  CheckSuccess(status);
  return order == 0;
}

ustring Fold(const ustring& text) {
  constexpr std::size_t kGrowth = 3;  // no unit folds to more than three
  if (text.size() > kMostUnits / kGrowth) {
    throw std::length_error("a file name of more than 2^31 / 3 units");
  }
  ustring folded(text.size() * kGrowth, u'\0');
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = u_strFoldCase(folded.data(), LengthOf(folded), text.data(),
                                            LengthOf(text), U_FOLD_CASE_DEFAULT, &status);
  CheckSuccess(status);
  folded.resize(static_cast<std::size_t>(length));
  return folded;
}

}  // namespace

extern "C" const CaseFolding* SearchpathCaseFolding() {
  static constexpr CaseFolding kFolding = {.areSameFolded = AreSameFolded, .fold = Fold};
  return &kFolding;
}

}  // namespace Corvane::PathManagement::detail
