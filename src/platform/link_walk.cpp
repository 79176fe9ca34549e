#include "platform/link_walk.h"

#include "model/path_components.h"

#include <algorithm>

namespace foundation::storage::vfs::detail {

namespace {

constexpr int kMostLinks = 40;  // as many as the kernel follows

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
  buffer = target.append(rest);
  rest = buffer;
  return true;
}

}  // namespace foundation::storage::vfs::detail
