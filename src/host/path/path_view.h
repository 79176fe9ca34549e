#ifndef SEARCHPATH_SRC_HOST_PATH_PATH_VIEW_H
#define SEARCHPATH_SRC_HOST_PATH_PATH_VIEW_H

#include "host/path/hidden_folders.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/model/path.h"
#include "searchpath/model/ustring.h"
#include "searchpath/utilities/once_flag.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement::host {

/// Folders as they were given, each with the entries that it was expanded to.
struct GivenFolders {
  /// One folder.
  struct Given {
    FolderOrigin origin;  // who put it on the path
    PathEntries entries;  // the folder itself first
  };

  std::vector<Given> folders;
  std::vector<FolderProblem> unlocated;  // folders that were given but have no location
};

/// The two paths of an `Environment`: the whole path, of all folders that were given, and the path
/// that look-ups ask, from which hidden folders and repeats are taken out. The entries that stand
/// on a path themselves are its main entries, and their folders its main folders; special folders
/// ("+", "@", private, resources) are below them.
///
/// Threads: all operations, from any thread.
class PathView {
 public:
  /// `expansion` is the way in which `givenFolders` were expanded: see `HiddenFolders`. Repeats are
  /// dropped unless `keepDuplicates`.
  PathView(GivenFolders givenFolders, const GivenFolders& hiddenFolders, FolderExpansion expansion,
           bool keepDuplicates);
  /// Both paths are `givenPath`, of whatever class; it must not be null.
  explicit PathView(std::shared_ptr<const IPath> givenPath);

  /// The path that look-ups ask: without hidden folders, and without repeats if these are dropped.
  ///
  /// Cost: the first call resolves the links of every main folder where folders are hidden or
  /// repeats are dropped.
  [[nodiscard]] const std::shared_ptr<const IPath>& GetPath() const;
  /// Those main entries of `GetPath` that are folders on disk.
  [[nodiscard]] FolderEntries GetMainFolders() const;

  /// The whole path, with repeats and hidden folders.
  [[nodiscard]] const IPath& GetWholePath() const noexcept { return *wholePath; }
  /// The main folders on disk of the whole path, as a path with more operations. The whole path
  /// itself when `IsOnDisk`.
  [[nodiscard]] const FolderPath& GetFolderPath() const noexcept { return *folders; }
  /// Whether the whole path is a `FolderPath`, all of whose entries are folders on disk.
  [[nodiscard]] bool IsOnDisk() const noexcept { return wholePath == folders; }
  /// The folders that the whole path is made of, in path order.
  [[nodiscard]] const std::vector<GivenFolders::Given>& GetGivenFolders() const noexcept {
    return given;
  }
  /// As `Environment::FindOrigin`. Precondition: `entry` is on the whole path.
  [[nodiscard]] FolderOrigin GetOrigin(const IPathEntry& entry) const;
  [[nodiscard]] bool DropsRepeats() const noexcept { return dropsRepeats; }

  /// Folders that were given but have no location.
  [[nodiscard]] const std::vector<FolderProblem>& GetUnlocated() const noexcept {
    return unlocated;
  }

  [[nodiscard]] bool HidesFolders() const noexcept { return !hiddenTexts.empty(); }
  /// The hidden folder that hides `entry`, as it was given; null when none does.
  [[nodiscard]] const ustring* FindHider(const IPathEntry& entry) const;

  /// Removes the files that `GetPath` does not show: those in hidden folders and, where repeats are
  /// dropped, those of a repeated entry. Of several entries for a folder, the one that comes first
  /// in `files` is kept.
  void RemoveUnseen(std::vector<FoundItem>& files) const;

  /// As `FindFirstFileVisibleOnPath` on `GetPath`.
  [[nodiscard]] boost::optional<FoundItem> FindVisible(
      const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy) const;

  /// As `FolderPath::FindIndexed` on `GetPath`. Returns false where folders are hidden.
  [[nodiscard]] bool FindIndexed(std::u16string_view name,
                                 boost::optional<FoundItem>& found) const {
    return shownFolders != nullptr && shownFolders->FindIndexed(name, found);
  }

  /// How long to wait for the disk, for each folder; `nullopt`: as long as it takes.
  [[nodiscard]] std::optional<std::chrono::milliseconds> GetLimit() const noexcept;

  /// Whether the folder `asker` may have a private folder, whose files only code in `asker` sees.
  /// Lists nothing. Asks the disk as long as all main folders have yet to be listed from the disk;
  /// otherwise returns true.
  [[nodiscard]] bool MayHavePrivateFolder(const AbsoluteIRI& asker) const;

  /// As `Environment::FindProblems`.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;
  /// As `Environment::GetProblemsMet`.
  [[nodiscard]] std::vector<FolderProblem> GetProblemsMet() const;
  /// As `Environment::FindIdleExclusions`.
  [[nodiscard]] std::vector<ustring> FindIdleExclusions() const;

 private:
  [[nodiscard]] std::shared_ptr<const IPath> MakePath() const;
  [[nodiscard]] boost::optional<FoundItem> FindAmongShown(
      const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy) const;
  template <class Find>
  [[nodiscard]] std::vector<FolderProblem> WithUnlocated(const Find& find) const;

  std::vector<GivenFolders::Given> given;
  std::vector<FolderProblem> unlocated;
  std::shared_ptr<const FolderPath> folders;
  std::shared_ptr<const IPath> wholePath;
  /// For each main entry, the index in `given` of the folder that it comes from.
  boost::unordered_flat_map<const IPathEntry*, std::size_t> givenBy;
  std::shared_ptr<const HiddenFolders> hidden;
  std::vector<ustring> hiddenTexts;      // the folders of `hidden`, as they were given
  std::vector<ustring> unlocatedHidden;  // folders to be hidden that have no location
  bool dropsRepeats;
  const FolderPath* shownFolders;  // null unless the whole path is on disk and nothing is hidden
  mutable PathManagement::detail::OnceFlag pathOnce;  // guards path
  mutable std::shared_ptr<const IPath> path;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_PATH_VIEW_H
