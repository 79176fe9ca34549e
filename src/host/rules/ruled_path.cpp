#include "host/rules/ruled_path.h"

#include "host/common/held_hash.h"
#include "host/folder/directory_scan.h"
#include "host/folder/entry_state.h"
#include "host/names/name_key.h"
#include "platform/native_path.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using current_working_folder::AbsolutizeError;
using Sight = RelativeFolder::Sight;
using Separator = LookupRules::Separator;

FolderEntries EntriesOf(const GivenFolders& given) {
  FolderEntries entries;
  for (const auto& folder : given.folders) {
    entries.push_back(std::static_pointer_cast<const FolderEntry>(folder.entries.front()));
  }
  return entries;
}

/// The native path of a folder relative to the root of the file system, ended by "/"; "" for the
/// root. A location that is not on disk becomes "dev/null/", below which nothing is found.
std::string BelowRoot(const AbsoluteIRI& folder) {
  std::string path = fl::filesystem::detail::NativeBytes(folder).value_or("/dev/null");
  path.erase(0, path.find_first_not_of('/'));
  if (!path.empty() && !path.ends_with('/')) path.push_back('/');
  return path;
}

/// Calls use(name) for each file name that `target` may mean, the preferred one first.
template <class Use>
void ForEachSpelling(const PathManagement::detail::SearchTarget& target, const Use& use) {
  NameKey name;
  if (target.GetExtensions().empty()) {
    if (name.Set(target.GetName(), {})) use(name.View());
    return;
  }
  for (const ustring& extension : target.GetExtensions()) {
    if (name.Set(target.GetName(), extension)) use(name.View());
  }
}

/// Why the folder at `path` cannot be searched; empty when it can be.
std::optional<AbsolutizeError> AskReason(const std::string& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) return ReasonFor({errno, std::generic_category()}, path);
  if (!S_ISDIR(status.st_mode)) return AbsolutizeError::NotAFolder;
  if (faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0) return std::nullopt;
  return ReasonFor({errno, std::generic_category()}, path);
}

/// As `AskReason`, for `folder` at or below `onPath`, which limits how long the disk is waited for;
/// `NoAnswer` if it does not answer in time.
std::optional<AbsolutizeError> FindReason(const FolderEntry& onPath, const AbsoluteIRI& folder) {
  const auto path = fl::filesystem::detail::NativeBytes(folder);
  if (!path) return AbsolutizeError::InvalidText;
  return StateOf(onPath)
      .AskDisk([path = *path] { return AskReason(path); })
      .value_or(AbsolutizeError::NoAnswer);
}

/// `name` without "/" and "./" at its beginning, so that it can follow the path of a folder.
std::string_view Trimmed(std::string_view name) {
  while (name.starts_with('/') || name.starts_with("./"))
    name.remove_prefix(name[0] == '/' ? 1 : 2);
  return name;
}

}  // namespace

RuledPath::RuledPath(std::shared_ptr<const PathView> pathView, const LookupRules& lookupRules,
                     GivenFolders quoteFolders, const std::shared_ptr<const ListingSource>& source,
                     const WorkingFolder& folder, DiskPatience::Limit timeout)
    : view(std::move(pathView)),
      rules(lookupRules),
      workingFolder(folder),
      limit(timeout),
      unlocatedQuotes(std::move(quoteFolders.unlocated)),
      onPath(std::make_shared<RelativeLookup>(
          SearchRoots(view->GetFolderPath().GetMainFolders(), source), rules.files)),
      quoted(std::make_shared<RelativeLookup>(SearchRoots(EntriesOf(quoteFolders), source),
                                              rules.files)),
      everywhere(std::make_shared<RelativeLookup>(SearchRoots::OfFileSystem(limit), rules.files)) {}

std::shared_ptr<const RuledPath> RuledPath::WithOthersAnew() const {
  const auto anew = std::make_shared<RuledPath>(*this);
  for (auto* lookup : {&anew->quoted, &anew->everywhere}) {
    *lookup =
        std::make_shared<RelativeLookup>((*lookup)->GetRoots().WithEntriesAnew(), rules.files);
  }
  return anew;
}

bool RuledPath::SaysWhichFile(const ustring& name) const {
  return name.starts_with(u'/') ||
         (rules.separator == Separator::ThatFile && name.find(u'/') != name.npos);
}

boost::optional<FoundItem> RuledPath::Find(const Target& target, const Asker& asker) const {
  const bool asksThePath = !asker.from && !asker.after && !view->HidesFolders();
  if (asksThePath && !SaysWhichFile(target.GetName())) return FindOnPath(target);
  const auto files = FindFiles(target, asker, /*firstOnly=*/true);
  if (!files.empty()) return files.front();
  hasMissed->store(true, std::memory_order_relaxed);
  return boost::none;
}

std::vector<FoundItem> RuledPath::FindAll(const Target& target, const Asker& asker) const {
  return FindFiles(target, asker, /*firstOnly=*/false);
}

