#include "host/folder/open_path.h"

#include <climits>

#include <fcntl.h>

#include <cstddef>

namespace Corvane::PathManagement::host {

Descriptor OpenPath(const std::string& path, int flags) {
  constexpr int piece = O_PATH | O_DIRECTORY | O_CLOEXEC;
  Descriptor folder(AT_FDCWD);
  std::size_t begin = 0;
  while (path.size() - begin >= PATH_MAX) {
    const std::size_t end = path.rfind('/', begin + PATH_MAX - 1);
    if (end == path.npos || end <= begin) break;
    const int next = openat(folder.Get(), path.substr(begin, end - begin).c_str(), piece);
    folder = Descriptor(next);
    if (!folder.IsOpen()) return folder;
    begin = end + 1;
  }
  return Descriptor(openat(folder.Get(), path.c_str() + begin, flags | O_CLOEXEC));
}

Descriptor OpenFolder(const std::string& path) { return OpenPath(path, O_RDONLY | O_DIRECTORY); }

}  // namespace Corvane::PathManagement::host
