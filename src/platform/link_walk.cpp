#include "platform/link_walk.h"

#include "model/path_components.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace foundation::storage::vfs::detail {

namespace {

constexpr int kMostLinks = 40;  // the limit of the kernel

}  // namespace

bool LinkWalk::Next() {
  std::string_view component = TakeComponent(rest);
  while (component == "." || component == "..") {
    if (component == "..") resolved.resize(std::min(resolved.rfind('/'), resolved.size()));
    component = TakeComponent(rest);
  }
  if (component.empty()) return false;
  parentLength = resolved.size();
  resolved.append("/").append(component);
  return true;
}

bool LinkWalk::Follow(std::string target) {
  if (++linksFollowed > kMostLinks) return false;
  resolved.resize(target.starts_with('/') ? 0 : parentLength);
  // `rest` views `buffer`, so the new text is complete before it is assigned.
  buffer = target.append(rest);
  rest = buffer;
  return true;
}

std::string ReadLink(int folder, const char* path, std::error_code& error) {
  std::string target(256, '\0');
  for (;;) {
    const ssize_t length = readlinkat(folder, path, target.data(), target.size());
    if (length < 0) error = {errno, std::generic_category()};
    if (length < static_cast<ssize_t>(target.size())) {
      target.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
      return target;
    }
    target.resize(2 * target.size());
  }
}

}  // namespace foundation::storage::vfs::detail
