#include "c/border.h"
#include "c/handles.h"
#include "searchpath/host/disk_feed.h"
#include "searchpath/host/folder_observer.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/host/wake_up.h"
#include "searchpath/platform/event_manager.h"

namespace {

namespace host = Corvane::PathManagement::host;
namespace events = foundation::msg_svc::eventmgr;
using Corvane::PathManagement::c::HandOut;

}  // namespace

/// Each member uses those before it, and is gone before them.
struct searchpath_watch {
  explicit searchpath_watch(const host::Environment& environment)
      : manager(environment.CreateManager()),
        listening(manager->AddListener(
            [this](const auto& /*before*/, const auto& /*after*/) { changed.Set(); })),
        observer(*manager, *stream),
        feed(*manager, stream) {}

  host::WakeUp changed;
  std::unique_ptr<host::MainSearchPathManager> manager;
  host::MainSearchPathManager::Subscription listening;
  std::shared_ptr<events::EventMgr> stream = events::createLocalEventMgr(events::SessionEmId);
  host::FolderObserver observer;
  host::DiskFeed feed;
};

searchpath_status searchpath_watch_open(const searchpath_environment* environment,
                                        searchpath_watch** watch, searchpath_error* error) {
  return HandOut(watch, error,
                 [&] { return std::make_unique<searchpath_watch>(environment->environment); });
}

int searchpath_watch_descriptor(const searchpath_watch* watch) {
  return watch->changed.GetDescriptor();
}

searchpath_status searchpath_watch_environment(const searchpath_watch* watch,
                                               searchpath_environment** environment,
                                               searchpath_error* error) {
  return HandOut(environment, error, [&] {
    watch->changed.Clear();
    return std::unique_ptr<searchpath_environment>(
        new searchpath_environment{host::Environment(watch->manager->GetPath())});
  });
}

void searchpath_watch_free(searchpath_watch* watch) { delete watch; }
