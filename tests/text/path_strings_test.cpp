#include "searchpath/utilities/path_strings.h"

#include "support/text_table.h"
#include "text/root_path.h"

#include <stdexcept>

namespace Corvane::PathManagement {
namespace {

using test::ExpectTable;

// No path of this system has its root elsewhere than in front.
TEST(PathStringsTest, RemovesAsManyUnitsMoreAsStandInFrontOfTheRoot) {
  EXPECT_EQ(detail::EraseRoot(u"//a/", u"//"), u"a/");
  EXPECT_EQ(detail::EraseRoot(u"ab", u""), u"ab");
  EXPECT_EQ(detail::EraseRoot(u"abcRefghij", u"R"), u"abchij");
  EXPECT_EQ(detail::EraseRoot(u"abcRRe", u"RR"), u"abc");
  try {
    (void)detail::EraseRoot(u"abc", u"R");
    FAIL() << "found";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid string position");
  }
}

TEST(PathStringsTest, TellsTheKindOfAFolderByItsName) {
  static_assert(noexcept(GetPathEntryTypeFromBaseName(std::declval<const ustring&>())));
  ExpectTable(
      {u" => 0",       u"a => 0",        u"+ => 1",          u"+p => 1",        u"+@ => 1",
       u"@ => 2",      u"@x => 2",       u"@+ => 2",         u"private => 3",   u"privateX => 0",
       u"privat => 0", u"Private => 0",  u"p => 0",          u" private => 0",  u"resources => 5",
       u"r => 0",      u"resource => 0", u"resourcesX => 0", u"RESOURCES => 0", u"a+ => 0",
       u"a@ => 0"},
      [](const ustring& name) {
        const auto number = static_cast<char16_t>(GetPathEntryTypeFromBaseName(name));
        return ustring(1, static_cast<char16_t>(u'0' + number));
      });
}

TEST(PathStringsTest, GivesTheEndOfAFolderWithItsSpecialFolders) {
  ExpectTable({u"/lib/+pkg/@cls/private => +pkg/@cls/private", u"/lib/tools => tools",
               u"/lib/+pkg => +pkg", u"/+a/@b/c => +a/@b/c", u"/+a/b/private/c d => private/c d",
               u"/resources/a%20 => resources/a%20", u"/a => a", u"/ => ", u"a/b => invalid",
               u" => invalid", u"file:///l/%2Bp/a%20b/ => +p/a b", u"file://host/a => invalid",
               u"ab://h/+c/%20d => +c/ d", u"/a/+b/../c => c", u"/\xD800 => invalid"},
              [](const ustring& folder) -> ustring {
                const ustring end = GetPartialPathIncludingSpecialFolders(folder);
                return end.empty() && folder != u"/" ? u"invalid" : end;
              });
}

}  // namespace
}  // namespace Corvane::PathManagement
