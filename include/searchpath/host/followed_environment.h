#ifndef SEARCHPATH_HOST_FOLLOWED_ENVIRONMENT_H
#define SEARCHPATH_HOST_FOLLOWED_ENVIRONMENT_H

#include "searchpath/export.h"
#include "searchpath/host/environment.h"
#include "searchpath/model/absolute_iri.h"

#include <functional>
#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// An environment, and the folders and files beside its path to watch because its answers depend
/// on them.
struct OpenedEnvironment {
  Environment environment;  ///< on which names are looked up
  /// Folders such as that of the code that asks. Special folders below them are watched as well.
  std::vector<AbsoluteIRI> folders = {};
  /// Files such as the list from which the path was read.
  std::vector<AbsoluteIRI> files = {};
};

/// An environment for a program that keeps running: call `Update` before a question, and the answer
/// is right for that time.
///
/// The kernel watches all folders of the path, what the links in them lead to, and every folder and
/// link on the way. After a change, the next `Update` opens the environment anew. Folders that the
/// kernel cannot watch, such as those on network file systems, may have changed at any time: with
/// one of them on the path, each `Update` opens the environment anew. Folders that are not on the
/// path, such as `EnvironmentOptions::quoteFolders`, are looked at anew after each `Update`; the
/// descriptor shows changes in those that are among `OpenedEnvironment::folders`.
///
/// Threads: one at a time.
/// Errors: those of the `Open` function, from the constructor and `Update`. The environment then
/// stays as it was, and the next `Update` opens it anew.
class SEARCHPATH_EXPORT FollowedEnvironment {
 public:
  /// Makes the environment as the disk is now.
  using Open = std::function<OpenedEnvironment()>;

  /// Opens the environment with `open`, and again after each change.
  ///
  /// Cost: opens it at least twice, so that no change is missed before the watches are set.
  explicit FollowedEnvironment(Open open);
  FollowedEnvironment(const FollowedEnvironment&) = delete;
  FollowedEnvironment& operator=(const FollowedEnvironment&) = delete;
  ~FollowedEnvironment();

  /// Brings the environment up to date with the disk. Returns whether it was opened anew.
  ///
  /// Cost: a system call when nothing has changed; otherwise all folders are listed again.
  bool Update();

  /// The environment as it was opened last. The reference stays valid as long as this object;
  /// after an `Update`, it refers to the new environment.
  [[nodiscard]] const Environment& Get() const noexcept;

  /// Readable (`POLLIN`) when something may have changed since the last `Update`. Negative when the
  /// kernel watches nothing.
  [[nodiscard]] int GetDescriptor() const noexcept;

  /// Whether the kernel watches all folders. Otherwise the descriptor does not show all changes.
  [[nodiscard]] bool WatchesAll() const noexcept;

 private:
  class State;

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_FOLLOWED_ENVIRONMENT_H
