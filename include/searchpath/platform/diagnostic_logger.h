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
  Debug = 0,        ///< steps of the library, for its developers
  Information = 1,  ///< what is done, and how long it takes
  Warning = 2,      ///< answers are right, but something is not as it should be
  Error = 3,        ///< something could not be done
};

/// Called with each message. Both texts are UTF-8 and live for the call only.
using DiagnosticSink =
    std::function<void(std::string_view loggerName, Severity severity, std::string_view message)>;

/// A named source of diagnostic messages. All loggers of the process send their messages to one
/// shared sink. At first there is no sink, and messages are dropped.
///
/// A logger may be a static object: it does not matter in which order statics are made and
/// destroyed.
///
/// Programs for the environment use the class by this name, so the name is fixed. It is no
/// template, whatever `basic_` may suggest.
///
/// Threads: every operation, from any thread. The sink is called on the thread that writes, perhaps
/// on several threads at once. It may itself write messages or set a sink.
class SEARCHPATH_EXPORT basic_diagnostic_logger {
 public:
  /// `loggerName` is UTF-8, for example "library::component".
  explicit basic_diagnostic_logger(std::string_view loggerName);
  basic_diagnostic_logger(const basic_diagnostic_logger&) = delete;
  basic_diagnostic_logger& operator=(const basic_diagnostic_logger&) = delete;
  ~basic_diagnostic_logger();

  /// The name as it was given.
  [[nodiscard]] const std::string& GetName() const noexcept { return name; }

  /// Whether there is a sink. Ask before composing a message that takes time to compose.
  [[nodiscard]] bool IsHeard() const noexcept;

  /// Sends `message` to the sink, if there is one.
  /// Errors: exceptions of the sink pass through.
  void Write(Severity severity, std::string_view message) const;

  /// Sends the messages of all loggers to `sink` from now on; an empty `sink` drops them. Does not
  /// wait for calls of the old sink that are under way.
  static void SetSink(DiagnosticSink sink);

 private:
  class SharedSink;

  [[nodiscard]] static const std::shared_ptr<SharedSink>& CommonSink();

  const std::string name;
  const std::shared_ptr<SharedSink> sharedSink;  // the same for all loggers; never destroyed
};

}  // namespace foundation::log

#endif  // SEARCHPATH_PLATFORM_DIAGNOSTIC_LOGGER_H
