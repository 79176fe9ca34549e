#include "searchpath/platform/storage.h"

#include "support/temporary_tree.h"
#include "support/text_table.h"

namespace Corvane::PathManagement {
namespace {

using namespace foundation::storage::vfs;

// The canonical location of a folder, then that of a file, below the tree.
TEST(StorageTest, ResolvesLinksAsFarAsThereIsSomething) {
  const test::TemporaryTree tree;
  const auto storage = storage::microservicestoragesystem::GetStorageSystemReference();
  tree.Folder("folder/sub");
  tree.Folder("\xFF");
  tree.File("f");
  tree.Link("folder", "near");
  tree.Link(tree.Path("near/sub"), "far");
  tree.Link("../far", "folder/up");
  tree.Link("nowhere/x", "dangling");
  tree.Link("loop/y", "loop");
  tree.Link("\xFF", "odd");
  const ustring tooLong = u"near/" + ustring(300, u'n');
  const auto outcome = [&](auto&& place) -> ustring {
    try {
      const CanonicalAbsoluteIRI location = place.getCanonicalLocation();
      EXPECT_EQ(location, CanonicalAbsoluteIRI(location, u""));
      return location.getPath().substr(tree.Text().size());
    } catch (const foundation::storage::vfs::Exception&) {
      return u"raises";
    }
  };
  test::ExpectTable(
      {u"folder => /folder|/folder", u"near/sub => /folder/sub|/folder/sub", u"f => /f|/f",
       u"far => /folder/sub|/folder/sub", u"near/up/../sub => /folder/sub|/folder/sub",
       u"far/../.. => |", u"odd => /\xDCFF|/\xDCFF", u"near/absent/x => /folder/absent/x|raises",
       u"absent/../folder => /absent/../folder|raises", u"f/x => /f/x|raises",
       u"f/.. => /f/..|raises", u"dangling => /nowhere/x|raises",
       u"dangling/y => /nowhere/x/y|raises", u"loop => raises|raises", u"loop/x => raises|raises",
       tooLong + u" => /folder" + tooLong.substr(4) + u"|raises"},
      [&](const ustring& name) {
        const AbsoluteIRI given(tree.IRI().toString() + u"/" + name);
        EXPECT_EQ(Folder(given, storage).getLocation(), given);
        return outcome(Folder(given, storage)) + u"|" + outcome(File(given, storage));
      });
}

TEST(StorageTest, TakesDotSegmentsOutOfOtherSchemesAsText) {
  test::ExpectTable(
      {u"ab://c", u"ab://c/", u"ab://c//d///", u"ab://c/\u00E9/%41%2f%c3?../x#/./y", u"ab:c/d",
       u"ab://c/../d => ab://c/d", u"ab://c/d/./e/../f/ => ab://c/d/f/", u"ab://c/d/.. => ab://c/",
       u"ab://c/d/. => ab://c/d/", u"ab://c/../../.. => ab://c/", u"ab://c/d//../e => ab://c/d/e",
       u"ab://c/%2e/d/%2E./e?f => ab://c/e?f", u"ab://c/.../..d => ab://c/.../..d",
       u"ab:c/../d => ab:d", u"ab:c/..//../d => ab:d", u"FILE:///a/../b => FILE:///b",
       // what looks like an authority then is none
       u"ab:/.//c => ab:/.//c", u"ab:/d/..//c => ab:/.//c", u"ab:///..//c => ab:////c"},
      [](const ustring& text) {
        const AbsoluteIRI given(text);
        const auto storage = storage::microservicestoragesystem::GetStorageSystemReference();
        const CanonicalAbsoluteIRI canonical = Folder(given, storage).getCanonicalLocation();
        EXPECT_EQ(File(given, storage).getCanonicalLocation(), canonical);
        EXPECT_EQ(Folder(canonical, storage).getCanonicalLocation(), canonical);
        EXPECT_EQ(canonical, CanonicalAbsoluteIRI(canonical, u""));
        return canonical.toString();
      });
}

}  // namespace
}  // namespace Corvane::PathManagement
