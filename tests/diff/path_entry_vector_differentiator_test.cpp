#include "searchpath/utilities/path_entry_vector_differentiator.h"

#include "support/recording.h"
#include "support/setting.h"
#include "support/textbook_subsequence.h"

#include <gtest/gtest.h>
#include <tbb/parallel_sort.h>

#include <atomic>
#include <random>
#include <sstream>

namespace Corvane::PathManagement::test {
namespace {

using Differentiator = PathEntryVectorDifferentiator;
using Filter = Differentiator::ComparisonFilter;
constexpr Filter kTop = Filter::TopLevelOnly, kAll = Filter::IncludeSubfolders;

/// The entries "a1", "a2", "a3", "b1", … "z3" at ascending addresses: the letter is the folder.
struct Objects {
  explicit Objects(CallLog* log = nullptr) {
    entries.reserve(kNames);
    for (std::size_t at = 0; at < kNames; ++at) {
      const char letter = static_cast<char>('a' + at / 3), digit = static_cast<char>('1' + at % 3);
      const ustring location = ustring(u"file:///") + static_cast<char16_t>(letter);
      entries.emplace_back(std::string{letter, digit}, location, log);
    }
  }
  FakeEntry& operator[](const std::string& name) {
    return entries[static_cast<std::size_t>((name[0] - 'a') * 3 + name[1] - '1')];
  }
  EntryPointer Pointer(const std::string& name) { return {EntryPointer(), &(*this)[name]}; }
  EntryList List(const std::string& names) {
    EntryList list;
    std::istringstream words(names);
    for (std::string name; words >> name;) list.push_back(Pointer(name));
    return list;
  }

  static constexpr std::size_t kNames = std::size_t{26} * 3;
  std::vector<FakeEntry> entries;
};

/// The five results in one line: "+added -removed ~reordered before>after".
std::string Shown(const Differentiator& result) {
  std::string all;
  const auto show = [&all](const char* mark, const EntryPointer& entry) {
    all += mark + dynamic_cast<const FakeEntry&>(*entry).Recorder::name;
  };
  for (const EntryPointer& entry : *result.GetAdded()) show(" +", entry);
  for (const EntryPointer& entry : *result.GetRemoved()) show(" -", entry);
  for (const EntryPointer& entry : *result.GetReordered()) show(" ~", entry);
  const EntryList &before = *result.GetRefreshedBefore(), &after = *result.GetRefreshedAfter();
  EXPECT_EQ(before.size(), after.size());
  for (std::size_t at = 0; at < before.size(); ++at) show(" ", before[at]), show(">", after[at]);
  return all;
}

TEST(PathEntryVectorDifferentiatorTest, SortsEveryDifferenceIntoItsList) {
  Objects objects;
  objects["a1"].singleA = objects["a2"].singleA = objects.Pointer("p1");
  objects["a1"].singleB = objects.Pointer("q1");
  objects["a2"].listB = objects.List("q2");
  objects["c1"].listA = objects.List("u2 u1");
  const struct {
    const char *name, *before, *after;
    Filter filter;
    const char* expected;
  } rows[] = {
      {"one moved", "d1 a1 b1 c1", "a1 b1 c1 d1", kTop, " ~d1"},
      {"another object, and moved", "a1 b1", "b1 a2", kTop, " a1>a2"},
      {"once and twice", "a1 b1", "b1 a1 a1", kTop, " +a1 ~a1"},
      {"beside the old object", "a1", "a1 a2", kTop, " +a2"},
      {"two for one", "a1 a2", "a3", kTop, " -a2 a1>a3"},
      {"below what is new", "", "c1", kAll, " +c1 +u1 +u2"},
      {"an unknown filter", "", "c1", static_cast<Filter>(2), " +c1"},
      {"levels", "a1 d1", "d1 a2", kAll, " a1>a2 q1>q2"},
  };
  for (const auto& row : rows) {
    Differentiator differentiator;
    differentiator.Compare(objects.List(row.before), objects.List(row.after), row.filter);
    EXPECT_EQ(Shown(differentiator), row.expected) << row.name;
  }
}

TEST(PathEntryVectorDifferentiatorTest, CopiesShareTheListsAndMovesLeaveNone) {
  Objects objects;
  Differentiator source;
  const Differentiator copy(source);
  source.Compare(objects.List("a1 b1"), objects.List("b1 c1 a2"), kTop);
  source.Compare(objects.List("d1 e1 f1"), objects.List("e1 d1"), kTop);
  EXPECT_EQ(Shown(copy), " +c1 -f1 ~d1 a1>a2");
  Differentiator taken(std::move(source)), other;
  EXPECT_EQ(taken.GetAdded(), copy.GetAdded());
  other = std::move(taken);
  for (const Differentiator& left : {std::cref(source), std::cref(taken)}) {
    EXPECT_TRUE(!left.GetAdded() && !left.GetRemoved() && !left.GetReordered() &&
                !left.GetRefreshedBefore() && !left.GetRefreshedAfter());
  }
  source = other;
  EXPECT_EQ(source.GetRefreshedBefore(), copy.GetRefreshedBefore());
}

/// The rules restated with searches through lists.
struct Model {
  void Compare(EntryList before, EntryList after, bool isTop = true) {
    if (before.empty() && after.empty()) return;
    EntryList inOrder = TextbookSubsequence(before, after);
    std::sort(before.begin(), before.end());
    std::sort(after.begin(), after.end());
    const auto isCommon = [&](const EntryPointer& entry) {
      if (!Take(after, entry)) return false;
      if (isTop && !Take(inOrder, entry)) result.GetReordered()->push_back(entry);
      return true;
    };
    std::erase_if(before, isCommon);
    // As the library does, so that the calls can be compared.
    tbb::parallel_sort(before.begin(), before.end(), ComesBefore);
    tbb::parallel_sort(after.begin(), after.end(), ComesBefore);
    Match(before, after);
    before = Below(before);
    after = Below(after);
    Compare(before, after, false);
  }

