#include "host/rules/asked_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Corvane::PathManagement::host {

namespace {

using Files = LookupRules::Files;

bool MayUse(const std::string& path, int right) {
  return faccessat(AT_FDCWD, path.c_str(), right, AT_EACCESS) == 0;
}

Standing StandingOfFailure(int error) {
  return error == ENOENT || error == ENOTDIR ? Standing::Absent : Standing::NotReachable;
}

}  // namespace

Standing LookAtFile(const std::string& path, Files files) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) return StandingOfFailure(errno);
  if (S_ISDIR(status.st_mode)) {
    // Compilers open it before they see what it is.
    return files == Files::Readable && !MayUse(path, R_OK) ? Standing::NotReadable
                                                           : Standing::Folder;
  }
  // A device such as /dev/null takes the place of an empty header.
  if (files == Files::Readable && (S_ISREG(status.st_mode) || S_ISCHR(status.st_mode))) {
    return MayUse(path, R_OK) ? Standing::Counts : Standing::NotReadable;
  }
  if (!S_ISREG(status.st_mode)) {
    return files == Files::Readable ? Standing::NotReadable : Standing::OtherType;
  }
  if (files == Files::Executable && !MayUse(path, X_OK)) return Standing::NotExecutable;
  return Standing::Counts;
}

bool IsBrokenLink(const std::string& path) {
  struct stat status = {};
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode) &&
         stat(path.c_str(), &status) != 0;
}

}  // namespace Corvane::PathManagement::host
