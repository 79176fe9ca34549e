#include "searchpath/host/main_search_path_manager.h"

#include "host/common/held_hash.h"
#include "searchpath/host/path_refresh.h"
#include "searchpath/utilities/path_editing.h"
#include "searchpath/utilities/path_messages.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using ComparisonFilter = PathEntryVectorDifferentiator::ComparisonFilter;
using Packages = std::vector<KnownPackage>;

/// The path as a change has left it, and what is derived from it.
struct Version {
  std::shared_ptr<const FolderPath> path;
  std::shared_ptr<const std::vector<AbsoluteIRI>> locations;  // of the main folders
  std::shared_ptr<const Packages> knownPackages;
  std::shared_ptr<const std::vector<ComponentIdentifier>> packages;  // known ones on the path
};

std::vector<ComponentIdentifier> FindPackagesOn(const FolderEntries& folders,
                                                const Packages& known) {
  std::vector<ComponentIdentifier> packages;
  if (known.empty()) return packages;  // without resolving the folders' links for nothing
  boost::unordered_flat_set<AbsoluteIRI, HeldHash> onPath;
  for (const auto& folder : folders) onPath.insert(folder->GetCanonicalAbsoluteIRI());
  const auto isOnPath = [&](const AbsoluteIRI& folder) { return onPath.contains(folder); };
  for (const auto& [package, itsFolders] : known) {
    if (!itsFolders.empty() && std::ranges::all_of(itsFolders, isOnPath)) {
      packages.push_back(package);
    }
  }
  return packages;
}

std::shared_ptr<const Version> MakeVersion(FolderEntries folders,
                                           std::shared_ptr<const Packages> known) {
  std::vector<AbsoluteIRI> locations;
  for (const auto& folder : folders) locations.push_back(folder->GetAbsoluteIRI());
  auto packages = FindPackagesOn(folders, *known);
  return std::make_shared<const Version>(Version{
      .path = std::make_shared<const FolderPath>(std::move(folders)),
      .locations = std::make_shared<const std::vector<AbsoluteIRI>>(std::move(locations)),
      .knownPackages = std::move(known),
      .packages = std::make_shared<const std::vector<ComponentIdentifier>>(std::move(packages))});
}

using Path = std::shared_ptr<const FolderPath>;

/// The differences that a change made, computed for each filter when first asked for.
class LazyDifferences {
 public:
  LazyDifferences(const Path& pathBefore, const Path& pathAfter)
      : before(pathBefore), after(pathAfter) {}

  const PathEntryVectorDifferentiator& Get(ComparisonFilter filter) {
    auto& differences = filter == ComparisonFilter::IncludeSubfolders ? withSubfolders : topLevel;
    if (!differences) {
      PathEntryVectorDifferentiator computed;
      computed.Compare(*before->GetMainEntries(), *after->GetMainEntries(), filter);
      differences = std::move(computed);
    }
    return *differences;
  }

  const Path& before;
  const Path& after;

 private:
  std::optional<PathEntryVectorDifferentiator> topLevel;
  std::optional<PathEntryVectorDifferentiator> withSubfolders;
};

/// The subscribed listeners. Each is owned by its subscription and expires with it.
class Listeners {
 public:
  using Listener = std::function<void(LazyDifferences&)>;

  std::shared_ptr<const Listener> Add(Listener listener) {
    auto added = std::make_shared<const Listener>(std::move(listener));
    const std::lock_guard lock(mutex);
    std::erase_if(all, [](const auto& known) { return known.expired(); });
    all.push_back(added);
    return added;
  }

  /// Calls all listeners, and then raises the first exception that one of them raised.
  void Call(const Path& before, const Path& after) const {
    std::exception_ptr failure;
    LazyDifferences differences(before, after);
    for (const auto& subscribed : Copy()) {
      const auto listener = subscribed.lock();
      if (listener == nullptr) continue;
      try {
        (*listener)(differences);
      } catch (...) {
        if (failure == nullptr) failure = std::current_exception();
      }
    }
    if (failure != nullptr) std::rethrow_exception(failure);
  }

 private:
  using Subscribed = std::vector<std::weak_ptr<const Listener>>;

  /// For calling the listeners without a lock: they may subscribe others.
  [[nodiscard]] Subscribed Copy() const {
    const std::lock_guard lock(mutex);
    return all;
  }

  mutable std::mutex mutex;  // guards all
  Subscribed all;
};

}  // namespace

class MainSearchPathManager::State {
 public:
  explicit State(FolderEntries folders)
      : version(MakeVersion(std::move(folders), std::make_shared<const Packages>())) {}

  [[nodiscard]] std::shared_ptr<const Version> Current() const {
    const std::lock_guard lock(versionMutex);
    return version;
  }

  /// Replaces the current version by make(current version). Calls the listeners if the main
  /// folders, which are those of the path itself, differ from those before.
  template <class Make>
  void Change(const Make& make) {
    const ChangeUnderWay underWay(*this);
    const auto before = Current();
    const auto after = make(before);
    {
      const std::lock_guard lock(versionMutex);
      version = after;
    }
    if (before->path->GetMainFolders() == after->path->GetMainFolders()) return;
    listeners.Call(before->path, after->path);
  }

