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
/// Threads: all operations, from any thread. A change begins when the one before it, and all its
/// listeners, have ended. `GetPath` and the other getters never wait for a change.
/// Errors: a listener that makes a change, on the thread that calls it, gets a
/// `RecursivePathChangeException`, and nothing is changed. A listener that waits for another
/// thread's change waits for ever.
class SEARCHPATH_EXPORT MainSearchPathManager : public IMainSearchPathManager {
 public:
  /// Called with what differs between the path before and after a change.
  using Listener = std::function<void(const PathEntryVectorDifferentiator&)>;

  /// Called with the paths before and after a change. It may keep them; neither is null.
  using PathListener = std::function<void(const std::shared_ptr<const FolderPath>& before,
                                          const std::shared_ptr<const FolderPath>& after)>;

  /// Keeps a listener subscribed until the last copy of this pointer is destroyed. A call of the
  /// listener that another thread is making at that moment goes on to its end. May outlive the
  /// manager.
  using Subscription = std::shared_ptr<const void>;

  /// Begins with a path of `folders`.
  explicit MainSearchPathManager(FolderEntries folders = {});
  MainSearchPathManager(const MainSearchPathManager&) = delete;
  MainSearchPathManager& operator=(const MainSearchPathManager&) = delete;
  ~MainSearchPathManager() override;

  /// Replaces the folders of the path by `folders`, in the order given. Folders that stay on the
  /// path keep their entries and are not read again. A folder that cannot
  /// be searched is put on the path all the same, and nothing is appended to `notification`:
  /// `FolderPath::FindProblems` reports it.
  ///
  /// Errors: those of a change.
  void SetFolderIRIs(const AbsoluteIRIRange& folders,
                     foundation::core::except::Notification& notification) override;

  /// The packages of `SetKnownPackages` whose folders are all on the path. Packages without folders
  /// are left out.
  [[nodiscard]] std::shared_ptr<const std::vector<ComponentIdentifier>> GetPackagesOnPath()
      const override;

  [[nodiscard]] std::shared_ptr<const std::vector<AbsoluteIRI>> GetFolderIRIs() const override;

  /// The path as it is now. Never null.
  [[nodiscard]] std::shared_ptr<const FolderPath> GetPath() const;

  /// Lists again the folders at `locations`, those on the path itself or special folders below
  /// them, and the folders that such special folders belong to, but no others. See
  /// `ChangedFolders`.
  ///
  /// Errors: those of a change.
  void RefreshFolders(const AbsoluteIRIRange& locations);

  /// Lists again all folders that have been listed. Errors: those of a change.
  void RefreshAllFolders();

  /// Replaces the packages from which `GetPackagesOnPath` chooses. The path stays, and no listener
  /// is called. Errors: those of a change.
  void SetKnownPackages(std::vector<KnownPackage> packages);

  /// Calls `listener` after every change that makes a difference, on the thread that made the
  /// change; the manager has the new path by then. `IncludeSubfolders` also compares what is below
  /// the folders that came, went or changed, and lists them for that.
  ///
  /// Precondition: `listener` is not empty.
  /// Errors: when a listener raises an exception, the change stays, and the other listeners are
  /// called all the same. The operation that made the change then raises the first such exception.
  /// Cost: one comparison of the paths for all listeners with the same `filter`.
  [[nodiscard]] Subscription AddListener(
      Listener listener, PathEntryVectorDifferentiator::ComparisonFilter filter =
                             PathEntryVectorDifferentiator::ComparisonFilter::TopLevelOnly);

  /// The same for a listener that gets both paths: nothing is compared for it.
  [[nodiscard]] Subscription AddListener(PathListener listener);

 private:
  class State;

  std::unique_ptr<State> state;
};

/// Takes `folders`, as users type them, off the path of `manager`, as `RemoveIRIsFromZentraPath`
/// does. Folders that are gone from the disk or cannot be read are removed, too. A text for which
/// `workingFolder` has no location is reported with `PathMessages::NotOnPath`, as it was typed;
/// all other folders are still removed.
[[nodiscard]] SEARCHPATH_EXPORT foundation::core::except::Notification RemoveFolders(
    const UstringRange& folders, const WorkingFolder& workingFolder,
    IMainSearchPathManager& manager);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_MAIN_SEARCH_PATH_MANAGER_H
