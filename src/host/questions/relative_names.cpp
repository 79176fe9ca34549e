#include "host/questions/relative_names.h"

#include "host/folder/entry_state.h"
#include "host/rules/tree_walk.h"
#include "platform/native_path.h"
#include "searchpath/host/native_location.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Files = LookupRules::Files;

/// Whether a file that `folder` has listed counts, and if not, why. Listings do not show who may
/// execute or read it, so the disk is asked. A folder that does not answer in time is as if empty.
///
/// A readable file that has gone since the listing was made still counts, so that two saved listings
/// can be compared after their files have gone. Of an executable one, nothing says that it was.
Standing StandingOf(FolderState& folder, const FoundItem& file, Files files) {
  if (files == Files::Regular) return Standing::Counts;
  const auto standing =
      folder.AskDisk([path = fl::filesystem::detail::NativeBytes(GetNativePath(file)), files] {
        return LookAtFile(path, files);
      });
  if (!standing) return Standing::Absent;
  return files == Files::Readable && *standing == Standing::Absent ? Standing::Counts : *standing;
}

/// The file that each relative name means.
using Meanings = std::map<std::string, FoundItem, std::less<>>;

/// Adds the first file of each name in `folder` that counts, unless the search ends before it: by
/// some rules, a file that cannot be read ends the search for its name.
void AddMeanings(const MergedFolder& folder, Files files, Meanings& meanings) {
  std::set<std::string, std::less<>> ended;  // the names whose search has ended without a file
  for (const TreeFolder& part : folder.folders) {
    FolderState& state = StateOf(*part.entry);
    for (std::size_t index = 0; index < state.Files().size(); ++index) {
      // folder.name is "" or ends with "/".
      std::string name = folder.name + std::string(state.Files()[index]);
      if (meanings.contains(name) || ended.contains(name)) continue;
      FoundItem file(ShareItem(part.entry, state.ItemAt(index)), part.entry);
      const Standing standing = StandingOf(state, file, files);
      if (standing == Standing::Counts) {
        meanings.emplace(std::move(name), std::move(file));
      } else if (EndsSearch(standing, files)) {
        ended.insert(std::move(name));
      }
    }
  }
}

Meanings FindMeanings(const RuledPath& path) {
  Meanings all;
  std::mutex mutex;  // guards all: the walk visits from several threads
  WalkMerged(path, /*sharedOnly=*/false, [&](const MergedFolder& folder) {
    Meanings here;
    AddMeanings(folder, path.GetRules().files, here);
    const std::lock_guard lock(mutex);
    all.merge(here);
  });
  return all;
}

}  // namespace

bool ForEachFileByRules(const RuledPath& path, const std::function<bool(const FoundItem&)>& visit) {
  return WalkTrees(path, [&](const TreeFolder& folder) {
    const auto items = folder.entry->GetItems();
    return std::any_of(items->begin(), items->end(), [&](const auto& item) {
      const FoundItem file(item, folder.entry);
      return StandingOf(StateOf(*folder.entry), file, path.GetRules().files) == Standing::Counts &&
             visit(file);
    });
  });
}

std::vector<NameChange> FindRelativeNameChanges(const RuledPath& before, const RuledPath& after) {
  const Meanings old = FindMeanings(before);
  Meanings now = FindMeanings(after);
  std::map<std::string, NameChange> changes;
  for (const auto& [name, file] : old) {
    const auto found = now.find(name);
    if (found == now.end()) {
      changes.emplace(name, NameChange{TextFromBytes(name), file, {}});
      continue;
    }
    const bool isSame = found->second.GetPathEntry()->GetCanonicalAbsoluteIRI() ==
                        file.GetPathEntry()->GetCanonicalAbsoluteIRI();
    if (!isSame) changes.emplace(name, NameChange{TextFromBytes(name), file, found->second});
    now.erase(found);
  }
  for (const auto& [name, file] : now) {
    changes.emplace(name, NameChange{TextFromBytes(name), {}, file});
  }
  std::vector<NameChange> inOrder;
  inOrder.reserve(changes.size());
  for (auto& [name, change] : changes) inOrder.push_back(std::move(change));
  return inOrder;
}

}  // namespace Corvane::PathManagement::host
