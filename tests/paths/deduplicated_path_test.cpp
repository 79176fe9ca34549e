#include "searchpath/utilities/deduplicated_path.h"

#include "composite_test.h"

namespace Corvane::PathManagement {
namespace {

using namespace test;

/// q holds another entry for the folder b, called B, and twice c; each entry visits itself.
struct DeduplicatedPathTest : CompositeTest {
  std::shared_ptr<FakeEntry> b2 = std::make_shared<FakeEntry>("B", u"file:///b");
  DeduplicatedPath both{Parts{p, q = MakePart("q", {b2, c, c}, &log)}};

  DeduplicatedPathTest() {
    for (const auto& entry : {a, b, b2, c}) entry->visited = {Unowned(entry)};
  }
};

TEST_F(DeduplicatedPathTest, ListsEachFolderOnceAtItsFirstPlace) {
  for (const auto& entry : {a, b, b2, c}) entry->log = &log;
  const auto each = [](const std::string& call) {
    return "abc p." + call + " a.GetCanonicalAbsoluteIRI() b.GetCanonicalAbsoluteIRI() q." + call +
           " B.GetCanonicalAbsoluteIRI() c.GetCanonicalAbsoluteIRI() c.GetCanonicalAbsoluteIRI()";
  };
  EXPECT_EQ(Asked(both.GetMethodEntries()), each("GetMethodEntries()"));
  EXPECT_EQ(Asked(both.GetMainEntries()), each("GetMainEntries()"));
  EXPECT_EQ(Asked(both.GetMainEntries()), "abc");
}

TEST_F(DeduplicatedPathTest, ListsEachFileOnceWhereverItsNameIsCut) {
  const auto file = [](const auto& folder, const ustring& name, const ustring& extension) {
    return std::make_shared<PathItem>(folder->iri, name, extension);
  };
  p->allFound = {{file(a, u"f", u"n.x"), a}, {file(a, u"fn", u".y"), b}};
  q->allFound = {{file(a, u"", u"fn.x"), d}, {file(b2, u"f", u"n.x"), c},
                 {file(a, u"FN", u".x"), d}, {file(a, u"fn.y", u""), d},
                 {file(b, u"fn", u".x"), d}, {file(a, u"fn", u""), b2}};
  EXPECT_EQ(Asked(both.FindAllInScope(kScope, kTarget, kPolicy)),
            Both("abcdB", "FindAllInScope({1,3},t|.x,1)"));
}

TEST_F(DeduplicatedPathTest, TraversesThePartsUntilItsListIsBuilt) {
  p->log = q->log = nullptr;
  b->visited.push_back(a);
  for (const auto forEach : {&IPath::ForEachEntry, &IPath::ConcurrentForEachEntry}) {
    DeduplicatedPath path = both;
    const auto visitUpTo = [&](const auto& last) { return Asked(Visit(path, forEach, last)); };
    EXPECT_EQ(visitUpTo(d), "no a b c");
    EXPECT_EQ(visitUpTo(b), "yes a b");
    EXPECT_THROW((path.*forEach)(kScope, nullptr), std::bad_function_call);
    EXPECT_EQ(Names(path.GetMainEntries()), "abc");
    EXPECT_EQ(visitUpTo(d), "no a b a c");
    EXPECT_EQ(visitUpTo(a), "yes a");
    EXPECT_THROW((path.*forEach)(kScope, nullptr), std::bad_function_call);
    const DeduplicatedPath target = std::move(path);
    EXPECT_EQ(visitUpTo(d), "no a b c");
  }
}

TEST_F(DeduplicatedPathTest, IsCopiedAndMovedWithWhatIsBuilt) {
  static_assert(!std::is_nothrow_move_constructible_v<DeduplicatedPath>);
  static_assert(!std::is_copy_assignable_v<DeduplicatedPath> && !std::is_final_v<DeduplicatedPath>);
  const DeduplicatedPath unbuilt = both;
  const auto entries = both.GetMainEntries();
  EXPECT_NE(unbuilt.GetMainEntries(), entries);
  EXPECT_EQ(DeduplicatedPath(both).GetMainEntries(), entries);
  EXPECT_EQ(DeduplicatedPath(std::move(both)).GetMainEntries(), entries);
  EXPECT_EQ(both.GetMainEntries(), nullptr);
}

TEST_F(DeduplicatedPathTest, MayBeEmpty) {
  p->mainEntries = nullptr;  // as of a composite that was moved from
  q->mainEntries = std::make_shared<const EntryList>();
  EXPECT_EQ(Asked(both.GetMainEntries()), Both("", "GetMainEntries()"));
  EXPECT_EQ(Asked(Visit(both, &IPath::ForEachEntry, a)), "yes p.ForEachEntry({1,3},visitor) a");
  const DeduplicatedPath empty{Parts()};
  EXPECT_EQ(Names(empty.GetMainEntries()) + Names(empty.GetMethodEntries()), "");
  EXPECT_FALSE(empty.ForEachEntry(kScope, nullptr));
}

}  // namespace
}  // namespace Corvane::PathManagement
