#include "searchpath/utilities/iri_conversion.h"

#include "support/temporary_tree.h"
#include "support/text_table.h"

namespace Corvane::PathManagement {
namespace {

TEST(IRIConversionTest, TurnsTextIntoIRIs) {
  test::ExpectTable({u"/a b%20/./c/ => file:///a%20b%2520/c", u"/a/../b => file:///a/../b",
                     u"file:///a/../b%20%zz => file:///b%20%25zz", u"FILE:///%7e => FILE:///~",
                     u"http://H/%7e/./\u00E9 => http://h/~/%C3%A9", u"a => invalid", u" => invalid",
                     u"file://h/a => invalid", u"file:/a => invalid", u"ab://[ => invalid"},
                    [](const ustring& text) { return GetIRIFromString(text).toString(); });
}

TEST(IRIConversionTest, TurnsIRIsIntoText) {
  test::ExpectTable(
      {u"file:///a%20b/%25/%FF => /a b/%/\xDCFF", u"FILE:///a%20b => FILE:///a b", u"File:///%FF",
       u"http://h/%C3%A9?a%20b => http://h/\u00E9?a b", u"http://h/a%2Fb%2541 => http://h/a/b%41"},
      [](const ustring& text) { return GetStringFromIRI(AbsoluteIRI(text)); });
}

TEST(IRIConversionTest, TurnsTextIntoCanonicalIRIs) {
  const test::TemporaryTree tree;
  tree.Folder("folder");
  tree.Link("folder", "link");
  const auto folder = CanonicalAbsoluteIRI(tree.IRI("folder"), u"");
  EXPECT_EQ(GetCanonicalIRIFromString(tree.Text("link")), folder);
  EXPECT_EQ(GetCanonicalIRIFromString(tree.IRI("link/.").toString()), folder);
  EXPECT_EQ(GetCanonicalIRI(tree.IRI("link")), folder);
  EXPECT_THROW(static_cast<void>(GetCanonicalIRIFromString(u"link")),
               foundation::storage::vfs::InvalidIRIException);
}

}  // namespace
}  // namespace Corvane::PathManagement
