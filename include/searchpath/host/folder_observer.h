#ifndef SEARCHPATH_HOST_FOLDER_OBSERVER_H
#define SEARCHPATH_HOST_FOLDER_OBSERVER_H

#include "searchpath/export.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/platform/event_manager.h"

#include <memory>

namespace Corvane::PathManagement::host {

/// Refreshes the folders of a manager's path when an event says that they have changed.
///
/// For each `FileFolderChangedEvent`, the manager lists the folder of the event again, and calls
/// its listeners if anything has changed. The events include those that
/// `NotifyUpstreamPathEntriesOfPossibleSpecialSubfolderChanges` publishes on the session's stream.
/// Locations that are no folder of the path are ignored. Events that come during a refresh are
/// gathered for the next one, each folder once.
///
/// Threads: all operations, from any thread. Refreshes run one after the other on a thread of the
/// observer's own, which also calls the manager's listeners. Publishing an event neither waits for
/// a refresh nor raises its failure, so listeners of the manager may publish, too.
/// Ownership: the manager must outlive the observer; the event manager need not.
class SEARCHPATH_EXPORT FolderObserver {
 public:
  /// Takes the events that are published from now on.
  FolderObserver(MainSearchPathManager& manager, foundation::msg_svc::eventmgr::EventMgr& events);
  FolderObserver(const FolderObserver&) = delete;
  FolderObserver& operator=(const FolderObserver&) = delete;
  /// Waits for the refresh under way and drops the events gathered for the next one.
  ///
  /// Precondition: not called by a listener of the manager on the observer's thread.
  ~FolderObserver();

  /// Waits until the path shows all changes published so far and the listeners have been called.
  ///
  /// Precondition: that of the destructor.
  /// Errors: the first exception that a refresh or a listener has raised since the last call. The
  /// folders of that refresh are listed once more at the next event.
  void Settle();

 private:
  class State;

  std::shared_ptr<State> state;  // shared with deliveries under way
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLDER_OBSERVER_H
