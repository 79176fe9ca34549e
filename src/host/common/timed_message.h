#ifndef SEARCHPATH_SRC_HOST_COMMON_TIMED_MESSAGE_H
#define SEARCHPATH_SRC_HOST_COMMON_TIMED_MESSAGE_H

#include "searchpath/platform/diagnostic_logger.h"

#include <chrono>
#include <string>

namespace Corvane::PathManagement::host {

/// Measures the time from its construction until `Write`, for a diagnostic message. Reads no clock
/// when nobody receives messages.
///
/// Ownership: views the logger, which must outlive it.
class TimedMessage {
 public:
  explicit TimedMessage(const foundation::log::basic_diagnostic_logger& diagnosticLogger)
      : logger(diagnosticLogger), isHeard(logger.IsHeard()) {
    if (isHeard) start = std::chrono::steady_clock::now();
  }

  /// Writes the text that getText() returns, followed by the time in microseconds. getText() is not
  /// called when nobody receives messages.
  template <class GetText>
  void Write(foundation::log::Severity severity, const GetText& getText) const {
    if (!isHeard) return;
    const auto time = std::chrono::steady_clock::now() - start;
    const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(time).count();
    logger.Write(severity, getText() + " in " + std::to_string(microseconds) + " us");
  }

 private:
  const foundation::log::basic_diagnostic_logger& logger;
  bool isHeard;
  std::chrono::steady_clock::time_point start = {};
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_COMMON_TIMED_MESSAGE_H
