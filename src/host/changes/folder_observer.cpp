#include "searchpath/host/folder_observer.h"

#include "host/changes/location_set.h"
#include "searchpath/platform/file_folder_changed_event.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <new>
#include <thread>
#include <utility>
#include <vector>

namespace Corvane::PathManagement::host {

namespace {

using foundation::msg_svc::eventmgr::Event;
using foundation::msg_svc::eventmgr::EventMgr;
using foundation::msg_svc::eventmgr::Subscription;
using storage::filefolderobserver::FileFolderChangedEvent;

/// The folders to refresh.
struct Batch {
  LocationSet locations;
  bool hasAllFolders = false;  // all of the path, whatever `locations` are

  [[nodiscard]] bool IsEmpty() const noexcept { return locations.empty() && !hasAllFolders; }

  void Refresh(MainSearchPathManager& manager) const {
    if (hasAllFolders) {
      manager.RefreshAllFolders();
    } else {
      manager.RefreshFolders(std::vector<AbsoluteIRI>(locations.begin(), locations.end()));
    }
  }
};

}  // namespace

class FolderObserver::State {
 public:
  explicit State(MainSearchPathManager& observed) : manager(observed) {}
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() = default;

  /// Called by publishers, who must not see a failure of the observer.
  void Gather(const Event& event) noexcept {
    const auto* const changed = dynamic_cast<const FileFolderChangedEvent*>(&event);
    if (changed == nullptr) return;
    const std::lock_guard lock(mutex);
    try {
      next.locations.insert(AbsoluteIRI(changed->GetLocation()));
    } catch (const foundation::storage::vfs::InvalidIRIException&) {
      return;  // no folder has such a location
    } catch (const std::bad_alloc&) {
      next.hasAllFolders = true;  // since this takes no memory
    }
    stateChanged.notify_all();
  }

  /// Called once; `owner` owns this object. The subscription shares the ownership during each call,
  /// so the observer may be destroyed while a publisher is still calling.
  void Start(const std::shared_ptr<State>& owner, EventMgr& events) {
    subscription = events.subscribe([gatherer = std::weak_ptr<State>(owner)](const Event& event) {
      if (const auto gathering = gatherer.lock()) gathering->Gather(event);
    });
    thread = std::thread([this] { Run(); });
  }

  void End() {
    subscription = Subscription();
    {
      const std::lock_guard lock(mutex);
      isEnding = true;
      stateChanged.notify_all();
    }
    thread.join();
  }

  void Settle() {
    std::unique_lock lock(mutex);
    stateChanged.wait(lock, [this] { return next.IsEmpty() && !isRefreshing; });
    if (failure != nullptr) std::rethrow_exception(std::exchange(failure, nullptr));
  }

 private:
  void Run() {
    std::unique_lock lock(mutex);
    for (;;) {
      stateChanged.wait(lock, [this] { return isEnding || !next.IsEmpty(); });
      if (isEnding) return;
      Batch batch = std::exchange(next, Batch());
      isRefreshing = true;
      lock.unlock();
      const std::exception_ptr raised = Refresh(batch);
      lock.lock();
      isRefreshing = false;
      if (failure == nullptr) failure = raised;
      stateChanged.notify_all();
    }
  }

  /// Returns the exception that was raised; null when there was none.
  [[nodiscard]] std::exception_ptr Refresh(Batch& batch) noexcept {
    try {
      if (!failed.IsEmpty()) failed.Refresh(manager);
      failed = Batch();
      batch.Refresh(manager);
      return nullptr;
    } catch (...) {
      // Perhaps only a listener failed, after the refresh; perhaps nothing was refreshed at all. So
      // the next batch refreshes these folders once more.
      if (failed.IsEmpty()) {
        failed = std::move(batch);
      } else {
        failed.hasAllFolders = true;  // there may be no memory to add locations
      }
      return std::current_exception();
    }
  }

  MainSearchPathManager& manager;
  Batch failed;  // the folders whose refresh failed; used by the thread alone

  std::mutex mutex;                      // guards next, isRefreshing, failure and isEnding
  std::condition_variable stateChanged;  // notified when what `mutex` guards has changed
  Batch next;                            // gathered for the next refresh
  bool isRefreshing = false;
  std::exception_ptr failure;  // the first one that `Settle` has not raised yet; null: none
  bool isEnding = false;

  Subscription subscription;
  std::thread thread;
};

FolderObserver::FolderObserver(MainSearchPathManager& manager, EventMgr& events)
    : state(std::make_shared<State>(manager)) {
  state->Start(state, events);
}

FolderObserver::~FolderObserver() { state->End(); }

void FolderObserver::Settle() { state->Settle(); }

}  // namespace Corvane::PathManagement::host
