#include "searchpath/utilities/concatenated_path.h"

#include "composite_test.h"

namespace Corvane::PathManagement {
namespace {

using namespace test;

struct ConcatenatedPathTest : CompositeTest {
  ConcatenatedPath both{p, q};

  std::string Order(const EntryPointer& first, const EntryPointer& second) {
    return Asked(both.FirstEntryIsBeforeSecondOnPath(*first, *second));
  }
};

TEST_F(ConcatenatedPathTest, JoinsTheListsOfAllParts) {
  EXPECT_EQ(Asked(both.GetMethodEntries()), Both("abbcc", "GetMethodEntries()"));
  EXPECT_EQ(Asked(both.GetMethodEntriesByName(kScope, u"n", kPolicy)),
            Both("abbcc", "GetMethodEntriesByName({1,3},n,1)"));
  EXPECT_EQ(Asked(both.GetPartiallyMatchingEntries(kScope, u"n", kPolicy)),
            Both("abbcc", "GetPartiallyMatchingEntries({1,3},n,1)"));
  EXPECT_EQ(Asked(both.FindAllInScope(kScope, kTarget, kPolicy)),
            Both("abbcc", "FindAllInScope({1,3},t|.x,1)"));
}

TEST_F(ConcatenatedPathTest, TakesTheFirstAnswer) {
  EXPECT_EQ(Asked(both.GetMainEntryForEntry(*c)),
            Both("b", "IsEntryOnPath(c)") + " q.GetMainEntryForEntry(c)");
  q->parentEntryFor[b.get()] = a;
  EXPECT_EQ(Asked(both.GetParentEntryForEntry(*b)),
            "- p.IsEntryOnPath(b) p.GetParentEntryForEntry(b)");
  EXPECT_EQ(Asked(both.FindFirstInScope(kScope, kTarget, kPolicy)),
            Both("-", "FindFirstInScope({1,3},t|.x,1)"));
  p->firstFound = FoundItem(nullptr, a);
  EXPECT_EQ(Asked(both.FindFirstInScope(kScope, kTarget, kPolicy)),
            "a p.FindFirstInScope({1,3},t|.x,1)");
  EXPECT_EQ(Asked(both.IsEntryOnPath(*b)), "yes p.IsEntryOnPath(b)");
  EXPECT_EQ(Asked(both.IsEntryOnPath(*c)), Both("yes", "IsEntryOnPath(c)"));
  EXPECT_EQ(Asked(both.IsEntryOnPath(*d)), Both("no", "IsEntryOnPath(d)"));
}

TEST_F(ConcatenatedPathTest, LooksIRIsUpExactlyBeforeByPolicy) {
  const std::string ask = "GetPathEntryFromAbsoluteIRI(file:///";
  const auto exactly = [&](const EntryPointer& entry) {
    return Asked(both.GetPathEntryFromAbsoluteIRI(entry->GetCanonicalAbsoluteIRI()));
  };
  const auto byPolicy = [&](const EntryPointer& entry) {
    return Asked(both.GetPathEntryFromAbsoluteIRI(entry->GetAbsoluteIRI(), kPolicy));
  };
  EXPECT_EQ(exactly(b), "b p." + ask + "b)");
  EXPECT_EQ(exactly(d), Both("-", ask + "d)"));
  EXPECT_EQ(byPolicy(c), Both("c", ask + "c)"));
  EXPECT_EQ(byPolicy(d), Both(Both("-", ask + "d)"), ask + "d,1)"));
  q->entryByIRI[u"file:///d"] = c;
  EXPECT_EQ(byPolicy(d), Both(Both("c", ask + "d)"), ask + "d,1)"));
  p->entryByIRI[u"file:///d"] = a;
  EXPECT_EQ(byPolicy(d), Both("a", ask + "d)") + " p." + ask + "d,1)");
}

TEST_F(ConcatenatedPathTest, VisitsPartAfterPart) {
  for (const auto forEach : {&IPath::ForEachEntry, &IPath::ConcurrentForEachEntry}) {
    const std::string ask = forEach == &IPath::ForEachEntry ? "ForEach" : "ConcurrentForEach";
    const std::string first = " p." + ask + "Entry({1,3},visitor) a";
    const std::string second = " b q." + ask + "Entry({1,3},visitor) b c c";
    EXPECT_EQ(Asked(Visit(both, forEach, d)), "no" + first + second);
    EXPECT_EQ(Asked(Visit(both, forEach, a)), "yes" + first);
    EXPECT_EQ(Asked(Visit(both, forEach, b)), "yes" + first + " b");
    EXPECT_THROW((both.*forEach)(kScope, nullptr), std::bad_function_call);
    log.Take();
  }
}

TEST_F(ConcatenatedPathTest, OrdersTwoEntriesByTheFirstPartThatHoldsOne) {
  const std::string tie =
      " p.IsEntryOnPath(b) p.IsEntryOnPath(b) p.FirstEntryIsBeforeSecondOnPath(b,b)";
  EXPECT_EQ(Order(b, b), "no" + tie);
  p->firstIsBeforeSecond = true;
  EXPECT_EQ(Order(b, b), "yes" + tie);
  EXPECT_EQ(Order(b, c), "yes p.IsEntryOnPath(b) p.IsEntryOnPath(c)");
  EXPECT_EQ(Order(c, b), "no p.IsEntryOnPath(c) p.IsEntryOnPath(b)");
  EXPECT_EQ(Order(d, c),
            "no p.IsEntryOnPath(d) p.IsEntryOnPath(c) q.IsEntryOnPath(d) q.IsEntryOnPath(c)");
  EXPECT_EQ(Order(c, d).substr(0, 3), "yes");
  EXPECT_EQ(Order(d, d).substr(0, 3), "no ");
}

TEST_F(ConcatenatedPathTest, BuildsTheMainEntriesOnce) {
  p->mainEntries = nullptr;  // as of a composite that was moved from
  const auto entries = both.GetMainEntries();
  EXPECT_EQ(Asked(*entries), Both("bcc", "GetMainEntries()"));
  q->mainEntries = nullptr;
  EXPECT_EQ(both.GetMainEntries(), entries);
  EXPECT_EQ(ConcatenatedPath(both).GetMainEntries(), entries);
  EXPECT_EQ(Asked(*ConcatenatedPath(p, q).GetMainEntries()), Both("", "GetMainEntries()"));
}

TEST_F(ConcatenatedPathTest, IsCopiedAndMovedWithWhatIsBuilt) {
  static_assert(!std::is_nothrow_move_constructible_v<ConcatenatedPath>);
  static_assert(!std::is_copy_assignable_v<ConcatenatedPath> && !std::is_final_v<ConcatenatedPath>);
  const ConcatenatedPath unbuiltCopy = both;
  const ConcatenatedPath unbuiltTarget = std::move(both);
  const auto entries = both.GetMainEntries();  // it has kept its parts
  for (const ConcatenatedPath* unbuilt : {&unbuiltCopy, &unbuiltTarget}) {
    EXPECT_EQ(Names(*unbuilt->GetMainEntries()), "abbcc");
    EXPECT_NE(unbuilt->GetMainEntries(), entries);
  }
  const ConcatenatedPath copy = both;
  const ConcatenatedPath target = std::move(both);
  EXPECT_EQ(copy.GetMainEntries(), entries);
  EXPECT_EQ(target.GetMainEntries(), entries);
  EXPECT_EQ(both.GetMainEntries(), nullptr);
  EXPECT_EQ(ConcatenatedPath(both).GetMainEntries(), nullptr);
  EXPECT_EQ(Names(both.GetMethodEntries()), "abbcc");
}

TEST_F(ConcatenatedPathTest, MayBeEmptyOrNested) {
  const auto empty = std::make_shared<ConcatenatedPath>(Parts());
  EXPECT_EQ(Names(*empty->GetMainEntries()) + Names(empty->GetMethodEntries()), "");
  EXPECT_EQ(Names(empty->GetPathEntryFromAbsoluteIRI(a->GetAbsoluteIRI(), kPolicy)), "-");
  EXPECT_EQ(Names(empty->FindFirstInScope(kScope, kTarget, kPolicy)), "-");
  EXPECT_FALSE(empty->ForEachEntry(kScope, nullptr) || empty->IsEntryOnPath(*a) ||
               empty->FirstEntryIsBeforeSecondOnPath(*a, *a));
  Parts parts = {q, std::make_shared<ConcatenatedPath>(empty, p)};
  const ConcatenatedPath nested(std::move(parts));
  EXPECT_TRUE(parts.empty());
  EXPECT_EQ(Names(*nested.GetMainEntries()), "bccab");
  EXPECT_TRUE(nested.FirstEntryIsBeforeSecondOnPath(*c, *a));
}

TEST_F(ConcatenatedPathTest, LendsItsListToDerivedClasses) {
  struct FirstOnly : ConcatenatedPath {
    using ConcatenatedPath::ConcatenatedPath, ConcatenatedPath::GetPathEntryFromAbsoluteIRI;
    using ConcatenatedPath::parts;
    SharedEntryList GetMainEntries() const override {
      mainEntriesOnce.Call([this] { mainEntries = parts.front()->GetMainEntries(); });
      return mainEntries;
    }
    EntryPointer GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& iri) const override {
      return parts.back()->GetPathEntryFromAbsoluteIRI(iri);
    }
  };
  const FirstOnly first(p, q);
  EXPECT_EQ(first.parts.capacity(), 2);
  EXPECT_EQ(Asked(*first.GetMainEntries()), "ab p.GetMainEntries()");
  EXPECT_EQ(Asked(first.GetPathEntryFromAbsoluteIRI(b->GetAbsoluteIRI(), kPolicy)),
            "b q.GetPathEntryFromAbsoluteIRI(file:///b)");
}

}  // namespace
}  // namespace Corvane::PathManagement
