#include "host/folder/open_path.h"

#include <climits>

#include <fcntl.h>

#include <cstddef>
#include <utility>

namespace Corvane::PathManagement::host {

OpenedPath OpenPath(const std::string& path, int flags) {
  constexpr int piece = O_PATH | O_DIRECTORY | O_CLOEXEC;
  Descriptor folder(AT_FDCWD);
  // The kernel takes less than PATH_MAX bytes at once: each piece but the last ends at the last
  // separator within that length.
  std::size_t begin = 0;
  while (path.size() - begin >= PATH_MAX) {
    const std::size_t end = path.rfind('/', begin + PATH_MAX - 1);
    if (end == path.npos || end <= begin) break;
    OpenedPath next(openat(folder.Get(), path.substr(begin, end - begin).c_str(), piece));
    if (!next.IsOpen()) return next;
    folder = std::move(next);
    begin = path.find_first_not_of('/', end);  // a piece that begins with one would be absolute
    if (begin == path.npos) return OpenPath(path.substr(0, end), flags);
  }
  return OpenedPath(openat(folder.Get(), path.c_str() + begin, flags | O_CLOEXEC));
}

OpenedPath OpenFolder(const std::string& path) { return OpenPath(path, O_RDONLY | O_DIRECTORY); }

}  // namespace Corvane::PathManagement::host
