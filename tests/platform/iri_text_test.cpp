#include "searchpath/platform/iri_text.h"

#include "support/text_table.h"

namespace foundation::storage {
namespace {

using Corvane::PathManagement::test::ExpectTable;
using std::string_literals::operator""s;
using vfs::fromAbsoluteIRI;
using vfs::toAbsoluteIRI;

// The root, the extension, and whether the name is (e) absolute when expanded, (a) absolute as it
// stands, (i) the text of an IRI.
TEST(FilesystemTest, TakesNamesApart) {
  ExpectTable(
      {u"/usr/fn.x => /|.x|ea", u"//a => //||ea", u"/ => /||ea", u" => ||", u"a.b/fn => ||",
       u".profile => ||", u"a/.x => ||", u"a/.x.y => |.y|", u"fn. => |.|",
       // homes and IRIs
       u"~ => ||e", u"~u/a.b => |.b|e", u"a~ => ||", u"file:///a => ||eai", u"ab://x.y => |.y|eai",
       u"a-b+1.c:/// => ||eai", u"file:// => ||eai", u"a://x => ||", u"ab:/x => ||",
       u"1b://x => ||", u"c:\\a => ||", u"/ab://x => /||ea", u" ab://x => ||", u"://x => ||"},
      [](const ustring& name) {
        using namespace fl::filesystem;
        ustring kinds = detail::is_absolute_path_when_expanded(name, true) ? u"e" : u"";
        if (detail::is_absolute_path_when_expanded(name, false)) kinds += u'a';
        if (vfs::hasIRIPrefix(name)) kinds += u'i';
        EXPECT_EQ(detail::make_native_form(path(name).native(), true), name);
        return detail::extract_root_path(name) + u"|" + detail::extract_extension(name) + u"|" +
               kinds;
      });
}

TEST(IRITextTest, IsNormalised) {
  ExpectTable({u"file:///a/../../b/. => file:///b", u"file:/a b/%2e%2e/c => file:///c",
               u"file:///%+1%zz%4%41 => file:///%25+1%25zz%254A", u"file:///.. => file:///",
               u"file:///%2F => invalid", u"file:///%00 => invalid", u"file://h/a => invalid",
               u"file:///\xD83D%80 => invalid", u"/a => invalid", u"c:/a => invalid",
               u"HTTP://u@HoST/a/./b/../%7e%2f%c3?%41#%42 => HTTP://u@host/a/~%2F%C3?A#B",
               u"http://h/\u00E9 c => http://h/%C3%A9%20c", u"http://h/a/../.. => http://h/",
               u"FILE:///a//b/ => FILE:///a//b/", u"ab:/.//c => ab:/.//c", u"ab:/%zz => invalid",
               u"http://H%c3%a9%2fx/%c3 => http://h%C3%A9%2Fx/%C3",
               u"ab://\u00E9%e9?%zz => invalid", u"ab://\u00C9%c9 => ab://%C3%89%C9"},
              [](ustring text) { return utility::normalizeURL(text), text; });
}

TEST(IRITextTest, IsDecodedForDisplay) {
  const auto decode = [](bool decodeUtf8) {
    return [=](ustring text) { return utility::decodeURL(text, decodeUtf8), text; };
  };
  ExpectTable(
      {u"http://h/a%20b%C3%A9%f0%9F%98%80 => http://h/a b\u00E9\U0001F600", u"%zz%4%", u"%FF%C3( ",
       u"%C0%AF%ED%A0%80", u"%e9%C3%A9 => %e9\u00E9", u"a+b", u"\xD83D%80", u"%2541%25 => %41%",
       u"http://h/a%2Fb%3fc%23%00d => http://h/a/b?c#\0d"s, u"%C3%2F%a9 => %C3/%a9"},
      decode(true));
  ExpectTable({u"%20%C3%A9%41%2F%00 =>  %C3%A9A/\0"s, u"%zz%4%"}, decode(false));
}

TEST(IRITextTest, ComesFromNativePathsAndBack) {
  ExpectTable(
      {u"/a b%20 => file:///a%20b%2520", u"//a/./b// => file:///a/b", u"/a/../b => file:///a/../b",
       u"/%2F%00 => file:///%252F%2500", u"/\xDCFF => file:///%FF",
       u"/\xDCC3\xDCA9 => file:///\u00E9", u" => invalid", u"a => invalid", u"~/a => invalid",
       u"file:///a => invalid", u"/a\0 => invalid"s, u"/\xD800 => invalid"},
      [](const ustring& path) { return toAbsoluteIRI(u"file", path).toString(); });
  ExpectTable({u"zip => zip:///a%20b", u" => invalid", u"c => invalid", u"a b => invalid",
               u"file:///x => invalid", u"file: => invalid"},
              [](const ustring& scheme) { return toAbsoluteIRI(scheme, u"/a b").toString(); });
  ExpectTable({u"file:///a%20b/%FF => /a b/\xDCFF", u"FILE:///a => invalid", u"ab:/c => invalid"},
              [](const ustring& text) { return fromAbsoluteIRI(vfs::AbsoluteIRI(text)).native(); });
}

}  // namespace
}  // namespace foundation::storage
