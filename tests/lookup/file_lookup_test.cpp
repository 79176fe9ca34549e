#include "searchpath/utilities/file_lookup.h"

#include "support/recording.h"
#include "support/text_table.h"

namespace Corvane::PathManagement {
namespace {

using namespace test;

constexpr Policy kPolicy = Policy::IgnoreCase;

TEST(SearchTargetTest, PrefersTheExtensionInTheName) {
  const auto create = [](const std::vector<ustring>& extensions) {
    return [=](const ustring& name) {
      const auto target = CreateSearchTargetWithExtensionInFilenamePreferred(name, extensions);
      ustring shown = target.GetName();
      for (const ustring& extension : target.GetExtensions()) shown += u"|" + extension;
      return shown;
    };
  };
  ExpectTable({u"fn => fn|.x|.y", u"fn.x", u"fn.z", u"fn.", u"fn.x.", u"a.b/fn => a.b/fn|.x|.y",
               u"a/fn.x", u".profile => .profile|.x|.y", u" => |.x|.y"},
              create({u".x", u".y"}));
  ExpectTable({u"fn", u"fn.x", u" => "}, create({}));
}

/// The path p with the method entries m and n and the ordinary entry o, whose private folder is s.
struct FileLookupTest : testing::Test {
  CallLog log;
  std::shared_ptr<FakeEntry> m = Entry("m"), n = Entry("n"), o = Entry("o"), s = Entry("s");
  FakePath p{"p", &log};
  ItemPointer item = Item(u"i", u".x");

  FileLookupTest() { p.listed = {m, n, o}; }
  std::shared_ptr<FakeEntry> Entry(const char* name) {
    // Not in the canonical form, which look-ups from a folder do not ask for.
    return std::make_shared<FakeEntry>(name, ustring(u"file:///usr/../") + char16_t(name[0]), &log);
  }
  static ItemPointer Item(const ustring& name, const ustring& extension) {
    return std::make_shared<PathItem>(AbsoluteIRI(u"file:///"), name, extension);
  }
  std::string Asked(const FileList& files) {
    std::string all;
    for (const FoundItem& file : files) {
      const auto& entry = dynamic_cast<const FakeEntry&>(*file.GetPathEntry());
      all += Printed(file.GetPathItem()->GetName()) + "@" + entry.name + " ";
    }
    return log.Take(all);
  }
  std::string Asked(const OptionalFile& found) {
    return Asked(found ? FileList{*found} : FileList());
  }
  std::string OnPath(const ustring& name) {
    return Asked(FindFirstFileVisibleOnPath(p, Target(name), kPolicy));
  }
  std::string FromFolder(const ustring& name) {
    const foundation::storage::vfs::Folder folder(o->iri, {});
    const auto asked = Asked(FindFirstFileVisibleFromFolder(p, folder, Target(name), kPolicy));
    EXPECT_EQ(Asked(FindFirstFileVisibleFromFolder(p, o->iri, Target(name), kPolicy)), asked);
    return asked;
  }
};

const std::string kOnPath = " p.FindFirstInScope({0},fn,1) p.GetMethodEntriesByName({0},fn,2)";
const std::string kFromFolder = " p.GetPathEntryFromAbsoluteIRI(file:///usr/../o,2)";

TEST_F(FileLookupTest, TakesTheOrdinaryEntryOrTheMethodEntryThatComesFirst) {
  const std::string none = " m.FindItem(fn,1) n.FindItem(fn,1) o.FindItem(fn,1)";
  EXPECT_EQ(OnPath(u"fn"), kOnPath + none);
  p.firstFound = FoundItem(item, o);
  EXPECT_EQ(OnPath(u"fn"), "i@o " + kOnPath + none);
  n->foundItem = Item(u"j", u".y");
  const std::string both =
      " m.FindItem(fn,1) n.FindItem(fn,1) p.FirstEntryIsBeforeSecondOnPath(n,o)";
  EXPECT_EQ(OnPath(u"fn"), "i@o " + kOnPath + both);
  p.firstIsBeforeSecond = true;
  EXPECT_EQ(OnPath(u"fn"), "j@n " + kOnPath + both);
  p.firstFound = boost::none;
  EXPECT_EQ(OnPath(u"fn"), "j@n " + kOnPath + " m.FindItem(fn,1) n.FindItem(fn,1)");
}

TEST_F(FileLookupTest, LooksInThePrivateFolderFirst) {
  p.listed.clear();
  EXPECT_EQ(FromFolder(u"fn"), kFromFolder + kOnPath);
  p.entryByIRI[u"file:///usr/../o"] = o;
  EXPECT_EQ(FromFolder(u"fn"), kFromFolder + " o.GetSingleSubfolderEntryA()" + kOnPath);
  o->singleA = s;
  const std::string inPrivate = kFromFolder + " o.GetSingleSubfolderEntryA() s.FindItem(fn,1)";
  EXPECT_EQ(FromFolder(u"fn"), inPrivate + kOnPath);
  s->foundItem = item;
  EXPECT_EQ(FromFolder(u"fn"), "i@s " + inPrivate);
}

TEST_F(FileLookupTest, LooksForNamesWithSeparatorsEverywhere) {
  p.entryByIRI[u"file:///usr/../o"] = o;
  for (std::size_t place = 0; place < 13 * 13; ++place) {  // units are compared four at a time
    ustring name(place / 13, u'a');
    name.insert(place % (name.size() + 1), 1, u'/');
    const std::string ask = " p.FindFirstInScope({0,1,2,3,4}," + Printed(name) + ",1)";
    p.firstFound = boost::none;
    EXPECT_EQ(OnPath(name) + FromFolder(name), ask + ask);
    p.firstFound = FoundItem(item, o);
    EXPECT_EQ(OnPath(name) + FromFolder(name), "i@o " + ask + "i@o " + ask);
  }
}

TEST_F(FileLookupTest, FindsFilesByExtensions) {
  m->items = {Item(u"a", u".x"), Item(u"b", u""), Item(u"c", u".y"), Item(u"d", u".x")};
  n->items = {Item(u"e", u".x")};
  m->comparator = [](const ustring& wanted, const ustring& own) {
    return wanted == own || (wanted == u".Y" && own == u".y");
  };
  const std::string calls = " m.GetFilenameComparator(1) m.GetItems()";
  EXPECT_EQ(Asked(FindFilesByExtensions(m, {u".x", u".Y", u".x"}, kPolicy)),
            "a@m a@m c@m d@m d@m " + calls);
  EXPECT_EQ(Asked(FindFilesByExtensions(m, {}, kPolicy)), calls);
  p.listed = {n, m, n};
  const std::uint32_t kinds[] = {0, 3};
  const std::string calls2 = " n.GetFilenameComparator(1) n.GetItems()";
  EXPECT_EQ(Asked(FindFilesByExtensions(p, {kinds, 2}, {u".x"}, kPolicy)),
            "e@n a@m d@m e@n  p.ForEachEntry({0,3},visitor)" + calls2 + calls + calls2);
  n->comparator = nullptr;
  EXPECT_THROW((void)FindFilesByExtensions(n, {u".x"}, kPolicy), std::bad_function_call);
}

}  // namespace
}  // namespace Corvane::PathManagement
