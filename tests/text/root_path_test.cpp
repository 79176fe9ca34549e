#include "text/root_path.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace Corvane::PathManagement::detail {
namespace {

// No path of this system has its root elsewhere than in front.
TEST(EraseThroughRootTest, TakesAsManyUnitsMoreAsStandInFrontOfTheRoot) {
  EXPECT_EQ(EraseThroughRoot(u"//a/", u"//"), u"a/");
  EXPECT_EQ(EraseThroughRoot(u"ab", u""), u"ab");
  EXPECT_EQ(EraseThroughRoot(u"abcRefghij", u"R"), u"abchij");
  EXPECT_EQ(EraseThroughRoot(u"abcRRe", u"RR"), u"abc");
  try {
    (void)EraseThroughRoot(u"abc", u"R");
    FAIL() << "found";
  } catch (const std::out_of_range& error) {
    EXPECT_EQ(error.what(), std::string("invalid string position"));
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::detail
