#include "c/border.h"
#include "c/handles.h"
#include "searchpath/host/followed_environment.h"

#include <mutex>

namespace {

namespace host = Corvane::PathManagement::host;
using Corvane::PathManagement::c::HandOut;

}  // namespace

struct searchpath_watch {
  explicit searchpath_watch(const host::EnvironmentOptions& environmentOptions)
      : options(environmentOptions), followed([this] {
          // The path alone is watched, without further folders and files.
          return host::OpenedEnvironment{.environment = host::Environment(options)};
        }) {}

  host::EnvironmentOptions options;
  // Mutable, since callers have a const handle, which threads may share.
  mutable std::mutex oneAtATime;  // held while `followed` is brought up to date and copied
  mutable host::FollowedEnvironment followed;
};

searchpath_status searchpath_watch_open(const searchpath_environment* environment,
                                        searchpath_watch** watch, searchpath_error* error) {
  return HandOut(watch, error,
                 [&] { return std::make_unique<searchpath_watch>(environment->options); });
}

int searchpath_watch_descriptor(const searchpath_watch* watch) {
  return watch->followed.GetDescriptor();  // without the lock: it never changes
}

searchpath_status searchpath_watch_environment(const searchpath_watch* watch,
                                               searchpath_environment** environment,
                                               searchpath_error* error) {
  return HandOut(environment, error, [&] {
    const std::scoped_lock lock(watch->oneAtATime);
    watch->followed.Update();
    return std::make_unique<searchpath_environment>(watch->options, watch->followed.Get());
  });
}

void searchpath_watch_free(searchpath_watch* watch) { delete watch; }
