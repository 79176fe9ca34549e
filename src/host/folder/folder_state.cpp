#include "host/folder/folder_state.h"

#include "host/folder/directory_scan.h"
#include "host/folder/open_path.h"
#include "host/names/name_key.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <algorithm>
#include <new>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;

/// The identity of the folder at `location`. One that cannot be resolved is known by the location
/// itself; listing it will say what is wrong with it.
CanonicalAbsoluteIRI IdentityOf(const AbsoluteIRI& location) {
  try {
    return GetCanonicalIRI(location);
  } catch (const foundation::storage::vfs::Exception&) {
    return {location, ustring()};
  }
}

AbsoluteIRI Below(const AbsoluteIRI& folder, const std::string& name) {
  ustring path = folder.getPath();
  if (!path.ends_with(u'/')) path.push_back(u'/');
  return foundation::storage::vfs::toAbsoluteIRI(u"file", path + TextFromBytes(name));
}

/// Releases folders one after the other, however deep they nest: a destructor that runs inside this
/// one hands its folders over instead of going deeper.
void ReleaseInALoop(FolderEntries& folders) noexcept {
  thread_local std::vector<FolderEntries>* running = nullptr;
  std::vector<FolderEntries> pending;
  const bool isOutermost = running == nullptr;
  if (isOutermost) running = &pending;
  try {
    running->push_back(std::move(folders));
  } catch (const std::bad_alloc&) {
    folders.clear();  // without room for the list, one level deeper
  }
  if (!isOutermost) return;
  while (!pending.empty()) {
    const FolderEntries released = std::move(pending.back());
    pending.pop_back();
  }
  running = nullptr;
}

}  // namespace

std::shared_ptr<const FolderEntry> FolderState::CreateMainFolder(
    const AbsoluteIRI& location, std::shared_ptr<const ListingSource> source) {
  return FolderEntry::Create(std::unique_ptr<FolderState>(
      new FolderState(location, PathEntryType::Ordinary, std::move(source), std::nullopt)));
}

FolderState::FolderState(AbsoluteIRI folderLocation, PathEntryType folderKind,
                         std::shared_ptr<const ListingSource> listingSource,
                         std::optional<Identity> knownIdentity)
    : location(std::move(folderLocation)),
      kind(folderKind),
      source(std::move(listingSource)),
      identity(std::move(knownIdentity)) {}

FolderState::~FolderState() {
  if (!specialFolders.empty()) ReleaseInALoop(specialFolders);
}

void FolderState::List() {
  listedOnce.Call([this] {
    listingHasBegun = true;  // before the disk is asked: who finds it unset knows that it will be
    const auto start = std::chrono::steady_clock::now();
    listing = source != nullptr ? source->List(location) : ListFolder(location);
    listingTime = std::chrono::steady_clock::now() - start;
    specialFolders.clear();
    cutLinks.clear();
    for (const auto& subfolder : listing.specialFolders) AddSpecialFolder(subfolder);
    items.SetCount(listing.files.size());
  });
}

const FolderState::Identity& FolderState::Identify() {
  identifiedOnce.Call([this] {
    if (identity) return;
    CanonicalAbsoluteIRI canonical = IdentityOf(location);
    FolderChain chain(canonical);
    identity.emplace(std::move(canonical), std::move(chain));
  });
  return *identity;
}

void FolderState::AddSpecialFolder(const FolderListing::Subfolder& subfolder) {
  if (!subfolder.isLink) {
    specialFolders.push_back(MakeBelow(subfolder));
    return;
  }
  const AbsoluteIRI link = Below(location, subfolder.name);
  CanonicalAbsoluteIRI target = IdentityOf(link);
  if (Identify().chain.Contains(target, Canonical())) {
    cutLinks.push_back({GetStringFromIRI(link), AbsolutizeError::LinkLoop});
  } else {
    specialFolders.push_back(MakeBehindLink(subfolder, std::move(target)));
  }
}

std::shared_ptr<const FolderEntry> FolderState::MakeBelow(
    const FolderListing::Subfolder& subfolder) {
  CanonicalAbsoluteIRI target(Below(Canonical(), subfolder.name), ustring());
  return Make(subfolder, {std::move(target), Identify().chain});
}

std::shared_ptr<const FolderEntry> FolderState::MakeBehindLink(
    const FolderListing::Subfolder& subfolder, CanonicalAbsoluteIRI target) {
  FolderChain behindLink = Identify().chain.ThroughLink(Canonical(), target);
  return Make(subfolder, {std::move(target), std::move(behindLink)});
}

std::shared_ptr<const FolderEntry> FolderState::Make(const FolderListing::Subfolder& subfolder,
                                                     Identity subfolderIdentity) const {
  return FolderEntry::Create(std::unique_ptr<FolderState>(new FolderState(
      Below(location, subfolder.name), subfolder.kind, source, std::move(subfolderIdentity))));
}

FolderEntries FolderState::MakeOrdinaryFolders() {
  FolderEntries folders;
  for (const auto& subfolder : listing.ordinaryFolders) {
    folders.push_back(subfolder.isLink
                          ? MakeBehindLink(subfolder, IdentityOf(Below(location, subfolder.name)))
                          : MakeBelow(subfolder));
  }
  return folders;
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

std::vector<FolderProblem> FolderState::Problems() {
  // A saved listing tells more than a folder that opens, and mostly for less.
  if (source != nullptr) List();
  const bool isListed = listedOnce.IsBuilt();
  const auto reason = isListed ? listing.problem : ProbeFolder(location);
  std::vector<FolderProblem> problems;
  if (reason) problems.push_back({GetStringFromIRI(location), *reason});
  if (isListed) problems.insert(problems.end(), cutLinks.begin(), cutLinks.end());
  return problems;
}

Freshness FolderState::AskFreshness() const {
  const auto path = NativeBytes(location);
  if (!path) return Freshness::Gone;
  if (listedOnce.IsBuilt()) {
    const Freshness freshness = host::AskFreshness(*path, listing.stamp);
    // What could not be listed then can be now.
    const bool isThereAgain = listing.problem && freshness == Freshness::Unknown;
    return isThereAgain ? Freshness::Stale : freshness;
  }
  return host::AskFreshness(*path, source != nullptr ? source->FindStamp(location) : std::nullopt);
}

}  // namespace Corvane::PathManagement::host
