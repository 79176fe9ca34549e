#ifndef SEARCHPATH_SRC_HOST_COMMON_DETACHED_ANSWER_H
#define SEARCHPATH_SRC_HOST_COMMON_DETACHED_ANSWER_H

#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace Corvane::PathManagement::host {

/// The answer to a question that a separate thread asks the disk, so that the asker need not wait
/// any longer than it wants to.
///
/// A thread that waits for a disk in the kernel cannot be stopped. So nobody joins the thread: it
/// owns the question, shares with this object only the `Place` for the answer, and uses nothing
/// else. If this object is gone when the answer comes, the thread drops the answer and ends; if the
/// disk never answers, the thread ends with the process.
///
/// Threads: not synchronised.
template <class Result>
class DetachedAnswer {
 public:
  /// Calls ask() at once: on a new thread, or on this one when the system grants no other.
  /// Precondition: `ask` owns all that it uses, and uses nothing that is destroyed when the process
  /// exits, since it may still run then.
  template <class Call>
  explicit DetachedAnswer(Call ask) {
    auto work = [shared = place, ask = std::move(ask)]() noexcept { shared->Fill(ask); };
    try {
      std::thread(work).detach();
    } catch (const std::system_error&) {
      work();
    }
  }

  /// Waits for the answer; without a `limit`, as long as it takes. `nullopt` when the answer has
  /// not come within `limit` after the construction. Throws what ask() threw.
  /// Precondition: no earlier call has returned the answer.
  [[nodiscard]] std::optional<Result> Take(std::optional<std::chrono::milliseconds> limit) {
    std::unique_lock lock(place->mutex);
    const auto isFilled = [this] { return place->result || place->failure != nullptr; };
    if (!limit) {
      place->filled.wait(lock, isFilled);
    } else if (!place->filled.wait_until(lock, start + *limit, isFilled)) {
      return std::nullopt;
    }
    if (place->failure != nullptr) std::rethrow_exception(place->failure);
    return std::exchange(place->result, std::nullopt);
  }

 private:
  /// Where the thread leaves the result of ask(), or the exception.
  struct Place {
    template <class Call>
    void Fill(const Call& ask) noexcept {
      std::optional<Result> answer;
      std::exception_ptr error;
      try {
        answer = ask();
      } catch (...) {
        error = std::current_exception();
      }
      const std::lock_guard lock(mutex);
      result = std::move(answer);
      failure = std::move(error);
      filled.notify_all();
    }

    std::mutex mutex;  // guards what follows
    std::condition_variable filled;
    std::optional<Result> result;
    std::exception_ptr failure;
  };

  std::shared_ptr<Place> place = std::make_shared<Place>();
  /// Limits count from here.
  std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_DETACHED_ANSWER_H
