#include "host/rules/tree_folder.h"

#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Link = TreeFolder::Link;

/// Whether `above` is `folder` or a folder above it. Precondition: both are canonical.
bool IsAtOrAbove(const AbsoluteIRI& above, const AbsoluteIRI& folder) {
  const std::u16string_view whole = folder.toStringView();
  const std::u16string_view start = above.toStringView();
  return whole.starts_with(start) &&
         (whole.size() == start.size() || start.ends_with(u'/') || whole[start.size()] == u'/');
}

/// Whether a link in `folder` to `target` leads back to where the walk has come from.
bool LeadsBack(const AbsoluteIRI& target, const TreeFolder& folder) {
  if (IsAtOrAbove(target, folder.entry->GetCanonicalAbsoluteIRI())) return true;
  for (const Link* link = folder.links.get(); link != nullptr; link = link->before.get()) {
    if (IsAtOrAbove(target, link->target)) return true;
  }
  return false;
}

}  // namespace

std::vector<TreeFolder> TreeFolder::FindBelow() const {
  FolderEntries entries = entry->CreateOrdinaryFolders();
  const FolderEntries& special = entry->GetSpecialFolders();
  entries.insert(entries.end(), special.begin(), special.end());
  std::vector<TreeFolder> below;
  below.reserve(entries.size());
  const AbsoluteIRI here = entry->GetCanonicalAbsoluteIRI();
  for (auto& folder : entries) {
    AbsoluteIRI target = folder->GetCanonicalAbsoluteIRI();
    // A folder that is no link has its canonical location directly below that of this one.
    const bool isLink = !target.hasParent() || target.getParent() != here;
    if (isLink && LeadsBack(target, *this)) continue;
    below.push_back(
        {std::move(folder),
         isLink ? std::make_shared<const Link>(Link{std::move(target), links}) : links});
  }
  std::sort(below.begin(), below.end(), [](const TreeFolder& left, const TreeFolder& right) {
    return left.GetName() < right.GetName();
  });
  return below;
}

std::string TreeFolder::GetName() const {
  return BytesFromText(entry->GetAbsoluteIRI().getName()).value_or("");
}

std::vector<TreeFolder> RememberedTree::Below(const TreeFolder& folder) {
  {
    const std::lock_guard lock(mutex);
    const auto found = known.find(folder.entry);
    if (found != known.end()) return found->second;
  }
  auto below = folder.FindBelow();  // without the lock: others need not wait for the disk
  const std::lock_guard lock(mutex);
  // If another thread was first, its result stays.
  return known.emplace(folder.entry, std::move(below)).first->second;
}

}  // namespace Corvane::PathManagement::host
