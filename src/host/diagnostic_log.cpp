#include "searchpath/host/diagnostic_log.h"

#include "platform/native_path.h"

#include <array>
#include <cstddef>
#include <memory>
#include <spdlog/logger.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <string_view>

namespace Corvane::PathManagement::host {

namespace {

using foundation::log::basic_diagnostic_logger;
using foundation::log::Severity;

/// In the order of `Severity`.
constexpr std::array<spdlog::level::level_enum, 4> kLevels = {
    spdlog::level::debug, spdlog::level::info, spdlog::level::warn, spdlog::level::err};
static_assert(kLevels.size() == static_cast<std::size_t>(Severity::Error) + 1);

spdlog::sink_ptr MakeSink(const std::optional<fl::filesystem::path>& file) {
  if (!file) return std::make_shared<spdlog::sinks::stderr_sink_mt>();
  const std::string name = fl::filesystem::detail::NativeBytes(file->native());
  try {
    return std::make_shared<spdlog::sinks::basic_file_sink_mt>(name);
  } catch (const spdlog::spdlog_ex& failure) {
    throw std::runtime_error("cannot write the diagnostic log: " + std::string(failure.what()));
  }
}

}  // namespace

void StartDiagnosticLog(const std::optional<fl::filesystem::path>& file, Severity least) {
  // The loggers of the process share this sink; none is put into the registry that others may use.
  const auto sink = MakeSink(file);
  sink->set_pattern("%Y-%m-%d %H:%M:%S.%e %t %l %n: %v");
  basic_diagnostic_logger::SetSink(
      [sink, least](std::string_view name, Severity severity, std::string_view message) {
        if (severity < least) return;
        spdlog::logger logger(std::string(name), sink);
        logger.set_level(spdlog::level::trace);
        logger.flush_on(spdlog::level::trace);
        logger.set_error_handler([](const std::string& /*failure*/) {});
        logger.log(kLevels.at(static_cast<std::size_t>(severity)), message);
      });
}

void StopDiagnosticLog() { basic_diagnostic_logger::SetSink(nullptr); }

}  // namespace Corvane::PathManagement::host
