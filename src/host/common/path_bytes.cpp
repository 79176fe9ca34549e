#include "host/common/path_bytes.h"

#include <algorithm>
#include <cstddef>

namespace Corvane::PathManagement::host {

std::string PathBelow(std::string_view folder, std::string_view name) {
  std::string path;
  path.reserve(folder.size() + 1 + name.size());
  path = folder;
  if (!path.ends_with('/')) path.push_back('/');
  return path.append(name);
}

std::string FolderAbove(std::string_view path) {
  const std::size_t last = path.find_last_not_of('/');
  const std::size_t end = last == path.npos ? 0 : path.rfind('/', last);
  return std::string(path.substr(0, std::max<std::size_t>(end, 1)));  // of "/a", the "/" stays
}

}  // namespace Corvane::PathManagement::host
