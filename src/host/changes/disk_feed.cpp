#include "searchpath/host/disk_feed.h"

#include "host/changes/folder_poll.h"
#include "host/changes/folder_watches.h"
#include "host/folder/entry_state.h"
#include "searchpath/platform/file_folder_changed_event.h"
#include "searchpath/utilities/path_strings.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using Clock = std::chrono::steady_clock;
using Locations = boost::unordered_flat_set<AbsoluteIRI, HeldHash>;
using Standing = FolderWatches::Standing;
using foundation::msg_svc::eventmgr::EventMgr;
using storage::filefolderobserver::FileFolderChangedEvent;
using storage::filefolderobserver::FrozenInclusion;

/// Ends a wait of another thread.
class Bell {
 public:
  Bell() : descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!descriptor.IsOpen()) {
      throw std::system_error(errno, std::generic_category(), "cannot watch the disk");
    }
  }

  [[nodiscard]] int GetDescriptor() const noexcept { return descriptor.Get(); }

  void Ring() const noexcept {
    static_cast<void>(eventfd_write(descriptor.Get(), 1));  // fails when it rings already
  }
  void Quieten() const noexcept {
    eventfd_t count = 0;
    static_cast<void>(eventfd_read(descriptor.Get(), &count));
  }

 private:
  fl::filesystem::detail::Descriptor descriptor;
};

/// What is to be told next.
struct Burst {
  Locations changed;
  bool isWayInDoubt = false;  // locations may stand elsewhere
  bool isAllInDoubt = false;
  std::optional<Clock::time_point> first;  // empty: there is nothing
  Clock::time_point last;

  void Extend() {
    last = Clock::now();
    if (!first) first = last;
  }
};

/// What other threads want of the one that watches.
struct Calls {
  Bell bell;
  std::atomic<bool> isPathNew = false;
  std::atomic<bool> isAllInDoubt = false;
  std::atomic<bool> isEnding = false;

  void Call(std::atomic<bool>& wanted) const noexcept {
    wanted = true;
    bell.Ring();
  }
};