  Differentiator result;

 private:
  static bool Take(EntryList& list, const EntryPointer& entry) {
    const auto found = std::find(list.begin(), list.end(), entry);
    return found != list.end() && (list.erase(found), true);
  }
  static bool ComesBefore(const EntryPointer& left, const EntryPointer& right) {
    const ustring leftText = left->GetCanonicalAbsoluteIRI().toString();
    return leftText < right->GetCanonicalAbsoluteIRI().toString();
  }
  void Match(EntryList before, EntryList after) const {
    while (!before.empty() || !after.empty()) {
      const bool isFirst = after.empty() || (!before.empty() && ComesBefore(before[0], after[0]));
      const bool isLast = !isFirst && (before.empty() || ComesBefore(after[0], before[0]));
      const bool isPair = !isFirst && !isLast;
      if (!isLast)
        (isPair ? result.GetRefreshedBefore() : result.GetRemoved())->push_back(before[0]);
      if (!isFirst) (isPair ? result.GetRefreshedAfter() : result.GetAdded())->push_back(after[0]);
      if (!isLast) before.erase(before.begin());
      if (!isFirst) after.erase(after.begin());
    }
  }
  static EntryList Below(const EntryList& entries) {
    EntryList all;
    for (const EntryPointer& entry : entries) {
      all.push_back(entry->GetSingleSubfolderEntryA());
      all.push_back(entry->GetSingleSubfolderEntryB());
      for (const auto& list : {entry->GetSubfolderEntriesA(), entry->GetSubfolderEntriesB(),
                               entry->GetSubfolderEntriesC()}) {
        all.insert(all.end(), list->begin(), list->end());
      }
    }
    std::erase(all, nullptr);
    return all;
  }
};

TEST(PathEntryVectorDifferentiatorTest, IsTheModelForRandomListsAndTrees) {
  std::mt19937 random(20260211);
  CallLog log;
  Objects many, few(&log);
  for (std::size_t round = 0; round < RandomCases(100'000); ++round) {
    // Short lists are sorted by one thread, so that their calls have an order.
    const bool isLogged = round % 5 == 0;
    Objects& objects = isLogged ? few : many;
    const auto pick = [&](std::size_t from, std::size_t most) {
      EntryList list(random() % (most + 1));
      for (auto& entry : list) entry = {EntryPointer(), &objects.entries[from + random() % 12]};
      return list;
    };
    for (std::size_t at = 0; round % 50 < 2 && at < 9; ++at) {
      FakeEntry& entry = objects.entries[at];
      EntryPointer* const ones[] = {&entry.singleA, &entry.singleB};
      EntryList* const lists[] = {&entry.listA, &entry.listB, &entry.listC};
      for (EntryPointer* const one : ones) one->reset();
      for (EntryList* const list : lists) list->clear();
      for (int below = 0; below < (isLogged ? 1 : 2); ++below) {
        const EntryList found = pick(at / 3 * 3 + 3, 1);
        *lists[random() % 3] = found;
        if (!isLogged && !found.empty()) *ones[random() % 2] = found[0];
      }
    }
    const EntryList before = pick(0, isLogged ? 3 : 5), after = pick(0, isLogged ? 3 : 5);
    Differentiator differentiator;
    differentiator.Compare(before, after, kAll);
    const std::vector<std::string> calls = log.Take();
    Model model;
    model.Compare(before, after);
    ASSERT_EQ(Shown(differentiator), Shown(model.result)) << "round " << round;
    ASSERT_EQ(calls, log.Take()) << "round " << round;
  }
}

/// Refuses to be asked for its canonical IRI once too often, by whatever thread.
struct RefusingEntry : FakeEntry {
  using FakeEntry::FakeEntry;
  CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override {
    if (++questions == most) throw this;
    return FakeEntry::GetCanonicalAbsoluteIRI();
  }
  int most = 0;
  mutable std::atomic<int> questions = 0;
};

TEST(PathEntryVectorDifferentiatorTest, ALongListIsInOrderOrThrows) {
  for (const int most : {0, 1, 4, 9, 16}) {
    EntryList ascending;
    for (char16_t number = 0x4E00; number < 0x5E00; ++number) {
      const auto entry = std::make_shared<RefusingEntry>("", u"file:///" + ustring(1, number));
      entry->most = number % 97 == 0 ? most : 0;
      ascending.push_back(entry);
    }
    EntryList shuffled = ascending;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(20260212));
    Differentiator differentiator;
    try {
      differentiator.Compare({}, shuffled, kTop);
      EXPECT_EQ(*differentiator.GetAdded(), ascending);
    } catch (const RefusingEntry*) {
      EXPECT_NE(most, 0);
    }
  }
}

}  // namespace
}  // namespace Corvane::PathManagement::test