/// The answer to a question that concerns the path alone. Of several names, the one that is found
/// in the earliest folder wins, and within one folder the preferred one.
boost::optional<FoundItem> RuledPath::FindOnPath(const Target& target) const {
  const RelativeFolder::Match* best = nullptr;
  bool ended = false;
  ForEachSpelling(target, [&](std::string_view name) {
    const auto answer = onPath->FindFirst(Trimmed(name));
    ended = ended || answer.ended;
    if (answer.match != nullptr && (best == nullptr || answer.match->root < best->root)) {
      best = answer.match;
    }
  });
  if (ended && best != nullptr) {  // only place by place shows which comes first: file or end
    const auto files = FindFiles(target, {}, /*firstOnly=*/true);
    if (!files.empty()) return files.front();
  } else if (best != nullptr) {
    return best->file;
  }
  hasMissed->store(true, std::memory_order_relaxed);
  return boost::none;
}

std::vector<FoundItem> RuledPath::FindFiles(const Target& target, const Asker& asker,
                                            bool firstOnly) const {
  std::vector<FoundItem> files;
  PlaceFilter filter(*view);
  const auto names = NamesOf(target);
  for (const Place& place : FindPlaces(target, asker)) {
    for (const std::string& name : names) {
      const Sight sight = LookIn(place, name);
      if (sight.standing == Standing::Absent) continue;
      // Only now, since it costs more: a repeat of a place that lacks the name lacks it, too.
      if (!filter.Admits(place)) break;
      if (sight.match != nullptr) files.push_back(sight.match->file);
      if (EndsSearch(sight.standing, rules.files) || (firstOnly && !files.empty())) return files;
    }
  }
  return files;
}

std::vector<std::string> RuledPath::NamesOf(const Target& target) {
  std::vector<std::string> names;
  ForEachSpelling(target, [&](std::string_view name) { names.emplace_back(name); });
  return names;
}

Sight RuledPath::LookIn(const Place& place, const std::string& name) {
  return place.lookup->LookIn(place.root, place.before + std::string(Trimmed(name)));
}

std::string RuledPath::PathOf(const Place& place, const std::string& name) {
  return place.lookup->GetRoots().PathOf(place.root, place.before + std::string(Trimmed(name)));
}

std::shared_ptr<const FolderEntry> RuledPath::FolderOf(const Place& place,
                                                       const std::string& name) {
  const std::string path = place.before + std::string(Trimmed(name));
  return place.lookup->GetRoots().CreateFolder(place.root, path.substr(0, path.rfind('/') + 1));
}

std::vector<RuledPath::Place> RuledPath::FindPlaces(const Target& target,
                                                    const Asker& asker) const {
  std::vector<Place> places;
  if (SaysWhichFile(target.GetName())) {
    if (auto place = PlaceOfFile(target.GetName())) places.push_back(*std::move(place));
    return places;
  }
  if (asker.from && !asker.after && rules.separator == Separator::FileBelow) {
    places.push_back({.folder = CreateMainFolder(*asker.from, /*source=*/nullptr, limit),
                      .isOnPath = false,
                      .lookup = everywhere.get(),
                      .root = 0,
                      .before = BelowRoot(*asker.from)});
  }
  if (asker.from || asker.after) AddPlaces(*quoted, places);
  AddPlaces(*onPath, places);
  if (asker.after) RemoveUpTo(*asker.after, places);
  return places;
}

std::vector<RuledPath::Place> RuledPath::GetPlacesOnPath() const {
  std::vector<Place> places;
  AddPlaces(*onPath, places);
  return places;
}

/// The place of a file by the name that says which file; empty when the name is relative and there
/// is no working folder, so that it means no file.
std::optional<RuledPath::Place> RuledPath::PlaceOfFile(const ustring& name) const {
  std::string before;
  try {
    if (!name.starts_with(u'/')) before = BelowRoot(workingFolder.Locate(u"."));
  } catch (const current_working_folder::FailedToAbsolutizeException&) {
    return std::nullopt;
  }
  const std::string bytes = BytesFromText(name).value_or("");
  const std::string path = before + std::string(Trimmed(bytes));
  return Place{
      .folder = everywhere->GetRoots().CreateFolder(0, path.substr(0, path.rfind('/') + 1)),
      .isOnPath = false,
      .lookup = everywhere.get(),
      .root = 0,
      .before = std::move(before)};
}

void RuledPath::AddPlaces(RelativeLookup& lookup, std::vector<Place>& places) {
  const auto& folders = lookup.GetRoots().GetFolders();
  for (std::size_t root = 0; root < folders.size(); ++root) {
    places.push_back(
        {.folder = folders[root], .isOnPath = true, .lookup = &lookup, .root = root, .before = {}});
  }
}

