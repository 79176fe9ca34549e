#include "progress.h"

#include "output.h"

#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <stop_token>
#include <string>

namespace Corvane::PathManagement::tool {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

constexpr std::chrono::milliseconds kDelay(200);  // before progress is shown

void Show(const std::string& text) {
  const std::string line = '\r' + text + "\x1b[K";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

// Waits until `time`, or until a stop is requested. Returns whether it was requested.
bool WaitUntil(Clock::time_point time, const std::stop_token& stop) {
  std::mutex mutex;
  std::condition_variable_any stopped;
  std::unique_lock lock(mutex);
  // The predicate is never true: only the time or a request to stop ends the wait.
  stopped.wait_until(lock, stop, time, [] { return false; });
  return stop.stop_requested();
}

void ShowProgress(const std::stop_token& stop) {
  const Clock::time_point start = Clock::now();
  if (WaitUntil(start + kDelay, stop)) return;
  seconds elapsed(0);
  do {
    Show("searchpath: reading folders… " + std::to_string(elapsed.count()) + " s");
    ++elapsed;
  } while (!WaitUntil(start + elapsed, stop));
  Show("");
}

}  // namespace

Progress::Progress(bool quiet) {
  if (!quiet && isatty(STDERR_FILENO) != 0 && TerminalTakesEscapeSequences()) {
    thread = std::jthread(ShowProgress);
  }
}

}  // namespace Corvane::PathManagement::tool
