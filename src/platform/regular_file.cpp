#include "platform/regular_file.h"

#include <sys/stat.h>

#include <cerrno>

namespace fl::filesystem::detail {

std::error_code WhyNotRegular(const Descriptor& file) {
  struct stat status = {};
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0) return {errno, std::generic_category()};
  if (S_ISREG(status.st_mode)) return {};
  return std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                      : std::errc::invalid_argument);
}

}  // namespace fl::filesystem::detail