/// Removes the first place at `folder` and all before it. Of those after it in the same list,
/// removes repeats of places in that list: compilers drop repeats among the quote folders, and
/// among the folders of the path. Removes nothing when no place is at `folder`.
void RuledPath::RemoveUpTo(const AbsoluteIRI& folder, std::vector<Place>& places) const {
  const AbsoluteIRI wanted =
      CreateMainFolder(folder, /*source=*/nullptr, limit)->GetCanonicalAbsoluteIRI();
  // A place that cannot be reached, such as "locked/../include", may have the canonical location of
  // another folder, but is not that folder.
  const auto isFolder = [](const Place& place) {
    return place.lookup->GetRoots().IsFolder(place.root);
  };
  const auto found = std::find_if(places.begin(), places.end(), [&](const Place& place) {
    return place.folder->GetCanonicalAbsoluteIRI() == wanted && isFolder(place);
  });
  if (found == places.end()) return;
  const RelativeLookup* const list = found->lookup;
  PlaceFilter filter(*view);
  const auto isRepeat = [&](const Place& place) {
    return place.lookup == list && isFolder(place) && filter.Remember(place) != place.folder;
  };
  // The filter has to remember the places that go, since those that stay may repeat them.
  std::for_each(places.begin(), found + 1, isRepeat);
  places.erase(places.begin(), found + 1);
  std::erase_if(places, isRepeat);
}

FolderOrigin RuledPath::FindOrigin(const IPathEntry& entry) const {
  const ustring path = entry.GetAbsoluteIRI().getPath() + u'/';
  const FolderEntry* best = nullptr;
  std::size_t bestLength = 0;
  for (const auto& folder : GetRoots().GetFolders()) {
    if (folder.get() == &entry) return view->GetOrigin(entry);
    ustring above = folder->GetAbsoluteIRI().getPath();
    if (!above.ends_with(u'/')) above.push_back(u'/');  // the path of the root does already
    if (above.size() > bestLength && path.starts_with(above)) {
      best = folder.get();
      bestLength = above.size();
    }
  }
  if (best != nullptr) return view->GetOrigin(*best);
  return {.folder = GetStringFromIRI(entry.GetAbsoluteIRI())};
}

std::optional<AbsolutizeError> RuledPath::FindProblem(const Place& place) {
  return FindReason(*place.folder, place.folder->GetAbsoluteIRI());
}

PathEntries RuledPath::FindFolders(const ustring& name) const {
  PathEntries found;
  PlaceFilter filter(*view);
  const bool isFull = name.starts_with(u'/');
  // Used for a full name only; "/" stands in for others, since it can always be located.
  const AbsoluteIRI full =
      CreateMainFolder(WorkingFolder().Locate(isFull ? name : u"/"), nullptr, limit)
          ->GetCanonicalAbsoluteIRI();
  std::string relative(Trimmed(BytesFromText(name).value_or("")));
  while (relative.ends_with('/')) relative.pop_back();
  for (const Place& place : GetPlacesOnPath()) {
    if (!filter.Admits(place)) continue;
    if (isFull) {
      if (place.folder->GetCanonicalAbsoluteIRI() == full) found.push_back(place.folder);
    } else if (rules.separator == Separator::FileBelow && !relative.empty()) {
      auto folder = GetRoots().CreateFolder(place.root, relative);
      if (!FindReason(*place.folder, folder->GetAbsoluteIRI())) found.push_back(std::move(folder));
    }
  }
  return found;
}

void RuledPath::CheckFolder(const AbsoluteIRI& folder) const {
  const auto entry = CreateMainFolder(folder, /*source=*/nullptr, limit);
  const auto reason = FindReason(*entry, folder);
  if (reason) throw current_working_folder::FailedToAbsolutizeException(*reason);
}

std::vector<FolderProblem> RuledPath::FindUnlocated() const {
  std::vector<FolderProblem> all = view->GetUnlocated();
  all.insert(all.end(), unlocatedQuotes.begin(), unlocatedQuotes.end());
  return all;
}

std::vector<FolderProblem> RuledPath::FindProblems() const {
  std::vector<FolderProblem> problems = FindUnlocated();
  for (const auto& folder : GetQuoteFolders()) {
    if (!StateOf(*folder).IsGivenUp()) continue;
    problems.push_back({GetStringFromIRI(folder->GetAbsoluteIRI()), AbsolutizeError::NoAnswer});
  }
  PlaceFilter filter(*view);
  for (const Place& place : GetPlacesOnPath()) {
    const auto reason = FindProblem(place);
    if (!reason || !filter.Admits(place)) continue;
    problems.push_back({GetStringFromIRI(place.folder->GetAbsoluteIRI()), *reason});
  }
  return problems;
}

std::shared_ptr<const FolderEntry> PlaceFilter::Remember(const RuledPath::Place& place) {
  if (!view.DropsRepeats()) return place.folder;
  return seen.emplace(place.folder->GetCanonicalAbsoluteIRI(), place.folder).first->second;
}

}  // namespace Corvane::PathManagement::host
