#include "host/folder/open_path.h"

#include <climits>

#include <fcntl.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Corvane::PathManagement::host {

OpenedPath OpenPath(const std::string& path, int flags) {
  constexpr int pieceFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;
  Descriptor folder(AT_FDCWD);
  // The kernel takes less than PATH_MAX bytes at once: each piece but the last ends at the last
  // separator within that length.
  std::size_t begin = 0;
  while (path.size() - begin >= PATH_MAX) {
    const std::size_t end = path.rfind('/', begin + PATH_MAX - 1);
    if (end == path.npos || end <= begin) break;  // a name too long: the last call reports that
    OpenedPath next(openat(folder.Get(), path.substr(begin, end - begin).c_str(), pieceFlags));
    if (!next.IsOpen()) return next;
    folder = std::move(next);
    // A piece that begins with a separator would be absolute.
    begin = std::min(path.find_first_not_of('/', end), path.size());
  }
  const bool isAllOpened = begin > 0 && begin == path.size();  // the path ends with separators
  const char* const last = isAllOpened ? "." : path.c_str() + begin;
  return OpenedPath(openat(folder.Get(), last, flags | O_CLOEXEC));
}

OpenedPath OpenFolder(const std::string& path) { return OpenPath(path, O_RDONLY | O_DIRECTORY); }

}  // namespace Corvane::PathManagement::host
