#include "host/rules/asked_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Corvane::PathManagement::host {

namespace {

using Files = LookupRules::Files;

/// A file, by the arguments with which `fstatat` and `faccessat` are called for it.
struct FileAt {
  int folder;
  const char* path;
  int flags;

  /// Whether this process has the right: R_OK, W_OK or X_OK.
  [[nodiscard]] bool Grants(int right) const {
    return faccessat(folder, path, right, AT_EACCESS | flags) == 0;
  }
};

Standing StandingOfFailure(int error) {
  return error == ENOENT || error == ENOTDIR ? Standing::Absent : Standing::NotReachable;
}

Standing LookAt(const FileAt& file, Files files) {
  struct stat status = {};
  if (fstatat(file.folder, file.path, &status, file.flags) != 0) return StandingOfFailure(errno);
  if (S_ISDIR(status.st_mode)) {
    // Compilers open a folder like a file before they see what it is, so one that they may not open
    // ends their search like a file.
    return files == Files::Readable && !file.Grants(R_OK) ? Standing::NotReadable
                                                          : Standing::Folder;
  }
  if (!MayCount(status.st_mode, files)) {
    return files == Files::Readable ? Standing::NotReadable : Standing::OtherType;
  }
  if (files == Files::Readable && !file.Grants(R_OK)) return Standing::NotReadable;
  if (files == Files::Executable && !file.Grants(X_OK)) return Standing::NotExecutable;
  return Standing::Counts;
}

}  // namespace

bool MayCount(mode_t mode, Files files) noexcept {
  // A character device may count: /dev/null serves as an empty header.
  return S_ISREG(mode) || (files == Files::Readable && S_ISCHR(mode));
}

Standing LookAtFile(const std::string& path, Files files) {
  return LookAt({.folder = AT_FDCWD, .path = path.c_str(), .flags = 0}, files);
}

Standing LookAtFile(int descriptor, Files files) {
  return LookAt({.folder = descriptor, .path = "", .flags = AT_EMPTY_PATH}, files);
}

bool IsBrokenLink(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode) &&
         stat(path.c_str(), &status) != 0;
}

}  // namespace Corvane::PathManagement::host
