#include "searchpath/host/folder_observer.h"

#include "host/common/held_hash.h"
#include "searchpath/platform/file_folder_changed_event.h"

#include <boost/unordered/unordered_flat_set.hpp>

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

/// The folders of one refresh.
struct Named {
  boost::unordered_flat_set<AbsoluteIRI, HeldHash> locations;
  bool isEverything = false;

  [[nodiscard]] bool IsEmpty() const noexcept { return locations.empty() && !isEverything; }

  void Refresh(MainSearchPathManager& manager) const {
    if (isEverything) {
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

  /// For publishers. Never fails: they have no part in what becomes of their events here.
  void Gather(const Event& event) noexcept {
    const auto* const changed = dynamic_cast<const FileFolderChangedEvent*>(&event);
    if (changed == nullptr) return;
    const std::lock_guard lock(mutex);
    try {
      named.locations.insert(AbsoluteIRI(changed->GetLocation()));
    } catch (const foundation::storage::vfs::InvalidIRIException&) {
      return;  // no folder is called so
    } catch (const std::bad_alloc&) {
      named.isEverything = true;  // which takes no room
    }
    turn.notify_all();
  }

  /// Once, with the owner of this object: deliveries under way when the observer is destroyed find
  /// it still there.
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
      turn.notify_all();
    }
    thread.join();
  }

  void Settle() {
    std::unique_lock lock(mutex);
    turn.wait(lock, [this] { return named.IsEmpty() && !isRefreshing; });
    if (failure != nullptr) std::rethrow_exception(std::exchange(failure, nullptr));
  }

 private:
  void Run() {
    std::unique_lock lock(mutex);
    for (;;) {
      turn.wait(lock, [this] { return isEnding || !named.IsEmpty(); });
      if (isEnding) return;
      Named taken = std::exchange(named, Named());
      isRefreshing = true;
      lock.unlock();
      const std::exception_ptr raised = Refresh(taken);
      lock.lock();
      isRefreshing = false;
      if (failure == nullptr) failure = raised;
      turn.notify_all();
    }
  }

  /// Returns what was raised.
  [[nodiscard]] std::exception_ptr Refresh(Named& taken) noexcept {
    try {
      if (!doubtful.IsEmpty()) doubtful.Refresh(manager);
      doubtful = Named();
      taken.Refresh(manager);
      return nullptr;
    } catch (...) {
      // Perhaps only a listener failed, perhaps nothing has been listed.
      if (doubtful.IsEmpty()) {
        doubtful = std::move(taken);
      } else {
        doubtful.isEverything = true;  // for there may be no memory to add to it
      }
      return std::current_exception();
    }
  }

  MainSearchPathManager& manager;
  Named doubtful;  // of a refresh that failed; used by the thread alone

  std::mutex mutex;              // guards what follows
  std::condition_variable turn;  // some of it has changed
  Named named;                   // for the next refresh
  bool isRefreshing = false;
  std::exception_ptr failure;  // the first that `Settle` has not raised
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
