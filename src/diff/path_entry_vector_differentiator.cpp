#include "searchpath/utilities/path_entry_vector_differentiator.h"

#include "diff/descent_check.h"
#include "diff/entry_sort.h"
#include "diff/less_than_by_functor.h"
#include "diff/longest_common_subsequence.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

namespace Corvane::PathManagement {

namespace {

using Entry = std::shared_ptr<const IPathEntry>;

// Compares canonical IRIs as `AbsoluteIRI`, without their further text: only the folder matters.
bool ComesBefore(const Entry& left, const Entry& right) {
  static constexpr detail::LessThanByFunctorImpl kOrder(
      [](const Entry& entry) -> AbsoluteIRI { return entry->GetCanonicalAbsoluteIRI(); });
  return kOrder(left, right);
}

/// `all` without the elements of `part`, which is a subsequence of it.
PathEntries Without(PathEntries all, const PathEntries& part) {
  PathEntries left;
  auto next = part.begin();
  for (Entry& entry : all) {
    if (next != part.end() && entry == *next) {
      ++next;
    } else {
      left.push_back(std::move(entry));
    }
  }
  return left;
}

struct Division {
  PathEntries beforeOnly;
  PathEntries afterOnly;
  PathEntries common;
};

/// Divides the entries of two lists, which are sorted by address. So are the results.
Division DivideByIdentity(PathEntries before, PathEntries after) {
  Division division;
  auto nextBefore = before.begin();
  auto nextAfter = after.begin();
  while (nextBefore != before.end() && nextAfter != after.end()) {
    if (*nextBefore < *nextAfter) {
      division.beforeOnly.push_back(std::move(*nextBefore++));
    } else if (*nextAfter < *nextBefore) {
      division.afterOnly.push_back(std::move(*nextAfter++));
    } else {
      division.common.push_back(std::move(*nextBefore++));
      ++nextAfter;
    }
  }
  std::move(nextBefore, before.end(), std::back_inserter(division.beforeOnly));
  std::move(nextAfter, after.end(), std::back_inserter(division.afterOnly));
  return division;
}

/// The entries directly below `entries`, all of which are for special folders.
PathEntries GetEntriesBelow(const PathEntries& entries) {
  PathEntries all;
  const auto addOne = [&all](Entry entry) {
    if (entry != nullptr) all.push_back(std::move(entry));
  };
  const auto addAll = [&all](const std::shared_ptr<const PathEntries>& list) {
    all.insert(all.end(), list->begin(), list->end());
  };
  for (const Entry& entry : entries) {
    addOne(entry->GetSingleSubfolderEntryA());
    addOne(entry->GetSingleSubfolderEntryB());
    addAll(entry->GetSubfolderEntriesA());
    addAll(entry->GetSubfolderEntriesB());
    addAll(entry->GetSubfolderEntriesC());
  }
  return all;
}

void MakeRoomForOne(PathEntries& entries) {
  if (entries.size() == entries.capacity()) entries.reserve(2 * entries.size() + 1);
}

/// Appends to both lists or, when it raises, to neither.
void AppendPair(const Entry& before, const Entry& after, PathEntries& allBefore,
                PathEntries& allAfter) {
  MakeRoomForOne(allBefore);
  MakeRoomForOne(allAfter);
  allBefore.push_back(before);
  allAfter.push_back(after);
}

}  // namespace

PathEntryVectorDifferentiator::PathEntryVectorDifferentiator()
    : added(std::make_shared<PathEntries>()),
      removed(std::make_shared<PathEntries>()),
      reordered(std::make_shared<PathEntries>()),
      refreshedAfter(std::make_shared<PathEntries>()),
      refreshedBefore(std::make_shared<PathEntries>()) {}

PathEntryVectorDifferentiator::PathEntryVectorDifferentiator(const PathEntryVectorDifferentiator&) =
    default;
PathEntryVectorDifferentiator::PathEntryVectorDifferentiator(
    PathEntryVectorDifferentiator&&) noexcept = default;
PathEntryVectorDifferentiator& PathEntryVectorDifferentiator::operator=(
    const PathEntryVectorDifferentiator&) = default;
PathEntryVectorDifferentiator& PathEntryVectorDifferentiator::operator=(
    PathEntryVectorDifferentiator&&) noexcept = default;
PathEntryVectorDifferentiator::~PathEntryVectorDifferentiator() = default;

void PathEntryVectorDifferentiator::Compare(PathEntries before, PathEntries after,
                                            ComparisonFilter filter) {
  CompareHelper(std::move(before), std::move(after), filter, /*computeReordered=*/true);
}

// One round for each level of folders: a recursion would overflow the stack on deep folders.
void PathEntryVectorDifferentiator::CompareHelper(PathEntries&& before, PathEntries&& after,
                                                  ComparisonFilter filter, bool computeReordered) {
  assert(added != nullptr);
  [[maybe_unused]] detail::DescentCheck descent;
  // The same objects in the same order differ in nothing. Two empty lists end the descent.
  while (before != after) {
    const detail::EntrySort& sort = *detail::SearchpathEntrySort();
    if (computeReordered) {
      // What stays in place is unchanged and is left out. Little remains to be sorted: sorting all
      // entries took three times as long as finding the subsequence.
      const auto inPlace = LongestCommonSubsequence<Entry, PathEntries>::Compute(before, after);
      before = Without(std::move(before), inPlace);
      after = Without(std::move(after), inPlace);
    }
    sort.byAddress(before);
    sort.byAddress(after);
    auto [beforeOnly, afterOnly, common] = DivideByIdentity(std::move(before), std::move(after));
    if (computeReordered) reordered->insert(reordered->end(), common.begin(), common.end());
    sort.inOrder(beforeOnly, ComesBefore);
    sort.inOrder(afterOnly, ComesBefore);
    AppendByIRI(beforeOnly, afterOnly);
    if (filter != ComparisonFilter::IncludeSubfolders) return;
    assert(descent.MayGoBelow(beforeOnly, afterOnly) && "no entry may hang below itself");
    before = GetEntriesBelow(beforeOnly);
    after = GetEntriesBelow(afterOnly);
    computeReordered = false;  // only the order of the first level is reported
  }
}

void PathEntryVectorDifferentiator::AppendByIRI(const PathEntries& beforeOnly,
                                                const PathEntries& afterOnly) {
  auto before = beforeOnly.begin();
  auto after = afterOnly.begin();
  while (before != beforeOnly.end() && after != afterOnly.end()) {
    if (ComesBefore(*before, *after)) {
      removed->push_back(*before++);
    } else if (ComesBefore(*after, *before)) {
      added->push_back(*after++);
    } else {
      AppendPair(*before++, *after++, *refreshedBefore, *refreshedAfter);
    }
  }
  removed->insert(removed->end(), before, beforeOnly.end());
  added->insert(added->end(), after, afterOnly.end());
}

std::shared_ptr<PathEntries> PathEntryVectorDifferentiator::GetAdded() const { return added; }
std::shared_ptr<PathEntries> PathEntryVectorDifferentiator::GetRemoved() const { return removed; }
std::shared_ptr<PathEntries> PathEntryVectorDifferentiator::GetReordered() const {
  return reordered;
}
std::shared_ptr<PathEntries> PathEntryVectorDifferentiator::GetRefreshedBefore() const {
  return refreshedBefore;
}
std::shared_ptr<PathEntries> PathEntryVectorDifferentiator::GetRefreshedAfter() const {
  return refreshedAfter;
}

}  // namespace Corvane::PathManagement
