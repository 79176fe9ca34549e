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

/// Owns a search path of folders on disk and reports its changes.
///
/// Every change makes a new path. Folders that have not changed keep their entries, so differences
/// are exact, and a path in use stays as it is for as long as somebody holds it.
///
/// Threads: all operations, from any thread. Changes come one after the other, each with all its
/// listeners. Asking for the path never waits for them and gives the path before or after a change.
/// Errors: a change from within a listener, on its thread, raises `RecursivePathChangeException`
/// and does nothing. A listener that waits for another thread's change waits for ever.
class SEARCHPATH_EXPORT MainSearchPathManager : public IMainSearchPathManager {
 public:
  /// Called with what differs between the path before and after a change.
  using Listener = std::function<void(const PathEntryVectorDifferentiator&)>;

  /// Called with the path before and after a change, which it may keep; neither is null.
  using PathListener = std::function<void(const std::shared_ptr<const FolderPath>& before,
                                          const std::shared_ptr<const FolderPath>& after)>;

  /// Keeps a listener subscribed until the last copy is destroyed. A call that another thread is
  /// making at that moment still comes to its end. May outlive the manager.
  using Subscription = std::shared_ptr<const void>;

  /// Begins with a path of `folders`.
  explicit MainSearchPathManager(FolderEntries folders = {});
  MainSearchPathManager(const MainSearchPathManager&) = delete;
  MainSearchPathManager& operator=(const MainSearchPathManager&) = delete;
  ~MainSearchPathManager() override;

  /// Folders that stay on the path keep their entries and are not read again. A folder that cannot
  /// be searched is put on the path all the same, without a message: `FolderPath::FindProblems`
  /// reports it.
  ///
  /// Errors: those of a change.
  void SetFolderIRIs(const AbsoluteIRIRange& folders,
                     foundation::core::except::Notification& notification) override;

  /// The known packages that have all their folders on the path, at least one.
  [[nodiscard]] std::shared_ptr<const std::vector<ComponentIdentifier>> GetPackagesOnPath()
      const override;

  [[nodiscard]] std::shared_ptr<const std::vector<AbsoluteIRI>> GetFolderIRIs() const override;

  /// Never null.
  [[nodiscard]] std::shared_ptr<const FolderPath> GetPath() const;

  /// Lists again the folders in which something may have changed, see `ChangedFolders`, and no
  /// others.
  ///
  /// Errors: those of a change.
  void RefreshFolders(const AbsoluteIRIRange& locations);

  /// Lists again all folders that have been listed. Errors: those of a change.
  void RefreshAllFolders();

  /// Replaces the packages that `GetPackagesOnPath` chooses from. The path stays. Errors: those of
  /// a change.
  void SetKnownPackages(std::vector<KnownPackage> packages);

  /// Calls `listener` on the thread of the change after every change that makes a difference, when
  /// the manager has the new path already. `IncludeSubfolders` also compares what is below the
  /// folders that came, went or changed, and lists them for that.
  ///
  /// Precondition: `listener` is not empty.
  /// Errors: an exception of a listener neither undoes the change nor keeps it from the other
  /// listeners. When all have been called, the first such exception is raised where the change was
  /// made.
  /// Cost: one comparison of the paths for all listeners with the same `filter`.
  [[nodiscard]] Subscription AddListener(
      Listener listener, PathEntryVectorDifferentiator::ComparisonFilter filter =
                             PathEntryVectorDifferentiator::ComparisonFilter::TopLevelOnly);

  /// The same for a listener that makes its own comparison or needs none: nothing is compared.
  [[nodiscard]] Subscription AddListener(PathListener listener);

 private:
  class State;

  std::unique_ptr<State> state;
};

/// As `RemoveFoldersFromZentraPath`, also for folders that are gone from the disk or cannot be
/// read. A text that cannot name a folder is reported as a folder that is not on the path; the
/// others are removed.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification RemoveFolders(
    const UstringRange& folders, const WorkingFolder& workingFolder,
    IMainSearchPathManager& manager);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_MAIN_SEARCH_PATH_MANAGER_H
