#ifndef SEARCHPATH_HOST_FOLDER_OBSERVER_H
#define SEARCHPATH_HOST_FOLDER_OBSERVER_H

#include "searchpath/export.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/platform/event_manager.h"

#include <memory>

namespace Corvane::PathManagement::host {

/// Keeps a path as the events of a stream say that the disk is.
///
/// Hears each `FileFolderChangedEvent`, on the session's stream also those of
/// `NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges`, and has the manager list the named
/// folders anew, which tells its listeners what has changed. What is no folder of the path is passed
/// by. Events that come during a refresh are gathered, each folder once, and are the next refresh.
///
/// Threads: refreshes, and the manager's listeners with them, run one after the other on a thread of
/// the observer's own. A publisher only leaves the location here: it may be anyone, a listener of
/// the manager too, and neither waits nor hears of a failure. All operations, from any thread.
/// Ownership: the manager must outlive it. The event manager need not: the subscription keeps the
/// stream.
class SEARCHPATH_EXPORT FolderObserver {
 public:
  /// Hears the events that are published from now on.
  FolderObserver(MainSearchPathManager& manager, foundation::msg_svc::eventmgr::EventMgr& events);
  FolderObserver(const FolderObserver&) = delete;
  FolderObserver& operator=(const FolderObserver&) = delete;
  /// Waits for the refresh under way; what was to come after it is dropped.
  ///
  /// Precondition: not called by a listener of the manager on the observer's thread.
  ~FolderObserver();

  /// Waits until all that has been published so far is on the path and the listeners have been
  /// told.
  ///
  /// Precondition: that of the destructor.
  /// Errors: the first exception of a refresh or of a listener since the last call. The folders of
  /// such a refresh are listed again with the next event.
  void Settle();

 private:
  class State;

  std::shared_ptr<State> state;  // shared with deliveries under way
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_OBSERVER_H
