#include "searchpath/platform/event_manager.h"

#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>

#include <cassert>
#include <map>
#include <mutex>
#include <utility>

namespace foundation::msg_svc::eventmgr {

namespace detail {

class EventStream {
 public:
  boost::signals2::signal<void(const Event&)> signal;
};

namespace {

/// The streams in use, by id; it does not keep the streams alive.
struct StreamRegistry {
  std::mutex mutex;  // guards streams
  std::map<EventMgrId, std::weak_ptr<EventStream>> streams;
};

StreamRegistry& TheStreamRegistry() {
  // Never destroyed: the program's static objects may still subscribe and publish after those of
  // this library are destroyed.
  static StreamRegistry& registry = *new StreamRegistry;
  return registry;
}

std::shared_ptr<EventStream> SharedStream(EventMgrId id) {
  StreamRegistry& registry = TheStreamRegistry();
  const std::lock_guard lock(registry.mutex);
  std::weak_ptr<EventStream>& known = registry.streams[id];
  std::shared_ptr<EventStream> stream = known.lock();
  if (stream == nullptr) {
    stream = std::make_shared<EventStream>();
    known = stream;
  }
  return stream;
}

}  // namespace

}  // namespace detail

Event::~Event() = default;

class Subscription::Connection {
 public:
  Connection(std::shared_ptr<detail::EventStream> sharedStream, const EventMgr::Handler& handler)
      : stream(std::move(sharedStream)), connection(stream->signal.connect(handler)) {}

 private:
  // Keeps the stream alive while a handler is subscribed, so that later managers join this stream.
  std::shared_ptr<detail::EventStream> stream;
  boost::signals2::scoped_connection connection;
};

Subscription::Subscription() noexcept = default;
Subscription::Subscription(Subscription&& other) noexcept = default;
Subscription& Subscription::operator=(Subscription&& other) noexcept = default;
Subscription::~Subscription() = default;

Subscription::Subscription(std::unique_ptr<Connection> owned) noexcept
    : connection(std::move(owned)) {}

EventMgr::EventMgr(std::shared_ptr<detail::EventStream> sharedStream) noexcept
    : stream(std::move(sharedStream)) {}

EventMgr::~EventMgr() = default;

void EventMgr::publish(std::unique_ptr<Event> event) {
  assert(event != nullptr);
  // A handler may destroy this manager, which may be the last owner of the stream.
  const std::shared_ptr<detail::EventStream> kept = stream;
  kept->signal(*event);
}

Subscription EventMgr::subscribe(const Handler& handler) {
  return Subscription(std::make_unique<Subscription::Connection>(stream, handler));
}

std::shared_ptr<EventMgr> createLocalEventMgr(EventMgrId id) {
  return std::make_shared<EventMgr>(detail::SharedStream(id));
}

}  // namespace foundation::msg_svc::eventmgr
