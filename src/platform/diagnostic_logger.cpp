#include "searchpath/platform/diagnostic_logger.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace foundation::log {

class basic_diagnostic_logger::SharedSink {
 public:
  [[nodiscard]] std::shared_ptr<const DiagnosticSink> Get() const {
    const std::lock_guard lock(mutex);
    return sink;
  }

  void Set(std::shared_ptr<const DiagnosticSink> newSink) {
    const std::lock_guard lock(mutex);
    sink.swap(newSink);  // so that the old sink is destroyed after the lock is released
    isThere = sink != nullptr;
  }

  [[nodiscard]] bool IsThere() const noexcept { return isThere; }

 private:
  std::atomic<bool> isThere = false;
  mutable std::mutex mutex;
  std::shared_ptr<const DiagnosticSink> sink;  // null: messages go nowhere
};

basic_diagnostic_logger::basic_diagnostic_logger(std::string_view loggerName)
    : name(loggerName), sharedSink(CommonSink()) {}

basic_diagnostic_logger::~basic_diagnostic_logger() = default;

// Made when the first logger needs it and never destroyed, so that static loggers may be made and
// destroyed in any order, and still be used meanwhile.
const std::shared_ptr<basic_diagnostic_logger::SharedSink>& basic_diagnostic_logger::CommonSink() {
  static const auto* const commonSink =
      new std::shared_ptr<SharedSink>(std::make_shared<SharedSink>());
  return *commonSink;
}

bool basic_diagnostic_logger::IsHeard() const noexcept { return sharedSink->IsThere(); }

void basic_diagnostic_logger::Write(Severity severity, std::string_view message) const {
  // The sink is called outside the lock, since it may itself write a message or set a sink.
  if (const auto sink = sharedSink->Get()) (*sink)(name, severity, message);
}

void basic_diagnostic_logger::SetSink(DiagnosticSink sink) {
  const bool isSilent = sink == nullptr;
  CommonSink()->Set(isSilent ? nullptr : std::make_shared<const DiagnosticSink>(std::move(sink)));
}

}  // namespace foundation::log
