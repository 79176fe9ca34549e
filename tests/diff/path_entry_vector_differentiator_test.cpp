#include "searchpath/utilities/path_entry_vector_differentiator.h"

#include "support/recording.h"
#include "support/setting.h"
#include "support/textbook_subsequence.h"

#include <gtest/gtest.h>
#include <tbb/global_control.h>
#include <tbb/parallel_sort.h>
#include <tbb/task_arena.h>
#include <tbb/task_group.h>

#include <atomic>
#include <chrono>
#include <random>
#include <sstream>
#include <thread>

namespace Corvane::PathManagement::test {
namespace {

using Differentiator = PathEntryVectorDifferentiator;
using Filter = Differentiator::ComparisonFilter;
constexpr Filter kTop = Filter::TopLevelOnly, kAll = Filter::IncludeSubfolders;

/// The entries "a1", "a2", "a3", "b1", … "z3" at ascending addresses: the letter is the folder. The
/// digit is the further text of the canonical location, which does not tell folders apart.
struct Objects {
  explicit Objects(CallLog* log = nullptr) {
    entries.reserve(kNames);
    for (std::size_t at = 0; at < kNames; ++at) {
      const char letter = static_cast<char>('a' + at / 3), digit = static_cast<char>('1' + at % 3);
      const ustring location = ustring(u"file:///") + static_cast<char16_t>(letter);
      entries.emplace_back(std::string{letter, digit}, location, log);
      entries.back().furtherText = {static_cast<char16_t>(digit)};
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

/// Refuses one of the questions for its canonical IRI, the one numbered `refused`, by whatever
/// thread.
struct RefusingEntry : FakeEntry {
  using FakeEntry::FakeEntry;
  CanonicalAbsoluteIRI GetCanonicalAbsoluteIRI() const override {
    const int question = ++questions;
    if (whenAsked) whenAsked(question);
    if (question == refused) throw this;
    return FakeEntry::GetCanonicalAbsoluteIRI();
  }
  [[nodiscard]] bool HasRefused() const { return refused > 0 && questions >= refused; }

  int refused = 0;
  std::function<void(int question)> whenAsked;
  mutable std::atomic<int> questions = 0;
};

using RefusingList = std::vector<std::shared_ptr<RefusingEntry>>;

/// Entries at ascending addresses, which is how a list stands when it is to be sorted by location.
/// The locations ascend as well but for the entries from each place of `swapped`, which stand the
/// wrong way round.
RefusingList AlmostAscending(std::size_t count, const std::vector<std::size_t>& swapped = {}) {
  std::vector<AbsoluteIRI> locations;
  for (std::size_t at = 0; at < count; ++at) {
    const ustring name = {static_cast<char16_t>(0x4E00 + at / 4096),
                          static_cast<char16_t>(0x4E00 + at % 4096)};
    locations.emplace_back(u"file:///" + name);
  }
  for (const std::size_t at : swapped) std::swap(locations[at], locations[at + 1]);
  RefusingList list(count);
  for (auto& entry : list) entry = std::make_shared<RefusingEntry>("", u"file:///");
  std::ranges::sort(list);
  for (std::size_t at = 0; at < count; ++at) list[at]->iri = locations[at];
  return list;
}

/// Compares nothing with `list`. Expects it in order or, when an entry has refused, the refusal.
void ExpectOrderOrRefusal(const RefusingList& list) {
  const auto hasRefused = [](const auto& entry) { return entry->HasRefused(); };
  Differentiator differentiator;
  try {
    differentiator.Compare({}, {list.begin(), list.end()}, kTop);
    EXPECT_TRUE(std::ranges::none_of(list, hasRefused)) << "lost among " << list.size();
    EXPECT_EQ(differentiator.GetAdded()->size(), list.size());
    EXPECT_TRUE(std::ranges::is_sorted(
        *differentiator.GetAdded(), std::less<AbsoluteIRI>(),
        [](const auto& entry) { return dynamic_cast<const FakeEntry&>(*entry).iri; }));
  } catch (const RefusingEntry* refusing) {
    EXPECT_TRUE(refusing->HasRefused());
  }
}

TEST(PathEntryVectorDifferentiatorTest, AListIsInOrderOrARefusalArrives) {
  std::mt19937 random(20260212);
  for (std::size_t round = 0; round < Setting("SEARCHPATH_REFUSALS", RandomCases(20)); ++round) {
    const std::size_t size = 600 + round * 300 % 18'001;
    const auto any = [&] { return random() % (size - 1); };
    RefusingList list = AlmostAscending(size, {any(), any(), any()});
    list[any()]->refused = static_cast<int>(random() % 10);
    if (round % 4 == 0) {
      for (const auto& entry : list) std::swap(entry->iri, list[any()]->iri);
    }
    ExpectOrderOrRefusal(list);
  }
}

/// Whether `condition` comes true within two seconds.
bool Await(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
  while (!condition() && std::chrono::steady_clock::now() < end) std::this_thread::yield();
  return condition();
}

/// Runs `work` where a sort has two threads, also on a machine with one processor.
void OnTwoThreads(const std::function<void()>& work) {
  const tbb::global_control limit(tbb::global_control::max_allowed_parallelism, 2);
  tbb::task_arena(2).execute(work);
}

TEST(PathEntryVectorDifferentiatorTest, ARefusalArrivesThatComesWhenTheListIsFoundOutOfOrder) {
  const RefusingList list = AlmostAscending(4096, {100});
  RefusingEntry& refusing = *list[3500];
  list[100]->whenAsked = [&](int) { Await([&] { return refusing.questions > 0; }); };
  refusing.refused = 1;
  refusing.whenAsked = [](int question) {
    if (question == 1) Await(tbb::is_current_task_group_canceling);
  };
  OnTwoThreads([&] { ExpectOrderOrRefusal(list); });
  EXPECT_TRUE(refusing.HasRefused());
}

TEST(PathEntryVectorDifferentiatorTest, LongListsAreSortedByLocationOnSeveralThreads) {
  const RefusingList list = AlmostAscending(4096);
  std::atomic<std::thread::id> first;
  std::atomic<bool> hasSecond = false, isGivenUp = false;
  std::atomic<int> questions = 0;
  const auto ask = [&](int) {
    std::thread::id none;
    if (!first.compare_exchange_strong(none, std::this_thread::get_id())) {
      if (none != std::this_thread::get_id()) hasSecond = true;
    }
    // The first few are compared before there is anything to do for a second thread.
    if (++questions < 100 || hasSecond || isGivenUp) return;
    isGivenUp = !Await([&] { return hasSecond.load(); });
  };
  for (const auto& entry : list) entry->whenAsked = ask;
  OnTwoThreads([&] { ExpectOrderOrRefusal(list); });
  EXPECT_TRUE(hasSecond);
}

TEST(PathEntryVectorDifferentiatorDeathTest, NoEntryMayHangBelowItself) {
#ifndef NDEBUG
  Objects objects;
  objects["a1"].singleA = objects.Pointer("b1");
  objects["b1"].listC = objects.List("c1 d1");
  objects["d1"].singleB = objects.Pointer("a1");
  const auto compare = [&] { Differentiator().Compare({}, objects.List("a1"), kAll); };
  EXPECT_DEATH(compare(), "no entry may hang below itself");
  objects["d1"].singleB = objects.Pointer("e1");
  compare();
#endif
}

}  // namespace
}  // namespace Corvane::PathManagement::test
