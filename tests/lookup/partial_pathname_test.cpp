#include "searchpath/utilities/partial_pathname.h"

#include "support/partial_pathname_model.h"
#include "support/recording.h"
#include "support/text_table.h"

#include <list>
#include <random>

namespace Corvane::PathManagement {
namespace {

using namespace test;

constexpr Policy kPolicy = Policy::IgnoreCase;

// Loose form, strict form.
TEST(PartialPathnameTest, MatchesTheEndOfAFolder) {
  ExpectTable({u"pkg/fn | /lib/+pkg/fn => yes no",
               u"+pkg/fn | /lib/+pkg/fn => yes yes",
               u"cls | /lib/@cls => yes yes",
               u"@cls | /lib/@cls => yes yes",
               u"cls | /lib/+pkg/@cls => no no",
               u"pkg/cls | /lib/+pkg/@cls => yes no",
               u"+pkg/cls | /lib/+pkg/@cls => yes yes",
               u"+pkg | /lib/pkg => no no",
               u"pkg | /lib/+pkg => yes no",
               u"fn | /lib/+pkg/fn => no no",
               u"fn | /lib/private/fn => yes no",
               u"fn | /lib/resources/fn => yes no",
               u"fn | /@cls/private/fn => yes no",
               u"fn | /+pkg/@cls/private/fn => no no",
               u"private | /lib/private => yes yes",
               u"fn | fn => yes yes",
               u"a/b | b => no no",
               u"fn |  => no no",
               u" |  => yes yes",
               u" | /lib/+pkg => yes no",
               u" | /lib/+pkg/fn => no yes",
               u" | +pkg => yes no",
               u"FN | /fn => no no"},
              [](const ustring& row) {
                const auto bar = row.find(u" | ");
                const auto names = NaiveSplit(row.substr(0, bar), u"/");
                const std::list<ustring> partial(names.begin(), names.end());
                const ustring folder = row.substr(bar + 3);
                const NameEqual equal = std::equal_to<>();
                const bool loose = DoesPartialPathnameMatchPathString(partial, folder, equal);
                const bool strict =
                    DoesPartialPathnameStrictlyMatchPathString(partial, folder, equal);
                return ustring(loose ? u"yes " : u"no ") + (strict ? u"yes" : u"no");
              });
}

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
  const std::vector<ustring> all = {u"a", u"b",   u"+b",      u"@b",      u"@a",
                                    u"+", u"@@a", u"private", u"Private", u"resources"};
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
  for (int round = 0; round < 100'000; ++round) {
    const auto partial = names(0);
    FakePath path("path");
    std::vector<std::shared_ptr<FakeEntry>> chain;
    do {
      ustring location = u"file://";
      for (const ustring& name : names(1)) location += u"/" + name;
      const auto entry = std::make_shared<FakeEntry>("e", location);
      entry->type = static_cast<PathEntryType>(random() % 6);
      entry->comparator = equal;
      if (!chain.empty()) path.parentEntryFor[chain.back().get()] = entry;
      chain.push_back(entry);
    } while (random() % 2 == 0);
    const ustring folder = chain[0]->iri.getPath();
    const bool answers[] = {DoesPartialPathnameMatchPathString(partial, folder, equal),
                            DoesPartialPathnameStrictlyMatchPathString(partial, folder, equal),
                            DoesPartialPathnameMatchPathEntryIRI(path, partial, chain[0], kPolicy)};
    const bool expected[] = {NaiveMatch(partial, folder, equal, Form::Loose),
                             NaiveMatch(partial, folder, equal, Form::Strict),
                             NaiveChainMatch(partial, chain, equal)};
    ASSERT_TRUE(std::ranges::equal(answers, expected))
        << "seed " << seed << testing::PrintToString(partial) << testing::PrintToString(folder);
  }
}

TEST(PartialPathnameTest, AsksEntriesInOrder) {
  CallLog log;
  const auto entry = std::make_shared<FakeEntry>("e", u"file:///x/+y", &log);
  const auto above = std::make_shared<FakeEntry>("a", u"file:///v/w", &log);
  entry->comparator = above->comparator = [&](const ustring& left, const ustring& right) {
    log.Add(Printed(left) + "=" + Printed(right));
    return true;
  };
  FakePath path("p", &log);
  path.parentEntryFor[entry.get()] = above;
  const std::vector<ustring> none, one = {u"1"}, three = {u"3", u"2", u"1"};
  const std::string start = " e.GetFilenameComparator(1) e.GetCanonicalAbsoluteIRI()";
  const std::string onPath = start + " 1=+y p.GetParentEntryForEntry(e) a.";
  const auto match = [&](const auto&... arguments) {
    return log.Take(DoesPartialPathnameMatchPathEntryIRI(arguments..., kPolicy) ? "yes" : "no");
  };
  EXPECT_EQ(match(one, entry), "yes" + start + " 1=+y");
  EXPECT_FALSE(DoesPartialPathnameStrictlyMatchPathEntryIRI(one, *entry, kPolicy));
  EXPECT_EQ(log.Take(""), start);
  EXPECT_EQ(match(path, one, entry),
            "yes" + onPath + "GetPathEntryType() p.GetParentEntryForEntry(a)");
  EXPECT_EQ(match(path, three, entry),
            "yes" + onPath +
                "GetFilenameComparator(1) a.GetCanonicalAbsoluteIRI() 2=w "
                "p.GetParentEntryForEntry(a) w=2 v=3");
  entry->type = PathEntryType::PlusFolder;
  EXPECT_EQ(match(path, none, entry), "no e.GetPathEntryType()");
  entry->comparator = nullptr;
  EXPECT_THROW((void)match(one, entry), std::bad_function_call);
}

}  // namespace
}  // namespace Corvane::PathManagement
