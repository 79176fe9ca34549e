#ifndef SEARCHPATH_PLATFORM_DIAGNOSTIC_LOGGER_H
#define SEARCHPATH_PLATFORM_DIAGNOSTIC_LOGGER_H

#include <string_view>

namespace foundation::log {

class basic_diagnostic_logger {
 public:
  explicit basic_diagnostic_logger(std::string_view) {}
  ~basic_diagnostic_logger() {}
};

}  // namespace foundation::log

#endif  // SEARCHPATH_PLATFORM_DIAGNOSTIC_LOGGER_H
