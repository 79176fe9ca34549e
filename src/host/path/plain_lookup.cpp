#include "host/path/plain_lookup.h"

#include "host/common/parallel.h"
#include "host/common/timed_message.h"
#include "host/folder/closing_batch.h"
#include "host/folder/entry_state.h"
#include "host/names/name_key.h"
#include "host/names/short_hash.h"
#include "searchpath/host/filename_comparison.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

const foundation::log::basic_diagnostic_logger kIndexLogger("searchpath::host::index");

constexpr unsigned kMostSingleQuestions = 8;  // why eight: see `PlainLookup`

/// Calls use(name) for each file name that `target` may mean, the preferred one first.
template <class Use>
void ForEachName(const PathManagement::detail::SearchTarget& target, const Use& use) {
  const auto& extensions = target.GetExtensions();
  NameKey name;
  std::size_t at = 0;
  do {  // calls `use` in one place only, so that the compiler inlines it
    const bool isName = extensions.empty() ? name.Set(target.GetName())
                                           : name.Set(target.GetName(), extensions[at]);
    if (isName) use(name);
  } while (++at < extensions.size());
}

/// The name of a method folder without its "@".
ustring MethodName(const FolderEntry& methodFolder) {
  return methodFolder.GetAbsoluteIRI().getName().substr(1);
}

bool IsMethodFolder(const FolderEntry& folder, const ustring& name, FilenameMatchingPolicy policy) {
  return folder.GetPathEntryType() == PathEntryType::AtFolder &&
         AreSameFilename(MethodName(folder), name, policy);
}

bool ShowAll(const FolderEntry& /*folder*/) { return true; }

}  // namespace

std::size_t PlainLookup::NameHash::operator()(const ustring& name) const noexcept {
  return ShortHash(name.data(), name.size() * sizeof(char16_t));
}

PlainLookup::PlainLookup(FolderEntries mainFolders, std::shared_ptr<const PathEntries> mainEntries)
    : folders(std::move(mainFolders)), entries(std::move(mainEntries)) {
  states.reserve(folders.size());
  for (const auto& folder : folders) states.push_back(&StateOf(*folder));
}

boost::optional<FoundItem> PlainLookup::FindFirst(const Target& target,
                                                  FilenameMatchingPolicy policy) {
  return At(FindPlace(target, policy));
}

/// Every return is of the same variable, which the compiler then builds where the caller wants it:
/// moving it there cost 3 of 70 ns.
boost::optional<FoundItem> PlainLookup::At(const Place& place) const {
  boost::optional<FoundItem> found;
  if (place.item == nullptr) return found;
  const auto& folder = (*entries)[place.folder];
  found.emplace(ShareItem(folder, *place.item), folder);
  return found;
}

PlainLookup::Place PlainLookup::FindPlace(const Target& target, FilenameMatchingPolicy policy) {
  LazyIndex* const lazy = IndexFor(policy);
  return lazy == nullptr ? AskFolders(target, policy) : AskIndex(*lazy, target);
}

PlainLookup::Place PlainLookup::AskFolders(const Target& target,
                                           FilenameMatchingPolicy policy) const {
  Place place = {};
  if (policy == FilenameMatchingPolicy::IgnoreCase) {
    for (std::size_t folder = 0; folder < folders.size(); ++folder) {
      // The folder owns the item.
      if (const auto item = folders[folder]->FindItem(target, policy)) return {folder, item.get()};
    }
    return place;
  }
  AskEach(NameQuestion(target), ShowAll, [&](std::size_t folder, const auto& answer) {
    if (!answer.items.empty()) place = {folder, answer.items.front()};
    return place.item != nullptr;
  });
  return place;
}

/// Asks the shown folders one after the other until use(index, answer) returns true. Once the disk
/// has let this thread wait, the folders that come next are asked ahead, so that they answer while
/// this thread waits for the one before.
template <class Use>
void PlainLookup::AskEach(const NameQuestion& question, const IsShown& isShown,
                          const Use& use) const {
  WaitWatch watch;
  ClosingBatch batch;
  bool isSlow = false;
  std::size_t askedEnd = 0;  // the folders before this one have been asked, or asked ahead
  for (std::size_t folder = 0; folder < states.size(); ++folder) {
    for (askedEnd = std::max(askedEnd, folder + 1);
         isSlow && askedEnd < std::min(states.size(), folder + kMostThreads); ++askedEnd) {
      states[askedEnd]->AskAhead(question);
    }
    if (isShown(*folders[folder]) && use(folder, states[folder]->Ask(question, &batch))) return;
    isSlow = watch.HasWaited() || isSlow;
  }
}

