#include "host/changes/folder_watches.h"

#include "host/folder/open_path.h"
#include "platform/link_walk.h"

#include <climits>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using foundation::storage::vfs::detail::LinkWalk;

constexpr std::uint32_t kRouteEvents =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
// Attributes are watched since a folder or a file may become readable, or cease to be.
constexpr std::uint32_t kFolderEvents = kRouteEvents | IN_ATTRIB;
constexpr std::uint32_t kFileEvents = kFolderEvents | IN_CLOSE_WRITE;
// The watched folder itself is gone from where it was.
constexpr std::uint32_t kGoneEvents = IN_IGNORED | IN_UNMOUNT | IN_DELETE_SELF | IN_MOVE_SELF;

bool IsAbsence(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
}

}  // namespace

void FolderWatches::Begin() {
  oldWatches = std::exchange(watches, {});
  oldDestinations = std::exchange(destinations, {});
  watchesOnRoutes.clear();
  seen.clear();
  polled.clear();
}

FolderWatches::Comparison FolderWatches::Watch(const AbsoluteIRI& location) {
  // A location that is repeated in a round has been compared already.
  if (destinations.contains(location)) {
    return oldDestinations.contains(location) ? Comparison::Same : Comparison::New;
  }
  Route route = Follow(location);
  KernelWatches::Added added;
  if (route.destination) added = Add(*route.destination, kFolderEvents);
  // Where there is no folder, watching the route is enough: nothing has to be polled.
  if (!route.isWatched || (added.error && !IsAbsence(added.error))) polled.push_back(location);
  if (added.watch) watches[*added.watch].locations.push_back(location);
  return Record(location, {.path = std::move(route.destination), .watch = added.watch});
}

FolderWatches::Comparison FolderWatches::WatchFile(const AbsoluteIRI& location) {
  if (destinations.contains(location)) return Comparison::Same;
  Route route = Follow(location);
  // If this fails, so has the watch of that folder as a part of the route.
  if (const auto watch = Add(route.folder, kFileEvents).watch) {
    watches[*watch].files[route.name].push_back(location);
  }
  if (!route.isWatched) polled.push_back(location);
  return Record(location, {.path = std::move(route.destination), .watch = {}});
}

FolderWatches::Comparison FolderWatches::Record(const AbsoluteIRI& location,
                                                Destination destination) {
  const Destination& now = destinations.emplace(location, std::move(destination)).first->second;
  const auto old = oldDestinations.find(location);
  if (old == oldDestinations.end()) return Comparison::New;
  return old->second == now ? Comparison::Same : Comparison::Other;
}

void FolderWatches::End() {
  for (const auto& [watch, unused] : oldWatches) {
    if (!watches.contains(watch)) kernel.Remove(watch);
  }
  oldWatches.clear();
  oldDestinations.clear();
  seen.clear();
}

FolderWatches::Report FolderWatches::Read() {
  Report report;
  kernel.ForEachEvent([&](const auto& event, const char* name) { AddTo(report, event, name); });
  return report;
}

void FolderWatches::AddTo(Report& report, const inotify_event& event, const char* name) const {
  if ((event.mask & IN_Q_OVERFLOW) != 0) report.isIncomplete = true;
  const auto found = watches.find(event.wd);
  if (found == watches.end()) return;  // from a watch that the last round ended
  const Watched& watched = found->second;
  if ((event.mask & kGoneEvents) != 0) report.mayLeadElsewhere = true;
  if (*name != '\0') {  // not the watched folder itself, but something in it
    if ((event.mask & IN_ATTRIB) != 0) {
      report.hasNewPermissions = true;
      return;
    }
    const auto file = watched.files.find(name);
    if (file != watched.files.end()) {
      report.changed.insert(report.changed.end(), file->second.begin(), file->second.end());
    }
    // A file that was written does not change the folder that holds it.
    if ((event.mask & IN_CLOSE_WRITE) != 0) return;
    if (watched.leading.contains(name)) report.mayLeadElsewhere = true;
  }
  report.changed.insert(report.changed.end(), watched.locations.begin(), watched.locations.end());
}

KernelWatches::Added FolderWatches::Add(const std::string& folder, std::uint32_t events) {
  auto added = kernel.Add(folder, events);
  if (added.watch) watches.try_emplace(*added.watch);
  return added;
}

FolderWatches::Watched* FolderWatches::WatchOnRoute(const std::string& folder) {
  const auto [known, isNew] = watchesOnRoutes.try_emplace(folder);
  if (isNew) known->second = Add(folder, kRouteEvents).watch;
  return known->second ? &watches[*known->second] : nullptr;
}

const FolderWatches::Seen& FolderWatches::LookAt(const std::string& path) {
  const auto [known, isNew] = seen.try_emplace(path);
  Seen& found = known->second;
  if (!isNew) return found;
  struct stat status = {};
  found.exists = lstat(path.c_str(), &status) == 0;
  found.isUnknown = !found.exists && errno != ENOENT && errno != ENOTDIR;
  if (!found.exists || !S_ISLNK(status.st_mode)) return found;
  std::array<char, PATH_MAX> target{};
  const ssize_t length = readlink(path.c_str(), target.data(), target.size());
  if (length > 0) found.linkTarget.emplace(target.data(), static_cast<std::size_t>(length));
  return found;
}

/// Watches each folder on the route, those that links lead through as well: any name on the route
/// may come to lead elsewhere.
FolderWatches::Route FolderWatches::Follow(const AbsoluteIRI& location) {
  Route route;
  const auto path = NativeBytes(location);
  if (!path) return route;
  LinkWalk walk(*path);
  while (walk.Next()) {
    route.folder = walk.GetFolder().empty() ? "/" : walk.GetFolder();
    route.name = walk.GetName();
    Watched* const watched = WatchOnRoute(route.folder);
    if (watched != nullptr) watched->leading.insert(route.name);
    const Seen& here = LookAt(walk.GetPath());
    if (watched == nullptr || here.isUnknown) route.isWatched = false;
    // Nothing is there, or the links go in circles.
    if (!here.exists || (here.linkTarget && !walk.Follow(*here.linkTarget))) return route;
  }
  route.destination = walk.GetPath().empty() ? "/" : walk.GetPath();
  return route;
}

}  // namespace Corvane::PathManagement::host
