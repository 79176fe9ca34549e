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
#include <vector>

namespace Corvane::PathManagement::host {

/// Folders as they were given, each with the entries that it was expanded to.
struct GivenFolders {
  struct Given {
    FolderOrigin origin;
    PathEntries entries;  // the folder itself first
  };

  std::vector<Given> folders;
  std::vector<FolderProblem> unlocated;  // given, but they have no location
};

/// What an `Environment` asks: the whole path of all folders that were given, and the path that is
/// left when hidden folders and repeats are taken out of it.
///
/// Threads: all operations, from any thread.
class PathView {
 public:
  PathView(GivenFolders givenFolders, const GivenFolders& hiddenFolders, FolderExpansion expansion,
           bool keepDuplicates);
  /// Asks `asked` as it is, whoever made it. Precondition: it is not null.
  explicit PathView(std::shared_ptr<const IPath> asked);

  /// The path that is asked.
  ///
  /// Cost: the first call resolves the links of every main folder where repeats are dropped.
  [[nodiscard]] const std::shared_ptr<const IPath>& GetPath() const;
  /// Those of its main entries that are folders on disk, as such.
  [[nodiscard]] FolderEntries GetMainFolders() const;

  /// The path with repeats and hidden folders.
  [[nodiscard]] const IPath& GetWholePath() const noexcept { return *wholePath; }
  /// Its folders on disk. When there is nothing else on it, the same path, which has more answers.
  [[nodiscard]] const FolderPath& GetFolderPath() const noexcept { return *folders; }
  /// Whether all of the path is folders on disk.
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

  /// Removes the files that the path does not show: those in hidden folders and, where repeats are
  /// dropped, those of every entry for a folder but the first entry among `files`.
  void RemoveUnseen(std::vector<FoundItem>& files) const;

  /// As `FindFirstFileVisibleOnPath` on the path that is asked.
  [[nodiscard]] boost::optional<FoundItem> FindVisible(
      const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy) const;

  /// How long the disk is waited for, for each folder.
  [[nodiscard]] std::optional<std::chrono::milliseconds> GetLimit() const noexcept;

  /// Whether code in the folder `asker` may see private files. Lists nothing; as long as nothing has
  /// been listed, it asks the disk whether there is a private folder.
  [[nodiscard]] bool MayHavePrivateFolder(const AbsoluteIRI& asker) const;

  /// As `Environment::FindProblems`.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;
  /// As `Environment::GetProblemsMet`.
  [[nodiscard]] std::vector<FolderProblem> GetProblemsMet() const;
  /// As `Environment::FindIdleExclusions`.
  [[nodiscard]] std::vector<ustring> FindIdleExclusions() const;

 private:
  [[nodiscard]] std::shared_ptr<const IPath> MakePath() const;
  [[nodiscard]] boost::optional<FoundItem> FindAmongHidden(
      const PathManagement::detail::SearchTarget& target, FilenameMatchingPolicy policy) const;
  template <class Find>
  [[nodiscard]] std::vector<FolderProblem> WithUnlocated(const Find& find) const;

  std::vector<GivenFolders::Given> given;
  std::vector<FolderProblem> unlocated;
  std::shared_ptr<const FolderPath> folders;
  std::shared_ptr<const IPath> wholePath;
  boost::unordered_flat_map<const IPathEntry*, std::size_t>
      givenBy;  // of each main entry: an index
  std::shared_ptr<const HiddenFolders> hidden;
  std::vector<ustring> hiddenTexts;      // of the hidden folders, as they were given
  std::vector<ustring> unlocatedHidden;  // given to be hidden, but they have no location
  bool dropsRepeats;
  const FolderPath* shownFolders;  // null unless the whole path is on disk and nothing is hidden
  mutable PathManagement::detail::OnceFlag pathOnce;  // guards path
  mutable std::shared_ptr<const IPath> path;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_PATH_VIEW_H
