#include "host/receipts/asked_lists.h"

#include "host/common/path_bytes.h"
#include "host/folder/entry_state.h"
#include "host/folder/folder_walk.h"
#include "host/folder/name_answers.h"
#include "host/folder/open_path.h"
#include "host/names/extensions.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/path_strings.h"
#include "text/separators.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using PathManagement::detail::HasSeparator;
using PathManagement::detail::SearchTarget;

/// The native path of `folder`. A folder that is not on disk gets /dev/null, below which nothing is
/// found.
std::string BytesOf(const FolderEntry& folder) {
  return NativeBytes(StateOf(folder).Location()).value_or("/dev/null");
}

bool StandsAt(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0;
}

SearchTarget TargetOf(const ustring& name, const Lookup& lookup) {
  return CreateSearchTargetWithExtensionInFilenamePreferred(name, WithDots(lookup.extensions));
}

/// Where the last part of a name, after its last separator, begins.
template <class Text>
std::size_t BeginOfLastPart(const Text& name) {
  return name.rfind('/') + 1;  // 0 when there is none
}

/// The folder that a relative name begins with: "a/" for "a/b.h", "" for "b.h".
std::string FolderPartOf(const std::string& name) { return name.substr(0, BeginOfLastPart(name)); }

/// The folders that names begin with, each once. Names that differ in extensions alone have more
/// than one when an extension holds a separator: "fn.zt" and "fn/main.zt".
std::vector<std::string> FolderPartsOf(const std::vector<std::string>& names) {
  std::vector<std::string> folders;
  for (const std::string& name : names) {
    std::string folder = FolderPartOf(name);
    if (std::find(folders.begin(), folders.end(), folder) == folders.end()) {
      folders.push_back(std::move(folder));
    }
  }
  return folders;
}

/// Whether a folder of this name is special: private, resources, "@..." or "+...".
bool IsSpecial(const std::string& folder) {
  return GetPathEntryTypeFromBaseName(TextFromBytes(folder)) != PathEntryType::Ordinary;
}

const FolderListing& NoListing() {
  static const FolderListing nothing;
  return nothing;
}

}  // namespace

AskedLists::AskedLists(ReceiptDraft& receiptDraft, FolderPatience& folderPatience,
                       const PathView& pathView, const RuledPath* ruledPath,
                       const WorkingFolder& base)
    : draft(receiptDraft),
      patience(folderPatience),
      view(pathView),
      ruled(ruledPath),
      workingFolder(base) {
  static_cast<void>(AddPathList());  // becomes list 0
}

std::uint32_t AskedLists::Add(std::vector<std::uint32_t> places, AskedList::Listings listings) {
  draft.lists.push_back({.places = places});
  lists.emplace_back(std::move(places), std::move(listings));
  return static_cast<std::uint32_t>(lists.size() - 1);
}

std::uint32_t AskedLists::AddPathList() {
  const FolderEntries& folders = view.GetFolderPath().GetMainFolders();
  std::vector<std::uint32_t> places;
  places.reserve(folders.size());
  for (const auto& folder : folders) places.push_back(draft.AddPlace(BytesOf(*folder)));
  const auto areListed = [&folders] {
    return std::all_of(folders.begin(), folders.end(),
                       [](const auto& folder) { return StateOf(*folder).IsListed(); });
  };
  return Add(std::move(places), {.areMade = areListed, .at = [&folders](std::size_t at) {
                                   return &StateOf(*folders[at]).Listing();
                                 }});
}

/// The number of the list of all folders of the path, of the special folders below them, and of
/// links that may lead to further special folders. The first call adds the list.
std::uint32_t AskedLists::ListOfAllFolders() {
  if (allFolders) return *allFolders;
  std::vector<std::uint32_t> places;
  std::vector<const FolderListing*> listings;
  const auto add = [&](const std::string& path, const FolderListing& listing) {
    places.push_back(draft.AddPlace(path));
    listings.push_back(&listing);
  };
  for (const auto& folder : view.GetFolderPath().GetMainFolders()) {
    WalkFolders(folder, [&](const auto& entry, std::size_t /*depth*/) {
      StateOf(*entry).List();
      const FolderListing& listing = StateOf(*entry).Listing();
      const std::string path = BytesOf(*entry);
      add(path, listing);
      for (const auto& link : listing.links) {
        if (IsSpecial(link.name)) add(PathBelow(path, link.name), NoListing());
      }
      return false;  // the walk goes on
    });
  }
  allFolders = Add(std::move(places),
                   {.areMade = [] { return true; },
                    .at = [all = std::move(listings)](std::size_t at) { return all[at]; }});
  return *allFolders;
}

/// The place of a folder as a user types it.
std::uint32_t AskedLists::PlaceAt(const ustring& folder) {
  return draft.AddPlace(NativeBytes(workingFolder.Locate(folder)).value_or("/dev/null"));
}

/// The place of the folder in an absolute name; empty for other names, and for one such as "/a\0b/c"
/// that can be no location, so that nothing on the path has it.
std::optional<std::uint32_t> AskedLists::PlaceInName(const ustring& name) {
  if (!name.starts_with(u'/')) return std::nullopt;
  try {
    return PlaceAt(name.substr(0, BeginOfLastPart(name)));
  } catch (const current_working_folder::FailedToAbsolutizeException&) {
    return std::nullopt;
  }
}

QuestionScope AskedLists::ScopeOf(const Lookup& lookup, std::uint32_t kind) {
  return ruled == nullptr ? ScopeOnPath(lookup) : ScopeByRules(lookup, kind);
}

