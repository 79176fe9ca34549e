#include "searchpath/model/path.h"
#include "searchpath/model/path_entry_factory.h"
#include "searchpath/platform/main_search_path_manager.h"
#include "searchpath/platform/package_registry.h"

#include <gtest/gtest.h>

#include <cstring>

// Environments that were compiled on their own call these interfaces by slot.
namespace Corvane::PathManagement {
namespace {

/// The number of an operation's slot in the table of virtual operations; the destructor takes two.
template <class Operation>
std::size_t SlotOf(Operation operation) {
  std::size_t offset = 0;
  std::memcpy(&offset, &operation, sizeof(offset));
  return offset / sizeof(void*) - 1;
}

/// Expects the operations in the slots from 1 on, in this order.
template <class... Operations>
void ExpectSlots(Operations... operations) {
  std::size_t slot = 0;
  for (const std::size_t found : {SlotOf(operations)...}) EXPECT_EQ(found, ++slot);
}

TEST(SlotOrderTest, OperationsOfInterfacesKeepTheirSlots) {
  using Pointer = std::shared_ptr<const IPathEntry>;
  using FindCanonical = Pointer (IPath::*)(const CanonicalAbsoluteIRI&) const;
  using FindByPolicy = Pointer (IPath::*)(const AbsoluteIRI&, FilenameMatchingPolicy) const;
  ExpectSlots(&IPath::GetMainEntries, &IPath::GetMethodEntries, &IPath::GetMethodEntriesByName,
              &IPath::GetPartiallyMatchingEntries, &IPath::GetMainEntryForEntry,
              &IPath::GetParentEntryForEntry,
              static_cast<FindCanonical>(&IPath::GetPathEntryFromAbsoluteIRI),
              static_cast<FindByPolicy>(&IPath::GetPathEntryFromAbsoluteIRI),
              &IPath::FindFirstInScope, &IPath::FindAllInScope, &IPath::ForEachEntry,
              &IPath::ConcurrentForEachEntry, &IPath::FirstEntryIsBeforeSecondOnPath,
              &IPath::IsEntryOnPath);
  ExpectSlots(&IPathEntry::GetPathEntryType, &IPathEntry::GetItems,
              &IPathEntry::GetCanonicalAbsoluteIRI, &IPathEntry::GetAbsoluteIRI,
              &IPathEntry::GetSingleSubfolderEntryA, &IPathEntry::GetSingleSubfolderEntryB,
              &IPathEntry::GetSubfolderEntriesA, &IPathEntry::GetSubfolderEntriesB,
              &IPathEntry::GetSubfolderEntriesC, &IPathEntry::FindItem, &IPathEntry::FindItems,
              &IPathEntry::ForEachEntryInScope, &IPathEntry::ConcurrentForEachEntryInScope,
              &IPathEntry::GetFilenameComparator);
  ExpectSlots(&IPathEntryFactory::ReadEntries, &IPathEntryFactory::WriteEntries);
  ExpectSlots(&IMainSearchPathManager::SetFolderIRIs, &IMainSearchPathManager::GetPackagesOnPath,
              &IMainSearchPathManager::GetFolderIRIs);
  using PackageRegistry::IPackage;
  ExpectSlots(&IPackage::GetFolders, &IPackage::GetProperty, &IPackage::GetMetadata);
}

}  // namespace
}  // namespace Corvane::PathManagement