  /// Replaces only the main folders, by refresh(current version). If they do not differ, the path
  /// object stays, and with it the index that it may have built.
  template <class Refresh>
  void ChangeFolders(const Refresh& refresh) {
    Change([&](const std::shared_ptr<const Version>& current) {
      FolderEntries refreshed = refresh(*current);
      return refreshed == current->path->GetMainFolders()
                 ? current
                 : MakeVersion(std::move(refreshed), current->knownPackages);
    });
  }

  Listeners listeners;

 private:
  /// Makes changes wait for each other, and refuses a change from within another one.
  class ChangeUnderWay {
   public:
    explicit ChangeUnderWay(State& changed) : state(changed) {
      // No other thread stores this thread's id, so it does not matter what they store meanwhile.
      if (state.changer == std::this_thread::get_id()) throw RecursivePathChangeException();
      lock = std::unique_lock(state.changeMutex);
      state.changer = std::this_thread::get_id();
    }
    ChangeUnderWay(const ChangeUnderWay&) = delete;
    ChangeUnderWay& operator=(const ChangeUnderWay&) = delete;
    ~ChangeUnderWay() { state.changer = std::thread::id(); }

   private:
    State& state;
    std::unique_lock<std::mutex> lock;
  };

  mutable std::mutex versionMutex;  // guards version
  std::shared_ptr<const Version> version;
  std::mutex changeMutex;  // held throughout a change
  // The thread that makes a change; no thread has the default id.
  std::atomic<std::thread::id> changer = std::thread::id();
};

MainSearchPathManager::MainSearchPathManager(FolderEntries folders)
    : state(std::make_unique<State>(std::move(folders))) {}

MainSearchPathManager::~MainSearchPathManager() = default;

void MainSearchPathManager::SetFolderIRIs(const AbsoluteIRIRange& folders,
                                          Notification& /*notification*/) {
  const std::vector<AbsoluteIRI> locations(folders.begin(), folders.end());
  state->ChangeFolders([&](const Version& current) {
    return RearrangeFolders(current.path->GetMainFolders(), locations);
  });
}

std::shared_ptr<const std::vector<ComponentIdentifier>> MainSearchPathManager::GetPackagesOnPath()
    const {
  return state->Current()->packages;
}

std::shared_ptr<const std::vector<AbsoluteIRI>> MainSearchPathManager::GetFolderIRIs() const {
  return state->Current()->locations;
}

std::shared_ptr<const FolderPath> MainSearchPathManager::GetPath() const {
  return state->Current()->path;
}

void MainSearchPathManager::RefreshFolders(const AbsoluteIRIRange& locations) {
  const ChangedFolders changed(locations);
  state->ChangeFolders([&](const Version& current) {
    return host::RefreshFolders(current.path->GetMainFolders(), changed);
  });
}

void MainSearchPathManager::RefreshAllFolders() {
  state->ChangeFolders(
      [](const Version& current) { return host::RefreshFolders(current.path->GetMainFolders()); });
}

void MainSearchPathManager::SetKnownPackages(std::vector<KnownPackage> packages) {
  const auto known = std::make_shared<const Packages>(std::move(packages));
  state->Change([&](const std::shared_ptr<const Version>& current) {
    auto onPath = FindPackagesOn(current->path->GetMainFolders(), *known);
    Version changed = *current;
    changed.knownPackages = known;
    changed.packages = std::make_shared<const std::vector<ComponentIdentifier>>(std::move(onPath));
    return std::make_shared<const Version>(std::move(changed));
  });
}

MainSearchPathManager::Subscription MainSearchPathManager::AddListener(Listener listener,
                                                                       ComparisonFilter filter) {
  return state->listeners.Add([called = std::move(listener), filter](LazyDifferences& differences) {
    called(differences.Get(filter));
  });
}

MainSearchPathManager::Subscription MainSearchPathManager::AddListener(PathListener listener) {
  return state->listeners.Add([called = std::move(listener)](const LazyDifferences& differences) {
    called(differences.before, differences.after);
  });
}

foundation::core::except::Notification RemoveFolders(const UstringRange& folders,
                                                     const WorkingFolder& workingFolder,
                                                     IMainSearchPathManager& manager) {
  std::vector<AbsoluteIRI> locations;
  std::vector<ustring> unlocated;
  for (const ustring& folder : folders) {
    try {
      locations.push_back(workingFolder.Locate(folder));
    } catch (const current_working_folder::FailedToAbsolutizeException&) {
      unlocated.push_back(folder);
    }
  }
  Notification notification = RemoveIRIsFromZentraPath(locations, manager);
  for (ustring& folder : unlocated) {
    notification.Append({.catalogue = PathMessages::RemovalCatalogue,
                         .key = PathMessages::NotOnPath,
                         .arguments = {std::move(folder)}});
  }
  return notification;
}

}  // namespace Corvane::PathManagement::host
