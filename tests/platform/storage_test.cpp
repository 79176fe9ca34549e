#include "searchpath/platform/storage.h"

#include "support/refused_calls.h"
#include "support/temporary_tree.h"
#include "support/text_table.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>

namespace Corvane::PathManagement {
namespace {

using namespace foundation::storage::vfs;

const auto storage = ::storage::microservicestoragesystem::GetStorageSystemReference();

/// The canonical location of a folder, then that of a file, below the tree.
ustring CanonicalBelow(const test::TemporaryTree& tree, const ustring& name) {
  const AbsoluteIRI given(tree.IRI().toString() + u"/" + name);
  const auto outcome = [&](auto&& place) -> ustring {
    try {
      const CanonicalAbsoluteIRI location = place.getCanonicalLocation();
      EXPECT_EQ(location, CanonicalAbsoluteIRI(location, u""));
      return location.getPath().substr(tree.Text().size());
    } catch (const foundation::storage::vfs::Exception&) {
      return u"raises";
    }
  };
  EXPECT_EQ(Folder(given, storage).getLocation(), given);
  return outcome(Folder(given, storage)) + u"|" + outcome(File(given, storage));
}

TEST(StorageTest, ResolvesLinksAsFarAsThereIsSomething) {
  const test::TemporaryTree tree;
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
  test::ExpectTable(
      {u"folder => /folder|/folder", u"near/sub => /folder/sub|/folder/sub", u"f => /f|/f",
       u"far => /folder/sub|/folder/sub", u"near/up/../sub => /folder/sub|/folder/sub",
       u"far/../.. => |", u"odd => /\xDCFF|/\xDCFF", u"near/absent/x => /folder/absent/x|raises",
       u"absent/../folder => /absent/../folder|raises", u"f/x => /f/x|raises",
       u"f/.. => /f/..|raises", u"dangling => /nowhere/x|raises",
       u"dangling/y => /nowhere/x/y|raises", u"loop => raises|raises", u"loop/x => raises|raises",
       tooLong + u" => /folder" + tooLong.substr(4) + u"|raises"},
      [&](const ustring& name) { return CanonicalBelow(tree, name); });
}

TEST(StorageTest, ResolvesAsManyAndAsLongLinksAsTheKernel) {
  const test::TemporaryTree tree;
  tree.Folder("link0");
  for (int link = 1; link <= 41; ++link) {
    tree.Link("link" + std::to_string(link - 1), "link" + std::to_string(link));
  }
  EXPECT_EQ(CanonicalBelow(tree, u"link40"), u"/link0|/link0");
  EXPECT_EQ(CanonicalBelow(tree, u"link41"), u"raises|raises");
  for (const std::size_t length : {255U, 256U, 257U, 512U, 4000U}) {
    const std::string name = "text" + std::to_string(length);
    tree.Link(std::string(length - 5, '/').replace(0, 1, ".") + "link0", name);
    EXPECT_EQ(CanonicalBelow(tree, TextFromBytes(name)), u"/link0|/link0") << length;
  }
}

TEST(StorageTest, KeepsWhatIsTooLongForTheKernelAsText) {
  const test::TemporaryTree tree;
  tree.Folder("folder");
  tree.Link("folder", "link");
  ustring folded, names;
  for (int count = 0; count < 1500; ++count) folded += u"../folder/", names += u"/nnn";
  EXPECT_EQ(CanonicalBelow(tree, u"link/" + folded), u"/folder|/folder");
  EXPECT_EQ(CanonicalBelow(tree, u"link" + names), u"/folder" + names + u"|raises");
}

TEST(StorageTest, RaisesWhatTheDiskFailsToReadAndTakesWhatVanishesForGone) {
  const test::TemporaryTree tree;
  tree.Folder("folder/sub");
  tree.Link("folder", "link");
  for (const auto& [spoil, expected] : std::vector<std::pair<std::function<void()>, std::string>>{
           {[] {}, "/folder/sub|/folder/sub"},
           {test::Refusing(SYS_readlinkat, 3, ~0U, ENOENT), "/link/sub|raises"},
           {test::Refusing(SYS_readlinkat, 3, ~0U, EIO), "raises|raises"},
           {test::Refusing(SYS_newfstatat, 3, AT_SYMLINK_NOFOLLOW, EACCES), "/link/sub|raises"},
           {test::Refusing(SYS_newfstatat, 3, AT_SYMLINK_NOFOLLOW, EIO), "raises|raises"}}) {
    const auto answer = [&] { return BytesFromText(CanonicalBelow(tree, u"link/sub")).value(); };
    EXPECT_EXIT((spoil(), std::cerr << answer(), _exit(0)), testing::ExitedWithCode(0),
                testing::Eq(expected));
  }
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
        const CanonicalAbsoluteIRI canonical = Folder(given, storage).getCanonicalLocation();
        EXPECT_EQ(File(given, storage).getCanonicalLocation(), canonical);
        EXPECT_EQ(Folder(canonical, storage).getCanonicalLocation(), canonical);
        EXPECT_EQ(canonical, CanonicalAbsoluteIRI(canonical, u""));
        return canonical.toString();
      });
}

}  // namespace
}  // namespace Corvane::PathManagement
