#include "searchpath/host/folder_entry.h"

#include "host/folder/folder_state.h"
#include "host/folder/folder_walk.h"
#include "searchpath/host/filename_comparison.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <numeric>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::SearchTarget;

/// Releases folders one after the other, so that however deep they nest, the stack does not grow: a
/// destructor that this function runs hands its folders over to the loop.
void ReleaseInALoop(FolderEntries& folders) noexcept {
  thread_local std::vector<FolderEntries>* running = nullptr;
  std::vector<FolderEntries> pending;
  const bool isOutermost = running == nullptr;
  if (isOutermost) running = &pending;
  try {
    running->push_back(std::move(folders));
  } catch (const std::bad_alloc&) {
    folders.clear();  // no memory to hand them over: releases them here, deeper on the stack
  }
  if (!isOutermost) return;
  while (!pending.empty()) {
    const FolderEntries released = std::move(pending.back());
    pending.pop_back();
  }
  running = nullptr;
}

}  // namespace

std::shared_ptr<const FolderEntry> FolderEntry::Create(const AbsoluteIRI& location) {
  return std::shared_ptr<const FolderEntry>(
      new FolderEntry(std::make_unique<FolderState>(location, /*listingSource=*/nullptr),
                      /*initialSpecialFolders=*/nullptr));
}

FolderEntry::FolderEntry(std::unique_ptr<FolderState> initialState,
                         std::unique_ptr<FolderEntries> initialSpecialFolders)
    : state(std::move(initialState)), specialFolders(initialSpecialFolders.release()) {}

FolderEntries FolderEntry::CreateAll(std::vector<std::unique_ptr<FolderState>> states) {
  FolderEntries entries;
  entries.reserve(states.size());
  for (auto& below : states) {
    entries.push_back(std::shared_ptr<const FolderEntry>(
        new FolderEntry(std::move(below), /*initialSpecialFolders=*/nullptr)));
  }
  return entries;
}

FolderEntry::~FolderEntry() {
  const std::unique_ptr<FolderEntries> made(specialFolders.load(std::memory_order_relaxed));
  if (made != nullptr && !made->empty()) ReleaseInALoop(*made);
}

PathEntryType FolderEntry::GetPathEntryType() const { return state->Kind(); }

std::size_t FolderEntry::GetItemCount() const { return ListedState().Files().size(); }

std::shared_ptr<const PathItems> FolderEntry::GetItems() const {
  const NameBlock& names = ListedState().Files();
  std::vector<std::size_t> order(names.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&names](std::size_t left, std::size_t right) { return names[left] < names[right]; });
  PathItems items;
  items.reserve(order.size());
  const auto self = shared_from_this();
  for (const std::size_t index : order) items.push_back(ShareItem(self, state->ItemAt(index)));
  return std::make_shared<const PathItems>(std::move(items));
}

FolderState& FolderEntry::ListedState() const {
  state->List();
  return *state;
}

CanonicalAbsoluteIRI FolderEntry::GetCanonicalAbsoluteIRI() const {
  return {state->Canonical(), ustring()};
}

AbsoluteIRI FolderEntry::GetAbsoluteIRI() const { return state->Location(); }

namespace {

std::shared_ptr<const IPathEntry> FirstOfKind(const FolderEntries& folders, PathEntryType kind) {
  const auto found = std::find_if(folders.begin(), folders.end(), [kind](const auto& folder) {
    return folder->GetPathEntryType() == kind;
  });
  return found == folders.end() ? nullptr : *found;
}

std::shared_ptr<const PathEntries> AllOfKind(const FolderEntries& folders, PathEntryType kind) {
  PathEntries entries;
  std::copy_if(folders.begin(), folders.end(), std::back_inserter(entries),
               [kind](const auto& folder) { return folder->GetPathEntryType() == kind; });
  return std::make_shared<const PathEntries>(std::move(entries));
}

}  // namespace

std::shared_ptr<const IPathEntry> FolderEntry::GetSingleSubfolderEntryA() const {
  return FirstOfKind(GetSpecialFolders(), PathEntryType::PrivateFolder);
}

