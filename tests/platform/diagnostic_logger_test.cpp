#include "searchpath/platform/diagnostic_logger.h"

#include <gtest/gtest.h>

namespace foundation::log {
namespace {

const basic_diagnostic_logger kStatic("tests::static");

TEST(DiagnosticLoggerTest, WritesToTheSinkOfTheProcess) {
  std::string written;
  const auto writeAll = [](std::string_view message) {
    kStatic.Write(Severity::Warning, message);
    basic_diagnostic_logger("tests::local").Write(Severity::Debug, message);
  };
  writeAll("to nobody");
  basic_diagnostic_logger::SetSink(
      [&](std::string_view name, Severity severity, std::string_view message) {
        written.append(name).append(severity == Severity::Debug ? " debug " : " warning ");
        written.append(message).append("; ");
        if (message == "last") basic_diagnostic_logger::SetSink(nullptr);
      });
  writeAll("m");
  writeAll("last");
  EXPECT_EQ(written, "tests::static warning m; tests::local debug m; tests::static warning last; ");
}

}  // namespace
}  // namespace foundation::log
