#include "host/rules/asked_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Corvane::PathManagement::host {

namespace {

using Files = LookupRules::Files;

/// The arguments by which `fstatat` and `faccessat` know a file.
struct Asked {
  int folder;
  const char* path;
  int flags;

  [[nodiscard]] bool MayBeUsed(int right) const {
    return faccessat(folder, path, right, AT_EACCESS | flags) == 0;
  }
};

Standing StandingOfFailure(int error) {
  return error == ENOENT || error == ENOTDIR ? Standing::Absent : Standing::NotReachable;
}

Standing LookAt(const Asked& asked, Files files) {
  struct stat status = {};
  if (fstatat(asked.folder, asked.path, &status, asked.flags) != 0) return StandingOfFailure(errno);
  if (S_ISDIR(status.st_mode)) {
    // Compilers open a folder like a file before they see what it is.
    return files == Files::Readable && !asked.MayBeUsed(R_OK) ? Standing::NotReadable
                                                              : Standing::Folder;
  }
  if (!MayCount(status.st_mode, files)) {
    return files == Files::Readable ? Standing::NotReadable : Standing::OtherType;
  }
  if (files == Files::Readable && !asked.MayBeUsed(R_OK)) return Standing::NotReadable;
  if (files == Files::Executable && !asked.MayBeUsed(X_OK)) return Standing::NotExecutable;
  return Standing::Counts;
}

}  // namespace

bool MayCount(mode_t mode, Files files) noexcept {
  // A character device may count: /dev/null serves as an empty header.
  return S_ISREG(mode) || (files == Files::Readable && S_ISCHR(mode));
}

Standing LookAtFile(const std::string& path, Files files) {
  return LookAt({AT_FDCWD, path.c_str(), 0}, files);
}

Standing LookAtFile(int descriptor, Files files) {
  return LookAt({descriptor, "", AT_EMPTY_PATH}, files);
}

bool IsBrokenLink(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode) &&
         stat(path.c_str(), &status) != 0;
}

}  // namespace Corvane::PathManagement::host
