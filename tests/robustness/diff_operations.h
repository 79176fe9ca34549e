#ifndef SEARCHPATH_TESTS_ROBUSTNESS_DIFF_OPERATIONS_H
#define SEARCHPATH_TESTS_ROBUSTNESS_DIFF_OPERATIONS_H

#include "searchpath/utilities/path_entry_vector_differentiator.h"
#include "support/recording.h"

#include <gtest/gtest.h>

#include <array>

namespace Corvane::PathManagement::test {

using Differences = std::array<EntryList, 5>;

/// As `ForEachPathOperation`; expects of a failure the beginning of each list, and pairs. No level
/// has more changed entries than one thread sorts.
template <class Visit>
void ForEachDiffOperation(CallLog* log, const Visit& visit) {
  using Differentiator = PathEntryVectorDifferentiator;
  std::vector<std::shared_ptr<FakeEntry>> made;
  for (const char16_t* name : {u"a", u"a", u"b", u"c", u"d", u"p", u"p", u"q", u"r"}) {
    made.push_back(std::make_shared<FakeEntry>("entry", ustring(u"file:///") + name, log));
  }
  made[0]->singleA = made[5], made[1]->singleB = made[6];
  made[0]->listA = made[1]->listC = {made[8]}, made[1]->listB = {made[7]};
  const auto compare = [before = EntryList{made[0], made[2], made[3], made[2]},
                        after = EntryList{made[3], made[2], made[1], made[4]}](
                           const Differences& whole) {
    Differentiator result;
    const auto lists = {result.GetAdded(), result.GetRemoved(), result.GetReordered(),
                        result.GetRefreshedBefore(), result.GetRefreshedAfter()};
    try {
      result.Compare(before, after, Differentiator::ComparisonFilter::IncludeSubfolders);
    } catch (...) {
      auto all = whole.begin();
      for (const auto& list : lists) {
        const auto difference = std::mismatch(list->begin(), list->end(), all->begin(), all->end());
        EXPECT_TRUE(difference.first == list->end()) << all - whole.begin();
        ++all;
      }
      EXPECT_EQ(result.GetRefreshedBefore()->size(), result.GetRefreshedAfter()->size());
      throw;
    }
    Differences found;
    std::transform(lists.begin(), lists.end(), found.begin(), [](auto& list) { return *list; });
    return found;
  };
  const Differences whole = compare({});
  if (log != nullptr) log->Take();
  visit("Compare", [compare, whole](const auto&) { return compare(whole); });
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_ROBUSTNESS_DIFF_OPERATIONS_H
