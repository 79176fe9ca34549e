#include "host/changes/kernel_watches.h"

#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace Corvane::PathManagement::host {

namespace {

/// Whether other machines or processes may change the folder without this kernel's knowing.
bool IsRemote(const std::string& folder) {
  struct statfs status = {};
  // When this fails, so does `inotify_add_watch`, which says why.
  if (statfs(folder.c_str(), &status) != 0) return false;
  // In this order: 9P, AFS, BeeGFS, Ceph, CIFS, Coda, FUSE, GFS2, GPFS, kAFS, Lustre, NCP, NFS,
  // OCFS2, SMB, SMB2, and the shared folders of two kinds of virtual machines.
  static constexpr std::array<std::uint32_t, 18> kTypes = {
      0x01021997, 0x5346414F, 0x19830326, 0x00C36400, 0xFF534D42, 0x73757245,
      0x65735546, 0x01161970, 0x47504653, 0x6B414653, 0x0BD00BD0, 0x0000564C,
      0x00006969, 0x7461636F, 0x0000517B, 0xFE534D42, 0x786F4256, 0xBACBACBC};
  return std::ranges::find(kTypes, static_cast<std::uint32_t>(status.f_type)) != kTypes.end();
}

}  // namespace

KernelWatches::KernelWatches(bool watchesNothing)
    : queue(watchesNothing ? -1 : inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {}

KernelWatches::Added KernelWatches::Add(const std::string& folder, std::uint32_t events) const {
  if (IsRemote(folder)) return {.watch = {}, .error = {EREMOTE, std::generic_category()}};
  const int watch =
      inotify_add_watch(queue.Get(), folder.c_str(), events | IN_ONLYDIR | IN_MASK_ADD);
  if (watch < 0) return {.watch = {}, .error = {errno, std::generic_category()}};
  return {.watch = watch, .error = {}};
}

void KernelWatches::Remove(int watch) const { inotify_rm_watch(queue.Get(), watch); }

void KernelWatches::ForEachEvent(const EventVisitor& visitor) const {
  alignas(inotify_event) std::array<char, 1U << 16U> buffer{};
  for (;;) {
    const ssize_t got = fl::filesystem::detail::WithoutInterruption(
        [&] { return read(queue.Get(), buffer.data(), buffer.size()); });
    if (got <= 0) return;
    for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
      inotify_event event = {};
      std::memcpy(&event, &buffer[at], sizeof event);
      visitor(event, event.len > 0 ? &buffer[at + sizeof event] : "");
      at += sizeof event + event.len;
    }
  }
}

}  // namespace Corvane::PathManagement::host
