#ifndef SEARCHPATH_HOST_DISK_FEED_H
#define SEARCHPATH_HOST_DISK_FEED_H

#include "searchpath/export.h"
#include "searchpath/host/duration.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/platform/event_manager.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// How a `DiskFeed` watches, and what it watches besides the path.
struct DiskFeedOptions {
  /// Files that are watched as well, such as the list from which a path was read. An event is
  /// published for one that is made, written, replaced or removed.
  std::vector<AbsoluteIRI> files = {};
  /// The changes of a burst are published together, when there has been no further change for this
  /// long.
  std::chrono::milliseconds quietTime{20};
  /// The longest that the first change of a burst waits to be published.
  std::chrono::milliseconds longestDelay{200};
  /// How often the folders that the kernel cannot watch are polled.
  std::chrono::milliseconds pollInterval{2000};
  /// Polls all folders: for disks whose changes the kernel misses although it accepts the watches.
  bool onlyPolls = false;
};

/// Publishes a `FileFolderChangedEvent` for each folder of a manager's path in which files or
/// folders come or go; for a special folder ("+", "@", private, resources), also for those above
/// it, up to the first ordinary folder. With a
/// `FolderObserver` on the same stream, the path follows the disk. To publish a folder means here
/// to publish such an event for it.
///
/// The kernel watches the folders, and every folder and link on the way to them, so a folder that
/// is removed, replaced, reached through another link or made again is published as well. Folders
/// on network and user-space file systems, and those for which the kernel has no watch left, are
/// polled: their times are compared. The contents of files are not watched.
///
/// A folder is also published when changes in it may have been missed, and when it has come onto
/// the path and its watch has just been set. A program that keeps all folders below it on the path,
/// too, then looks for these folders once more and misses none.
///
/// Threads: watches and publishes on a thread of its own. All operations, from any thread.
/// Ownership: shares the event manager; the path's manager must outlive it.
/// Errors: an error of the disk raises nothing. When a subscriber raises an exception, the events
/// after that one are not published; instead, all folders are published after the poll interval.
/// Cost: a watch of the kernel for each folder, and for each folder on the way to it (sysctl
/// fs.inotify.max_user_watches limits the watches of a user); lists every folder of the path. Takes
/// no time while nothing changes, unless folders are polled.
class SEARCHPATH_EXPORT DiskFeed {
 public:
  /// When the constructor returns, everything is watched. The first folders published are those
  /// that may have changed after they were listed and before they were watched. A folder that has
  /// not been listed yet is not among them: its listing will show the change.
  ///
  /// Errors: `std::system_error` when the system has no descriptor or no thread left.
  DiskFeed(MainSearchPathManager& manager,
           std::shared_ptr<foundation::msg_svc::eventmgr::EventMgr> events,
           DiskFeedOptions options = {});
  DiskFeed(const DiskFeed&) = delete;
  DiskFeed& operator=(const DiskFeed&) = delete;
  /// Waits until the subscribers that the feed is calling have returned.
  ///
  /// Precondition: not called by a subscriber, nor by a listener of the manager.
  ~DiskFeed();

  /// Sets up all watches again and publishes all folders and files: for changes that the kernel may
  /// have missed.
  void ScanAgain();

  /// The folders and files that are polled, in no order.
  [[nodiscard]] std::vector<AbsoluteIRI> FindPolledFolders() const;

 private:
  class State;

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_DISK_FEED_H
