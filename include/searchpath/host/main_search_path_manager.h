#ifndef SEARCHPATH_HOST_MAIN_SEARCH_PATH_MANAGER_H
#define SEARCHPATH_HOST_MAIN_SEARCH_PATH_MANAGER_H

#include "searchpath/export.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/host/known_package.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/any_range_adapter.h"
#include "searchpath/platform/main_search_path_manager.h"
#include "searchpath/utilities/path_entry_vector_differentiator.h"

#include <functional>
#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// Owns a search path of folders on disk and tells what changes on it.
///
/// Every change makes a new path. Folders that have not changed keep their entries, so listeners
/// hear exact differences, and a path in use stays as it is for as long as somebody holds it.
///
/// Threads: all operations, from any thread. Changes come one after the other, each with all its
/// listeners; who asks for the path never waits for them, and sees the old or the new one.
/// Errors: a change from within a listener, on its thread, raises `RecursivePathChangeException` and
/// does nothing. A listener that waits for another thread's change waits for ever.
class SEARCHPATH_EXPORT MainSearchPathManager : public IMainSearchPathManager {
 public:
  using Listener = std::function<void(const PathEntryVectorDifferentiator&)>;

  /// Keeps a listener. When the last copy is destroyed, changes pass the listener by, except that
  /// one under way on another thread may be calling it; the manager may be gone before.
  using Subscription = std::shared_ptr<const void>;

  /// With the folders of its first path, of which nobody is told.
  explicit MainSearchPathManager(std::vector<std::shared_ptr<const FolderEntry>> folders = {});
  MainSearchPathManager(const MainSearchPathManager&) = delete;
  MainSearchPathManager& operator=(const MainSearchPathManager&) = delete;
  ~MainSearchPathManager() override;

  /// Folders that stay on the path keep their entries and are not looked at. A folder that cannot be
  /// searched is put on the path all the same and is no message: `FolderPath::FindProblems` tells
  /// of it.
  ///
  /// Errors: those of a change.
  void SetFolderIRIs(const AbsoluteIRIRange& folders,
                     foundation::core::except::Notification& notification) override;

  /// The known packages whose folders are all on the path, and that have any.
  [[nodiscard]] std::shared_ptr<const std::vector<ComponentIdentifier>> GetPackagesOnPath()
      const override;

  [[nodiscard]] std::shared_ptr<const std::vector<AbsoluteIRI>> GetFolderIRIs() const override;

  /// Never null.
  [[nodiscard]] std::shared_ptr<const FolderPath> GetPath() const;

  /// Lists the folders anew in which something may have changed, see `ChangedFolders`, and no
  /// others.
  ///
  /// Errors: those of a change.
  void RefreshFolders(const AbsoluteIRIRange& locations);

  /// Lists all folders anew that have been listed. Errors: those of a change.
  void RefreshAllFolders();

  /// Replaces the packages that `GetPackagesOnPath` may tell. The path stays. Errors: those of a
  /// change.
  void SetKnownPackages(std::vector<KnownPackage> packages);

  /// Calls `listener` after every change that makes a difference, once the new path is the one that
  /// is asked for, on the thread of the change, with what differs. `IncludeSubfolders` lists the
  /// folders that came, went or changed.
  ///
  /// Precondition: `listener` is not empty.
  /// Errors: an exception of a listener does not undo the change, nor keep it from the others; the
  /// first reaches whoever made the change, when all have been told.
  [[nodiscard]] Subscription AddListener(
      Listener listener, PathEntryVectorDifferentiator::ComparisonFilter filter =
                             PathEntryVectorDifferentiator::ComparisonFilter::TopLevelOnly);

 private:
  class State;

  std::unique_ptr<State> state;
};

/// As `RemoveFoldersFromZentraPath`, also for folders that are gone from the disk or that cannot be
/// read. A text that names no place is on no path: its message is "DirNotFound", too.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification RemoveFolderTexts(
    const UstringRange& folders, const WorkingFolder& workingFolder,
    IMainSearchPathManager& manager);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_MAIN_SEARCH_PATH_MANAGER_H
