#include "searchpath/host/disk_feed.h"

#include "host/changes/folder_poll.h"
#include "host/changes/folder_watches.h"
#include "host/changes/location_set.h"
#include "host/folder/entry_state.h"
#include "host/folder/folder_walk.h"
#include "searchpath/host/wake_up.h"
#include "searchpath/platform/file_folder_changed_event.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Clock = std::chrono::steady_clock;
using Comparison = FolderWatches::Comparison;
using foundation::msg_svc::eventmgr::EventMgr;
using storage::filefolderobserver::FileFolderChangedEvent;
using storage::filefolderobserver::FrozenInclusion;

/// Changes that have not been published yet.
struct Burst {
  LocationSet changed;
  bool mayLeadElsewhere = false;           // locations may lead to other folders: watch anew first
  bool isIncomplete = false;               // changes were missed: anything may have changed
  std::optional<Clock::time_point> first;  // when the first change was seen; empty: none was
  Clock::time_point last;                  // when the last change was seen

  /// A change was seen now.
  void Extend() {
    last = Clock::now();
    if (!first) first = last;
  }
};

/// What other threads ask the watching thread to do.
struct Requests {
  WakeUp wakeUp;
  std::atomic<bool> checkPath = false;  // the path has changed: watch its folders if they differ
  std::atomic<bool> scanAgain = false;  // report all folders as changed
  std::atomic<bool> end = false;

  void Make(std::atomic<bool>& request) const noexcept {
    request = true;
    wakeUp.Set();
  }
};

/// The locations of all folders of the path, special ones too; no value when some have not been
/// listed, so that the folders below them are unknown.
std::optional<std::vector<AbsoluteIRI>> LocationsOf(const FolderPath& path) {
  std::vector<AbsoluteIRI> locations;
  for (const auto& mainFolder : path.GetMainFolders()) {
    const bool isIncomplete =
        WalkFolders(mainFolder, [&](const auto& folder, std::size_t /*depth*/) {
          if (!StateOf(*folder).IsListed()) return true;
          locations.push_back(folder->GetAbsoluteIRI());
          return false;
        });
    if (isIncomplete) return std::nullopt;
  }
  return locations;
}

}  // namespace

class DiskFeed::State {
 public:
  State(MainSearchPathManager& watched, std::shared_ptr<EventMgr> eventManager,
        DiskFeedOptions givenOptions)
      : manager(watched),
        events(std::move(eventManager)),
        options(std::move(givenOptions)),
        watches(options.onlyPolls),
        subscription(
            watched.AddListener([shared = requests](const auto& /*before*/, const auto& /*after*/) {
              shared->Make(shared->checkPath);
            })) {
    WatchPath(Round::First);
    thread = std::thread([this] { Run(); });
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    requests->Make(requests->end);
    thread.join();
  }

  void ScanAgain() { requests->Make(requests->scanAgain); }

  [[nodiscard]] std::vector<AbsoluteIRI> FindPolledFolders() const {
    const std::lock_guard lock(polledMutex);
    return polled;
  }

 private:
  enum class Round : std::uint8_t { First, Later };

  void Run() {
    while (!requests->end) {
      Wait();
      try {
        Gather();
        if (burst.first && Clock::now() >= DueTime()) Publish();
      } catch (...) {
        // There was no memory, or a subscriber failed: some changes may be lost, so all folders are
        // published after the poll interval.
        burst = Burst();
        burst.isIncomplete = true;
        burst.first = burst.last = Clock::now() + options.pollInterval;
      }
    }
  }

