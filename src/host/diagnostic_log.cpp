#include "searchpath/host/diagnostic_log.h"

#include "host/log_sink.h"
#include "platform/native_path.h"

#include <string>
#include <string_view>

namespace Corvane::PathManagement::host {

using foundation::log::basic_diagnostic_logger;
using foundation::log::Severity;

void StartDiagnosticLog(const std::optional<fl::filesystem::path>& file, Severity least) {
  std::optional<std::string> path;
  if (file) path = fl::filesystem::detail::NativeBytes(file->native());
  basic_diagnostic_logger::SetSink(
      [write = SearchpathLogSink()(path), least](std::string_view logger, Severity severity,
                                                 std::string_view message) {
        if (severity >= least) write(logger, severity, message);
      });
}

void StopDiagnosticLog() { basic_diagnostic_logger::SetSink(nullptr); }

}  // namespace Corvane::PathManagement::host
