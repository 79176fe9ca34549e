#include "searchpath/utilities/partial_pathname.h"
#include "support/path_programs.h"
#include "support/setting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <future>
#include <random>

namespace Corvane::PathManagement {
namespace {

using namespace test;

constexpr Policy kPolicy = Policy::IgnoreCase;
const Scope kNoKinds(nullptr, 0);
const Target kTarget(u"t");

TEST(CompositeModelTest, RandomNestingsAnswerAndAskAsTheModelDoes) {
  constexpr std::uint64_t seed = 20261122;
  const std::size_t programs = RandomCases(100'000);
  std::mt19937_64 random(seed);
  PathPrograms all;
  std::vector<std::uint8_t> program;
  for (std::size_t at = 0; at < programs; ++at) {
    program.resize(24 + random() % 48);
    for (auto& byte : program) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(all.Run(program), "") << testing::PrintToString(program);
  }
  std::printf("seed %llu, %zu programs\n", static_cast<unsigned long long>(seed), programs);
}

/// What the model leaves open, and the plainest cases. The part p holds the entries a and b, q
/// holds b and c; neither holds d.
struct CompositeTest : testing::Test {
  CallLog log;
  std::shared_ptr<FakeEntry> a = std::make_shared<FakeEntry>("a", u"file:///a");
  std::shared_ptr<FakeEntry> b = std::make_shared<FakeEntry>("b", u"file:///b");
  std::shared_ptr<FakeEntry> c = std::make_shared<FakeEntry>("c", u"file:///c");
  std::shared_ptr<FakeEntry> d = std::make_shared<FakeEntry>("d", u"file:///d");
  std::shared_ptr<FakePath> p = MakePart("p", {a, b}, &log), q = MakePart("q", {b, c}, &log);
  ConcatenatedPath both{p, q};

  template <class Answer>
  std::string Asked(const Answer& answer) {
    return log.Take(Names(answer));
  }
};

TEST_F(CompositeTest, AConcatenatedPathAsksItsPartsInOrder) {
  EXPECT_EQ(Asked(both.GetMethodEntries()), "abbc p.GetMethodEntries() q.GetMethodEntries()");
  EXPECT_EQ(Asked(both.FindFirstInScope(kNoKinds, kTarget, kPolicy)),
            "- p.FindFirstInScope({},t,1) q.FindFirstInScope({},t,1)");
  p->firstFound = p->allFound.back();
  EXPECT_EQ(Asked(both.FindFirstInScope(kNoKinds, kTarget, kPolicy)),
            "b p.FindFirstInScope({},t,1)");
  const std::string ask = "GetPathEntryFromAbsoluteIRI(file:///d";
  EXPECT_EQ(Asked(both.GetPathEntryFromAbsoluteIRI(d->iri, kPolicy)),
            "- p." + ask + ") q." + ask + ") p." + ask + ",1) q." + ask + ",1)");
  EXPECT_EQ(Asked(both.FirstEntryIsBeforeSecondOnPath(*c, *a)),
            "no p.IsEntryOnPath(c) p.IsEntryOnPath(a)");
}

TEST_F(CompositeTest, CopiesAndMovesTakeTheListThatIsBuilt) {
  DeduplicatedPath unique({p, q});
  const auto check = [this]<class Path>(Path& path) {
    static_assert(!std::is_nothrow_move_constructible_v<Path> && !std::is_final_v<Path>);
    static_assert(!std::is_copy_assignable_v<Path>);
    const Path unbuilt = path;
    const auto entries = path.GetMainEntries();
    EXPECT_EQ(path.GetMainEntries(), entries);
    EXPECT_NE(unbuilt.GetMainEntries(), entries);
    EXPECT_EQ(Path(path).GetMainEntries(), entries);
    EXPECT_EQ(Path(std::move(path)).GetMainEntries(), entries);
    EXPECT_EQ(path.GetMainEntries(), nullptr);
    std::vector<std::shared_ptr<const IPath>> given = {p, q};
    const Path taking(std::move(given));
    EXPECT_TRUE(given.empty());
  };
  check(both);
  check(unique);
  EXPECT_EQ(Names(ConcatenatedPath({p, q}).GetMainEntries()), "abbc");
  static_assert(!std::is_copy_constructible_v<FilteredPath> && !std::is_final_v<FilteredPath>);
}

TEST_F(CompositeTest, ACopyMadeDuringABuildDoesNotWaitAndBuildsItsOwnList) {
  std::future<std::shared_ptr<const ConcatenatedPath>> copying;
  log.onCall = [&](const std::string&) {
    if (copying.valid()) return;
    copying = std::async(std::launch::async,
                         [&] { return std::make_shared<const ConcatenatedPath>(both); });
    EXPECT_EQ(copying.wait_for(std::chrono::seconds(10)), std::future_status::ready);
  };
  const auto entries = both.GetMainEntries();
  log.Take();
  const auto copied = copying.get()->GetMainEntries();
  EXPECT_EQ(Asked(copied), "abbc p.GetMainEntries() q.GetMainEntries()");
  EXPECT_NE(copied, entries);
}

using CompositeDeathTest = CompositeTest;

TEST_F(CompositeDeathTest, OnlyEntriesOnThePathHaveAMainEntryAndAParent) {
#ifndef NDEBUG
  EXPECT_DEATH((void)both.GetMainEntryForEntry(*d), "must be on the path");
  EXPECT_DEATH((void)both.GetParentEntryForEntry(*d), "must be on the path");
  const std::vector<ustring> partial = {u"d"};
  EXPECT_DEATH((void)DoesPartialPathnameMatchPathEntryIRI(both, partial, d, kPolicy),
               "must be on the path");
#endif
  EXPECT_EQ(Names(both.GetMainEntryForEntry(*c)), "b");
}

TEST_F(CompositeTest, AConcurrentTraversalWithoutRepeatsIsTheOneOfTheDerivedClass) {
  struct Silent : DeduplicatedPath {
    using DeduplicatedPath::DeduplicatedPath;
    bool ForEachEntry(Scope scope, const Visitor&) const override { return scope.size() == 0; }
  };
  EXPECT_TRUE(Silent({p, q}).ConcurrentForEachEntry(kNoKinds, nullptr));
}

TEST_F(CompositeTest, AFilterLetsItsSourceVisitFromSeveralThreads) {
  struct OnTwoThreads : FakePath {
    using FakePath::FakePath;
    bool ConcurrentForEachEntry(Scope, const Visitor& visit) const override {
      const auto other = std::async(std::launch::async, [&] { visit(listed[0]); });
      return visit(listed[1]);
    }
  };
  const auto source = std::make_shared<OnTwoThreads>("source");
  source->listed = {a, b};
  std::promise<void> arrived[2];
  std::atomic<int> meetings = 0;
  const FilteredPath path(source, std::make_shared<FakePath>("hidden"));
  path.ConcurrentForEachEntry(kNoKinds, [&](const EntryPointer& entry) {
    const bool isFirst = entry == a;
    arrived[isFirst ? 0 : 1].set_value();
    const auto other = arrived[isFirst ? 1 : 0].get_future();
    if (other.wait_for(std::chrono::seconds(10)) == std::future_status::ready) ++meetings;
    return false;
  });
  EXPECT_EQ(meetings, 2);
}

TEST_F(CompositeTest, AConcatenatedPathLendsItsListToDerivedClasses) {
  struct FirstOnly : ConcatenatedPath {
    using ConcatenatedPath::ConcatenatedPath, ConcatenatedPath::GetPathEntryFromAbsoluteIRI;
    SharedEntryList GetMainEntries() const override {
      mainEntriesOnce.Call([this] { mainEntries = parts.front()->GetMainEntries(); });
      return mainEntries;
    }
    EntryPointer GetPathEntryFromAbsoluteIRI(const CanonicalAbsoluteIRI& iri) const override {
      return parts.back()->GetPathEntryFromAbsoluteIRI(iri);
    }
  };
  const FirstOnly first(p, q);
  EXPECT_EQ(Asked(first.GetMainEntries()), "ab p.GetMainEntries()");
  EXPECT_EQ(Asked(first.GetPathEntryFromAbsoluteIRI(b->GetAbsoluteIRI(), kPolicy)),
            "b q.GetPathEntryFromAbsoluteIRI(file:///b)");
}

TEST_F(CompositeTest, ADeduplicatedPathListsEachFileOnceWhereverItsNameIsCut) {
  const auto file = [](const auto& folder, const ustring& name, const ustring& extension) {
    return std::make_shared<PathItem>(folder->iri, name, extension);
  };
  p->allFound = {{file(a, u"f", u"n.x"), a}, {file(a, u"fn", u".y"), b}};
  q->allFound = {{file(a, u"", u"fn.x"), d}, {file(b, u"f", u"n.x"), c}, {file(a, u"FN", u".x"), d},
                 {file(a, u"fn.y", u""), d}, {file(b, u"fn", u".x"), d}, {file(a, u"fn", u""), b}};
  EXPECT_EQ(Names(DeduplicatedPath({p, q}).FindAllInScope(kNoKinds, kTarget, kPolicy)), "abcdb");
}

TEST_F(CompositeTest, AFilteredPathLooksForAllOnlyWhenTheFirstIsHidden) {
  const FilteredPath path(p, MakePart("h", {a}, &log));
  const auto first = [&] { return Asked(path.FindFirstInScope(kNoKinds, kTarget, kPolicy)); };
  p->firstFound = p->allFound.back();
  EXPECT_EQ(first(), "b p.FindFirstInScope({},t,1) h.IsEntryOnPath(b)");
  p->firstFound = p->allFound.front();
  EXPECT_EQ(first(),
            "b p.FindFirstInScope({},t,1) h.IsEntryOnPath(a) p.FindAllInScope({},t,1) "
            "h.IsEntryOnPath(a) h.IsEntryOnPath(b)");
  p->listed = {nullptr, a, b};
  p->mainEntries = std::make_shared<const EntryList>(p->listed);
  EXPECT_EQ(Names(path.GetMethodEntries()) + Names(path.GetMainEntries()), "bb");
}

}  // namespace
}  // namespace Corvane::PathManagement
