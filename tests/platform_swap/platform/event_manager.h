#ifndef SEARCHPATH_PLATFORM_EVENT_MANAGER_H
#define SEARCHPATH_PLATFORM_EVENT_MANAGER_H

#include <memory>
#include <string>
#include <vector>

namespace foundation::msg_svc::eventmgr {

struct Event {
  virtual ~Event() = default;
  virtual std::unique_ptr<Event> clone() const = 0;
};

enum EventMgrId { SessionEmId };

class EventMgr {
 public:
  void publish(std::unique_ptr<Event> event);
};

std::shared_ptr<EventMgr> createLocalEventMgr(EventMgrId id);

/// All that was ever published, in order.
extern std::vector<std::unique_ptr<Event>> published;

}  // namespace foundation::msg_svc::eventmgr

#endif  // SEARCHPATH_PLATFORM_EVENT_MANAGER_H
