#include "host/changes/folder_watches.h"

#include "host/folder/open_path.h"

#include <climits>

#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::uint32_t kWayEvents = IN_ONLYDIR | IN_MASK_ADD | IN_CREATE | IN_DELETE |
                                     IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
// Attributes: a folder may become readable, or cease to be.
constexpr std::uint32_t kFolderEvents = kWayEvents | IN_ATTRIB;
constexpr std::uint32_t kFileEvents = kWayEvents | IN_CLOSE_WRITE;
constexpr std::uint32_t kGoneEvents = IN_IGNORED | IN_UNMOUNT | IN_DELETE_SELF | IN_MOVE_SELF;

constexpr int kMostLinks = 40;  // as the kernel

/// Whether others may change the folder without this kernel's knowing.
bool IsRemote(const std::string& folder) {
  struct statfs status = {};
  if (statfs(folder.c_str(), &status) != 0) return false;
  // 9P, AFS, BeeGFS, Ceph, CIFS, Coda, FUSE, GFS2, GPFS, kAFS, Lustre, NCP, NFS, OCFS2, SMB, SMB2,
  // shared folders of virtual machines.
  static constexpr std::array<std::uint32_t, 18> kTypes = {
      0x01021997, 0x5346414F, 0x19830326, 0x00C36400, 0xFF534D42, 0x73757245,
      0x65735546, 0x01161970, 0x47504653, 0x6B414653, 0x0BD00BD0, 0x0000564C,
      0x00006969, 0x7461636F, 0x0000517B, 0xFE534D42, 0x786F4256, 0xBACBACBC};
  return std::find(kTypes.begin(), kTypes.end(), static_cast<std::uint32_t>(status.f_type)) !=
         kTypes.end();
}

/// Puts the names of `path` in front of `names`, whose last is the next one.
void AddNames(std::string_view path, std::vector<std::string>& names) {
  while (!path.empty()) {
    const std::size_t slash = path.rfind('/');
    const std::size_t begin = slash == path.npos ? 0 : slash + 1;
    if (begin < path.size()) names.emplace_back(path.substr(begin));
    path = path.substr(0, slash == path.npos ? 0 : slash);
  }
}

std::string Below(const std::string& folder, const std::string& name) {
  return folder == "/" ? folder + name : folder + '/' + name;
}

std::string Above(const std::string& folder) {
  return folder.substr(0, std::max<std::size_t>(folder.rfind('/'), 1));
}

}  // namespace

