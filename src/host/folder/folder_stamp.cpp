#include "host/folder/folder_stamp.h"

#include "host/folder/open_path.h"

#include <climits>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <limits>

namespace Corvane::PathManagement::host {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;      // in nanoseconds
constexpr std::int64_t kGrain = 2 * kSecond;         // the coarsest step of file times there is
constexpr std::int64_t kLastSecond = 9'000'000'000;  // up to here, nanoseconds fit into 64 bits

/// Whether `Nanoseconds` of this time fits into 64 bits.
bool HasNanoseconds(const timespec& time) {
  return time.tv_sec > -kLastSecond && time.tv_sec < kLastSecond;
}

std::int64_t Nanoseconds(const timespec& time) { return time.tv_sec * kSecond + time.tv_nsec; }

/// For a time that does not fit, even for one that is too early, the latest that does.
std::int64_t NanosecondsAtMost(const timespec& time) {
  return HasNanoseconds(time) ? Nanoseconds(time) : std::numeric_limits<std::int64_t>::max();
}

/// Fills `status` with what the disk says about `path`; returns the errno, 0 for success.
int AskStatus(const std::string& path, struct stat& status) {
  // A longer path has to be opened piece by piece, which takes more calls.
  if (path.size() < PATH_MAX) return stat(path.c_str(), &status) == 0 ? 0 : errno;
  const OpenedPath folder = OpenFolder(path);
  if (!folder.IsOpen()) return folder.GetError().value();
  return fstat(folder.Get(), &status) == 0 ? 0 : errno;
}

/// The status of the folder at `path`; `nullopt` when there is none, or none that can be reached.
std::optional<struct stat> StatusOf(const std::string& path) {
  struct stat status = {};
  if (AskStatus(path, status) != 0 || !S_ISDIR(status.st_mode)) return std::nullopt;
  return status;
}

/// Whether this process may list the folder. Most folders may be read by everybody, which needs no
/// further question to the disk.
bool IsReadable(const std::string& path, const struct stat& status) {
  constexpr mode_t forEverybody = S_IRUSR | S_IRGRP | S_IROTH;
  if ((status.st_mode & forEverybody) == forEverybody) return true;
  return OpenFolder(path).IsOpen();
}

FolderSight SightOf(int error, const struct stat& status) {
  if (error != 0) return {.error = error};
  if (!S_ISDIR(status.st_mode)) return {.error = ENOTDIR};
  return {.stamp = {.modified = NanosecondsAtMost(status.st_mtim),
                    .changed = NanosecondsAtMost(status.st_ctim),
                    .inode = status.st_ino}};
}

}  // namespace

FolderSight LookAtFolder(const std::string& path) {
  struct stat status = {};
  const int error = AskStatus(path, status);
  return SightOf(error, status);
}

FolderSight LookAtFolder(int folder, const char* name) {
  struct stat status = {};
  const int error = fstatat(folder, name, &status, 0) == 0 ? 0 : errno;
  return SightOf(error, status);
}

std::optional<FolderStamp> StampOf(const struct stat& status, const timespec& now) {
  if (!HasNanoseconds(status.st_mtim) || !HasNanoseconds(status.st_ctim)) return std::nullopt;
  // `changed` need not be compared: a later change of the names sets `modified`, too.
  if (Nanoseconds(status.st_mtim) > Nanoseconds(now) - kGrain) return std::nullopt;
  return FolderStamp{.modified = Nanoseconds(status.st_mtim),
                     .changed = Nanoseconds(status.st_ctim),
                     .inode = status.st_ino};
}

Freshness AskFreshness(const std::string& path, const std::optional<FolderStamp>& stamp) {
  const auto status = StatusOf(path);
  if (!status || !IsReadable(path, *status)) return Freshness::Gone;
  if (!stamp) return Freshness::Unknown;
  if (!HasNanoseconds(status->st_mtim) || !HasNanoseconds(status->st_ctim)) return Freshness::Stale;
  // The inode tells a folder from another one in its place whose times happen to be the same.
  const FolderStamp now{.modified = Nanoseconds(status->st_mtim),
                        .changed = Nanoseconds(status->st_ctim),
                        .inode = status->st_ino};
  return *stamp == now ? Freshness::Fresh : Freshness::Stale;
}

}  // namespace Corvane::PathManagement::host
