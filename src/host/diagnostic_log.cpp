#include "searchpath/host/diagnostic_log.h"

#include "platform/native_path.h"

#include <memory>
#include <spdlog/logger.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <string_view>

namespace Corvane::PathManagement::host {

namespace {

using foundation::log::basic_diagnostic_logger;
using foundation::log::Severity;

spdlog::level::level_enum LevelOf(Severity severity) noexcept {
  switch (severity) {
    case Severity::Debug:
      return spdlog::level::debug;
    case Severity::Information:
      return spdlog::level::info;
    case Severity::Warning:
      return spdlog::level::warn;
    case Severity::Error:
      break;
  }
  return spdlog::level::err;
}

spdlog::sink_ptr MakeSink(const std::optional<fl::filesystem::path>& file) {
  if (!file) return std::make_shared<spdlog::sinks::stderr_sink_mt>();
  const std::string name = fl::filesystem::detail::NativeBytes(*file);
  try {
    return std::make_shared<spdlog::sinks::basic_file_sink_mt>(name);
  } catch (const spdlog::spdlog_ex& failure) {
    throw std::runtime_error("cannot write the diagnostic log: " + std::string(failure.what()));
  }
}

}  // namespace

void StartDiagnosticLog(const std::optional<fl::filesystem::path>& file, Severity least) {
  // One sink for all loggers of the process, none of them in a registry that others might use.
  const auto sink = MakeSink(file);
  sink->set_pattern("%Y-%m-%d %H:%M:%S.%e %t %l %n: %v");
  basic_diagnostic_logger::SetSink(
      [sink, least](std::string_view name, Severity severity, std::string_view message) {
        if (severity < least) return;
        spdlog::logger logger(std::string(name), sink);
        logger.set_level(spdlog::level::trace);
        logger.flush_on(spdlog::level::trace);
        logger.set_error_handler([](const std::string& /*failure*/) {});
        logger.log(LevelOf(severity), message);
      });
}

void StopDiagnosticLog() { basic_diagnostic_logger::SetSink(nullptr); }

}  // namespace Corvane::PathManagement::host
