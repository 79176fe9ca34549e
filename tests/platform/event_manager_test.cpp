#include "searchpath/platform/event_manager.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace foundation::msg_svc::eventmgr {
namespace {

struct Numbered : Event {
  explicit Numbered(int value) : number(value) {}
  std::unique_ptr<Event> clone() const override { return std::make_unique<Numbered>(*this); }
  int number;
};

void Publish(EventMgrId id, int number) {
  createLocalEventMgr(id)->publish(std::make_unique<Numbered>(number));
}

constexpr EventMgrId kOther{7}, kAtExit{8};

/// A static that is older than all statics of the library's, and still hears and publishes when
/// those are gone.
struct AtExit {
  std::optional<Subscription> subscription;
  bool heard = false;

  ~AtExit() {
    Publish(kAtExit, 0);
    if (subscription && !heard) std::abort();
  }
} atExit;

struct EventManagerTest : testing::Test {
  std::string heard;

  /// Notes each event as `name` and its number.
  Subscription Note(
      const std::string& name, std::function<void(int)> then = [](int) {},
      EventMgrId id = SessionEmId) {
    return createLocalEventMgr(id)->subscribe([this, name, then](const Event& event) {
      const int number = dynamic_cast<const Numbered&>(event).number;
      heard += " " + name + std::to_string(number);
      then(number);
    });
  }
  std::string HeardOf(int number, EventMgrId id = SessionEmId) {
    Publish(id, number);
    return std::exchange(heard, {});
  }
};

TEST_F(EventManagerTest, DeliversAtOnceInOrderToAllOfOneStream) {
  const Subscription subscriptions[] = {Note("a"), Note("b"), Note("other", [](int) {}, kOther)};
  EXPECT_EQ(HeardOf(1), " a1 b1");
  EXPECT_EQ(HeardOf(2, kOther), " other2");
  EXPECT_EQ(HeardOf(3, EventMgrId{9}), "");
}

TEST_F(EventManagerTest, AnExceptionOfAHandlerEndsTheDelivery) {
  const Subscription subscriptions[] = {Note("a",
                                             [](int number) {
                                               if (number == 1) throw std::runtime_error("");
                                             }),
                                        Note("b")};
  EXPECT_THROW(HeardOf(1), std::runtime_error);
  EXPECT_EQ(HeardOf(2), " a1 a2 b2");
}

TEST_F(EventManagerTest, HandlersMaySubscribeUnsubscribeAndPublishDuringADelivery) {
  std::vector<Subscription> all(4);
  auto manager = createLocalEventMgr(SessionEmId);
  all[0] = Note("a", [&](int number) {
    if (number == 2) manager->publish(std::make_unique<Numbered>(3));
    if (number != 1) return;
    all[0] = Subscription();
    all[2] = Subscription();
    all[3] = Note("d");
    manager.reset();
  });
  all[1] = Note("b");
  all[2] = Note("c");
  EXPECT_EQ(HeardOf(2), " a2 a3 b3 c3 b2 c2");
  manager->publish(std::make_unique<Numbered>(1));
  EXPECT_EQ(std::exchange(heard, {}), " a1 b1");
  EXPECT_EQ(HeardOf(4), " b4 d4");
  all[0] = Note("e", [&](int) {
    all.clear();
    manager.reset();
  });
  all[1] = Note("f");
  all[2] = Note("g");
  all[3] = Subscription();
  manager = createLocalEventMgr(SessionEmId);
  manager->publish(std::make_unique<Numbered>(5));
  EXPECT_EQ(heard, " e5");
}

TEST_F(EventManagerTest, ThreadsSubscribePublishAndUnsubscribeAtOnce) {
  constexpr int rounds = 500;
  const auto work = [](int thread) {
    for (int round = 0; round < rounds; ++round) {
      // Owned by the handler, since deliveries on other threads may outlast the subscription.
      const auto last = std::make_shared<std::atomic<int>>(0);
      const int own = thread * rounds + round + 1;
      const auto subscription =
          createLocalEventMgr(SessionEmId)->subscribe([=](const Event& event) {
            if (const int number = dynamic_cast<const Numbered&>(event).number; number == own)
              *last = number;
          });
      Publish(SessionEmId, own);
      EXPECT_EQ(*last, own);
    }
  };
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread) threads.emplace_back(work, thread);
}

TEST_F(EventManagerTest, StaticsSubscribeAndPublishUntilTheEnd) {
  // What else is checked comes when this program ends.
  atExit.subscription =
      createLocalEventMgr(kAtExit)->subscribe([](const Event&) { atExit.heard = true; });
  Publish(kAtExit, 0);
  EXPECT_TRUE(std::exchange(atExit.heard, false));
}

}  // namespace
}  // namespace foundation::msg_svc::eventmgr
