#ifndef SEARCHPATH_HOST_DISK_FEED_H
#define SEARCHPATH_HOST_DISK_FEED_H

#include "searchpath/export.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/model/absolute_iri.h"
#include "searchpath/platform/event_manager.h"

#include <chrono>
#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// How a `DiskFeed` watches, and what besides the path.
struct DiskFeedOptions {
  /// Files that are watched as well: events name them when they are made, written, replaced or
  /// removed. The list that a path was read from, for instance.
  std::vector<AbsoluteIRI> files = {};
  /// Changes are told when none has come for so long, so that a burst of them is told once …
  std::chrono::milliseconds quietTime{20};
  /// … but at the latest so long after the first.
  std::chrono::milliseconds longestDelay{200};
  /// How often folders are asked that the system cannot watch.
  std::chrono::milliseconds pollInterval{2000};
  /// Asks all folders so: for disks whose changes the system does not see though it says it does.
  bool onlyPolls = false;
};

/// Publishes a `FileFolderChangedEvent` for each folder of a manager's path in which files or
/// folders come or go on this machine's disks, and for those that it belongs to. With a
/// `FolderObserver` on the same stream the path follows the disk.
///
/// The folders are watched by the kernel, with all folders and links that lead to them, so that one
/// is heard of that is removed, replaced, led to by another link, or back again. Folders on network
/// and user-space file systems, and those for which the kernel has no watch left, are asked for
/// their times instead. When changes may have gone unseen, the folders in question are reported. So
/// is a folder that comes onto the path, once it is watched: a program that looks into folders
/// itself, to put those below them on the path as well, looks into them again then and misses none.
/// What is in files is not watched.
///
/// Threads: watches and publishes on a thread of its own. All operations, from any thread.
/// Ownership: shares the event manager; the path's manager must outlive it.
/// Errors: none of the disk's. An exception of a subscriber ends the telling; all folders are told
/// of again after the poll interval.
/// Cost: a watch for each folder, and one for each that leads to them (the kernel's limit for a
/// user is in fs.inotify.max_user_watches); lists every folder of the path. Nothing while nothing
/// changes.
class SEARCHPATH_EXPORT DiskFeed {
 public:
  /// Watches everything when it returns. Folders that may have changed between their listing and
  /// that are the first to be told of.
  ///
  /// Errors: `std::system_error` when the system has no descriptor or no thread left.
  DiskFeed(MainSearchPathManager& manager,
           std::shared_ptr<foundation::msg_svc::eventmgr::EventMgr> events,
           DiskFeedOptions options = {});
  DiskFeed(const DiskFeed&) = delete;
  DiskFeed& operator=(const DiskFeed&) = delete;
  /// Waits for subscribers that it is calling.
  ///
  /// Precondition: not called by one of them, nor by a listener of the manager.
  ~DiskFeed();

  /// Puts everything in doubt, as when changes have gone unseen: watches anew, and tells of all
  /// folders.
  void ScanAgain();

  /// The folders that are asked since they cannot be watched, in no order.
  [[nodiscard]] std::vector<AbsoluteIRI> FindPolledFolders() const;

 private:
  class State;

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_DISK_FEED_H