  void Wait() const {
    std::array<pollfd, 2> sources = {
        {{.fd = requests->wakeUp.GetDescriptor(), .events = POLLIN, .revents = 0},
         {.fd = watches.GetDescriptor(), .events = POLLIN, .revents = 0}}};
    int timeout = -1;  // in milliseconds; negative: wait until something comes
    if (const auto next = NextTime()) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now());
      // Up to a minute, which an int can hold; after it, the thread comes back here.
      timeout = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
    }
    // Whatever ended the wait, `Gather` looks at all sources.
    static_cast<void>(poll(sources.data(), sources.size(), timeout));
    requests->wakeUp.Clear();
  }

  /// When to publish or poll next, if nothing wakes the thread before; empty: never.
  [[nodiscard]] std::optional<Clock::time_point> NextTime() const {
    std::optional<Clock::time_point> next;
    if (burst.first) next = DueTime();
    if (!folderPoll.IsEmpty() && (!next || pollTime < *next)) next = pollTime;
    return next;
  }

  /// When to publish the burst. Precondition: it has changes.
  [[nodiscard]] Clock::time_point DueTime() const {
    return std::min(burst.last + options.quietTime, *burst.first + options.longestDelay);
  }

  void Gather() {
    const auto report = watches.Read();
    const bool isIncomplete = requests->scanAgain.exchange(false) || report.isIncomplete;
    AddToBurst(report.changed, report.mayLeadElsewhere, isIncomplete);
    Poll();
    if (requests->checkPath.exchange(false) && LocationsOf(*manager.GetPath()) != watchedFolders) {
      WatchPath(Round::Later);
    }
  }

  template <class Range>
  void AddToBurst(const Range& changed, bool mayLeadElsewhere, bool isIncomplete) {
    burst.changed.insert(changed.begin(), changed.end());
    burst.mayLeadElsewhere |= mayLeadElsewhere;
    burst.isIncomplete |= isIncomplete;
    if (!changed.empty() || mayLeadElsewhere || isIncomplete) burst.Extend();
  }

  void Poll() {
    if (folderPoll.IsEmpty() || Clock::now() < pollTime) return;
    const auto changed = folderPoll.Poll();
    pollTime = Clock::now() + options.pollInterval;
    AddToBurst(changed, /*mayLeadElsewhere=*/!changed.empty(), /*isIncomplete=*/false);
  }

  /// Watches what is on the path now, each folder before it is listed, and adds what is in doubt to
  /// the burst. In the first round, a folder is in doubt when it has answered questions already,
  /// unless it was listed and its times say that it has not changed since. In later rounds, it is
  /// when its location leads to another folder than before, and when it is watched for the first
  /// time: a program that keeps all folders of a tree on the path may have looked into the folder
  /// before it was watched, and now looks again. A file is in doubt when its location leads to
  /// another path than before.
  void WatchPath(Round round) {
    const auto path = manager.GetPath();
    LocationSet doubtful;
    watches.Begin();
    for (const auto& mainFolder : path->GetMainFolders()) {
      WalkFolders(mainFolder, [&](const auto& folder, std::size_t /*depth*/) {
        if (Watch(*folder, round)) doubtful.insert(folder->GetAbsoluteIRI());
        return false;
      });
    }
    for (const AbsoluteIRI& file : options.files) {
      if (watches.WatchFile(file) == Comparison::Other) doubtful.insert(file);
    }
    watches.End();
    SetPolled(watches.GetPolled());
    watchedFolders = LocationsOf(*path);
    AddToBurst(doubtful, /*mayLeadElsewhere=*/false, /*isIncomplete=*/false);
  }

  /// Returns whether `folder` is in doubt: see `WatchPath`.
  [[nodiscard]] bool Watch(const FolderEntry& folder, Round round) {
    const Comparison comparison = watches.Watch(folder.GetAbsoluteIRI());
    if (comparison != Comparison::New || round == Round::Later) {
      return comparison != Comparison::Same;
    }
    // Asked only now: a folder that is untouched while it is watched is listed after any change.
    return !StateOf(folder).IsUntouched() && folder.GetFreshness() != Freshness::Fresh;
  }

  void SetPolled(const std::vector<AbsoluteIRI>& locations) {
    folderPoll.Set(locations);
    const std::lock_guard lock(polledMutex);
    polled = locations;
  }

  void Publish() {
    if (burst.mayLeadElsewhere || burst.isIncomplete) WatchPath(Round::Later);
    const Burst published = std::exchange(burst, Burst());
    LocationSet changed;
    for (const AbsoluteIRI& location : published.changed) {
      const auto& files = options.files;
      if (std::find(files.begin(), files.end(), location) == files.end()) {
        AddChangedFolder(changed, location);
      } else {
        changed.insert(location);  // though its name may look like that of a special folder
      }
    }
    if (published.isIncomplete && watchedFolders) {
      changed.insert(watchedFolders->begin(), watchedFolders->end());
      changed.insert(options.files.begin(), options.files.end());
    }
    for (const AbsoluteIRI& location : changed) {
      events->publish(std::make_unique<FileFolderChangedEvent>(location.toString(),
                                                               FrozenInclusion::LocationItself));
    }
  }

  MainSearchPathManager& manager;
  std::shared_ptr<EventMgr> events;
  DiskFeedOptions options;
  std::shared_ptr<Requests> requests = std::make_shared<Requests>();  // shared with the listener

  // Used by the thread alone, once it runs.
  FolderWatches watches;
  FolderPoll folderPoll;
  Clock::time_point pollTime = Clock::now() + options.pollInterval;
  std::optional<std::vector<AbsoluteIRI>> watchedFolders;  // empty: unknown
  Burst burst;

  mutable std::mutex polledMutex;  // guards polled
  std::vector<AbsoluteIRI> polled;

  MainSearchPathManager::Subscription subscription;
  std::thread thread;
};

DiskFeed::DiskFeed(MainSearchPathManager& manager, std::shared_ptr<EventMgr> events,
                   DiskFeedOptions options)
    : state(std::make_unique<State>(manager, std::move(events), std::move(options))) {}

DiskFeed::~DiskFeed() = default;

void DiskFeed::ScanAgain() { state->ScanAgain(); }

std::vector<AbsoluteIRI> DiskFeed::FindPolledFolders() const { return state->FindPolledFolders(); }

}  // namespace Corvane::PathManagement::host
