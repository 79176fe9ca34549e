#ifndef SEARCHPATH_SRC_HOST_RECEIPTS_FOLDER_PATIENCE_H
#define SEARCHPATH_SRC_HOST_RECEIPTS_FOLDER_PATIENCE_H

#include "host/common/disk_patience.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>

namespace Corvane::PathManagement::host {

/// How long a receipt waits for the disk: up to a limit for each place, a folder given by its
/// number. Once an answer about a place comes too late, the disk is not asked about it again.
///
/// Threads: all operations, from any thread.
class FolderPatience {
 public:
  explicit FolderPatience(DiskPatience::Limit longest) : limit(longest) {}

  [[nodiscard]] DiskPatience::Limit GetLimit() const noexcept { return limit; }

  /// As `DiskPatience::Ask`, with one `DiskPatience` for each place.
  template <class Call, class Result = std::invoke_result_t<const Call&>>
  [[nodiscard]] std::optional<Result> Ask(std::uint32_t place, Call ask) {
    if (!limit) return std::optional<Result>(ask());
    return For(place).Ask(std::move(ask));
  }

 private:
  [[nodiscard]] DiskPatience& For(std::uint32_t place) {
    const std::lock_guard lock(mutex);
    return patience.try_emplace(place, limit).first->second;
  }

  const DiskPatience::Limit limit;
  std::mutex mutex;                                // guards `patience`, but not what it holds
  std::map<std::uint32_t, DiskPatience> patience;  // by place
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_RECEIPTS_FOLDER_PATIENCE_H