FolderWatches::FolderWatches(bool watchesNothing)
    : queue(watchesNothing ? -1 : inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {}

void FolderWatches::Begin() {
  oldWatches = std::exchange(watches, {});
  oldPlaces = std::exchange(places, {});
  watchesOnWay.clear();
  steps.clear();
  polled.clear();
}

FolderWatches::Standing FolderWatches::Watch(const AbsoluteIRI& location) {
  // That it is another one is told once.
  if (places.contains(location)) {
    return oldPlaces.contains(location) ? Standing::Same : Standing::New;
  }
  Way way = Follow(location);
  Place place{.real = std::move(way.real), .watch = {}};
  if (place.real) place.watch = AddWatch(*place.real, kFolderEvents);
  // Where there is no folder, watching the way is enough.
  const bool isElsewhere = place.real && !place.watch && errno != ENOENT && errno != ENOTDIR;
  if (!way.isWatched || isElsewhere) polled.push_back(location);
  if (place.watch) watches[*place.watch].locations.push_back(location);
  return Settle(location, std::move(place));
}

FolderWatches::Standing FolderWatches::WatchFile(const AbsoluteIRI& location) {
  if (places.contains(location)) return Standing::Same;
  Way way = Follow(location);
  if (const auto watch = AddWatch(way.folder, kFileEvents)) {
    watches[*watch].files[way.name].push_back(location);
  }
  if (!way.isWatched) polled.push_back(location);
  return Settle(location, {.real = std::move(way.real), .watch = {}});
}

FolderWatches::Standing FolderWatches::Settle(const AbsoluteIRI& location, Place place) {
  const auto old = oldPlaces.find(location);
  const bool isNew = old == oldPlaces.end();
  const bool isSame = !isNew && old->second == place;
  places.emplace(location, std::move(place));
  if (isNew) return Standing::New;
  return isSame ? Standing::Same : Standing::Other;
}

void FolderWatches::End() {
  for (const auto& [watch, unused] : oldWatches) {
    if (!watches.contains(watch)) inotify_rm_watch(queue.Get(), watch);
  }
  oldWatches.clear();
  oldPlaces.clear();
  steps.clear();
}

FolderWatches::Report FolderWatches::Read() {
  Report report;
  alignas(inotify_event) std::array<char, 1U << 16U> buffer{};
  for (;;) {
    const ssize_t got = read(queue.Get(), buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return report;
    for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
      inotify_event event = {};
      std::memcpy(&event, &buffer[at], sizeof event);
      Take(event, event.len > 0 ? &buffer[at + sizeof event] : "", report);
      at += sizeof event + event.len;
    }
  }
}

void FolderWatches::Take(const inotify_event& event, const char* name, Report& report) const {
  if ((event.mask & IN_Q_OVERFLOW) != 0) report.isAllInDoubt = true;
  const auto found = watches.find(event.wd);
  if (found == watches.end()) return;  // from before the last round
  const Watched& watched = found->second;
  if ((event.mask & kGoneEvents) != 0) report.isWayInDoubt = true;
  if (*name != '\0') {
    const auto file = watched.files.find(name);
    if (file != watched.files.end()) {
      report.changed.insert(report.changed.end(), file->second.begin(), file->second.end());
    }
    if ((event.mask & (IN_ATTRIB | IN_CLOSE_WRITE)) != 0) return;
    if (watched.leading.contains(name)) report.isWayInDoubt = true;
  }
  report.changed.insert(report.changed.end(), watched.locations.begin(), watched.locations.end());
}

std::optional<int> FolderWatches::AddWatch(const std::string& folder, std::uint32_t events) {
  if (IsRemote(folder)) {
    errno = EREMOTE;
    return std::nullopt;
  }
  const int watch = inotify_add_watch(queue.Get(), folder.c_str(), events);
  if (watch < 0) return std::nullopt;
  watches.try_emplace(watch);
  return watch;
}

FolderWatches::Watched* FolderWatches::WatchOnWay(const std::string& folder) {
  const auto [known, isNew] = watchesOnWay.try_emplace(folder);
  if (isNew) known->second = AddWatch(folder, kWayEvents);
  return known->second ? &watches[*known->second] : nullptr;
}

const FolderWatches::Step& FolderWatches::LookAt(const std::string& path) {
  const auto [known, isNew] = steps.try_emplace(path);
  Step& step = known->second;
  if (!isNew) return step;
  struct stat status = {};
  step.isThere = lstat(path.c_str(), &status) == 0;
  step.isHidden = !step.isThere && errno != ENOENT && errno != ENOTDIR;
  if (!step.isThere || !S_ISLNK(status.st_mode)) return step;
  std::array<char, PATH_MAX> target{};
  const ssize_t length = readlink(path.c_str(), target.data(), target.size());
  if (length > 0) step.target.emplace(target.data(), static_cast<std::size_t>(length));
  return step;
}

/// Name by name as the kernel does: each name, those in links too, can come to lead elsewhere.
FolderWatches::Way FolderWatches::Follow(const AbsoluteIRI& location) {
  Way way;
  const auto path = NativeBytes(location);
  if (!path) return way;
  std::vector<std::string> names;
  AddNames(*path, names);
  std::string folder = "/";
  for (int links = 0; !names.empty();) {
    way.name = std::move(names.back());
    names.pop_back();
    if (way.name == ".") continue;
    if (way.name == "..") {
      folder = Above(folder);
      continue;
    }
    Watched* const watched = WatchOnWay(folder);
    if (watched != nullptr) watched->leading.insert(way.name);
    const std::string next = Below(folder, way.name);
    const Step& step = LookAt(next);
    if (watched == nullptr || step.isHidden) way.isWatched = false;
    way.folder = folder;
    if (!step.isThere || (step.target && ++links > kMostLinks)) return way;
    if (!step.target) {
      folder = next;
      continue;
    }
    if (step.target->starts_with('/')) folder = "/";
    AddNames(*step.target, names);
  }
  way.real = std::move(folder);
  return way;
}

}  // namespace Corvane::PathManagement::host
