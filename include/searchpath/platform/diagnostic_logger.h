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
enum class Severity : std::uint32_t {
  Debug = 0,        ///< steps of the library, for who works on it
  Information = 1,  ///< what is done and how long it takes
  Warning = 2,      ///< answers are right, but something is not as it should be
  Error = 3,        ///< something could not be done
};

/// Takes one message of one logger; both texts are UTF-8 and live for the call only.
using DiagnosticSink =
    std::function<void(std::string_view loggerName, Severity severity, std::string_view message)>;

/// A named source of diagnostic messages, which go to one sink that all loggers of the process
/// share. Without a sink, as at first, they go nowhere.
///
/// A logger may be a static object, whatever the order in which statics are made and destroyed.
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

  /// As it was given.
  [[nodiscard]] const std::string& GetName() const noexcept { return name; }

  /// Whether there is a sink. Ask before composing a message that takes time to compose.
  [[nodiscard]] bool IsHeard() const noexcept;

  /// Errors: those of the sink pass through.
  void Write(Severity severity, std::string_view message) const;

  /// Sends messages to `sink` from now on, nowhere if it is empty. Does not wait for calls of the
  /// old sink that are under way.
  static void SetSink(DiagnosticSink sink);

 private:
  class SharedSink;

  [[nodiscard]] static const std::shared_ptr<SharedSink>& CommonSink();

  const std::string name;
  const std::shared_ptr<SharedSink> sharedSink;  // kept until the last logger is destroyed
};

}  // namespace foundation::log

#endif  // SEARCHPATH_PLATFORM_DIAGNOSTIC_LOGGER_H
