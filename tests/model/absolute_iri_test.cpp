#include "searchpath/model/absolute_iri.h"

#include "support/text_table.h"

namespace Corvane::PathManagement {
namespace {

using foundation::storage::vfs::InvalidIRIException;
using std::string_literals::operator""s;
using test::OrInvalid;

const ustring kLong(1'000'000, u'a');

// In these tables a text that begins with "/" is a path that stands after "file://".
const std::vector<ustring> kAccepted = {
    // as it is
    u"/", u"/a", u"/A/b.c", u"/lib-x_1~2", u"/!$&'()*+,-.0:;=@_~", u"/+pkg/@cls/private",
    u"/" + kLong, u"/..", u"/a/..", u"/a/../b", u"/...", u"/.a", u"/a.", u"/a./..b", u"/a%20b",
    u"/%25", u"/%2525", u"/%2541", u"/%252F", u"/\u00E9", u"/e\u0301", u"/\U0001F600",
    u"/\uFFFE\uFEFF", u"/\xD83D\xDC80", u"/%FF", u"/%80", u"/%C3", u"/%E2%82a", u"/%C0%AF",
    u"/%C0%80", u"/%ED%A0%80", u"/%F4%90%80%80", u"/%F8%88%80%80%80", u"FILE:///a//%41%2f",
    u"File:///..", u"a-b+c.1://h/p", u"http://h", u"http://H/a//./b/../c/", u"http://h/%41%2f%00",
    u"http://u:p@[::1]:80/a?b/c#d?e", u"urn:a:b/c", u"mailto:a@b", u"http://h/\u00E9\U0001F600",
    // separators and dots
    u"// => /", u"///a => /a", u"/a/ => /a", u"/a//b///c// => /a/b/c", u"/. => /", u"/%2E => /",
    u"/./a/./b/. => /a/b", u"/a/%2e/b => /a/b", u"/../ => /..", u"/a/%2E%2e/b => /a/../b",
    // characters and bytes
    u"/%61%5A%3a%7E => /aZ:~", u"/%2Bpkg/%40cls => /+pkg/@cls", u"/a b => /a%20b",
    u"/\x01\t\n\x1F\x7F => /%01%09%0A%1F%7F", u"/%7b%5c%3f%0a%20 => /%7B%5C%3F%0A%20",
    u"/\"#<>?[]\\^`{|} => /%22%23%3C%3E%3F%5B%5D%5C%5E%60%7B%7C%7D", u"/%c3%A9 => /\u00E9",
    u"/%E2%82%AC%F0%9F%98%80%F4%8F%BF%BF => /\u20AC\U0001F600\U0010FFFF", u"/%ff => /%FF",
    u"/%C3%28 => /%C3(", u"/\xDC80\xDCFF => /%80%FF", u"/\xDCC3\xDCA9 => /\u00E9",
    u"/%C3\xDCA9/\xDCC3%A9 => /\u00E9/\u00E9", u"/\xDCC3z => /%C3z",
    u"/\xD83D\xDC80\xDC80 => /\xD83D\xDC80%80",
    // authorities, other schemes
    u"file:/ => /", u"file:/a => /a", u"file:// => /", u"file:////a// => /a",
    u"file://localhost => /", u"file://LocalHost//a => /a", u"http://h/a[1] => http://h/a%5B1%5D",
    u"http://h/a b\"{c}|\\^`<>\x7F\t => http://h/a%20b%22%7Bc%7D%7C%5C%5E%60%3C%3E%7F%09",
    u"http://h/\xDC80\xDCC3\xDCA9 => http://h/%80\u00E9"};

const std::vector<ustring> kRefused = {
    // "%" that begins no escape, escapes that name no file, NUL
    u"/%", u"/%4", u"/%G0", u"/%0G", u"/%%41", u"/% 41", u"/%u0041", u"/%+1", u"/a%4/b", u"/%00",
    u"/a%00b", u"/%2F", u"/a%2fb", u"/..%2F", u"/a\0b"s, u"/\0"s,
    // surrogates that stand for nothing
    u"/\xD800", u"/\xDBFFz", u"/\xDC00", u"/\xDC7F", u"/\xDD00", u"/\xDFFF", u"/\xDC80\xD800",
    u"/\xD83D%80", u"/\xD83D%C3%A9", u"/\xD800/\xDC00",
    // no scheme
    u"", u"a", u"file", u":a", u"://h", u" file:///a", u"c:/a", u"1a:/b", u"+a:/b", u"a b:/c",
    u"\u00E9\u00E9:/c", u"fi\0le:///a"s, u"a/b://c",
    // no path, or an authority that a "file" IRI cannot have
    u"file:", u"file:a", u"file:?", u"file://host/a", u"file://?x", u"file://localhos/a",
    u"file://localhost1/a", u"file://localhost:80/a", u"file://u@localhost/a",
    u"file://%6Cocalhost/a", u"file://127.0.0.1/a", u"file://localhost\0/a"s, u"file://\\host/a",
    // other schemes
    u"http://h/\xD800", u"http://h/\xD83D%80", u"http://h/\0"s, u"http://h/%", u"http://h/%4",
    u"http://[::1/a", u"http://h/a#b#c", u"http://h/" + kLong};

AbsoluteIRI Parsed(const ustring& text) {
  return AbsoluteIRI(text.starts_with(u'/') ? u"file://" + text : text);
}

ustring Spelled(const ustring& text) {
  const ustring spelled = Parsed(text).toString();
  return spelled.starts_with(u"file://") ? spelled.substr(7) : spelled;
}

TEST(AbsoluteIRITest, HasOneSpelling) {
  test::ExpectTable(kAccepted, Spelled);
  for (const ustring& text : kRefused) test::ExpectTable({text + u" => invalid"}, Spelled);
  try {
    AbsoluteIRI(u"/a%zz\n");
    FAIL() << "accepted";
  } catch (const InvalidIRIException& error) {
    EXPECT_NE(std::string_view(error.what()).find("/a%zz\\"), std::string_view::npos)
        << error.what();
  }
}

TEST(AbsoluteIRITest, IsItsText) {
  static_assert(sizeof(AbsoluteIRI) == sizeof(void*));
  std::vector<AbsoluteIRI> iris;
  for (const ustring& row : kAccepted) iris.push_back(Parsed(row.substr(0, row.find(u" => "))));
  for (const AbsoluteIRI& iri : iris) {
    const ustring text = iri.toString();
    const AbsoluteIRI copy = iri;
    EXPECT_EQ(copy.toStringView().data(), iri.toStringView().data());
    EXPECT_EQ(AbsoluteIRI(text), iri) << testing::PrintToString(text);
    EXPECT_EQ(iri.getScheme(), text.substr(0, text.find(u':')));
    EXPECT_EQ(hash_value(iri), iri.hashValue());
    for (const AbsoluteIRI& other : iris) {
      ASSERT_EQ(iri == other, text == other.toStringView());
      ASSERT_EQ(iri.hashValue() == other.hashValue(), text == other.toStringView());
      ASSERT_EQ(iri < other, text < other.toStringView());
    }
  }
}

// Name, path, parent, and the same without "..".
TEST(AbsoluteIRITest, TellsItsParts) {
  test::ExpectTable(
      {u"file:/// =>  | / | invalid | file:///", u"file:///a => a | /a | file:/// | file:///a",
       u"file:///a/b%20%25%3F => b %? | /a/b %? | file:///a | file:///a/b%20%25%3F",
       u"file:///%FF/%C3x => \xDCC3x | /\xDCFF/\xDCC3x | file:///%FF | file:///%FF/%C3x",
       u"file:///a..b/... => ... | /a..b/... | file:///a..b | file:///a..b/...",
       u"file:///a/../b => b | /a/../b | file:///a/.. | file:///b",
       u"file:///a/b/../../c/.. => .. | /a/b/../../c/.. | file:///a/b/../../c | file:///",
       u"file:///.. => .. | /.. | file:/// | invalid",
       u"file:///a/../../b => b | /a/../../b | file:///a/../.. | invalid",
       u"FILE:///a/b%20c => b c | /a/b c | FILE:///a | FILE:///a/b%20c",
       u"http://h =>  | / | invalid | http://h",
       u"http://h/a/ => a | /a/ | http://h/ | http://h/a/",
       u"http://h/a%2Fb/%E9%C3%A9?q/r#f => %E9\u00E9 | /a%2Fb/%E9\u00E9 | http://h/a%2Fb | "
       u"http://h/a%2Fb/%E9%C3%A9?q/r#f",
       u"http://h/a/../%00?q#.. => %00 | /a/../%00 | http://h/a/.. | http://h/%00?q#..",
       u"urn:a/../b => b | /a/../b | urn:a/.. | urn:b",
       u"urn:a:b/c => c | /a:b/c | urn:a:b | urn:a:b/c", u"urn:a => a | /a | invalid | urn:a"},
      [](const ustring& text) {
        const AbsoluteIRI iri(text);
        const ustring parent = OrInvalid([&] { return iri.getParent().toString(); });
        EXPECT_EQ(iri.hasParent(), parent != u"invalid");
        return iri.getName() + u" | " + iri.getPath() + u" | " + parent + u" | " +
               OrInvalid([&] { return iri.getResolvedIRI().toString(); });
      });
}

TEST(AbsoluteIRITest, IsWrittenRelativeToOneAbove) {
  test::ExpectTable(
      {u"/a/b/c%20d | /a => b/c d", u"/a/%FF | / => a/\xDCFF", u"/a | /a => invalid",
       u"http://h/a/b/?q | http://h/a/#f => b", u"/a | /a/b => invalid", u"/ab | /a => invalid",
       u"/ | / => invalid", u"/A/b | /a => invalid", u"FILE:///a/b | /a => invalid",
       u"http://h/a | http://g/ => invalid", u"http://h/a | http://h:80/ => invalid"},
      [](const ustring& both) {
        const auto bar = both.find(u" | ");
        return Parsed(both.substr(0, bar)).makePathRelativeTo(Parsed(both.substr(bar + 3)));
      });
}

TEST(CanonicalAbsoluteIRITest, IsComparedWithItsString) {
  const AbsoluteIRI a(u"file:///a"), b(u"file:///b");
  const CanonicalAbsoluteIRI ordered[] = {{a, u""}, {a, u"x"}, {a, u"y"}, {b, u""}};
  for (const auto& left : ordered) {
    for (const auto& right : ordered) {
      EXPECT_EQ(left == right, &left == &right);
      EXPECT_EQ(left < right, &left < &right);
    }
    EXPECT_EQ(left == a, &left != &ordered[3]);
  }
}

/// `before` is no copy of `iri`, which would keep what both share alive.
template <class IRI>
void ExpectKeptByAssignmentToItself(IRI iri, const IRI& before) {
  IRI& same = iri;
  iri = same;
  EXPECT_EQ(iri, before);
  EXPECT_EQ(iri.getScheme(), before.getScheme());
  iri = std::move(same);
  EXPECT_EQ(iri, before);
}

TEST(AbsoluteIRITest, IsKeptByAssignmentToItself) {
  const AbsoluteIRI iri(u"file:///a");
  ExpectKeptByAssignmentToItself(AbsoluteIRI(u"file:///b"), AbsoluteIRI(u"file:///b"));
  for (const ustring& text : {ustring(u"short"), ustring(100, u's')}) {
    ExpectKeptByAssignmentToItself(CanonicalAbsoluteIRI(iri, text),
                                   CanonicalAbsoluteIRI(iri, text));
  }
  static_assert(std::is_nothrow_move_assignable_v<CanonicalAbsoluteIRI>);
}

}  // namespace
}  // namespace Corvane::PathManagement
