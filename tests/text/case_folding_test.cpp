#include "text/case_folding.h"

#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <new>
#include <stdexcept>

namespace {

UErrorCode failure = U_ZERO_ERROR;  // what the two functions below report

}  // namespace

// In place of the Unicode library's, which fail too seldom.
extern "C" std::int32_t u_strCaseCompare(const UChar* /*left*/, std::int32_t /*leftLength*/,
                                         const UChar* /*right*/, std::int32_t /*rightLength*/,
                                         std::uint32_t /*options*/, UErrorCode* status) {
  *status = failure;
  return 1;
}
extern "C" std::int32_t u_strFoldCase(UChar* /*folded*/, std::int32_t /*capacity*/,
                                      const UChar* /*text*/, std::int32_t /*length*/,
                                      std::uint32_t /*options*/, UErrorCode* status) {
  *status = failure;
  return 0;
}

namespace Corvane::PathManagement::detail {
namespace {

TEST(CaseFoldingTest, WhatFailsIsNoAnswer) {
  const CaseFolding& folding = *SearchpathCaseFolding();
  failure = U_ZERO_ERROR;
  EXPECT_FALSE(folding.areSameFolded(u"\u00E4", u"\u00C4"));
  EXPECT_EQ(folding.fold(u"\u00C4"), u"");
  failure = U_MEMORY_ALLOCATION_ERROR;
  EXPECT_THROW(folding.areSameFolded(u"\u00E4", u"\u00C4"), std::bad_alloc);
  EXPECT_THROW(folding.fold(u"\u00C4"), std::bad_alloc);
  failure = U_INTERNAL_PROGRAM_ERROR;
  EXPECT_THROW(folding.areSameFolded(u"\u00E4", u"\u00C4"), std::runtime_error);
  EXPECT_THROW(folding.fold(u"\u00C4"), std::runtime_error);
}

}  // namespace
}  // namespace Corvane::PathManagement::detail
