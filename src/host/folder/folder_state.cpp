#include "host/folder/folder_state.h"

#include "host/folder/closing_batch.h"
#include "host/folder/directory_scan.h"
#include "host/folder/open_path.h"
#include "host/names/name_key.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"
#include "text/item_of_file.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;

/// How often a folder is asked for single names before it is listed. Opening it and asking costs an
/// eighth of listing 100 files; twice eight, since a look-up may ask for a file and then for a
/// method entry, the "@" folder of the name looked up.
constexpr unsigned kMostQuestions = 16;

/// The native path without links; `nullopt` when it cannot be resolved. `links` may be null.
std::optional<std::string> WithoutLinks(const std::string& path, LinkResolver* links) {
  try {
    if (links != nullptr) return links->Resolve(path).bytes;
    return foundation::storage::vfs::detail::ResolveLinks(path).bytes;
  } catch (const foundation::storage::vfs::Exception&) {
    return std::nullopt;
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

/// A copy that owns its file names, while `listing` may view them.
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

const FolderIdentity& FolderState::Identity(const std::shared_ptr<LinkResolver>& links) {
  identifiedOnce.Call([&] {
    if (!identity) identity.emplace(Resolved(location, links));
  });
  return *identity;
}

/// The location of `folder` without links. A location that cannot be resolved stays as it is;
/// listing the folder will say what is wrong.
AbsoluteIRI FolderState::Resolved(const AbsoluteIRI& folder,
                                  const std::shared_ptr<LinkResolver>& links) {
  const auto path = NativeBytes(folder);
  if (!path) return GetCanonicalIRI(folder);  // not on disk
  const auto resolved =
      patience.Ask([path = *path, links] { return WithoutLinks(path, links.get()); });
  // Most folders are not behind links: then no new location has to be made.
  if (!resolved || !*resolved || *resolved == path) return folder;
  return foundation::storage::vfs::toAbsoluteIRI(u"file", TextFromBytes(**resolved));
}

/// The problem of the folder: `reason`, or that it is given up; none when neither applies.
std::vector<FolderProblem> FolderState::ProblemOf(std::optional<AbsolutizeError> reason) const {
  if (!reason && patience.HasGivenUp()) reason = AbsolutizeError::NoAnswer;
  if (!reason) return {};
  return {{GetStringFromIRI(location), *reason}};
}

std::vector<FolderProblem> FolderState::Problems() {
  // A saved listing says more than opening the folder would show, and mostly costs less.
  if (source != nullptr) List();
  if (!IsListed()) return ProblemOf(ProbeFolder(location, patience));
  auto problems = ProblemOf(listing.problem);
  problems.insert(problems.end(), cutLinks.begin(), cutLinks.end());
  return problems;
}

Freshness FolderState::AskFreshness() {
  auto path = NativeBytes(location);
  if (!path) return Freshness::Gone;
  std::optional<FolderStamp> stamp;
  if (IsListed()) {
    stamp = listing.stamp;
  } else if (source != nullptr) {
    stamp = source->FindStamp(location);
  }
  const auto ask = [path = *std::move(path), stamp] { return host::AskFreshness(path, stamp); };
  const Freshness freshness = patience.Ask(ask).value_or(Freshness::Unknown);
  // The folder could not be listed before, but can be now.
  const bool isThereAgain =
      IsListed() && listing.problem && freshness == Freshness::Unknown && !patience.HasGivenUp();
  return isThereAgain ? Freshness::Stale : freshness;
}

bool FolderState::IsUntouched() {
  const std::lock_guard lock(answersMutex);
  return ShowsTheDisk() && answers.IsEmpty() && !patience.HasGivenUp();
}

std::unique_ptr<FolderState> FolderState::CopyUnlisted() {
  std::optional<FolderIdentity> known;
  // The links of a folder that is given up may be unresolved: then the copy resolves them.
  if (!patience.HasGivenUp()) known = Identity();
  return std::unique_ptr<FolderState>(new FolderState(location, kind, /*listingSource=*/nullptr,
                                                      patience.GetLimit(), std::move(known)));
}

FolderState::Answer FolderState::Ask(const NameQuestion& question, ClosingBatch* batch) {
  if (auto answer = AnswerByNames(question, batch)) return *std::move(answer);
  List();
  const auto itemNamed = [this](const std::string& name) {
    const auto file = FileNamed(name);
    return file ? &ItemAt(*file) : nullptr;
  };
  return MakeAnswer(question, itemNamed, [this](const std::string& name) {
    const auto& folders = listing.specialFolders;
    return std::any_of(folders.begin(), folders.end(),
                       [&](const auto& folder) { return folder.name == name; });
  });
}

/// Answers without a listing; `nullopt` when the folder is listed, or has to be.
std::optional<FolderState::Answer> FolderState::AnswerByNames(const NameQuestion& question,
                                                              ClosingBatch* batch) {
  if (IsListed()) return std::nullopt;
  const std::lock_guard lock(answersMutex);
  if (!AsksNames()) return std::nullopt;
  ++questionCount;
  const auto unanswered = answers.FindUnanswered(question);
  if (!unanswered.names.empty() && !answers.Add(unanswered, AskFor(unanswered, batch))) {
    return std::nullopt;
  }
  const auto itemNamed = [this](const std::string& name) -> const PathItem* {
    if (answers.KindOf(name) != NameAnswers::Kind::File) return nullptr;
    return &answers.ItemOf(name, [&] { return CreateItem(Canonical(), name); });
  };
  return MakeAnswer(question, itemNamed, [this](const std::string& name) {
    return answers.KindOf(name) == NameAnswers::Kind::Folder;
  });
}

template <class ItemNamed, class HasFolder>
FolderState::Answer FolderState::MakeAnswer(const NameQuestion& question,
                                            const ItemNamed& itemNamed,
                                            const HasFolder& hasFolder) {
  Answer answer;
  auto& items = answer.items;
  for (const std::string& name : question.files) {
    const PathItem* const item = itemNamed(name);
    // The same extension may be wanted twice.
    const bool isNew =
        item != nullptr && std::find(items.begin(), items.end(), item) == items.end();
    if (isNew) items.push_back(item);
    if (isNew && !question.wantsAllFiles) return answer;
  }
  answer.hasFolder = question.folder && hasFolder(*question.folder);
  return answer;
}

/// Whether single names may still be asked for. Precondition: answersMutex is held.
bool FolderState::AsksNames() const noexcept {
  return !listingHasBegun && source == nullptr && questionCount < kMostQuestions;
}

/// What the disk says about `unanswered`. Unless `batch` is null, it closes the folder.
/// Precondition: answersMutex is held.
NameAnswers::FromDisk FolderState::AskFor(const NameAnswers::Unanswered& unanswered,
                                          ClosingBatch* batch) {
  if (answers.GetProblem()) return {};  // then `Add` counts all names as not there
  auto path = NativeBytes(location);
  if (!path) return {.problem = AbsolutizeError::InvalidText};
  const auto ask = [path = *std::move(path), unanswered, leavesOpen = batch != nullptr] {
    return NameAnswers::AskDisk(path, unanswered, leavesOpen);
  };
  auto said = TakeAhead(unanswered);
  if (!said) said = patience.Ask(ask);
  if (said && said->problem == AbsolutizeError::Other && batch != nullptr && !batch->IsEmpty()) {
    batch->CloseAll();  // perhaps there was no descriptor left
    said = patience.Ask(ask);
  }
  if (!said) return {.problem = AbsolutizeError::NoAnswer};
  if (batch != nullptr) batch->Add(std::move(said->folder));
  return *std::move(said);
}

/// The answer that was asked for ahead; `nullopt` when nothing or another question was asked ahead,
/// or when the disk does not answer.
std::optional<NameAnswers::FromDisk> FolderState::TakeAhead(
    const NameAnswers::Unanswered& unanswered) {
  if (!ahead || ahead->unanswered != unanswered) return std::nullopt;
  auto asked = *std::exchange(ahead, std::nullopt);
  return patience.Await(std::move(asked.answer));
}

void FolderState::AskAhead(const NameQuestion& question) {
  // Whoever holds the mutex is asking the disk or listing the folder: no need to ask ahead.
  const std::unique_lock lock(answersMutex, std::try_to_lock);
  if (!lock || !AsksNames() || answers.GetProblem() || patience.HasGivenUp()) return;
  const auto path = NativeBytes(location);
  auto unanswered = answers.FindUnanswered(question);
  const bool isUnderWay = ahead && ahead->unanswered == unanswered;
  if (!path || isUnderWay || unanswered.names.empty()) return;
  const auto ask = [path = *path, unanswered] { return NameAnswers::AskDisk(path, unanswered); };
  ahead.emplace(Ahead{std::move(unanswered), DetachedAnswer<NameAnswers::FromDisk>(ask)});
}

std::vector<FolderProblem> FolderState::ProblemsMet() {
  if (IsListed()) return Problems();
  const std::lock_guard lock(answersMutex);
  return ProblemOf(answers.GetProblem());
}

void FolderState::List() {
  listedOnce.Call([this] {
    const std::lock_guard lock(answersMutex);
    listingHasBegun = true;
    const auto start = std::chrono::steady_clock::now();
    listing = source != nullptr ? source->List(location, patience) : ListFolder(location, patience);
    listingTime = std::chrono::steady_clock::now() - start;
    answers.ApplyTo(listing);
    FollowSpecialLinks();
    items.SetCount(listing.files.size());
    answers.MoveItemsTo(items, listing.files);
  });
}

/// Notes where the special folders that are links lead, and leaves out links to a folder above.
void FolderState::FollowSpecialLinks() {
  // An earlier call may have ended with an exception.
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
      new FolderState(Below(location, subfolder.name), subfolder.kind, source, patience.GetLimit(),
                      Identity().Below(Below(Canonical(), subfolder.name))));
}

std::unique_ptr<FolderState> FolderState::MakeBehindLink(const FolderListing::Subfolder& subfolder,
                                                         AbsoluteIRI target) {
  return std::unique_ptr<FolderState>(new FolderState(Below(location, subfolder.name),
                                                      subfolder.kind, source, patience.GetLimit(),
                                                      Identity().BehindLink(std::move(target))));
}

const PathItem& FolderState::ItemAt(std::size_t index) {
  return items.Get(index, [this, index] { return CreateItem(Canonical(), listing.files[index]); });
}

PathItem CreateItem(AbsoluteIRI folder, std::string_view file) {
  return PathManagement::detail::ItemOfFile(std::move(folder), TextFromBytes(file));
}

std::optional<std::size_t> FolderState::FileNamed(std::string_view name) const {
  if (name.find('\0') != name.npos) return std::nullopt;  // no file name, and no `NameKey`
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
  // The last part of a location is the name of the link; the reason is always `LinkLoop`.
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
  std::unique_ptr<FolderState> copy(
      new FolderState(location, kind, source, patience.GetLimit(), Identity()));
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