std::vector<FoundItem> PlainLookup::AskFoldersForAll(const Target& target,
                                                     FilenameMatchingPolicy policy) const {
  std::vector<FoundItem> found;
  if (policy == FilenameMatchingPolicy::IgnoreCase) {
    for (const auto& folder : folders) {
      for (auto& item : folder->FindItems(target, policy)) {
        found.emplace_back(std::move(item), folder);
      }
    }
    return found;
  }
  NameQuestion question(target);
  question.wantsAllFiles = true;
  AskEach(question, ShowAll, [&](std::size_t folder, const auto& answer) {
    for (const PathItem* item : answer.items) {
      found.emplace_back(ShareItem(folders[folder], *item), folders[folder]);
    }
    return false;
  });
  return found;
}

std::optional<boost::optional<FoundItem>> PlainLookup::FindShown(const Target& target,
                                                                 FilenameMatchingPolicy policy,
                                                                 const IsShown& isShown) {
  if (policy == FilenameMatchingPolicy::IgnoreCase || !CountEarlyQuestion(policy))
    return std::nullopt;
  return AskForFileAndMethod(target, policy, isShown);
}

boost::optional<FoundItem> PlainLookup::FindVisible(const Target& target,
                                                    FilenameMatchingPolicy policy) {
  const bool ignoresCase = policy == FilenameMatchingPolicy::IgnoreCase;
  if (!ignoresCase && CountEarlyQuestion(policy))
    return AskForFileAndMethod(target, policy, ShowAll);
  const Place ordinary = FindPlace(target, policy);
  // `policy` only says which files match; method entries are found by their exact names.
  if (HasNoMethodFolder(target.GetName(), FilenameMatchingPolicy::FileSystemDefault)) {
    return At(ordinary);
  }
  return FindBeforeOrAt(ordinary, target, policy);
}

bool PlainLookup::FindIndexed(std::u16string_view name, boost::optional<FoundItem>& found) {
  if (!exact.once.IsBuilt()) return false;
  if (!HasNoMethodFolder(name, FilenameMatchingPolicy::FileSystemDefault)) return false;
  NameKey key;
  Place place;
  if (key.Set(name)) AskIndex(exact, key, place);
  // No name in the index has a separator, so a separator matters only after a miss.
  if (place.item == nullptr && name.find(u'/') != name.npos) return false;
  found = At(place);
  return true;
}

/// The file of a method entry, if it comes before `ordinary` on the path; otherwise `ordinary`.
boost::optional<FoundItem> PlainLookup::FindBeforeOrAt(const Place& ordinary, const Target& target,
                                                       FilenameMatchingPolicy policy) {
  boost::optional<FoundItem> found = At(ordinary);
  ForEachMethodFolder(target.GetName(), FilenameMatchingPolicy::FileSystemDefault,
                      [&](const MethodFolder& method) {
                        // A folder comes before the method entries below it.
                        if (found && method.above >= ordinary.folder) return true;
                        auto item = method.entry->FindItem(target, policy);
                        if (item == nullptr) return false;
                        found.emplace(std::move(item), method.entry);
                        return true;
                      });
  return found;
}

/// Asks each folder that is shown for the file and for the method entry in one question.
boost::optional<FoundItem> PlainLookup::AskForFileAndMethod(const Target& target,
                                                            FilenameMatchingPolicy policy,
                                                            const IsShown& isShown) const {
  NameQuestion question(target);
  question.AddFolder(u'@' + target.GetName());
  boost::optional<FoundItem> found;
  AskEach(question, isShown, [&](std::size_t folder, const auto& answer) {
    if (!answer.items.empty()) found = At({folder, answer.items.front()});
    if (!answer.hasFolder) return found.has_value();
    for (const auto& below : folders[folder]->GetSpecialFolders()) {
      if (!isShown(*below) || !IsMethodFolder(*below, target.GetName(), policy)) continue;
      if (auto item = below->FindItem(target, policy)) found.emplace(std::move(item), below);
      if (found) break;
    }
    return found.has_value();
  });
  return found;
}

