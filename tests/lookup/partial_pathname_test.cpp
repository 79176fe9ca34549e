#include "searchpath/utilities/partial_pathname.h"

#include "support/partial_pathname_model.h"
#include "support/recording.h"
#include "support/setting.h"

#include <gtest/gtest.h>

#include <list>
#include <random>

namespace Corvane::PathManagement {
namespace {

using namespace test;

constexpr Policy kIgnoreCase = Policy::IgnoreCase;

/// The form with a path, for the entries from the one in question to the topmost one.
bool NaiveChainMatch(std::vector<ustring> partial,
                     const std::vector<std::shared_ptr<FakeEntry>>& chain, const NameEqual& equal) {
  std::size_t at = 0;
  for (; !partial.empty(); ++at) {
    auto names = NaiveSplit(chain[at]->iri.getPath(), u"/");
    if (!NaiveNameMatch(partial.back(), names.back(), equal, Form::Loose)) return false;
    if (at + 1 == chain.size()) {
      while (!partial.empty() && !names.empty() && equal(names.back(), partial.back())) {
        partial.pop_back();
        names.pop_back();
      }
      return partial.empty();
    }
    partial.pop_back();
  }
  return std::none_of(chain.begin() + static_cast<std::ptrdiff_t>(at), chain.end(),
                      [](const auto& entry) { return entry->type == PathEntryType::PlusFolder; });
}

TEST(PartialPathnameTest, MatchesAsTheObviousWayDoes) {
  const auto seed = std::random_device()();
  std::mt19937 random(seed);
  const std::vector<ustring> all = {u"a",   u"b",       u"+b",      u"@b",        u"@a",  u"+",
                                    u"@@a", u"private", u"Private", u"resources", u"a b%"};
  const auto names = [&](std::size_t least) {
    std::vector<ustring> some(least + random() % 4);
    for (ustring& name : some) name = all[random() % 2 == 0 ? random() % all.size() : random() % 4];
    return some;
  };
  // Not symmetric, so that the order of its arguments shows.
  const NameEqual equal = [](const ustring& left, const ustring& right) {
    return left == right || (left == u"a" && right == u"b") ||
           (left == u"Private" && right == u"private");
  };
  for (std::size_t round = 0; round < RandomCases(100'000); ++round) {
    const auto partial = names(0);
    FakePath path("path");
    std::vector<std::shared_ptr<FakeEntry>> chain;
    do {
      ustring location = u"file://";
      for (const ustring& name : names(1))
        location += u"/" + (name == u"a b%" ? u"a%20b%25" : name);
      const auto entry = std::make_shared<FakeEntry>("e", location);
      entry->type = static_cast<PathEntryType>(random() % 6);
      entry->comparator = equal;
      if (!chain.empty()) path.parentEntryFor[chain.back().get()] = entry;
      chain.push_back(entry);
    } while (random() % 2 == 0);
    const ustring folder = chain[0]->iri.getPath();
    const std::list<ustring> list(partial.begin(), partial.end());
    const bool answers[] = {
        DoesPartialPathnameMatchPathString(list, folder, equal),
        DoesPartialPathnameStrictlyMatchPathString(list, folder, equal),
        DoesPartialPathnameMatchPathEntryIRI(path, partial, chain[0], kIgnoreCase)};
    const bool expected[] = {NaiveMatch(partial, folder, equal, Form::Loose),
                             NaiveMatch(partial, folder, equal, Form::Strict),
                             NaiveChainMatch(partial, chain, equal)};
    ASSERT_TRUE(std::ranges::equal(answers, expected))
        << "seed " << seed << testing::PrintToString(partial) << testing::PrintToString(folder);
  }
}

TEST(PartialPathnameTest, MatchesTheTextThatUsersReadOfAnEntrysLocation) {
  const auto entry = std::make_shared<FakeEntry>("e", u"http://host/a%20b");
  const std::vector<ustring> partial = {u"host", u"a b"};
  EXPECT_TRUE(DoesPartialPathnameMatchPathEntryIRI(partial, entry, kIgnoreCase));
  EXPECT_TRUE(DoesPartialPathnameStrictlyMatchPathEntryIRI(partial, *entry, kIgnoreCase));
}

TEST(PartialPathnameTest, AsksEntriesInOrder) {
  CallLog log;
  const auto entry = std::make_shared<FakeEntry>("e", u"file:///x/+y", &log);
  const auto above = std::make_shared<FakeEntry>("a", u"file:///v/w", &log);
  entry->comparator = above->comparator = [&](const ustring& left, const ustring& right) {
    return log.Add(Printed(left) + "=" + Printed(right)), true;
  };
  FakePath path("p", &log);
  path.parentEntryFor[entry.get()] = above;
  const std::vector<ustring> one = {u"1"}, three = {u"3", u"2", u"1"};
  const std::string start = " e.GetFilenameComparator(1) e.GetCanonicalAbsoluteIRI()";
  const std::string onPath = start + " 1=+y p.GetParentEntryForEntry(e) a.";
  const auto match = [&](const auto&... arguments) {
    return log.Take(DoesPartialPathnameMatchPathEntryIRI(arguments..., kIgnoreCase) ? "yes" : "no");
  };
  EXPECT_EQ(match(one, entry), "yes" + start + " 1=+y");
  EXPECT_FALSE(DoesPartialPathnameStrictlyMatchPathEntryIRI(one, *entry, kIgnoreCase));
  EXPECT_EQ(log.Take(""), start);
  EXPECT_EQ(match(path, one, entry),
            "yes" + onPath + "GetPathEntryType() p.GetParentEntryForEntry(a)");
  EXPECT_EQ(match(path, three, entry),
            "yes" + onPath +
                "GetFilenameComparator(1) a.GetCanonicalAbsoluteIRI() 2=w "
                "p.GetParentEntryForEntry(a) w=2 v=3");
}

}  // namespace
}  // namespace Corvane::PathManagement
