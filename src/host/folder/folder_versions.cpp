#include "host/folder/folder_state.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

// What two versions of a folder have in common.

namespace Corvane::PathManagement::host {

namespace {

std::vector<std::string_view> InOrder(const NameBlock& names) {
  std::vector<std::string_view> sorted;
  sorted.reserve(names.size());
  for (std::size_t index = 0; index < names.size(); ++index) sorted.push_back(names[index]);
  std::sort(sorted.begin(), sorted.end());
  return sorted;
}

bool AreSameNames(const NameBlock& left, const NameBlock& right) {
  if (left.size() != right.size()) return false;
  std::size_t index = 0;
  while (index < left.size() && left[index] == right[index]) ++index;
  // Most disks give the names of an unchanged folder in the same order again.
  return index == left.size() || InOrder(left) == InOrder(right);
}

FolderListing CopyOf(const FolderListing& listing) {
  FolderListing copy;
  for (std::size_t index = 0; index < listing.files.size(); ++index) {
    copy.files.Add(listing.files[index]);
  }
  copy.files.ShrinkToFit();
  copy.specialFolders = listing.specialFolders;
  copy.ordinaryFolders = listing.ordinaryFolders;
  copy.links = listing.links;
  copy.stamp = listing.stamp;
  copy.problem = listing.problem;
  return copy;
}

}  // namespace

bool FolderState::IsUntouched() const noexcept {
  return !listingHasBegun && (source == nullptr || source->FollowsTheDisk());
}

bool FolderState::HoldsSameAs(const FolderState& other) const {
  const auto isSameLink = [](const FolderProblem& left, const FolderProblem& right) {
    return left.folder.substr(left.folder.rfind(u'/')) ==
           right.folder.substr(right.folder.rfind(u'/'));
  };
  return kind == other.kind && listing.problem == other.listing.problem &&
         AreSameNames(Files(), other.Files()) &&
         std::equal(cutLinks.begin(), cutLinks.end(), other.cutLinks.begin(), other.cutLinks.end(),
                    isSameLink);
}

std::shared_ptr<const FolderEntry> FolderState::MakeUnlisted() {
  return FolderEntry::Create(
      std::unique_ptr<FolderState>(new FolderState(location, kind, nullptr, Identity(Identify()))));
}

std::shared_ptr<const FolderEntry> FolderState::MakeWith(FolderEntries below) {
  auto copy =
      std::unique_ptr<FolderState>(new FolderState(location, kind, source, Identity(Identify())));
  copy->listedOnce.Call([&] {
    copy->listingHasBegun = true;
    copy->listing = CopyOf(listing);
    copy->listingTime = listingTime;
    copy->specialFolders = std::move(below);
    copy->cutLinks = cutLinks;
    copy->items.SetCount(listing.files.size());
  });
  return FolderEntry::Create(std::move(copy));
}

}  // namespace Corvane::PathManagement::host
