#ifndef SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STAMP_H
#define SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STAMP_H

#include "searchpath/host/freshness.h"

#include <sys/stat.h>

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

namespace Corvane::PathManagement::host {

/// Differs between a folder and a later state of it, and between a folder and another one in its
/// place. Holds no device number: that may change when the machine is started anew.
struct FolderStamp {
  std::int64_t modified;  // when a name was last added, removed or changed; nanoseconds since 1970
  std::int64_t changed;   // likewise, when any attribute was last set, `modified` included
  std::uint64_t inode;

  [[nodiscard]] friend bool operator==(const FolderStamp& left,
                                       const FolderStamp& right) noexcept = default;
};

/// What was found where a folder should be.
struct FolderSight {
  int error = 0;           // an errno: why there is no folder; 0 when there is one
  FolderStamp stamp = {};  // of the folder, if there is one

  [[nodiscard]] friend bool operator==(const FolderSight& left,
                                       const FolderSight& right) noexcept = default;
};

/// Looks at the folder at the native `path`. Times that do not fit into a stamp become the latest
/// that do.
///
/// Cost: one question to the disk.
[[nodiscard]] FolderSight LookAtFolder(const std::string& path);

/// The same for `name` in the open folder with the descriptor `folder`, for which O_PATH is enough.
/// The disk is not asked about the folders above.
[[nodiscard]] FolderSight LookAtFolder(int folder, const char* name);

/// The stamp of a folder with `status` that will be read after the time `now`. `nullopt` when the
/// names in the folder were changed less than two seconds before `now`, or in the future: the times
/// of some file systems are so coarse that a later change could leave the same stamp. Also
/// `nullopt` when a time does not fit into a stamp.
[[nodiscard]] std::optional<FolderStamp> StampOf(const struct stat& status, const timespec& now);

/// Whether the folder at the native `path` still has `stamp`. `Unknown` when `stamp` is `nullopt`.
/// `Gone` also when the folder may not be listed.
///
/// Cost: one question to the disk.
[[nodiscard]] Freshness AskFreshness(const std::string& path,
                                     const std::optional<FolderStamp>& stamp);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_FOLDER_FOLDER_STAMP_H
