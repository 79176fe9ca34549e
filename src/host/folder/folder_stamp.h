#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STAMP_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STAMP_H

#include "searchpath/host/freshness.h"

#include <sys/stat.h>

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

namespace Corvane::PathManagement::host {

/// What tells one state of a folder from a later one. No device number: it changes when the machine
/// is started anew.
struct FolderStamp {
  std::int64_t modified;  // when an item was added, removed or renamed; nanoseconds since 1970
  std::int64_t changed;   // when that, an attribute or the time itself was set
  std::uint64_t inode;

  [[nodiscard]] friend bool operator==(const FolderStamp& left,
                                       const FolderStamp& right) noexcept = default;
};

/// The stamp of a folder that is read from now on; empty when a change after it could go unseen:
/// the last one was less than two seconds ago, the grain of the coarsest file systems, or lies
/// ahead.
[[nodiscard]] std::optional<FolderStamp> StampOf(const struct stat& status, const timespec& now);

/// Whether the folder at the native path is as it was when it was stamped; `Unknown` without a
/// stamp.
///
/// Cost: one question to the disk.
[[nodiscard]] Freshness AskFreshness(const std::string& path,
                                     const std::optional<FolderStamp>& stamp);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STAMP_H
