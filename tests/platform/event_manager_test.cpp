#include "searchpath/platform/event_manager.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

namespace foundation::msg_svc::eventmgr {
namespace {

struct Numbered : Event {
  explicit Numbered(int value) : number(value) {}
  std::unique_ptr<Event> clone() const override { return std::make_unique<Numbered>(*this); }
  int number;
};

void Publish(int number, EventMgrId id = SessionEmId) {
  createLocalEventMgr(id)->publish(Numbered(number).clone());
}

using Act = std::function<void(int number)>;

Subscription Subscribe(const Act& act, EventMgrId id = SessionEmId) {
  return createLocalEventMgr(id)->subscribe(
      [act](const Event& event) { act(dynamic_cast<const Numbered&>(event).number); });
}

/// A static that is older than all statics of the library, and still hears and publishes when those
/// are gone.
struct AtExit {
  static constexpr EventMgrId id{8};
  std::optional<Subscription> subscription;
  int heard = 0;

  ~AtExit() {
    Publish(2, id);
    if (subscription && heard != 2) std::abort();
  }
} atExit;

struct EventManagerTest : testing::Test {
  std::string heard;

  /// Notes each event as `name` and its number, then does as `act` says.
  Subscription Note(char name, const Act& act = [](int) {}) {
    return Subscribe([this, name, act](int number) {
      heard += name + std::to_string(number) + " ";
      act(number);
    });
  }
  std::string HeardOf(int number) { return Publish(number), std::exchange(heard, {}); }
};

TEST_F(EventManagerTest, DeliversAtOnceInOrderOnOneStreamUntilAHandlerThrows) {
  atExit.subscription = Subscribe([](int number) { atExit.heard = number; }, AtExit::id);
  const Subscription all[] = {Note('a'),
                              Note('b',
                                   [](int number) {
                                     if (number == 2) throw std::runtime_error("");
                                   }),
                              Note('c')};
  EXPECT_EQ(HeardOf(1), "a1 b1 c1 ");
  EXPECT_THROW(Publish(2), std::runtime_error);
  EXPECT_EQ(HeardOf(3), "a2 b2 a3 b3 c3 ");
  EXPECT_EQ(atExit.heard, 0);  // more comes when this program ends
}

TEST_F(EventManagerTest, HandlersMaySubscribeUnsubscribeAndPublishDuringADelivery) {
  std::vector<Subscription> all;
  auto manager = createLocalEventMgr(SessionEmId);
  all.push_back(Note('a', [&](int number) {
    if (number == 1) Publish(2);
    if (number != 3) return;
    all.erase(all.begin());
    all.erase(all.begin() + 1);
    all.push_back(Note('d', [&](int last) {
      if (last != 5) return;
      all.clear();
      manager.reset();
    }));
  }));
  all.push_back(Note('b'));
  all.push_back(Note('c'));
  EXPECT_EQ(HeardOf(1), "a1 a2 b2 c2 b1 c1 ");
  EXPECT_EQ(HeardOf(3), "a3 b3 ");
  EXPECT_EQ(HeardOf(4), "b4 d4 ");
  all.push_back(Note('e'));
  all.push_back(Note('f'));
  all.push_back(Note('g'));
  // Nothing holds the stream any more while it delivers.
  manager->publish(Numbered(5).clone());
  EXPECT_EQ(heard, "b5 d5 ");
}

TEST_F(EventManagerTest, ThreadsSubscribePublishAndUnsubscribeAtOnce) {
  const auto work = [](int thread) {
    for (int own = thread; own < 2'000; own += 4) {
      // Owned by the handler, since deliveries on other threads may outlast the subscription.
      const auto wasHeard = std::make_shared<std::atomic<bool>>(false);
      const auto subscription = Subscribe([=](int number) {
        if (number == own) *wasHeard = true;
      });
      Publish(own);
      EXPECT_TRUE(*wasHeard);
    }
  };
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread) threads.emplace_back(work, thread);
}

}  // namespace
}  // namespace foundation::msg_svc::eventmgr