QuestionScope AskedLists::ScopeOnPath(const Lookup& lookup) {
  QuestionScope scope;
  // `NameScan` does not look for links whose names match only when case is ignored.
  scope.isCertain = lookup.policy != FilenameMatchingPolicy::IgnoreCase;
  if (lookup.fromFolder) scope.further.push_back(PlaceAt(*lookup.fromFolder));
  if (HasSeparator(lookup.name)) {
    if (const auto folder = PlaceInName(lookup.name)) scope.further.push_back(*folder);
    scope.list = ListOfAllFolders();
    scope.asksAll = true;
  } else if (lookup.fromFolder) {
    const std::string folder = PathBelow(draft.PathOf(scope.further.front()), "private");
    scope.privateFolder = draft.AddPlace(folder);
    scope.further.push_back(*scope.privateFolder);
    // Whether the private folder counts depends on which folders are on the path, special ones too.
    const auto stands = patience.Ask(*scope.privateFolder, [folder] { return StandsAt(folder); });
    scope.isCertain = scope.isCertain && stands;
    scope.asksAll = stands.value_or(true);
    if (scope.asksAll) scope.list = ListOfAllFolders();
  }
  return scope;
}

QuestionScope AskedLists::ScopeByRules(const Lookup& lookup, std::uint32_t kind) {
  QuestionScope scope;
  // Once the folder that asks is gone, there is no answer: so the folder matters.
  const auto& asker = lookup.afterFolder ? lookup.afterFolder : lookup.fromFolder;
  if (asker) scope.further.push_back(PlaceAt(*asker));
  const auto names = RuledPath::NamesOf(TargetOf(lookup.name, lookup));
  if (names.empty()) return scope;  // no file can have such a name
  const auto folders = FolderPartsOf(names);
  const auto [known, isNew] = byRules.try_emplace({kind, folders}, std::uint32_t{0});
  if (isNew) known->second = MakeListByRules(lookup, folders);
  scope.list = known->second;
  // Then the place of the answer alone does not tell with which of the names a folder was asked.
  scope.asksAll = folders.size() > 1;
  return scope;
}

/// Adds the list of folders in which the names of `lookup` are looked for by rules under which
/// folders have no meaning. `folders` are those that the names begin with: see `FolderPartsOf`.
std::uint32_t AskedLists::MakeListByRules(const Lookup& lookup,
                                          const std::vector<std::string>& folders) {
  const auto target = TargetOf(lookup.name, lookup);
  std::vector<std::uint32_t> places;
  // Adds the folders that hold the names below a place, such as "a" for "a/b.h".
  const auto add = [&](const RuledPath::Place& place) {
    for (const std::string& folder : folders) {
      const std::string path = RuledPath::PathOf(place, folder);
      places.push_back(draft.AddPlace(path.substr(0, std::max<std::size_t>(path.rfind('/'), 1))));
    }
  };
  RuledPath::Asker asker;
  if (lookup.afterFolder) {
    asker.after = workingFolder.Locate(*lookup.afterFolder);
    // Which folders come after that one depends on all that a question from that folder asks. This
    // concerns the whole path, as later questions share the list that is made here.
    for (const auto& place : ruled->FindPlaces(target, {.from = asker.after})) {
      draft.further.emplace_back(kWholePath, draft.AddPlace(BytesOf(*place.folder)));
      add(place);
    }
    for (const std::uint32_t place : places) draft.further.emplace_back(kWholePath, place);
    places.clear();
  } else if (lookup.fromFolder) {
    asker.from = workingFolder.Locate(*lookup.fromFolder);
  }
  for (const auto& place : ruled->FindPlaces(target, asker)) add(place);
  // Only for questions that ask nothing but the path, its look-up has the listings.
  const bool isOnPathAlone = !asker.from && !asker.after && !ruled->SaysWhichFile(lookup.name);
  return Add(std::move(places), isOnPathAlone && folders.size() == 1
                                    ? ListingsBelow(folders.front())
                                    : AskedList::Listings());
}

/// The listings of the folders of that relative name, which is "" or ends with a separator: for
/// "a/", of each folder "a".
AskedList::Listings AskedLists::ListingsBelow(const std::string& relative) const {
  const auto find = [&lookup = ruled->GetOnPath(),
                     folder = relative.substr(0, relative.empty() ? 0 : relative.size() - 1)] {
    return lookup.FindListed(folder);
  };
  AskedList::Listings listings = {
      .areMade = [find] { return find() != nullptr; },
      // The list has one place for each root of the path, in path order.
      .at = [find](std::size_t root) { return find()->FindListing(root); }};
  if (ruled->GetRules().files != LookupRules::Files::Regular) {
    listings.firstWith = [find](std::string_view file) { return find()->FirstRootToAsk(file); };
  }
  return listings;
}

void AskedLists::SetNames(const Lookup& lookup, ScannedQuestion& question) const {
  if (ruled == nullptr) {
    const auto target = TargetOf(lookup.name.substr(BeginOfLastPart(lookup.name)), lookup);
    const NameQuestion names(target);
    question.names.assign(names.files.begin(), names.files.end());
    question.folders.resize(question.names.size());
    if (!HasSeparator(lookup.name) && !question.names.empty()) {
      question.methodFolder = '@' + BytesFromText(target.GetName()).value_or("");
    }
    return;
  }
  const auto names = RuledPath::NamesOf(TargetOf(lookup.name, lookup));
  const auto folders = FolderPartsOf(names);
  question.foldersOfRoot = std::max<std::size_t>(folders.size(), 1);
  for (const std::string& name : names) {
    if (name.ends_with('/')) continue;  // no file
    const auto folder = std::find(folders.begin(), folders.end(), FolderPartOf(name));
    question.folders.push_back(static_cast<std::size_t>(folder - folders.begin()));
    question.names.push_back(name.substr(BeginOfLastPart(name)));
  }
}

}  // namespace Corvane::PathManagement::host
