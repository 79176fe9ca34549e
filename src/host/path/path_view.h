#ifndef SEARCHPATH_SRC_HOST_PATH_PATH_VIEW_H
#define SEARCHPATH_SRC_HOST_PATH_PATH_VIEW_H

#include "host/path/hidden_folders.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/model/path.h"
#include "searchpath/model/ustring.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace Corvane::PathManagement::host {

/// Folders as they were given, each with what it was expanded to.
struct GivenFolders {
  struct Given {
    FolderOrigin origin;
    std::vector<std::shared_ptr<const FolderEntry>> entries;  // the folder itself first
  };

  std::vector<Given> folders;
  std::vector<FolderProblem> unlocated;  // those that name no place
};

/// A path of given folders that remembers which of them brought each entry.
class GivenPath {
 public:
  explicit GivenPath(std::vector<GivenFolders::Given> givenFolders);

  [[nodiscard]] const std::vector<GivenFolders::Given>& GetGiven() const noexcept { return given; }
  [[nodiscard]] const std::shared_ptr<const FolderPath>& GetPath() const noexcept { return path; }

  /// As `Environment::FindOrigin`.
  [[nodiscard]] const FolderOrigin& GetOrigin(const IPathEntry& entry) const;

 private:
  std::vector<GivenFolders::Given> given;
  std::shared_ptr<const FolderPath> path;
  boost::unordered_flat_map<const IPathEntry*, std::size_t> givenBy;  // of the main entries
};

/// What an `Environment` asks: all folders that were given, and the path that is left of them when
/// folders are hidden and repeats dropped.
///
/// Threads: all operations, from any thread.
class PathView {
 public:
  PathView(GivenFolders givenFolders, const GivenFolders& hiddenFolders, FolderExpansion expansion,
           bool keepDuplicates);

  /// The path that is asked.
  [[nodiscard]] const std::shared_ptr<const IPath>& GetPath() const noexcept { return path; }
  /// Its main entries, as the folders that they are.
  [[nodiscard]] std::vector<std::shared_ptr<const FolderEntry>> GetMainFolders() const;

  /// All folders, with repeats and with those that are hidden.
  [[nodiscard]] const GivenPath& GetAll() const noexcept { return all; }
  [[nodiscard]] bool DropsRepeats() const noexcept { return dropsRepeats; }

  /// Folders given that name no place.
  [[nodiscard]] const std::vector<FolderProblem>& GetUnlocated() const noexcept {
    return unlocated;
  }

  /// The folder that was given to be hidden and hides `entry`; null when none does.
  [[nodiscard]] const ustring* FindHider(const IPathEntry& entry) const;

  /// Takes away what the path does not show: files in hidden folders, and files of an entry for a
  /// folder that an earlier one is for.
  void RemoveUnseen(std::vector<FoundItem>& files) const;

  /// As `Environment::FindProblems`.
  [[nodiscard]] std::vector<FolderProblem> FindProblems() const;
  /// As `Environment::FindIdleExclusions`.
  [[nodiscard]] std::vector<ustring> FindIdleExclusions() const;

 private:
  GivenPath all;
  std::vector<FolderProblem> unlocated;
  std::shared_ptr<const HiddenFolders> hidden;
  std::vector<ustring> hiddenTexts;      // of the hidden folders, as they were given
  std::vector<ustring> unlocatedHidden;  // those that name no place
  bool dropsRepeats;
  std::shared_ptr<const IPath> path;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_PATH_PATH_VIEW_H
