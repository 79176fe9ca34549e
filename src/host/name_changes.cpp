#include "searchpath/host/name_changes.h"

#include "host/folder_state.h"
#include "host/name_index.h"
#include "host/parallel.h"
#include "searchpath/model/byte_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace Corvane::PathManagement::host {

namespace {

using Folders = std::vector<std::shared_ptr<const FolderEntry>>;
using Place = NameIndex::Place;

/// The main folders of a path with the first place of each name in them.
class NamedFiles {
 public:
  explicit NamedFiles(const FolderPath& path) : folders(path.GetMainFolders()) {
    AnyInParallel(folders.size(), [this](std::size_t at) {
      StateOf(*folders[at]).List();
      return false;
    });
    for (const auto& folder : folders) names.push_back(&StateOf(*folder).Files());
    index.emplace(names, NameIndex::Sameness::Bytes);
  }

  [[nodiscard]] std::optional<Place> Find(std::string_view name) const {
    NameKey key;
    key.Set(name);
    const auto cursor = index->Find(key);
    if (!cursor) return std::nullopt;
    return index->At(cursor);
  }

  /// Calls visit(name, place) for each name once.
  template <class Visit>
  void ForEach(const Visit& visit) const {
    for (std::size_t folder = 0; folder < names.size(); ++folder) {
      for (std::size_t file = 0; file < names[folder]->size(); ++file) {
        const std::string_view name = (*names[folder])[file];
        const auto first = Find(name);
        if (first->folder == folder && first->file == file) visit(name, *first);
      }
    }
  }

  [[nodiscard]] FolderState& StateAt(Place place) const { return StateOf(*folders[place.folder]); }

  [[nodiscard]] boost::optional<FoundItem> FileAt(std::optional<Place> place) const {
    if (!place) return boost::none;
    return FoundItem(StateAt(*place).ItemAt(place->file), folders[place->folder]);
  }

 private:
  const Folders& folders;
  std::vector<const NameBlock*> names;
  std::optional<NameIndex> index;
};

struct Change {
  std::string_view name;
  std::optional<Place> before;
  std::optional<Place> after;
};

std::vector<Change> Compare(const NamedFiles& before, const NamedFiles& after) {
  std::vector<Change> changes;
  before.ForEach([&](std::string_view name, Place place) {
    const auto now = after.Find(name);
    const AbsoluteIRI& folder = before.StateAt(place).Canonical();
    if (now && folder == static_cast<const AbsoluteIRI&>(after.StateAt(*now).Canonical())) return;
    changes.push_back({.name = name, .before = place, .after = now});
  });
  after.ForEach([&](std::string_view name, Place place) {
    if (!before.Find(name)) changes.push_back({.name = name, .before = {}, .after = place});
  });
  std::sort(changes.begin(), changes.end(),
            [](const Change& left, const Change& right) { return left.name < right.name; });
  return changes;
}

}  // namespace

std::vector<NameChange> FindNameChanges(const FolderPath& before, const FolderPath& after) {
  const std::array<const FolderPath*, 2> paths = {&before, &after};
  std::array<std::optional<NamedFiles>, 2> files;
  AnyInParallel(paths.size(), [&](std::size_t side) {
    files.at(side).emplace(*paths.at(side));
    return false;
  });
  std::vector<NameChange> changes;
  for (const Change& change : Compare(*files[0], *files[1])) {
    changes.push_back({.name = TextFromBytes(change.name),
                       .before = files[0]->FileAt(change.before),
                       .after = files[1]->FileAt(change.after)});
  }
  return changes;
}

}  // namespace Corvane::PathManagement::host