std::shared_ptr<const IPathEntry> FolderEntry::GetSingleSubfolderEntryB() const {
  return FirstOfKind(GetSpecialFolders(), PathEntryType::ResourcesFolder);
}

std::shared_ptr<const PathEntries> FolderEntry::GetSubfolderEntriesA() const {
  return AllOfKind(GetSpecialFolders(), PathEntryType::PlusFolder);
}

std::shared_ptr<const PathEntries> FolderEntry::GetSubfolderEntriesB() const {
  return AllOfKind(GetSpecialFolders(), PathEntryType::AtFolder);
}

std::shared_ptr<const PathEntries> FolderEntry::GetSubfolderEntriesC() const {
  return std::make_shared<const PathEntries>();
}

std::shared_ptr<const PathItem> FolderEntry::FindItem(const SearchTarget& target,
                                                      FilenameMatchingPolicy policy) const {
  if (policy != FilenameMatchingPolicy::IgnoreCase) {
    const auto answer = state->Ask(NameQuestion(target));
    return answer.items.empty() ? nullptr : ShareItem(shared_from_this(), *answer.items.front());
  }
  const PathItems items = FindItems(target, policy);
  return items.empty() ? nullptr : items.front();
}

PathItems FolderEntry::FindItems(const SearchTarget& target, FilenameMatchingPolicy policy) const {
  if (policy != FilenameMatchingPolicy::IgnoreCase) {
    NameQuestion question(target);
    question.wantsAllFiles = true;
    PathItems items;
    for (const PathItem* item : state->Ask(question).items) {
      items.push_back(ShareItem(shared_from_this(), *item));
    }
    return items;
  }
  FolderState& listed = ListedState();
  std::vector<std::size_t> files;
  const auto add = [&](const ustring& name) {
    for (const std::size_t index : listed.FilesNamed(name, policy)) {
      // Two extensions of the list may differ in case alone.
      if (std::find(files.begin(), files.end(), index) == files.end()) files.push_back(index);
    }
  };
  if (target.GetExtensions().empty()) add(target.GetName());
  for (const ustring& extension : target.GetExtensions()) add(target.GetName() + extension);
  PathItems items;
  items.reserve(files.size());
  const auto self = shared_from_this();
  for (const std::size_t index : files) items.push_back(ShareItem(self, listed.ItemAt(index)));
  return items;
}

bool FolderEntry::ForEachEntryInScope(SearchScope scope, const PathEntryVisitor& visitor) const {
  return WalkFolders(shared_from_this(), [&](const auto& entry, std::size_t /*depth*/) {
    return PathManagement::detail::IsInScope(scope, entry->GetPathEntryType()) && visitor(entry);
  });
}

bool FolderEntry::ConcurrentForEachEntryInScope(SearchScope scope,
                                                const PathEntryVisitor& visitor) const {
  return ForEachEntryInScope(scope, visitor);
}

std::shared_ptr<std::function<bool(const ustring&, const ustring&)>>
FolderEntry::GetFilenameComparator(FilenameMatchingPolicy policy) const {
  return std::make_shared<std::function<bool(const ustring&, const ustring&)>>(
      [policy](const ustring& left, const ustring& right) {
        return AreSameFilename(left, right, policy);
      });
}

const FolderEntries& FolderEntry::GetSpecialFolders() const {
  if (const FolderEntries* known = specialFolders.load(std::memory_order_acquire)) return *known;
  auto made = std::make_unique<FolderEntries>(CreateAll(ListedState().MakeSpecialFolders()));
  FolderEntries* known = nullptr;
  // When two threads make them at once, both get the entries of the first to store them.
  if (specialFolders.compare_exchange_strong(known, made.get(), std::memory_order_acq_rel)) {
    known = made.release();
  }
  return *known;
}

FolderEntries FolderEntry::CreateOrdinaryFolders() const {
  return CreateAll(ListedState().MakeOrdinaryFolders());
}

std::vector<FolderProblem> FolderEntry::GetProblems() const { return state->Problems(); }

Freshness FolderEntry::GetFreshness() const { return state->AskFreshness(); }

}  // namespace Corvane::PathManagement::host
