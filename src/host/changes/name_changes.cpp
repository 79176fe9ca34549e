#include "searchpath/host/name_changes.h"

#include "diff/longest_common_subsequence.h"
#include "host/common/parallel.h"
#include "host/folder/entry_state.h"
#include "host/names/short_hash.h"
#include "searchpath/model/byte_text.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Folder = std::shared_ptr<const FolderEntry>;

enum Side : std::uint8_t { Before, After };

/// Where a file stands on a path.
struct File {
  std::uint32_t folder;  // its index among the path's main folders
  std::uint32_t index;   // among the folder's files
};

/// The names that may have changed their meaning, each with its first file on each path.
class NameTable {
 public:
  /// Precondition: the folders have been listed.
  NameTable(const FolderEntries& before, const FolderEntries& after) : paths{&before, &after} {
    const FolderEntries same =
        LongestCommonSubsequence<Folder, FolderEntries>::Compute(before, after);
    for (const Side side : {Before, After}) AddNamesOutsideOf(same, side);
    for (auto& side : firsts) side.resize(names.size());
    ForEachInParallel(paths.size(),
                      [this](std::size_t side) { FindFirstFiles(static_cast<Side>(side)); });
  }

  [[nodiscard]] std::vector<NameChange> FindChanges() const {
    std::vector<std::pair<std::string_view, std::uint32_t>> changed;
    for (const auto& [name, number] : names) {
      if (IsChanged(number)) changed.emplace_back(name, number);
    }
    std::sort(changed.begin(), changed.end());
    std::vector<NameChange> changes;
    changes.reserve(changed.size());
    for (const auto& [name, number] : changed) {
      changes.emplace_back(TextFromBytes(name), FirstItem(Before, number),
                           FirstItem(After, number));
    }
    return changes;
  }

 private:
  /// Adds the names of the files in those folders of a path that are not in `same`. A name that
  /// stands only in folders of `same` cannot have changed its meaning: these are on both paths in
  /// the same order, so the first one that has the name is the same on both.
  void AddNamesOutsideOf(const FolderEntries& same, Side side) {
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

  void FindFirstFiles(Side side) {
    if (names.empty()) return;
    const FolderEntries& folders = *paths.at(side);
    for (std::uint32_t folder = 0; folder < folders.size(); ++folder) {
      const NameBlock& files = StateOf(*folders[folder]).Files();
      for (std::uint32_t index = 0; index < files.size(); ++index) {
        const auto name = names.find(files[index]);
        if (name == names.end()) continue;
        auto& first = firsts.at(side)[name->second];
        if (!first) first = {.folder = folder, .index = index};
      }
    }
  }

  [[nodiscard]] bool IsChanged(std::uint32_t number) const {
    const auto& before = firsts[Before][number];
    const auto& after = firsts[After][number];
    if (!before || !after) return true;
    return FolderOf(Before, *before).Canonical() != FolderOf(After, *after).Canonical();
  }

  [[nodiscard]] FolderState& FolderOf(Side side, File file) const {
    return StateOf(*paths.at(side)->at(file.folder));
  }

  [[nodiscard]] std::optional<FoundItem> FirstItem(Side side, std::uint32_t number) const {
    const auto& first = firsts.at(side)[number];
    if (!first) return std::nullopt;
    const auto& folder = paths.at(side)->at(first->folder);
    return FoundItem(ShareItem(folder, StateOf(*folder).ItemAt(first->index)), folder);
  }

  std::array<const FolderEntries*, 2> paths;
  boost::unordered_flat_map<std::string_view, std::uint32_t, NameBytesHash>
      names;                                               // each with its number
  std::array<std::vector<std::optional<File>>, 2> firsts;  // by side, then by a name's number
};

}  // namespace

std::vector<NameChange> FindNameChanges(const FolderPath& before, const FolderPath& after) {
  const std::array<const FolderEntries*, 2> paths = {&before.GetMainFolders(),
                                                     &after.GetMainFolders()};
  for (const FolderEntries* const folders : paths) {
    ForEachInParallel(folders->size(),
                      [folders](std::size_t at) { StateOf(*(*folders)[at]).List(); });
  }
  return NameTable(*paths[Before], *paths[After]).FindChanges();
}

}  // namespace Corvane::PathManagement::host
