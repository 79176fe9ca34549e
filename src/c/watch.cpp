#include "c/border.h"
#include "c/handles.h"
#include "searchpath/host/followed_environment.h"

#include <mutex>

namespace {

namespace host = Corvane::PathManagement::host;
using Corvane::PathManagement::c::HandOut;

}  // namespace

struct searchpath_watch {
  explicit searchpath_watch(const host::EnvironmentOptions& followedPath)
      : options(followedPath), followed([this] {
          return host::OpenedEnvironment{.environment = host::Environment(options)};
        }) {}

  host::EnvironmentOptions options;
  // Callers have a const handle, since threads may share it.
  mutable std::mutex oneAtATime;
  mutable host::FollowedEnvironment followed;
};

searchpath_status searchpath_watch_open(const searchpath_environment* environment,
                                        searchpath_watch** watch, searchpath_error* error) {
  return HandOut(watch, error,
                 [&] { return std::make_unique<searchpath_watch>(environment->options); });
}

int searchpath_watch_descriptor(const searchpath_watch* watch) {
  return watch->followed.GetDescriptor();
}

searchpath_status searchpath_watch_environment(const searchpath_watch* watch,
                                               searchpath_environment** environment,
                                               searchpath_error* error) {
  return HandOut(environment, error, [&] {
    const std::scoped_lock lock(watch->oneAtATime);
    watch->followed.Update();
    return std::unique_ptr<searchpath_environment>(
        new searchpath_environment{watch->options, watch->followed.Get()});
  });
}

void searchpath_watch_free(searchpath_watch* watch) { delete watch; }
