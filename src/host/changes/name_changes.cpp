#include "searchpath/host/name_changes.h"

#include "diff/longest_common_subsequence.h"
#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "searchpath/model/byte_text.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Folder = std::shared_ptr<const FolderEntry>;
using Folders = std::vector<Folder>;

enum Side : std::uint8_t { Before, After };

/// Which of the folders of a path, and which of its files.
struct Place {
  std::uint32_t folder;
  std::uint32_t file;
};

/// The names in question, each with its first places on both paths.
class NameTable {
 public:
  /// The folders have been listed.
  NameTable(const Folders& before, const Folders& after) : paths{&before, &after} {
    const Folders same = LongestCommonSubsequence<Folder, Folders>::Compute(before, after);
    for (const Side side : {Before, After}) AddNamesBesides(same, side);
    for (auto& side : places) side.resize(names.size());
    AnyInParallel(paths.size(), [this](std::size_t side) {
      FindPlaces(static_cast<Side>(side));
      return false;
    });
  }

  [[nodiscard]] std::vector<NameChange> FindChanges() const {
    std::vector<std::pair<std::string_view, std::uint32_t>> changed;
    for (const auto& [name, at] : names) {
      if (IsChanged(at)) changed.emplace_back(name, at);
    }
    std::sort(changed.begin(), changed.end());
    std::vector<NameChange> changes;
    changes.reserve(changed.size());
    for (const auto& [name, at] : changed) {
      changes.emplace_back(TextFromBytes(name), FileAt(Before, at), FileAt(After, at));
    }
    return changes;
  }

 private:
  struct Hash {
    using is_avalanching = void;
    std::size_t operator()(std::string_view name) const noexcept {
      return std::hash<std::string_view>()(name);
    }
  };

  /// Only files of folders that are not on both paths in the same order can make a name mean
  /// another one: among the rest, the first that has it is the same.
  void AddNamesBesides(const Folders& same, Side side) {
    auto next = same.begin();
    for (const Folder& folder : *paths.at(side)) {
      if (next != same.end() && *next == folder) {
        ++next;
      } else {
        AddNames(StateOf(*folder).Files());
      }
    }
  }

  void AddNames(const NameBlock& files) {
    for (std::size_t file = 0; file < files.size(); ++file) {
      if (names.size() == std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("too many files on the path");
      }
      names.try_emplace(files[file], static_cast<std::uint32_t>(names.size()));
    }
  }

  void FindPlaces(Side side) {
    if (names.empty()) return;
    const Folders& folders = *paths.at(side);
    for (std::uint32_t folder = 0; folder < folders.size(); ++folder) {
      const NameBlock& files = StateOf(*folders[folder]).Files();
      for (std::uint32_t file = 0; file < files.size(); ++file) {
        const auto named = names.find(files[file]);
        if (named == names.end()) continue;
        auto& place = places.at(side)[named->second];
        if (!place) place = {.folder = folder, .file = file};
      }
    }
  }

  [[nodiscard]] bool IsChanged(std::uint32_t at) const {
    const auto& before = places[Before][at];
    const auto& after = places[After][at];
    if (!before || !after) return true;
    const AbsoluteIRI& folder = StateAt(Before, *before).Canonical();
    return folder != static_cast<const AbsoluteIRI&>(StateAt(After, *after).Canonical());
  }

  [[nodiscard]] FolderState& StateAt(Side side, Place place) const {
    return StateOf(*paths.at(side)->at(place.folder));
  }

  [[nodiscard]] boost::optional<FoundItem> FileAt(Side side, std::uint32_t at) const {
    const auto& place = places.at(side)[at];
    if (!place) return boost::none;
    return FoundItem(StateAt(side, *place).ItemAt(place->file), paths.at(side)->at(place->folder));
  }

  std::array<const Folders*, 2> paths;
  boost::unordered_flat_map<std::string_view, std::uint32_t, Hash> names;  // to their numbers
  std::array<std::vector<std::optional<Place>>, 2> places;                 // by number
};

}  // namespace

std::vector<NameChange> FindNameChanges(const FolderPath& before, const FolderPath& after) {
  const std::array<const Folders*, 2> paths = {&before.GetMainFolders(), &after.GetMainFolders()};
  for (const Folders* const folders : paths) {
    AnyInParallel(folders->size(), [folders](std::size_t at) {
      StateOf(*(*folders)[at]).List();
      return false;
    });
  }
  return NameTable(*paths[Before], *paths[After]).FindChanges();
}

}  // namespace Corvane::PathManagement::host
