#include "searchpath/host/folder_tree.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <cstddef>
#include <iterator>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

struct HeldHash {
  using is_avalanching = void;
  std::size_t operator()(const AbsoluteIRI& iri) const noexcept { return hash_value(iri); }
};

}  // namespace

std::vector<std::shared_ptr<const FolderEntry>> CreateFolderTree(const AbsoluteIRI& root) {
  std::vector<std::shared_ptr<const FolderEntry>> tree;
  std::vector<std::shared_ptr<const FolderEntry>> pending = {FolderEntry::Create(root)};
  boost::unordered_flat_set<AbsoluteIRI, HeldHash> seen;
  while (!pending.empty()) {
    auto folder = std::move(pending.back());
    pending.pop_back();
    if (!seen.insert(folder->GetCanonicalAbsoluteIRI()).second) continue;
    auto below = folder->CreateOrdinaryFolders();
    pending.insert(pending.end(), std::make_move_iterator(below.rbegin()),
                   std::make_move_iterator(below.rend()));
    tree.push_back(std::move(folder));
  }
  return tree;
}

}  // namespace Corvane::PathManagement::host
