#include "host/changes/folder_poll.h"

#include "host/folder/open_path.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <ctime>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::int64_t kCoarsestTimes = 2;  // in seconds: the steps of times on some file systems

}  // namespace

FolderPoll::State FolderPoll::State::Of(const AbsoluteIRI& location) {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);  // first: a change after the look is then young, too
  const auto path = NativeBytes(location);
  const Descriptor opened = OpenPath(path.value_or(""), O_PATH);  // "" does not exist
  struct stat status = {};
  if (!opened.IsOpen() || fstat(opened.Get(), &status) != 0) {
    return {.facts = {errno, 0, 0, 0, 0, 0}, .isYoung = false};
  }
  return {.facts = {static_cast<std::int64_t>(status.st_dev),
                    static_cast<std::int64_t>(status.st_ino), status.st_mtim.tv_sec,
                    status.st_mtim.tv_nsec, status.st_ctim.tv_sec, status.st_ctim.tv_nsec},
          .isYoung = status.st_ctim.tv_sec + kCoarsestTimes >= now.tv_sec};
}

void FolderPoll::Set(const std::vector<AbsoluteIRI>& locations) {
  auto old = std::exchange(states, {});
  for (const AbsoluteIRI& location : locations) {
    const auto known = old.find(location);
    // A new location may have changed between its listing and now, so the next poll reports it.
    states.try_emplace(location,
                       known == old.end() ? State{.facts = {}, .isYoung = true} : known->second);
  }
}

std::vector<AbsoluteIRI> FolderPoll::Poll() {
  std::vector<AbsoluteIRI> changed;
  for (auto& [location, state] : states) {
    const State now = State::Of(location);
    if (now.facts != state.facts || state.isYoung) changed.push_back(location);
    state = now;
  }
  return changed;
}

}  // namespace Corvane::PathManagement::host