PlainLookup::Place PlainLookup::AskIndex(LazyIndex& lazy, const Target& target) const {
  Place best;
  ForEachName(target, [&](const NameKey& name) { AskIndex(lazy, name, best); });
  return best;
}

/// Sets `best` to the first file called `name` if that file is in an earlier folder than `best`.
void PlainLookup::AskIndex(LazyIndex& lazy, const NameKey& name, Place& best) const {
  const NameIndex& index = *lazy.index;
  auto [cursor, slot] = index.Find(name);
  if (!cursor) return;
  const std::uint32_t folder = cursor.GetFolder();
  // Within one folder, the extension that comes first wins.
  if (best.item != nullptr && best.folder <= folder) return;
  best.folder = folder;
  if (cursor.HasSibling()) {
    const Match match = TakeFolder(index, cursor, name.View()).front();
    best.item = &states[folder]->ItemAt(match.file);
  } else {
    best.item = &lazy.items.Get(slot, index.SlotCount(), [&]() -> const PathItem& {
      return states[folder]->ItemAt(index.At(cursor).file);
    });
  }
}

std::vector<FoundItem> PlainLookup::FindAll(const Target& target, FilenameMatchingPolicy policy) {
  std::vector<FoundItem> found;
  const LazyIndex* const lazy = IndexFor(policy);
  if (lazy == nullptr) return AskFoldersForAll(target, policy);
  Matches matches;  // by folder, then in the order of the extensions
  ForEachName(target, [&](const NameKey& name) {
    Matches added = AllMatches(*lazy->index, name);
    if (matches.empty()) {
      matches = std::move(added);
      return;
    }
    Matches merged;
    std::merge(matches.begin(), matches.end(), added.begin(), added.end(),
               std::back_inserter(merged),
               [](Match left, Match right) { return left.folder < right.folder; });
    matches = std::move(merged);
  });
  found.reserve(matches.size());
  auto group = matches.begin();  // the first match in the folder of `at`
  for (auto at = matches.begin(); at != matches.end(); ++at) {
    if (group->folder != at->folder) group = at;
    // Two extensions of the list may differ in case alone.
    const bool isRepeat =
        std::any_of(group, at, [at](Match earlier) { return earlier.file == at->file; });
    if (!isRepeat) found.push_back(*At({at->folder, &states[at->folder]->ItemAt(at->file)}));
  }
  return found;
}

/// All files of that name, in path order.
PlainLookup::Matches PlainLookup::AllMatches(const NameIndex& index, const NameKey& name) const {
  Matches matches;
  auto cursor = index.Find(name).first;
  while (cursor) {
    const Matches here = TakeFolder(index, cursor, name.View());
    matches.insert(matches.end(), here.begin(), here.end());
  }
  return matches;
}

/// The matches in the folder of `cursor`, which is then at the next folder that has one. They are
/// ordered as by `FolderEntry::FindItems`: first the exact `name`, then the others in the order of
/// their bytes.
PlainLookup::Matches PlainLookup::TakeFolder(const NameIndex& index, NameIndex::Cursor& cursor,
                                             std::string_view name) const {
  Matches matches;
  const std::uint32_t folder = cursor.GetFolder();
  for (; cursor && cursor.GetFolder() == folder; cursor = index.Next(cursor)) {
    matches.push_back(index.At(cursor));
  }
  if (matches.size() > 1) {
    const NameBlock& names = states[folder]->Files();
    std::sort(matches.begin(), matches.end(), [&](Match left, Match right) {
      const auto key = [&](Match match) {
        return std::make_pair(names[match.file] != name, names[match.file]);
      };
      return key(left) < key(right);
    });
  }
  return matches;
}

PathEntries PlainLookup::FindMethodFolders(const ustring& name, FilenameMatchingPolicy policy) {
  return HasNoMethodFolder(name, policy) ? PathEntries() : FindAllMethodFolders(name, policy);
}

/// Whether it is known already that there is no method folder of that name.
bool PlainLookup::HasNoMethodFolder(std::u16string_view name,
                                    FilenameMatchingPolicy policy) const noexcept {
  // Most names have a length that no method entry has.
  return methodsOnce.IsBuilt() && policy != FilenameMatchingPolicy::IgnoreCase &&
         (methodLengths >> (name.size() % 64U) & 1U) == 0;
}

