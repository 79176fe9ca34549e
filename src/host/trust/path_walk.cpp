#include "host/trust/path_walk.h"

#include "platform/link_walk.h"

#include <climits>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

using foundation::storage::vfs::detail::LinkWalk;
using foundation::storage::vfs::detail::ReadLink;

// A name takes at least two bytes, with its separator.
constexpr std::size_t kMostLevels = PATH_MAX / 2;
constexpr int kPathAlone = O_PATH | O_NOFOLLOW | O_CLOEXEC;

std::error_code LastError() { return {errno, std::generic_category()}; }

Descriptor OpenName(const Descriptor& folder, const std::string& name) {
  // Tried as a folder first, because only O_DIRECTORY mounts what is mounted on demand.
  Descriptor opened(openat(folder.Get(), name.c_str(), kPathAlone | O_DIRECTORY));
  if (opened.IsOpen() || errno != ENOTDIR) return opened;
  return Descriptor(openat(folder.Get(), name.c_str(), kPathAlone));
}

class Walker {
 public:
  /// Begins at the root when `start` is null; then `descriptor` is not used.
  Walker(std::shared_ptr<const PassedFolder> start, Descriptor descriptor, std::string_view path)
      : walk(start == nullptr ? "" : start->path, path),
        folder(std::move(start)),
        current(std::move(descriptor)) {}

  WalkedPath Run() && {
    if (folder == nullptr) StartAtRoot();
    while (!walked.error && walk.Next()) LookAtName();
    if (!walked.error && !walked.object.IsOpen()) EndAtFolder();
    return std::move(walked);
  }

 private:
  void StartAtRoot() {
    current = Descriptor(open("/", kPathAlone | O_DIRECTORY));
    if (!current.IsOpen()) {
      walked.error = LastError();
      return;
    }
    const AccessFacts facts = ReadAccessFacts(current, current, ".", walked.error);
    folder = std::make_shared<const PassedFolder>(
        PassedFolder{.above = nullptr, .path = {}, .facts = facts, .level = 0});
  }

  void LookAtName() {
    if (!GoUpTo(walk.GetFolder())) return;
    const std::string name(walk.GetName());
    Descriptor object = OpenName(current, name);
    if (!object.IsOpen()) {
      walked.error = LastError();
      if (walked.error == std::errc::no_such_file_or_directory) {
        walked.steps.push_back({folder, name, std::nullopt});
      }
      return;
    }
    const AccessFacts facts = ReadAccessFacts(object, current, name, walked.error);
    if (walked.error) return;
    walked.steps.push_back({folder, name, facts});
    if (S_ISLNK(facts.mode)) {
      Follow(object);
    } else if (S_ISDIR(facts.mode)) {
      if (folder->level == kMostLevels) {
        walked.error = std::make_error_code(std::errc::filename_too_long);
        return;  // the steps have this folder, but the walk ends before it
      }
      folder = std::make_shared<const PassedFolder>(
          PassedFolder{folder, walk.GetPath(), facts, folder->level + 1});
      current = std::move(object);
    } else if (!walk.GetRest().empty()) {
      walked.error = std::make_error_code(std::errc::not_a_directory);
    } else {
      walked.object = std::move(object);
      walked.holder = std::move(current);
    }
  }

  void Follow(const Descriptor& link) {
    std::string target = ReadLink(link.Get(), /*path=*/"", walked.error);
    if (!walked.error && !walk.Follow(std::move(target))) {
      walked.error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
    }
  }

  /// Goes back to the folder at `path`, the present one or one above it. Each folder on the way up
  /// has to be the one that was passed on the way down: ".." leads elsewhere when a folder has been
  /// moved meanwhile. If one of them is a different folder, or cannot be opened, sets the error and
  /// returns false.
  bool GoUpTo(std::string_view path) {
    while (folder->path != path) {
      current = Descriptor(openat(current.Get(), "..", kPathAlone | O_DIRECTORY));
      struct stat status = {};
      if (!current.IsOpen() || fstat(current.Get(), &status) != 0) {
        walked.error = LastError();
        return false;
      }
      folder = folder->above;
      if (status.st_dev != folder->facts.device || status.st_ino != folder->facts.inode) {
        walked.error = std::make_error_code(std::errc::resource_unavailable_try_again);
        return false;
      }
    }
    return true;
  }

  void EndAtFolder() {
    if (!GoUpTo(walk.GetPath())) return;
    walked.end = folder;
    walked.object = std::move(current);
  }

  LinkWalk walk;
  std::shared_ptr<const PassedFolder> folder;  // the present one
  Descriptor current;                          // has it open, with O_PATH
  WalkedPath walked;
};

}  // namespace

WalkedPath WalkPath(std::string_view path) { return Walker(nullptr, Descriptor(-1), path).Run(); }

WalkedPath WalkPath(std::shared_ptr<const PassedFolder> folder, const Descriptor& descriptor,
                    std::string_view path) {
  Descriptor copy(fcntl(descriptor.Get(), F_DUPFD_CLOEXEC, 0));
  if (!copy.IsOpen()) return {.error = LastError()};
  return Walker(std::move(folder), std::move(copy), path).Run();
}

}  // namespace Corvane::PathManagement::host
