#ifndef SEARCHPATH_SRC_HOST_COMMON_DISK_PATIENCE_H
#define SEARCHPATH_SRC_HOST_COMMON_DISK_PATIENCE_H

#include "host/common/detached_answer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <optional>
#include <type_traits>
#include <utility>

namespace Corvane::PathManagement::host {

/// How long to wait for the answers of the disk about one folder. Once an answer comes too late,
/// the folder is given up: the disk is not asked about it again.
///
/// Threads: all operations, from any thread.
class DiskPatience {
 public:
  /// How long to wait for one answer; `nullopt`: as long as it takes.
  using Limit = std::optional<std::chrono::milliseconds>;

  /// Waits up to `longest` for each answer. Without a limit, asks on the calling thread and waits
  /// as long as it takes.
  explicit DiskPatience(Limit longest = {}) : limit(longest) {
    // A longer limit would overflow when it is added to a time.
    constexpr std::chrono::milliseconds forever = std::chrono::years(1);
    if (limit) limit = std::clamp(*limit, std::chrono::milliseconds(0), forever);
  }

  [[nodiscard]] Limit GetLimit() const noexcept { return limit; }
  [[nodiscard]] bool HasGivenUp() const noexcept { return hasGivenUp; }

  /// What ask() returns; `nullopt` when the folder has been given up, or is so by this question.
  /// Precondition: that of a `DetachedAnswer`, which calls ask() where there is a limit.
  template <class Call, class Result = std::invoke_result_t<const Call&>>
  [[nodiscard]] std::optional<Result> Ask(Call ask) {
    if (hasGivenUp) return std::nullopt;
    if (!limit) return std::optional<Result>(ask());
    return Await(DetachedAnswer<Result>(std::move(ask)));
  }

  /// As `Ask`, for a question that is under way already.
  template <class Result>
  [[nodiscard]] std::optional<Result> Await(DetachedAnswer<Result> answer) {
    auto result = hasGivenUp ? std::nullopt : answer.Take(limit);
    if (!result) hasGivenUp = true;
    return result;
  }

 private:
  Limit limit;
  std::atomic<bool> hasGivenUp = false;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_DISK_PATIENCE_H
