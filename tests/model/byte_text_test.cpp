#include "searchpath/model/byte_text.h"

#include <gtest/gtest.h>

namespace Corvane::PathManagement {
namespace {

TEST(ByteTextTest, HasTheSameMeaningBothWays) {
  const std::vector<std::pair<std::string, ustring>> rows = {
      {"", u""},
      {"a/b\x7F", u"a/b\x7F"},
      {std::string(1, '\0'), ustring(1, u'\0')},
      {"\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBF\xF0\x9F\x98\x80", u"\u00E9\u20AC\uFFFF\U0001F600"},
      {"\x80\xFF", u"\xDC80\xDCFF"},
      {"\xC3(", u"\xDCC3("},
      {"\xE2\x82z\xC3", u"\xDCE2\xDC82z\xDCC3"},
      {"\xC0\x80", u"\xDCC0\xDC80"},
      {"\xED\xA0\x80", u"\xDCED\xDCA0\xDC80"},
      {"\xF0\x9F\x98\x80\x80", u"\U0001F600\xDC80"},
      {"\xF4\x90\x80\x80", u"\xDCF4\xDC90\xDC80\xDC80"}};
  for (const auto& [bytes, text] : rows) {
    EXPECT_EQ(TextFromBytes(bytes), text) << testing::PrintToString(bytes);
    EXPECT_EQ(BytesFromText(text), bytes) << testing::PrintToString(text);
  }
}

TEST(ByteTextTest, RefusesOtherLoneSurrogates) {
  for (const ustring text : {u"\xD800", u"\xDBFFz", u"\xDC00", u"\xDC7F", u"\xDD00", u"\xDFFF",
                             u"\xDC80\xD83D", u"\xD83D\xD83D\xDC80"}) {
    EXPECT_EQ(BytesFromText(text), std::nullopt) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace Corvane::PathManagement
