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

/// How often a folder is asked for single names before it is listed: to open it and to ask costs an
/// eighth of listing 100 files, and a look-up asks for a file and for a method entry.
constexpr unsigned kMostQuestions = 16;

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

bool FolderState::IsUntouched() {
  const std::lock_guard lock(answersMutex);
  return !listingHasBegun && answers.IsEmpty() && (source == nullptr || source->FollowsTheDisk());
}

std::unique_ptr<FolderState> FolderState::CopyUnlisted() {
  return std::unique_ptr<FolderState>(new FolderState(location, kind, nullptr, Identity()));
}

FolderState::Answer FolderState::Ask(const NameQuestion& question) {
  if (auto answer = AskDisk(question)) return *std::move(answer);
  List();
  for (const std::string& name : question.files) {
    if (const auto file = FileNamed(name)) return {&ItemAt(*file), false};
  }
  const auto& folders = listing.specialFolders;
  return {nullptr, question.methodFolder &&
                       std::any_of(folders.begin(), folders.end(), [&](const auto& folder) {
                         return folder.name == *question.methodFolder;
                       })};
}

/// Empty when the folder is to be listed.
std::optional<FolderState::Answer> FolderState::AskDisk(const NameQuestion& question) {
  if (IsListed()) return std::nullopt;
  const std::lock_guard lock(answersMutex);
  if (listingHasBegun || source != nullptr || questionCount == kMostQuestions) return std::nullopt;
  ++questionCount;
  if (!answers.Ask(location, question)) return std::nullopt;
  for (const std::string& name : question.files) {
    if (answers.KindOf(name) != NameAnswers::Kind::File) continue;
    return Answer{&answers.ItemOf(name, [&] { return MakeItem(name); }), false};
  }
  return Answer{nullptr, question.methodFolder &&
                             answers.KindOf(*question.methodFolder) == NameAnswers::Kind::Folder};
}

std::vector<FolderProblem> FolderState::ProblemsMet() {
  if (IsListed()) return Problems();
  const std::lock_guard lock(answersMutex);
  const auto reason = answers.GetProblem();
  if (!reason) return {};
  return {{GetStringFromIRI(location), *reason}};
}

void FolderState::List() {
  listedOnce.Call([this] {
    const std::lock_guard lock(answersMutex);
    listingHasBegun = true;
    const auto start = std::chrono::steady_clock::now();
    listing = source != nullptr ? source->List(location) : ListFolder(location);
    listingTime = std::chrono::steady_clock::now() - start;
    answers.ApplyTo(listing);
    FollowSpecialLinks();
    items.SetCount(listing.files.size());
    answers.MoveItemsTo(items, listing.files);
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

const PathItem& FolderState::ItemAt(std::size_t index) {
  return items.Get(index, [this, index] { return MakeItem(listing.files[index]); });
}

PathItem FolderState::MakeItem(std::string_view file) {
  ustring name = TextFromBytes(file);
  ustring extension = fl::filesystem::detail::extract_extension(name);
  name.resize(name.size() - extension.size());
  return {Canonical(), std::move(name), std::move(extension)};
}

std::optional<std::size_t> FolderState::FileNamed(std::string_view name) const {
  if (name.find('\0') != name.npos) return std::nullopt;
  NameKey key;
  key.Set(name);
  for (std::size_t index = 0; index < listing.files.size(); ++index) {
    if (key.Is(listing.files[index].data())) return index;
  }
  return std::nullopt;
}

std::vector<std::size_t> FolderState::FilesNamed(const ustring& name,
                                                 FilenameMatchingPolicy policy) const {
  std::vector<std::size_t> files;
  const auto bytes = BytesFromText(name);
  if (const auto exact = bytes ? FileNamed(*bytes) : std::nullopt) files.push_back(*exact);
  if (policy == FilenameMatchingPolicy::IgnoreCase) {
    const auto others = FilesThatDifferInCase(name);
    files.insert(files.end(), others.begin(), others.end());
  }
  return files;
}

std::vector<std::size_t> FolderState::FilesThatDifferInCase(const ustring& name) const {
  std::vector<std::size_t> files;
  NameKey wanted;
  if (!wanted.Set(std::u16string_view(name))) return files;
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
