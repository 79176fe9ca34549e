#include "host/rules/relative_folder.h"

#include "host/common/parallel.h"
#include "host/folder/entry_state.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;
using Match = RelativeFolder::Match;

constexpr unsigned kMostSingleLooks = 8;  // questions before the folders are listed
constexpr std::size_t kFewRoots = 8;      // to list no more than these, several threads do not pay

// What a record holds for an answer without a file, known by its address: no file was found, or the
// search ended before one was.
const Match& NoMatch() {
  static const Match none{0, FoundItem(nullptr, nullptr)};
  return none;
}
const Match& EndOfSearch() {
  static const Match end{0, FoundItem(nullptr, nullptr)};
  return end;
}

RelativeFolder::Answer AnswerOf(const Match& match) {
  if (&match == &NoMatch()) return {};
  if (&match == &EndOfSearch()) return {.ended = true};
  return {.match = &match};
}

const Match& MatchOf(const RelativeFolder::Answer& answer) {
  if (answer.ended) return EndOfSearch();
  return answer.match == nullptr ? NoMatch() : *answer.match;
}

/// Whether there was no folder to list.
bool IsOfNoFolder(const FolderListing& listing) {
  return listing.problem == AbsolutizeError::Absent ||
         listing.problem == AbsolutizeError::BrokenLink ||
         listing.problem == AbsolutizeError::NotAFolder;
}

}  // namespace

RelativeFolder::Answer RelativeFolder::FindFirst(std::string_view file) {
  if (IsToBeListed()) List();
  if (!isListed.load(std::memory_order_acquire)) {
    const std::lock_guard lock(mutex);
    return AskRoots(0, file);
  }
  const auto known = table.find(file);
  if (known == table.end() && unlisted.empty()) return {};
  Record* const record = known == table.end() ? nullptr : known->second;
  if (record != nullptr) {
    const Match* const match = record->answer.load(std::memory_order_acquire);
    if (match != nullptr) return AnswerOf(*match);
  }
  const std::lock_guard lock(mutex);
  const Answer answer = AskRoots(FirstRootToAsk(file), file);
  if (record != nullptr) record->answer.store(&MatchOf(answer), std::memory_order_release);
  return answer;
}

RelativeFolder::Sight RelativeFolder::LookIn(std::size_t root, std::string_view file) {
  const std::lock_guard lock(mutex);
  return LookInLocked(root, file);
}

/// Counts a question, and says whether it is time for a table.
bool RelativeFolder::IsToBeListed() {
  return !isListed.load(std::memory_order_acquire) &&
         questionCount.fetch_add(1) >= kMostSingleLooks;
}

void RelativeFolder::List() {
  const std::lock_guard lock(mutex);
  if (isListed.load(std::memory_order_relaxed)) return;
  const auto list = [&](std::size_t root) {
    // A root about which the disk has not answered in time is not asked again.
    if (!StateOf(*roots.GetFolders()[root]).IsGivenUp()) StateOf(*entries[root]).List();
  };
  // Makes the entries, before several threads use them.
  for (std::size_t root = 0; root < roots.size(); ++root) static_cast<void>(EntryOf(root));
  if (roots.size() > kFewRoots) {
    ForEachInParallel(roots.size(), list);
  } else {
    for (std::size_t root = 0; root < roots.size(); ++root) list(root);
  }
  for (std::size_t root = 0; root < roots.size(); ++root) AddToTable(root);
  for (const auto& [asked, sight] : seen) {
    // An earlier answer stays whatever the listings have, so its root is asked, too.
    const auto [known, isNew] = table.emplace(asked.first, nullptr);
    if (isNew) known->second = &records.emplace_back(asked.second);
    known->second->firstRoot = std::min(known->second->firstRoot, asked.second);
  }
  isListed.store(true, std::memory_order_release);
}

void RelativeFolder::AddToTable(std::size_t root) {
  if (!StateOf(*entries[root]).IsListed()) {
    unlisted.push_back(root);
    return;
  }
  const FolderListing& listing = StateOf(*entries[root]).Listing();
  if (IsOfNoFolder(listing)) {
    entries[root] = nullptr;  // saves memory: most relative folders stand below few roots
    return;
  }
  const std::string path = roots.PathOf(root, name);
  // A listing that is not complete, or that names files in a folder that may not be searched.
  if (listing.problem || faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) != 0) {
    unlisted.push_back(root);
    return;
  }
  for (std::size_t file = 0; file < listing.files.size(); ++file) {
    const auto [known, isNew] = table.emplace(listing.files[file], nullptr);
    if (isNew) known->second = &records.emplace_back(root);
  }
  if (files == LookupRules::Files::Readable) LookAtOtherNames(root, listing);
}

