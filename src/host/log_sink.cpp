#include "host/log_sink.h"

#include <array>
#include <cstddef>
#include <memory>
#include <spdlog/logger.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <stdexcept>
#include <string_view>

namespace Corvane::PathManagement::host {

namespace {

using foundation::log::Severity;

// In the order of `Severity`.
constexpr std::array<spdlog::level::level_enum, 4> kLevels = {
    spdlog::level::debug, spdlog::level::info, spdlog::level::warn, spdlog::level::err};
static_assert(kLevels.size() == static_cast<std::size_t>(Severity::Error) + 1);

spdlog::sink_ptr Open(const std::optional<std::string>& file) {
  if (!file) return std::make_shared<spdlog::sinks::stderr_sink_mt>();
  try {
    return std::make_shared<spdlog::sinks::basic_file_sink_mt>(*file);
  } catch (const spdlog::spdlog_ex& failure) {
    throw std::runtime_error("cannot write the diagnostic log: " + std::string(failure.what()));
  }
}

foundation::log::DiagnosticSink MakeSink(const std::optional<std::string>& file) {
  const auto sink = Open(file);
  sink->set_pattern("%Y-%m-%d %H:%M:%S.%e %t %l %n: %v");
  // The caller leaves out what is not severe enough, so every message is written, and at once.
  // Failures are ignored: logging never makes an operation fail.
  return [sink](std::string_view logger, Severity severity, std::string_view message) {
    // Made here, and not kept in spdlog's registry: the program may have loggers of its own there.
    spdlog::logger writer(std::string(logger), sink);
    writer.set_level(spdlog::level::trace);
    writer.flush_on(spdlog::level::trace);
    writer.set_error_handler([](const std::string& /*failure*/) {});
    writer.log(kLevels.at(static_cast<std::size_t>(severity)), message);
  };
}

}  // namespace

extern "C" LogSinkMaker SearchpathLogSink() { return MakeSink; }

}  // namespace Corvane::PathManagement::host