PathEntries PlainLookup::FindAllMethodFolders(const ustring& name, FilenameMatchingPolicy policy) {
  PathEntries found;
  ForEachMethodFolder(name, policy, [&found](const MethodFolder& method) {
    found.push_back(method.entry);
    return false;
  });
  return found;
}

/// Calls stop(method) for the method folders of that name in path order until it returns true.
template <class Stop>
void PlainLookup::ForEachMethodFolder(const ustring& name, FilenameMatchingPolicy policy,
                                      const Stop& stop) {
  const bool ignoresCase = policy == FilenameMatchingPolicy::IgnoreCase;
  // All main folders have been listed for an index: a table of their method folders costs little.
  if (!ignoresCase && (exact.once.IsBuilt() || folded.once.IsBuilt())) {
    const MethodFolders& byName = IndexedMethodFolders();
    const auto found = byName.find(name);
    if (found == byName.end()) return;
    static_cast<void>(std::any_of(found->second.begin(), found->second.end(), stop));
    return;
  }
  const auto stopsIn = [&](std::size_t folder) {
    const auto& special = folders[folder]->GetSpecialFolders();
    return std::any_of(special.begin(), special.end(), [&](const auto& below) {
      return IsMethodFolder(*below, name, policy) && stop(MethodFolder{folder, below});
    });
  };
  if (ignoresCase) {
    for (std::size_t folder = 0; folder < folders.size(); ++folder) {
      if (stopsIn(folder)) return;
    }
    return;
  }
  NameQuestion question;
  question.AddFolder(u'@' + name);
  AskEach(question, ShowAll, [&](std::size_t folder, const auto& answer) {
    return answer.hasFolder && stopsIn(folder);
  });
}

PlainLookup::LazyIndex& PlainLookup::Lazy(FilenameMatchingPolicy policy) noexcept {
  return policy == FilenameMatchingPolicy::IgnoreCase ? folded : exact;
}

/// Counts a question, and returns whether it is one of the first, which are answered without an
/// index. Of questions that ignore case, only one is: it lists the folders that it asks, and then
/// the index costs little more.
bool PlainLookup::CountEarlyQuestion(FilenameMatchingPolicy policy) {
  LazyIndex& lazy = Lazy(policy);
  if (lazy.once.IsBuilt()) return false;
  const bool ignoresCase = policy == FilenameMatchingPolicy::IgnoreCase;
  return lazy.questionCount.fetch_add(1) < (ignoresCase ? 1 : kMostSingleQuestions);
}

/// Counts a question, and returns the index for `policy`, which it builds when that is due; null
/// when the question is answered without one.
PlainLookup::LazyIndex* PlainLookup::IndexFor(FilenameMatchingPolicy policy) {
  LazyIndex& lazy = Lazy(policy);
  if (lazy.once.IsBuilt()) return &lazy;
  return CountEarlyQuestion(policy) ? nullptr : &Build(lazy, policy);
}

PlainLookup::LazyIndex& PlainLookup::Build(LazyIndex& lazy, FilenameMatchingPolicy policy) const {
  lazy.once.Call([&] { lazy.index = BuildIndex(policy); });
  return lazy;
}

std::unique_ptr<const NameIndex> PlainLookup::BuildIndex(FilenameMatchingPolicy policy) const {
  const TimedMessage message(kIndexLogger);
  ForEachInParallel(folders.size(), [this](std::size_t folder) { states[folder]->List(); });
  std::vector<const NameBlock*> names;
  names.reserve(folders.size());
  for (const FolderState* folder : states) names.push_back(&folder->Files());
  auto index = std::make_unique<const NameIndex>(names, policy);
  message.Write(foundation::log::Severity::Information, [&] {
    return "listed and indexed " + std::to_string(folders.size()) + " folders, " +
           std::to_string(index->size()) + " files,";
  });
  return index;
}

const PlainLookup::MethodFolders& PlainLookup::IndexedMethodFolders() {
  methodsOnce.Call([this] {
    methods.clear();  // an earlier call may have ended with an exception
    for (std::size_t index = 0; index < folders.size(); ++index) {
      for (const auto& below : folders[index]->GetSpecialFolders()) {
        if (below->GetPathEntryType() != PathEntryType::AtFolder) continue;
        const ustring name = MethodName(*below);
        methods[name].push_back({index, below});
        methodLengths |= std::uint64_t{1} << (name.size() % 64U);
      }
    }
  });
  return methods;
}

}  // namespace Corvane::PathManagement::host