/// Looks at names that are no files in the listing, but may count or end the search: devices,
/// pipes, folders that may not be opened. `List` adds the names that were seen to the table.
void RelativeFolder::LookAtOtherNames(std::size_t root, const FolderListing& listing) {
  const auto look = [&](const std::string& file) { static_cast<void>(LookInLocked(root, file)); };
  for (const auto& link : listing.links) {
    if (link.target == LinkTarget::Neither) look(link.name);
  }
  for (const auto& folder : listing.ordinaryFolders) look(folder.name);
  for (const auto& folder : listing.specialFolders) look(folder.name);
}

bool RelativeFolder::IsAlwaysAsked(std::size_t root) const {
  return std::find(unlisted.begin(), unlisted.end(), root) != unlisted.end();
}

const FolderListing* RelativeFolder::FindListing(std::size_t root) const {
  static const FolderListing nothing;
  if (IsAlwaysAsked(root)) return nullptr;
  return entries[root] == nullptr ? &nothing : &StateOf(*entries[root]).Listing();
}

std::size_t RelativeFolder::FirstRootToAsk(std::string_view file) const {
  const auto known = table.find(file);
  const std::size_t listed = known == table.end() ? roots.size() : known->second->firstRoot;
  return unlisted.empty() ? listed : std::min(listed, unlisted.front());
}

RelativeFolder::Answer RelativeFolder::AskRoots(std::size_t begin, std::string_view file) {
  for (std::size_t root = begin; root < roots.size(); ++root) {
    const Sight sight = LookInLocked(root, file);
    if (sight.match != nullptr) return {.match = sight.match};
    if (EndsSearch(sight.standing, files)) return {.ended = true};
  }
  return {};
}

RelativeFolder::Sight RelativeFolder::LookInLocked(std::size_t root, std::string_view file) {
  auto key = std::make_pair(std::string(file), root);
  if (const auto known = seen.find(key); known != seen.end()) return known->second;
  Sight sight{FindStanding(root, file), nullptr};
  if (sight.standing == Standing::Counts) sight.match = &Keep(root, file);
  // A listing goes on showing what is absent, so that is not kept.
  const bool isAbsentInListing =
      isListed && !IsAlwaysAsked(root) && sight.standing == Standing::Absent;
  if (!isAbsentInListing) seen.emplace(std::move(key), sight);
  return sight;
}

Standing RelativeFolder::FindStanding(std::size_t root, std::string_view file) {
  if (isListed && !IsAlwaysAsked(root)) {
    if (entries[root] == nullptr || !StateOf(*entries[root]).FileNamed(file)) {
      return Standing::Absent;
    }
    if (files == LookupRules::Files::Regular) return Standing::Counts;
  }
  const auto& waitedFor = roots.AreOnManyDisks() ? EntryOf(root) : roots.GetFolders()[root];
  const auto standing = StateOf(*waitedFor).AskDisk([path = PathOf(root, file), counted = files] {
    return LookAtFile(path, counted);
  });
  if (!standing) return Standing::Absent;  // the disk has not answered in time
  // A root that cannot be seen to be a folder is as if it were not on the path: it ends no search.
  return standing == Standing::NotReachable && !roots.IsFolder(root) ? Standing::Absent : *standing;
}

const Match& RelativeFolder::Keep(std::size_t root, std::string_view file) {
  const auto& entry = EntryOf(root);
  auto item = std::make_shared<const PathItem>(CreateItem(StateOf(*entry).Location(), file));
  return matches.emplace_back(Match{root, FoundItem(std::move(item), entry)});
}

const std::shared_ptr<const FolderEntry>& RelativeFolder::EntryOf(std::size_t root) {
  entries.resize(roots.size());
  if (entries[root] == nullptr) entries[root] = roots.CreateFolder(root, name);
  return entries[root];
}

std::string RelativeFolder::PathOf(std::size_t root, std::string_view file) const {
  std::string path = roots.PathOf(root, name);
  if (!name.empty()) path.push_back('/');
  return path.append(file);
}

}  // namespace Corvane::PathManagement::host
