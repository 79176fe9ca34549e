#include "searchpath/host/path_refresh.h"

#include "host/changes/location_set.h"
#include "host/common/held_hash.h"
#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "searchpath/utilities/iri_conversion.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <map>
#include <optional>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Folder = std::shared_ptr<const FolderEntry>;

bool AreSameFolder(const FolderEntry& left, const FolderEntry& right) {
  const AbsoluteIRI folder = left.GetCanonicalAbsoluteIRI();
  // Not as canonical locations, which would be compared by more than the folder.
  return folder == static_cast<const AbsoluteIRI&>(right.GetCanonicalAbsoluteIRI());
}

/// Compares a folder, and all special folders below it ("+", "@", private, resources), with an
/// earlier version, from the top down. Then takes over the old entries of what is unchanged, from
/// the bottom up. Does not recurse, since folders may nest deeper than the stack allows.
class FolderMerge {
 public:
  /// Folders that `changedFolders` does not contain are taken to be unchanged. When it is null, all
  /// may have changed.
  FolderMerge(const Folder& fresh, const Folder& old,
              const ChangedFolders* changedFolders = nullptr)
      : changed(changedFolders) {
    nodes.push_back({.fresh = fresh, .old = old});
    for (std::size_t at = 0; at < nodes.size(); ++at) Compare(at);
  }

  /// The old entry, the fresh one, or a new one that holds entries of both.
  [[nodiscard]] Folder Result() {
    for (std::size_t at = nodes.size() - 1; at > 0; --at) {
      Node& parent = nodes[nodes[at].parent];
      if (!nodes[at].isUnchanged) parent.isUnchanged = false;
      parent.below[nodes[at].index] = ResultAt(nodes[at]);
    }
    return ResultAt(nodes.front());
  }

 private:
  struct Node {
    Folder fresh;  // the old entry itself where nothing can have changed
    Folder old;
    std::size_t parent = 0;
    std::size_t index = 0;     // among the folders directly below the parent
    bool isUnchanged = false;  // final once all folders below have their results
    FolderEntries below = {};  // directly below the fresh entry; empty when not to be compared
  };

  void Compare(std::size_t at) {
    const Folder old = nodes[at].old;
    const Folder fresh = nodes[at].fresh = ToCompare(nodes[at].fresh, old);
    if (!AreSameFolder(*fresh, *old)) return;
    nodes[at].isUnchanged = true;
    FolderState& oldState = StateOf(*old);
    // Nothing has been shown yet that could differ.
    if (fresh == old && !oldState.IsListed()) return;
    if (oldState.IsUntouched() && StateOf(*fresh).IsUntouched()) return;
    nodes[at].below = fresh->GetSpecialFolders();
    const FolderEntries& oldBelow = old->GetSpecialFolders();
    nodes[at].isUnchanged =
        nodes[at].below.size() == oldBelow.size() && StateOf(*fresh).HoldsSameAs(oldState);
    AddBelow(at, oldBelow);
  }

  /// The entry to compare with `old`, or `old` itself where nothing can have changed.
  [[nodiscard]] Folder ToCompare(const Folder& fresh, const Folder& old) const {
    if (changed == nullptr || !AreSameFolder(*fresh, *old)) return fresh;
    if (!changed->Contains(*old)) return old;
    return fresh == old ? CreateEntry(StateOf(*old).CopyUnlisted()) : fresh;
  }

  void AddBelow(std::size_t parent, const FolderEntries& oldBelow) {
    if (oldBelow.empty()) return;
    std::map<ustring, Folder> byName;
    for (const Folder& old : oldBelow) byName.emplace(old->GetAbsoluteIRI().getName(), old);
    for (std::size_t index = 0; index < nodes[parent].below.size(); ++index) {
      const Folder fresh = nodes[parent].below[index];
      const auto old = byName.find(fresh->GetAbsoluteIRI().getName());
      if (old == byName.end()) {
        nodes[parent].isUnchanged = false;
      } else {
        nodes.push_back({.fresh = fresh, .old = old->second, .parent = parent, .index = index});
      }
    }
  }

  static Folder ResultAt(Node& node) {
    if (node.isUnchanged) return node.old;
    if (node.below.empty() || node.below == node.fresh->GetSpecialFolders()) return node.fresh;
    return CreateEntry(StateOf(*node.fresh).CopyListed(),
                       std::make_unique<FolderEntries>(std::move(node.below)));
  }

  const ChangedFolders* changed;  // null: all folders may have changed
  std::vector<Node> nodes;        // a parent comes before the folders below it
};

/// Hands out the entries of a path by a key, each entry once.
class Counterparts {
 public:
  template <class KeyOf>
  Counterparts(FolderEntries allFolders, const KeyOf& keyOf) : folders(std::move(allFolders)) {
    next.resize(folders.size());
    // From the back: so `firsts` ends up with the first entry of each key.
    for (std::size_t at = folders.size(); at-- > 0;) {
      const auto [first, isNew] = firsts.try_emplace(keyOf(*folders[at]), at);
      if (!isNew) next[at] = std::exchange(first->second, at);
    }
  }

