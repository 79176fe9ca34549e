#include "support/slow_disk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace Corvane::PathManagement::test {

SlowDisk& SlowDisk::Get() {
  static auto* const disk = new SlowDisk;  // for threads that are left when the program exits
  return *disk;
}

SlowDisk::SlowDisk() {
  const char* const typed = std::getenv("SLOW_DISK");
  const char* const part = typed == nullptr ? nullptr : std::strchr(typed, ':');
  if (part != nullptr) Delay(part + 1, std::chrono::milliseconds(std::atoi(typed)));
}

void SlowDisk::Delay(const std::string& part, std::chrono::milliseconds time) {
  const std::lock_guard lock(mutex);
  delayed = part;
  delay = time;
}

void SlowDisk::Silence(const std::string& part) {
  const std::lock_guard lock(mutex);
  silent = part;
  heard.notify_all();
}

void SlowDisk::Wait(const char* path, bool opens) {
  std::unique_lock lock(mutex);
  const auto holds = [path](const std::string& part) {
    return !part.empty() && std::strstr(path, part.c_str()) != nullptr;
  };
  if (opens) threads.insert(static_cast<pid_t>(syscall(SYS_gettid)));
  heard.wait(lock, [&] { return !holds(silent); });
  const auto time = holds(delayed) ? delay : std::chrono::milliseconds(0);
  lock.unlock();
  if (time.count() > 0) std::this_thread::sleep_for(time);
}

namespace {

int Open(int folder, const char* path, int flags, mode_t mode) {
  if ((flags & O_DIRECTORY) != 0) SlowDisk::Get().Wait(path, true);
  return static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
}

int Status(int folder, const char* path, struct stat* status, int flags) {
  SlowDisk::Get().Wait(path, false);
  return static_cast<int>(syscall(SYS_newfstatat, folder, path, status, flags));
}

}  // namespace

// They take the place of those of the C library.
#pragma GCC visibility push(default)
extern "C" {

int openat(int folder, const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const auto mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : mode_t{};
  va_end(more);
  return Open(folder, path, flags, mode);
}

int __openat_2(int folder, const char* path, int flags) { return Open(folder, path, flags, 0); }

int stat(const char* path, struct stat* status) noexcept {
  return Status(AT_FDCWD, path, status, 0);
}

int lstat(const char* path, struct stat* status) noexcept {
  return Status(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}

int fstatat(int folder, const char* path, struct stat* status, int flags) noexcept {
  return Status(folder, path, status, flags);
}

}  // extern "C"
#pragma GCC visibility pop

}  // namespace Corvane::PathManagement::test
