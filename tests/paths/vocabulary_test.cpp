#include "support/recording.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace Corvane::PathManagement {
namespace {

using namespace test;

TEST(FoundItemTest, IsEqualWhenBothPointersAre) {
  const auto item = [] {
    return std::make_shared<PathItem>(AbsoluteIRI(u"file:///a"), u"fn", u".x");
  };
  const auto entry = [] { return std::make_shared<FakeEntry>("a", u"file:///a"); };
  const FoundItem found(item(), entry());
  EXPECT_TRUE(found == FoundItem(found));
  EXPECT_FALSE(found == FoundItem(found.GetPathItem(), entry()));
  EXPECT_FALSE(found == FoundItem(item(), found.GetPathEntry()));
}

/// The place of a virtual operation in the table that the two destructors begin; from 1.
template <class Interface, class Result, class... Arguments>
std::uintptr_t SlotOf(Result (Interface::*operation)(Arguments...) const) {
  std::uintptr_t offset = 0;  // in bytes; odd where that marks virtual operations
  std::memcpy(&offset, &operation, sizeof(offset));
  return offset / sizeof(void*) - 1;
}

TEST(SlotsTest, StandInTheOrderThatImplementersRelyOn) {
  using P = IPath;
  using E = IPathEntry;
  const auto canonical = static_cast<EntryPointer (P::*)(const CanonicalAbsoluteIRI&) const>(
      &P::GetPathEntryFromAbsoluteIRI);
  const auto named = static_cast<EntryPointer (P::*)(const AbsoluteIRI&, Policy) const>(
      &P::GetPathEntryFromAbsoluteIRI);
  const std::uintptr_t slots[][14] = {
      {SlotOf(&P::GetMainEntries), SlotOf(&P::GetMethodEntries), SlotOf(&P::GetMethodEntriesByName),
       SlotOf(&P::GetPartiallyMatchingEntries), SlotOf(&P::GetMainEntryForEntry),
       SlotOf(&P::GetParentEntryForEntry), SlotOf(canonical), SlotOf(named),
       SlotOf(&P::FindFirstInScope), SlotOf(&P::FindAllInScope), SlotOf(&P::ForEachEntry),
       SlotOf(&P::ConcurrentForEachEntry), SlotOf(&P::FirstEntryIsBeforeSecondOnPath),
       SlotOf(&P::IsEntryOnPath)},
      {SlotOf(&E::GetPathEntryType), SlotOf(&E::GetItems), SlotOf(&E::GetCanonicalAbsoluteIRI),
       SlotOf(&E::GetAbsoluteIRI), SlotOf(&E::GetSingleSubfolderEntryA),
       SlotOf(&E::GetSingleSubfolderEntryB), SlotOf(&E::GetSubfolderEntriesA),
       SlotOf(&E::GetSubfolderEntriesB), SlotOf(&E::GetSubfolderEntriesC), SlotOf(&E::FindItem),
       SlotOf(&E::FindItems), SlotOf(&E::ForEachEntryInScope),
       SlotOf(&E::ConcurrentForEachEntryInScope), SlotOf(&E::GetFilenameComparator)}};
  for (const auto& table : slots) {
    std::uintptr_t expected = 0;
    for (const std::uintptr_t slot : table) EXPECT_EQ(slot, ++expected);
  }
}

}  // namespace
}  // namespace Corvane::PathManagement
