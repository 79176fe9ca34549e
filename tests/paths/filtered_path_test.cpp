#include "searchpath/utilities/filtered_path.h"

#include "composite_test.h"

namespace Corvane::PathManagement {
namespace {

using namespace test;

/// p without what h holds, which is a.
struct FilteredPathTest : CompositeTest {
  std::shared_ptr<FakePath> h = MakePart("h", {a}, &log);
  FilteredPath path{p, h};
};

TEST_F(FilteredPathTest, LeavesHiddenEntriesOutOfLists) {
  static_assert(!std::is_copy_constructible_v<FilteredPath> && !std::is_final_v<FilteredPath>);
  const std::string asked = " h.IsEntryOnPath(a) h.IsEntryOnPath(b)";
  p->methodEntries = {nullptr, a, b};
  p->mainEntries = std::make_shared<const EntryList>(p->methodEntries);
  EXPECT_EQ(Asked(path.GetMethodEntries()), "b p.GetMethodEntries()" + asked);
  EXPECT_EQ(Asked(path.FindAllInScope(kScope, kTarget, kPolicy)),
            "b p.FindAllInScope({1,3},t|.x,1)" + asked);
  const auto entries = path.GetMainEntries();
  EXPECT_EQ(Asked(entries), "b p.GetMainEntries()" + asked);
  h->held.insert(b.get());
  EXPECT_EQ(path.GetMainEntries(), entries);
  p->mainEntries = nullptr;  // as of a composite that was moved from
  EXPECT_EQ(Asked(FilteredPath(p, h).GetMainEntries()), " p.GetMainEntries()");
}

TEST_F(FilteredPathTest, HidesSingleAnswers) {
  const std::string find = " p.GetPathEntryFromAbsoluteIRI(file:///";
  EXPECT_EQ(Asked(path.GetMainEntryForEntry(*b)), "- p.GetMainEntryForEntry(b) h.IsEntryOnPath(a)");
  EXPECT_EQ(Asked(path.GetParentEntryForEntry(*a)), "- p.GetParentEntryForEntry(a)");
  EXPECT_EQ(Asked(path.GetPathEntryFromAbsoluteIRI({b->iri, u""})),
            "b" + find + "b) h.IsEntryOnPath(b)");
  EXPECT_EQ(Asked(path.GetPathEntryFromAbsoluteIRI(b->iri, kPolicy)), "-" + find + "b,1)");
  EXPECT_EQ(Asked(path.IsEntryOnPath(*b)), "yes p.IsEntryOnPath(b) h.IsEntryOnPath(b)");
  EXPECT_EQ(Asked(path.IsEntryOnPath(*d)), "no p.IsEntryOnPath(d)");
  p->firstIsBeforeSecond = true;
  EXPECT_EQ(Asked(path.FirstEntryIsBeforeSecondOnPath(*a, *b)),
            "yes p.FirstEntryIsBeforeSecondOnPath(a,b)");
}

TEST_F(FilteredPathTest, LooksForAllFilesOnlyWhenTheFirstIsHidden) {
  const auto first = [this] { return Asked(path.FindFirstInScope(kScope, kTarget, kPolicy)); };
  const std::string asked = " p.FindFirstInScope({1,3},t|.x,1)";
  const std::string all = " h.IsEntryOnPath(a) p.FindAllInScope({1,3},t|.x,1) h.IsEntryOnPath(a)";
  EXPECT_EQ(first(), "-" + asked);
  p->firstFound = p->allFound.back();
  EXPECT_EQ(first(), "b" + asked + " h.IsEntryOnPath(b)");
  p->firstFound = p->allFound.front();
  p->allFound.push_back(p->allFound.back());
  EXPECT_EQ(first(), "b" + asked + all + " h.IsEntryOnPath(b)");
  p->allFound = {*p->firstFound};
  EXPECT_EQ(first(), "-" + asked + all);
}

TEST_F(FilteredPathTest, VisitsWhatIsShown) {
  for (const auto forEach : {&IPath::ForEachEntry, &IPath::ConcurrentForEachEntry}) {
    const std::string how = forEach == &IPath::ForEachEntry ? " p.ForEach" : " p.ConcurrentForEach";
    const std::string calls = how + "Entry({1,3},visitor) h.IsEntryOnPath(a) h.IsEntryOnPath(b) b";
    EXPECT_EQ(Asked(Visit(path, forEach, a)), "no" + calls);
    EXPECT_EQ(Asked(Visit(path, forEach, b)), "yes" + calls);
    EXPECT_THROW((path.*forEach)(kScope, nullptr), std::bad_function_call);
    EXPECT_FALSE((FilteredPath(p, p).*forEach)(kScope, nullptr));
    log.Take();
  }
}

}  // namespace
}  // namespace Corvane::PathManagement
