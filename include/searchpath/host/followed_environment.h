#ifndef SEARCHPATH_HOST_FOLLOWED_ENVIRONMENT_H
#define SEARCHPATH_HOST_FOLLOWED_ENVIRONMENT_H

#include "searchpath/export.h"
#include "searchpath/host/environment.h"
#include "searchpath/model/absolute_iri.h"

#include <functional>
#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// An environment, and what its answers stand on besides its own folders.
struct OpenedEnvironment {
  Environment environment;  ///< what is asked
  /// Such as the folder of the code that asks. Special folders below them count as well.
  std::vector<AbsoluteIRI> folders = {};
  /// Such as the list that the path was read from.
  std::vector<AbsoluteIRI> files = {};
};

/// An environment for a program that runs on: every answer is right for the time at which it is
/// given, because whatever has changed on the disk by then is seen first.
///
/// The kernel watches all folders of the path, what the links in them lead to, and every folder and
/// link on the way. After a change the environment is opened anew by the next `Update`.
/// Folders that the kernel cannot watch, as those on network file systems, may have changed at any
/// time: with one of them on the path, each `Update` opens the environment anew.
///
/// Threads: one at a time.
/// Errors: those of `open`, from every operation that calls it; the environment then stays as it
/// was and is opened anew the next time.
class SEARCHPATH_EXPORT FollowedEnvironment {
 public:
  /// Makes the environment as the disk is now.
  using Open = std::function<OpenedEnvironment()>;

  /// Opens the environment with `open`, and again after each change.
  ///
  /// Cost: opens it at least twice, so that nothing is missed between looking and watching.
  explicit FollowedEnvironment(Open open);
  FollowedEnvironment(const FollowedEnvironment&) = delete;
  FollowedEnvironment& operator=(const FollowedEnvironment&) = delete;
  ~FollowedEnvironment();

  /// Makes the environment what the disk is now. Returns whether it was opened anew.
  ///
  /// Cost: a system call when nothing has changed; otherwise all folders are listed again.
  bool Update();

  /// The environment as it was opened last. The reference stays valid; `Update` replaces what it
  /// refers to.
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
