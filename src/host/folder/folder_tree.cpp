#include "searchpath/host/folder_tree.h"

#include "host/common/held_hash.h"
#include "host/common/parallel.h"
#include "host/folder/entry_state.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

namespace {

/// Whether `folder` is reached through a link in `parent`.
bool IsBehindLink(const FolderEntry& parent, const FolderEntry& folder) {
  const AbsoluteIRI target = folder.GetCanonicalAbsoluteIRI();
  return !target.hasParent() || target.getName() != folder.GetAbsoluteIRI().getName() ||
         !(target.getParent() == static_cast<const AbsoluteIRI&>(parent.GetCanonicalAbsoluteIRI()));
}

/// Walks a tree first without following links, then through the links, so that a folder is taken at
/// a link only if no way without links leads to it.
class TreeWalk {
 public:
  explicit TreeWalk(std::shared_ptr<const FolderEntry> root) {
    nodes.push_back({std::move(root), {}});
    WalkWithoutLinks(0);
    for (; nextLink < links.size(); ++nextLink) WalkWithoutLinks(links[nextLink]);
  }

  [[nodiscard]] FolderEntries InPathOrder() const {
    FolderEntries tree;
    std::vector<std::size_t> pending = {0};
    while (!pending.empty()) {
      const Node& node = nodes[pending.back()];
      pending.pop_back();
      if (!node.isTaken) continue;
      tree.push_back(node.folder);
      pending.insert(pending.end(), node.below.rbegin(), node.below.rend());
    }
    return tree;
  }

 private:
  struct Node {
    std::shared_ptr<const FolderEntry> folder;
    std::vector<std::size_t> below;  // the nodes of its subfolders, in the order of their names
    bool isTaken = false;            // the first node reached for its folder; others are left out
  };

  void WalkWithoutLinks(std::size_t top) {
    std::vector<std::size_t> pending = {top};
    while (!pending.empty()) {
      const std::size_t at = pending.back();
      pending.pop_back();
      const auto folder = nodes[at].folder;  // a copy: `nodes` grows below
      if (!seen.insert(folder->GetCanonicalAbsoluteIRI()).second) continue;
      nodes[at].isTaken = true;
      auto allBelow = folder->CreateOrdinaryFolders();
      // The walk would list them one by one; here a slow disk is asked for several at once.
      const auto list = [&](std::size_t index) {
        if (!IsBehindLink(*folder, *allBelow[index])) StateOf(*allBelow[index]).List();
      };
      ForEachInParallel(allBelow.size(), list, /*threadsAtFirst=*/1);
      for (auto& below : allBelow) {
        const std::size_t node = nodes.size();
        (IsBehindLink(*folder, *below) ? links : pending).push_back(node);
        nodes[at].below.push_back(node);
        nodes.push_back({std::move(below), {}});
      }
    }
  }

  // Nodes are numbered by their indices in `nodes`.
  std::vector<Node> nodes;         // the root first
  std::vector<std::size_t> links;  // nodes behind links, to be walked in this order
  std::size_t nextLink = 0;
  boost::unordered_flat_set<AbsoluteIRI, HeldHash> seen;  // canonical locations
};

}  // namespace

FolderEntries CreateFolderTree(const AbsoluteIRI& root) {
  return CreateFolderTree(FolderEntry::Create(root));
}

FolderEntries CreateFolderTree(std::shared_ptr<const FolderEntry> root) {
  return TreeWalk(std::move(root)).InPathOrder();
}

}  // namespace Corvane::PathManagement::host