  /// The first entry with this key that has not been taken; null when there is none.
  [[nodiscard]] Folder Take(const AbsoluteIRI& key) {
    const auto first = firsts.find(key);
    if (first == firsts.end() || !first->second) return nullptr;
    const std::size_t at = *first->second;
    first->second = next[at];
    return std::exchange(folders[at], nullptr);
  }

  [[nodiscard]] FolderEntries TakeRest() {
    std::erase(folders, nullptr);
    return std::move(folders);
  }

 private:
  using Index = std::optional<std::size_t>;  // in `folders`; no value: no further entry

  FolderEntries folders;  // null where an entry was taken
  boost::unordered_flat_map<AbsoluteIRI, Index, HeldHash> firsts;
  std::vector<Index> next;  // of each entry: the next one with the same key
};

/// A new entry for the same location, with the same time limit.
Folder CreateAnew(const FolderEntry& old) {
  return CreateMainFolder(old.GetAbsoluteIRI(), /*source=*/nullptr, StateOf(old).GetLimit());
}

AbsoluteIRI LocationOf(const FolderEntry& folder) { return folder.GetAbsoluteIRI(); }
AbsoluteIRI IdentityOf(const FolderEntry& folder) { return folder.GetCanonicalAbsoluteIRI(); }

}  // namespace

FolderEntries RearrangeFolders(const FolderEntries& oldFolders,
                               const std::vector<AbsoluteIRI>& locations) {
  Counterparts counterparts(oldFolders, LocationOf);
  // All folders of a path have the same limit.
  const auto limit =
      oldFolders.empty() ? DiskPatience::Limit() : StateOf(*oldFolders.front()).GetLimit();
  FolderEntries rearranged;
  rearranged.reserve(locations.size());
  for (const AbsoluteIRI& location : locations) {
    Folder old = counterparts.Take(location);
    rearranged.push_back(old != nullptr ? std::move(old)
                                        : CreateMainFolder(location, /*source=*/nullptr, limit));
  }
  return rearranged;
}

FolderEntries RefreshFolders(const FolderEntries& oldFolders) {
  FolderEntries refreshed = oldFolders;
  ForEachInParallel(refreshed.size(), [&](std::size_t at) {
    refreshed[at] = FolderMerge(CreateAnew(*refreshed[at]), refreshed[at]).Result();
  });
  return refreshed;
}

FolderEntries RefreshFolders(const FolderEntries& oldFolders, const ChangedFolders& changed) {
  FolderEntries refreshed = oldFolders;
  IdentifyAll(refreshed);  // at once, since `Affect` would resolve the locations one by one
  std::vector<std::size_t> affected;
  for (std::size_t at = 0; at < refreshed.size(); ++at) {
    if (changed.Affect(*refreshed[at])) affected.push_back(at);
  }
  ForEachInParallel(affected.size(), [&](std::size_t index) {
    Folder& folder = refreshed[affected[index]];
    // A changed folder gets a new entry, since a link on the way to it may lead elsewhere by now.
    const Folder fresh = changed.Contains(*folder) ? CreateAnew(*folder) : folder;
    folder = FolderMerge(fresh, folder, &changed).Result();
  });
  return refreshed;
}

FolderEntries ShareUnchangedFolders(const FolderEntries& folders, const FolderEntries& oldFolders) {
  FolderEntries shared = folders;
  FolderEntries old;  // for each of `folders`: its counterpart; null when there is none
  Counterparts sameLocation(oldFolders, LocationOf);
  for (const Folder& folder : folders) old.push_back(sameLocation.Take(LocationOf(*folder)));
  Counterparts sameFolder(sameLocation.TakeRest(), IdentityOf);
  for (std::size_t at = 0; at < old.size(); ++at) {
    if (old[at] == nullptr) old[at] = sameFolder.Take(IdentityOf(*folders[at]));
  }
  ForEachInParallel(shared.size(), [&](std::size_t at) {
    if (old[at] != nullptr) shared[at] = FolderMerge(shared[at], old[at]).Result();
  });
  return shared;
}

struct ChangedFolders::Locations {
  LocationSet all;
};

ChangedFolders::ChangedFolders(const AbsoluteIRIRange& changed) {
  const auto added = std::make_shared<Locations>();
  for (const AbsoluteIRI& location : changed) {
    AddChangedFolder(added->all, location);
    try {
      AddChangedFolder(added->all, GetCanonicalIRI(location));
    } catch (const foundation::storage::vfs::Exception&) {
      // An entry whose links cannot be resolved has its location as its canonical location, and
      // that has been added.
    }
  }
  locations = added;
}

ChangedFolders::~ChangedFolders() = default;

bool ChangedFolders::Contains(const FolderEntry& folder) const {
  const LocationSet& all = locations->all;
  return all.contains(LocationOf(folder)) || all.contains(IdentityOf(folder));
}

bool ChangedFolders::Affect(const FolderEntry& mainFolder) const {
  std::vector<const FolderEntry*> pending = {&mainFolder};
  while (!pending.empty()) {
    const FolderEntry& folder = *pending.back();
    pending.pop_back();
    if (Contains(folder)) return true;
    if (!StateOf(folder).IsListed()) continue;
    for (const Folder& below : folder.GetSpecialFolders()) pending.push_back(below.get());
  }
  return false;
}

}  // namespace Corvane::PathManagement::host
