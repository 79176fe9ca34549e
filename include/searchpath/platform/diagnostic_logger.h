#ifndef SEARCHPATH_PLATFORM_DIAGNOSTIC_LOGGER_H
#define SEARCHPATH_PLATFORM_DIAGNOSTIC_LOGGER_H

#include "searchpath/export.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace foundation::log {

/// How much a diagnostic message matters.
enum class Severity : std::uint32_t { Debug = 0, Information = 1, Warning = 2, Error = 3 };

/// Takes one message of one logger; both texts are UTF-8 and live for the call only.
using DiagnosticSink =
    std::function<void(std::string_view loggerName, Severity severity, std::string_view message)>;

/// A named source of diagnostic messages, which go to one sink that all loggers of the process
/// share. Without a sink, as at first, they go nowhere.
///
/// A logger may be a static object: it shares the ownership of the place of the sink, and so finds
/// it whichever of both is made or destroyed first.
///
/// Threads: every operation, from any thread. The sink is called on the threads that write, also on
/// several at once, and may itself write or set a sink.
class SEARCHPATH_EXPORT basic_diagnostic_logger {
 public:
  /// `loggerName` is UTF-8, as "library::component".
  explicit basic_diagnostic_logger(std::string_view loggerName);
  basic_diagnostic_logger(const basic_diagnostic_logger&) = delete;
  basic_diagnostic_logger& operator=(const basic_diagnostic_logger&) = delete;
  ~basic_diagnostic_logger();

  [[nodiscard]] const std::string& GetName() const noexcept { return name; }

  /// Whether there is a sink, so that a message that costs something to word is worded for somebody.
  [[nodiscard]] bool IsHeard() const noexcept;

  /// Errors: those of the sink pass through.
  void Write(Severity severity, std::string_view message) const;

  /// From now on messages go to `sink`, to none if it is empty. A call of the sink before it that is
  /// under way is not waited for.
  static void SetSink(DiagnosticSink sink);

 private:
  class SinkPlace;

  [[nodiscard]] static const std::shared_ptr<SinkPlace>& CommonPlace();

  const std::string name;
  const std::shared_ptr<SinkPlace> place;
};

}  // namespace foundation::log

#endif  // SEARCHPATH_PLATFORM_DIAGNOSTIC_LOGGER_H
