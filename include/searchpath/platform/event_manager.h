#ifndef SEARCHPATH_PLATFORM_EVENT_MANAGER_H
#define SEARCHPATH_PLATFORM_EVENT_MANAGER_H

#include "searchpath/export.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace foundation::msg_svc::eventmgr {

/// Something that happened. Its derived class says what.
class SEARCHPATH_EXPORT Event {
 public:
  virtual ~Event();

  /// A copy of the same derived class.
  [[nodiscard]] virtual std::unique_ptr<Event> clone() const = 0;

 protected:
  Event() = default;
  Event(const Event&) = default;
  Event& operator=(const Event&) = default;
};

namespace detail {
class EventStream;
}  // namespace detail

/// Names a stream of events.
enum class EventMgrId : std::uint32_t {};

/// The stream of the session, which is this whole process.
inline constexpr EventMgrId SessionEmId{0};

/// Keeps a handler subscribed for as long as this object lives, even if no manager lives any more.
///
/// Threads: may be destroyed on any thread, also by a handler during a delivery. Destruction does
/// not wait. Deliveries that begin later do not call the handler, nor does a delivery that is under
/// way on this thread; a delivery that is under way on another thread may still call it. The
/// handler is destroyed when the last such call has returned, so it should own what it uses.
class SEARCHPATH_EXPORT Subscription {
 public:
  /// Holds no subscription.
  Subscription() noexcept;
  Subscription(Subscription&& other) noexcept;
  /// Ends the subscription that this object held before.
  Subscription& operator=(Subscription&& other) noexcept;
  ~Subscription();

 private:
  friend class EventMgr;
  class Connection;
  explicit Subscription(std::unique_ptr<Connection> owned) noexcept;

  std::unique_ptr<Connection> connection;  // null: no subscription
};

/// Gives access to a stream of events, which all managers with the same id share: what one manager
/// publishes is delivered to the handlers subscribed through any of them.
///
/// Threads: every operation may be called from several threads at once, also by handlers during a
/// delivery.
class SEARCHPATH_EXPORT EventMgr {
 public:
  /// Called for each event. Its exceptions reach the publisher.
  using Handler = std::function<void(const Event&)>;

  /// Called by `createLocalEventMgr` only.
  explicit EventMgr(std::shared_ptr<detail::EventStream> sharedStream) noexcept;
  EventMgr(const EventMgr&) = delete;
  EventMgr& operator=(const EventMgr&) = delete;
  ~EventMgr();

  /// Calls the handlers with `event`, on this thread, in the order in which they were subscribed,
  /// and returns when all have returned. An event that a handler publishes meanwhile is delivered
  /// before that handler's call of `publish` returns.
  ///
  /// Precondition: `event` is not null.
  /// Errors: an exception of a handler passes through; the handlers after it are not called.
  void publish(std::unique_ptr<Event> event);

  /// Calls `handler` with all events whose delivery begins from now on, until the subscription is
  /// destroyed. Deliveries on several threads may call it at once.
  ///
  /// Precondition: `handler` is not empty.
  [[nodiscard]] Subscription subscribe(const Handler& handler);

 private:
  std::shared_ptr<detail::EventStream> stream;  // never null
};

/// A new manager for the stream called `id`, which all managers of that id in this process share.
/// The stream lives as long as any manager or subscription of it.
///
/// Threads: from any thread, at any time, also before main and while statics are destroyed.
[[nodiscard]] SEARCHPATH_EXPORT std::shared_ptr<EventMgr> createLocalEventMgr(EventMgrId id);

}  // namespace foundation::msg_svc::eventmgr

#endif  // SEARCHPATH_PLATFORM_EVENT_MANAGER_H