/// All folders of the path; empty when there are some that have not been listed.
std::optional<std::vector<AbsoluteIRI>> LocationsOf(const FolderPath& path) {
  std::vector<AbsoluteIRI> locations;
  std::vector<const FolderEntry*> pending;
  for (const auto& folder : path.GetMainFolders()) {
    pending.push_back(folder.get());
    while (!pending.empty()) {
      const FolderEntry& entry = *pending.back();
      pending.pop_back();
      if (!StateOf(entry).IsListed()) return std::nullopt;
      locations.push_back(entry.GetAbsoluteIRI());
      for (const auto& below : entry.GetSpecialFolders()) pending.push_back(below.get());
    }
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
        subscription(watched.AddListener(
            [called = calls](const auto& /*change*/) { called->Call(called->isPathNew); })) {
    Renew(Round::First);
    thread = std::thread([this] { Run(); });
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    calls->Call(calls->isEnding);
    thread.join();
  }

  void ScanAgain() { calls->Call(calls->isAllInDoubt); }

  [[nodiscard]] std::vector<AbsoluteIRI> FindPolledFolders() const {
    const std::lock_guard lock(polledMutex);
    return polled;
  }

 private:
  void Run() {
    while (!calls->isEnding) {
      Wait();
      try {
        Gather();
        if (burst.first && Clock::now() >= DueTime()) Tell();
      } catch (...) {
        // Without memory, or by a subscriber: what is still to be told is unknown now.
        burst = Burst();
        burst.isAllInDoubt = true;
        burst.first = burst.last = Clock::now() + options.pollInterval;
      }
    }
  }

  void Wait() const {
    std::array<pollfd, 2> sources = {
        {{.fd = calls->bell.GetDescriptor(), .events = POLLIN, .revents = 0},
         {.fd = watches.GetDescriptor(), .events = POLLIN, .revents = 0}}};
    int most = -1;  // for ever
    if (const auto next = NextTime()) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now());
      most = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
    }
    static_cast<void>(poll(sources.data(), sources.size(), most));
    calls->bell.Quieten();
  }

  /// When there is something to do though nothing happens.
  [[nodiscard]] std::optional<Clock::time_point> NextTime() const {
    std::optional<Clock::time_point> next;
    if (burst.first) next = DueTime();
    if (!folderPoll.IsEmpty() && (!next || pollTime < *next)) next = pollTime;
    return next;
  }

  [[nodiscard]] Clock::time_point DueTime() const {
    return std::min(burst.last + options.quietTime, *burst.first + options.longestDelay);
  }

  void Gather() {
    const auto report = watches.Read();
    burst.changed.insert(report.changed.begin(), report.changed.end());
    burst.isWayInDoubt |= report.isWayInDoubt;
    const bool isAllInDoubt = calls->isAllInDoubt.exchange(false) || report.isAllInDoubt;
    burst.isAllInDoubt |= isAllInDoubt;
    if (isAllInDoubt || report.isWayInDoubt || !report.changed.empty()) burst.Extend();
    Poll();
    if (calls->isPathNew.exchange(false) && LocationsOf(*manager.GetPath()) != watchedFolders) {
      Renew(Round::Later);
    }
  }

  void Poll() {
    if (folderPoll.IsEmpty() || Clock::now() < pollTime) return;
    const auto changed = folderPoll.Ask();
    pollTime = Clock::now() + options.pollInterval;
    if (changed.empty()) return;
    burst.changed.insert(changed.begin(), changed.end());
    burst.isWayInDoubt = true;
    burst.Extend();
  }

  enum class Round : std::uint8_t { First, Later };

  /// Watches what is on the path now, each folder before it is listed. In the first round a folder
  /// that had been listed before is reported unless its times say that it has not changed since.
  /// Later on every folder that was not watched is reported: whoever put it on the path may have
  /// looked into it before, as a program does that puts all folders of a tree there, and looks again
  /// when it is reported.
  void Renew(Round round) {
    const auto path = manager.GetPath();
    Locations doubtful;
    watches.Begin();
    const auto& mainFolders = path->GetMainFolders();
    std::vector<std::shared_ptr<const FolderEntry>> pending(mainFolders.rbegin(),
                                                            mainFolders.rend());
    while (!pending.empty()) {
      const auto folder = std::move(pending.back());
      pending.pop_back();
      const AbsoluteIRI location = folder->GetAbsoluteIRI();
      const bool wasUntouched = StateOf(*folder).IsUntouched();
      const Standing standing = watches.Watch(location);
      const bool isAsListed = wasUntouched || folder->GetFreshness() == Freshness::Fresh;
      const bool isInDoubt = standing == Standing::New && (round == Round::Later || !isAsListed);
      if (isInDoubt || standing == Standing::Other) doubtful.insert(location);
      for (const auto& below : folder->GetSpecialFolders()) pending.push_back(below);
    }
    for (const AbsoluteIRI& file : options.files) {
      if (watches.WatchFile(file) == Standing::Other) doubtful.insert(file);
    }
    watches.End();
    SetPolled(watches.GetPolled());
    watchedFolders = LocationsOf(*path);
    burst.changed.insert(doubtful.begin(), doubtful.end());
    if (!doubtful.empty()) burst.Extend();
  }

  void SetPolled(const std::vector<AbsoluteIRI>& locations) {
    folderPoll.Set(locations);
    const std::lock_guard lock(polledMutex);
    polled = locations;
  }

  void Tell() {
    if (burst.isWayInDoubt || burst.isAllInDoubt) Renew(Round::Later);
    const Burst told = std::exchange(burst, Burst());
    Locations named;
    for (const AbsoluteIRI& location : told.changed) Name(location, named);
    if (told.isAllInDoubt && watchedFolders) {
      named.insert(watchedFolders->begin(), watchedFolders->end());
      named.insert(options.files.begin(), options.files.end());
    }
    for (const AbsoluteIRI& location : named) {
      events->publish(std::make_unique<FileFolderChangedEvent>(location.toString(),
                                                               FrozenInclusion::LocationItself));
    }
  }

  /// With the special folders above it and the folder that these belong to, which every subscriber
  /// may rely on.
  static void Name(AbsoluteIRI location, Locations& named) {
    while (named.insert(location).second && location.hasParent() &&
           GetPathEntryTypeFromBaseName(location.getName()) != PathEntryType::Ordinary) {
      location = location.getParent();
    }
  }

  MainSearchPathManager& manager;
  std::shared_ptr<EventMgr> events;
  DiskFeedOptions options;
  std::shared_ptr<Calls> calls = std::make_shared<Calls>();  // shared with the listener

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
