#include "host/folder/folder_state.h"

#include "host/folder/directory_scan.h"
#include "host/folder/open_path.h"
#include "host/names/name_key.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;

/// The location without links. One that cannot be resolved stays as it is; listing the folder will
/// say what is wrong with it.
AbsoluteIRI Resolved(const AbsoluteIRI& location) {
  try {
    return GetCanonicalIRI(location);
  } catch (const foundation::storage::vfs::Exception&) {
    return location;
  }
}

AbsoluteIRI Below(const AbsoluteIRI& folder, const std::string& name) {
  ustring path = folder.getPath();
  if (!path.ends_with(u'/')) path.push_back(u'/');
  return foundation::storage::vfs::toAbsoluteIRI(u"file", path + TextFromBytes(name));
}

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

const FolderIdentity& FolderState::Identity() {
  identifiedOnce.Call([this] {
    if (!identity) identity.emplace(Resolved(location));
  });
  return *identity;
}

std::vector<FolderProblem> FolderState::Problems() {
  // A saved listing knows more than opening the folder would show, and mostly for less.
  if (source != nullptr) List();
  const bool isListed = IsListed();
  const auto reason = isListed ? listing.problem : ProbeFolder(location);
  std::vector<FolderProblem> problems;
  if (reason) problems.push_back({GetStringFromIRI(location), *reason});
  if (isListed) problems.insert(problems.end(), cutLinks.begin(), cutLinks.end());
  return problems;
}

Freshness FolderState::AskFreshness() const {
  const auto path = NativeBytes(location);
  if (!path) return Freshness::Gone;
  if (IsListed()) {
    const Freshness freshness = host::AskFreshness(*path, listing.stamp);
    // What could not be listed then can be now.
    const bool isThereAgain = listing.problem && freshness == Freshness::Unknown;
    return isThereAgain ? Freshness::Stale : freshness;
  }
  return host::AskFreshness(*path, source != nullptr ? source->FindStamp(location) : std::nullopt);
}

bool FolderState::IsUntouched() const noexcept {
  return !listingHasBegun && (source == nullptr || source->FollowsTheDisk());
}

std::unique_ptr<FolderState> FolderState::CopyUnlisted() {
  return std::unique_ptr<FolderState>(new FolderState(location, kind, nullptr, Identity()));
}

void FolderState::List() {
  listedOnce.Call([this] {
    listingHasBegun = true;
    const auto start = std::chrono::steady_clock::now();
    listing = source != nullptr ? source->List(location) : ListFolder(location);
    listingTime = std::chrono::steady_clock::now() - start;
    FollowSpecialLinks();
    items.SetCount(listing.files.size());
  });
}

void FolderState::FollowSpecialLinks() {
  linkTargets.clear();
  cutLinks.clear();
  std::vector<FolderListing::Subfolder> kept;
  for (auto& subfolder : listing.specialFolders) {
    if (subfolder.isLink) {
      const AbsoluteIRI link = Below(location, subfolder.name);
      AbsoluteIRI target = Resolved(link);
      if (Identity().HasComeThrough(target)) {
        cutLinks.push_back({GetStringFromIRI(link), AbsolutizeError::LinkLoop});
        continue;
      }
      linkTargets.push_back(std::move(target));
    }
    kept.push_back(std::move(subfolder));
  }
  listing.specialFolders = std::move(kept);
}

FolderState::Folders FolderState::MakeSpecialFolders() {
  Folders folders;
  auto target = linkTargets.begin();
  for (const auto& subfolder : listing.specialFolders) {
    folders.push_back(subfolder.isLink ? MakeBehindLink(subfolder, *target++)
                                       : MakeBelow(subfolder));
  }
  return folders;
}

FolderState::Folders FolderState::MakeOrdinaryFolders() {
  Folders folders;
  for (const auto& subfolder : listing.ordinaryFolders) {
    folders.push_back(subfolder.isLink
                          ? MakeBehindLink(subfolder, Resolved(Below(location, subfolder.name)))
                          : MakeBelow(subfolder));
  }
  return folders;
}

std::unique_ptr<FolderState> FolderState::MakeBelow(const FolderListing::Subfolder& subfolder) {
  return std::unique_ptr<FolderState>(
      new FolderState(Below(location, subfolder.name), subfolder.kind, source,
                      Identity().Below(Below(Canonical(), subfolder.name))));
}

std::unique_ptr<FolderState> FolderState::MakeBehindLink(const FolderListing::Subfolder& subfolder,
                                                         AbsoluteIRI target) {
  return std::unique_ptr<FolderState>(new FolderState(Below(location, subfolder.name),
                                                      subfolder.kind, source,
                                                      Identity().BehindLink(std::move(target))));
}

const std::shared_ptr<const PathItem>& FolderState::ItemAt(std::size_t index) {
  return items.Get(index, [this, index] {
    ustring name = TextFromBytes(listing.files[index]);
    ustring extension = fl::filesystem::detail::extract_extension(name);
    name.resize(name.size() - extension.size());
    return PathItem(Canonical(), std::move(name), std::move(extension));
  });
}

std::vector<std::size_t> FolderState::FilesNamed(const ustring& name,
                                                 FilenameMatchingPolicy policy) const {
  std::vector<std::size_t> files;
  const auto bytes = BytesFromText(name);
  for (std::size_t index = 0; bytes && index < listing.files.size(); ++index) {
    if (listing.files[index] == *bytes) {
      files.push_back(index);
      break;
    }
  }
  if (policy == FilenameMatchingPolicy::IgnoreCase) {
    const auto others = FilesThatDifferInCase(name);
    files.insert(files.end(), others.begin(), others.end());
  }
  return files;
}

std::vector<std::size_t> FolderState::FilesThatDifferInCase(const ustring& name) const {
  std::vector<std::size_t> files;
  NameKey wanted;
  if (!wanted.Set(name, {})) return files;
  NameKey folded;
  folded.SetFolded(wanted);
  for (std::size_t index = 0; index < listing.files.size(); ++index) {
    const std::string_view candidate = listing.files[index];
    if (folded.IsFoldOf(candidate.data()) && candidate != wanted.View()) files.push_back(index);
  }
  std::sort(files.begin(), files.end(), [this](std::size_t left, std::size_t right) {
    return listing.files[left] < listing.files[right];
  });
  return files;
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

std::unique_ptr<FolderState> FolderState::CopyListed() {
  std::unique_ptr<FolderState> copy(new FolderState(location, kind, source, Identity()));
  copy->listedOnce.Call([&] {
    copy->listingHasBegun = true;
    copy->listing = CopyOf(listing);
    copy->listingTime = listingTime;
    copy->linkTargets = linkTargets;
    copy->cutLinks = cutLinks;
    copy->items.SetCount(listing.files.size());
  });
  return copy;
}

}  // namespace Corvane::PathManagement::host
