#include "phrases.h"

namespace Corvane::PathManagement::tool {

std::string GetCounted(std::size_t count, const std::string& thing) {
  return std::to_string(count) + ' ' + thing + (count == 1 ? "" : "s");
}

std::string Join(const std::vector<std::string>& parts, const std::string& separator,
                 const std::string& last) {
  std::string joined;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) joined += i + 1 < parts.size() ? separator : last;
    joined += parts[i];
  }
  return joined;
}

std::string Join(const std::vector<std::string>& parts, const std::string& separator) {
  return Join(parts, separator, separator);
}

}  // namespace Corvane::PathManagement::tool
