#include "ports/DistributedNotificationCenter.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <systemd/sd-bus.h>

#include <csignal>
#include <string>
#include <vector>

#include "ports/BusConnection.h"
#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

struct Heard {
  std::string name;
  std::string object;
  PropertyList userInfo;
  friend bool operator==(const Heard&, const Heard&) = default;
};

class DistributedNotificationCenterTest : public testing::Test {
 protected:
  ~DistributedNotificationCenterTest() override { mCenter.removeObserver(this); }

  NotificationCenter::Handler hear() {
    return [this](const Notification& news) { mHeard.push_back({news.name, news.object, news.userInfo}); };
  }
  void observe(const std::string& name) { mCenter.addObserver(this, name, hear()); }

  // Works on another connection; what it posts has reached everybody's connection when this returns.
  void elsewhere(const std::function<void(DistributedNotificationCenter&)>& work) {
    mElsewhere.run([&] {
      work(DistributedNotificationCenter::defaultCenter());
      RemoteMessagePort::lookUp("BehindThePosts");
    });
  }
  void postElsewhere(const std::string& name, const PropertyList& userInfo = {}) {
    elsewhere([&](DistributedNotificationCenter& center) { center.post(name, "", userInfo); });
  }

  // Handles everything that was posted before, ours too.
  void settle() {
    bool isBehind = false;
    mCenter.addObserver(&isBehind, "Behind everything", [&](const Notification&) { isBehind = true; });
    postElsewhere("Behind everything");
    EXPECT_TRUE(test::serveBusUntil([&] { return isBehind; }));
    mCenter.removeObserver(&isBehind);
  }

  test::PrivateBus mBus;
  DistributedNotificationCenter& mCenter = DistributedNotificationCenter::defaultCenter();
  test::LoopThread mElsewhere;
  std::vector<Heard> mHeard;
};

// Counts every signal that the bus hands to this thread's connection.
class SignalCounter {
 public:
  SignalCounter() {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_filter(BusConnection::forThisThread().handle(), &slot, count, &mCount);
    mSlot = slot;
  }
  ~SignalCounter() { sd_bus_slot_unref(mSlot); }
  SignalCounter(const SignalCounter&) = delete;
  SignalCounter& operator=(const SignalCounter&) = delete;

  int count() const { return mCount; }

 private:
  static int count(sd_bus_message* message, void* counter, sd_bus_error*) {
    if (sd_bus_message_is_signal(message, notificationCenterInterface, nullptr) > 0) ++*static_cast<int*>(counter);
    return 0;
  }
  int mCount = 0;
  sd_bus_slot* mSlot = nullptr;
};

TEST_F(DistributedNotificationCenterTest, CarryNameObjectAndUserInformation) {
  observe("Profile Updated 273");
  const PropertyList userInfo = PropertyList::dictionary({{"Source App", "org.vorn.Other"}, {"n", 5}});
  elsewhere([&](DistributedNotificationCenter& center) {
    center.post("Profile Updated 273", "org.vorn.Other", userInfo);
    center.post("Profile Updated 273", "", PropertyList());
    center.post("Profile Updated 273", "", PropertyList::dictionary());
  });
  settle();
  EXPECT_EQ(mHeard, (std::vector<Heard>{{"Profile Updated 273", "org.vorn.Other", userInfo},
                                        {"Profile Updated 273", "", PropertyList()},
                                        {"Profile Updated 273", "", PropertyList::dictionary()}}));
}

TEST_F(DistributedNotificationCenterTest, ReachObserversOfTheProgramThatPosts) {
  observe("News");
  mCenter.post("News", "me", PropertyList::dictionary({{"n", 1}}));
  EXPECT_TRUE(mHeard.empty());
  settle();
  EXPECT_EQ(mHeard, (std::vector<Heard>{{"News", "me", PropertyList::dictionary({{"n", 1}})}}));
}

TEST_F(DistributedNotificationCenterTest, ReachOneConnectionAloneWhereTheyAreMeantForIt) {
  observe("News");
  const auto uniqueName = [] {
    const char* name = nullptr;
    sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
    return std::string(name);
  };
  const std::string here = uniqueName();
  elsewhere([&](DistributedNotificationCenter& center) {
    center.postTo(uniqueName(), "News", "", PropertyList::dictionary({{"for", "itself"}}));
    center.postTo(here, "News", "me", PropertyList::dictionary({{"for", "us"}}));
  });
  settle();
  EXPECT_EQ(mHeard, (std::vector<Heard>{{"News", "me", PropertyList::dictionary({{"for", "us"}})}}));
}

TEST_F(DistributedNotificationCenterTest, OfOtherNamesDoNotWakeAnObserver) {
  observe("A");
  SignalCounter counter;
  for (int i = 0; i < 50; ++i) postElsewhere("B");
  postElsewhere("A 2");
  postElsewhere("A");
  EXPECT_TRUE(test::serveBusUntil([&] { return !mHeard.empty(); }));
  EXPECT_EQ(counter.count(), 1);
}

TEST_F(DistributedNotificationCenterTest, AreStillDeliveredWhileOneObserverOfTheNameIsLeft) {
  const int other = 0;
  observe("News");
  mCenter.addObserver(&other, "News", hear());
  mCenter.removeObserver(&other, "News");
  postElsewhere("News");
  settle();
  EXPECT_EQ(mHeard.size(), 1U);
  mCenter.removeObserver(this, "News");
  RemoteMessagePort::lookUp("BehindTheRemoval");
  SignalCounter counter;
  postElsewhere("News");
  settle();
  EXPECT_EQ(mHeard.size(), 1U);
  EXPECT_EQ(counter.count(), 1);  // the one that settles
}

TEST_F(DistributedNotificationCenterTest, AreNotMissedWhileAHandlerHasItsObserverRemovedForAMoment) {
  mCenter.addObserver(this, "News", [this](const Notification& news) {
    mHeard.push_back({news.name, news.object, news.userInfo});
    mCenter.removeObserver(this, "News");
    postElsewhere("News", PropertyList::dictionary({{"n", 2}}));
    observe("News");
  });
  postElsewhere("News", PropertyList::dictionary({{"n", 1}}));
  EXPECT_TRUE(test::serveBusUntil([&] { return mHeard.size() == 2; }));
  settle();
  EXPECT_EQ(mHeard, (std::vector<Heard>{{"News", "", PropertyList::dictionary({{"n", 1}})},
                                        {"News", "", PropertyList::dictionary({{"n", 2}})}}));
}

TEST_F(DistributedNotificationCenterTest, StopForANameThatAHandlerNoLongerObserves) {
  mCenter.addObserver(this, "News", [this](const Notification& news) {
    mHeard.push_back({news.name, news.object, news.userInfo});
    mCenter.removeObserver(this, "News");
  });
  postElsewhere("News");
  settle();
  RemoteMessagePort::lookUp("BehindTheRemoval");
  SignalCounter counter;
  postElsewhere("News");
  settle();
  EXPECT_EQ(mHeard.size(), 1U);
  EXPECT_EQ(counter.count(), 1);  // the one that settles
}

TEST_F(DistributedNotificationCenterTest, CallAnObserverThatWasAddedTwiceTwice) {
  observe("News");
  observe("News");
  postElsewhere("News");
  settle();
  EXPECT_EQ(mHeard.size(), 2U);
  mCenter.removeObserver(this, "News");
  postElsewhere("News");
  settle();
  EXPECT_EQ(mHeard.size(), 2U);
}

TEST_F(DistributedNotificationCenterTest, CallObserversInTheOrderOfTheirRegistration) {
  std::vector<int> order;
  const int others[3] = {};
  for (int i = 0; i < 3; ++i)
    mCenter.addObserver(&others[i], "News", [&, i](const Notification&) { order.push_back(i); });
  postElsewhere("News");
  settle();
  EXPECT_EQ(order, (std::vector<int>{0, 1, 2}));
  for (const int& other : others) mCenter.removeObserver(&other);
}

TEST_F(DistributedNotificationCenterTest, UnderDeliveryAreNotSeenByObserversThatAHandlerAdds) {
  int calls = 0;
  mCenter.addObserver(this, "News", [&](const Notification&) {
    mCenter.removeObserver(this, "News");
    ++calls;
    observe("News");
  });
  postElsewhere("News");
  settle();
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(mHeard.empty());
  postElsewhere("News");
  settle();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(mHeard.size(), 1U);
}

TEST_F(DistributedNotificationCenterTest, AreNotDeliveredToAnObserverThatAnEarlierHandlerRemoved) {
  const int other = 0;
  mCenter.addObserver(&other, "News", [&](const Notification&) { mCenter.removeObserver(this); });
  observe("News");
  observe("More news");
  postElsewhere("News");
  postElsewhere("More news");
  settle();
  EXPECT_TRUE(mHeard.empty());
  mCenter.removeObserver(&other);
}

TEST_F(DistributedNotificationCenterTest, LetAHandlerRemoveItselfAndGoOnWithWhatItHolds) {
  std::string result;
  mCenter.addObserver(this, "News", [&, text = std::string(100, 'x')](const Notification&) {
    mCenter.removeObserver(this);
    result = text;
  });
  postElsewhere("News");
  settle();
  EXPECT_EQ(result, std::string(100, 'x'));
}

TEST_F(DistributedNotificationCenterTest, MayHaveAnyTextAsTheirName) {
  const std::vector<std::string> names{"it's", "back\\slash", "a,b='c'", "\\'", "Größe 漢字", "", " two  blanks "};
  for (const std::string& name : names) observe(name);
  std::vector<Heard> expected;
  for (const std::string& name : names) {
    postElsewhere(name);
    expected.push_back({name, "", PropertyList()});
  }
  settle();
  EXPECT_EQ(mHeard, expected);
}

TEST_F(DistributedNotificationCenterTest, ThatTheBusCannotCarryAreDropped) {
  observe("News");
  mCenter.post("\xff\xfe", "", PropertyList());
  mCenter.post("News", std::string("a\0b", 3), PropertyList());
  mCenter.post("News", "", PropertyList::array({PropertyList()}));
  mCenter.post("News", "", PropertyList::dictionary({{"n", 1}}));
  settle();
  EXPECT_EQ(mHeard, (std::vector<Heard>{{"News", "", PropertyList::dictionary({{"n", 1}})}}));
}

TEST_F(DistributedNotificationCenterTest, AreDroppedWhereTheBusTakesNoMore) {
  sd_bus* own = BusConnection::forThisThread().handle();
  ucred daemon{};
  socklen_t size = sizeof daemon;
  ASSERT_EQ(getsockopt(sd_bus_get_fd(own), SOL_SOCKET, SO_PEERCRED, &daemon, &size), 0);
  ASSERT_GT(daemon.pid, 1);
  ASSERT_EQ(kill(daemon.pid, SIGSTOP), 0);
  const PropertyList large = PropertyList::dictionary({{"n", std::string(20'000, 'n')}});
  for (std::uint64_t count = 0; count < 2 * DistributedNotificationCenter::maximumUnwritten; ++count) {
    mCenter.post("News", "", large);
  }
  std::uint64_t unwritten = 0;
  EXPECT_GE(sd_bus_get_n_queued_write(own, &unwritten), 0);
  EXPECT_EQ(unwritten, DistributedNotificationCenter::maximumUnwritten);
  EXPECT_EQ(kill(daemon.pid, SIGCONT), 0);
  // What was taken is written, and the next one goes out as ever.
  EXPECT_TRUE(test::serveBusUntil([&] { return sd_bus_get_n_queued_write(own, &unwritten) >= 0 && unwritten == 0; }));
}

TEST_F(DistributedNotificationCenterTest, WithUndecodableUserInformationCarryNone) {
  observe("News");
  sd_bus* bus = BusConnection::forThisThread().handle();
  const auto emit = [&](auto... arguments) {
    sd_bus_emit_signal(bus, notificationCenterObjectPath, notificationCenterInterface, "Posted", arguments...);
  };
  emit("ssay", "News", "garbage", 3, 1, 2, 3);
  emit("s", "News");
  emit("sss", "News", "text", "text");
  mCenter.post("News", "array", PropertyList::array({1}));
  settle();
  EXPECT_EQ(mHeard, (std::vector<Heard>{{"News", "garbage", PropertyList()}, {"News", "array", PropertyList()}}));
}

TEST_F(DistributedNotificationCenterTest, BelievesTheOwnerOfAPortAloneWhereThatIsAskedFor) {
  mCenter.believeOnly("Believed");
  observe("News");
  postElsewhere("News", PropertyList::dictionary({{"n", 1}}));
  std::unique_ptr<LocalMessagePort> port;
  elsewhere([&](DistributedNotificationCenter& center) {
    port = LocalMessagePort::create("Believed", {});
    center.post("News", "", PropertyList::dictionary({{"n", 2}}));
  });
  // Another connection than the port's.
  test::LoopThread forger;
  forger.run([] {
    DistributedNotificationCenter::defaultCenter().post("News", "", PropertyList::dictionary({{"n", 3}}));
    RemoteMessagePort::lookUp("BehindThePosts");
  });
  // What its owner said before the port went counts, what it says after that does not.
  elsewhere([&](DistributedNotificationCenter& center) {
    center.post("News", "", PropertyList::dictionary({{"n", 4}}));
    port.reset();
    center.post("News", "", PropertyList::dictionary({{"n", 5}}));
  });
  elsewhere([&](DistributedNotificationCenter& center) {
    port = LocalMessagePort::create("Believed", {});
    center.post("News", "", PropertyList::dictionary({{"n", 6}}));
  });
  ASSERT_TRUE(test::serveBusUntil([&] { return mHeard.size() >= 3; }));
  elsewhere([&](DistributedNotificationCenter&) { port.reset(); });
  std::vector<std::int64_t> heard;
  for (const Heard& each : mHeard) heard.push_back(each.userInfo["n"].toInt64());
  EXPECT_EQ(heard, (std::vector<std::int64_t>{2, 4, 6}));
}

TEST_F(DistributedNotificationCenterTest, AreObservedAgainOnANewBus) {
  observe("News");
  mBus.end();
  EXPECT_FALSE(test::serveBusUntil([] { return false; }));
  mCenter.post("News", "lost", PropertyList());
  const test::PrivateBus second;
  DistributedNotificationCenter::defaultCenter();
  test::LoopThread later;
  later.run([] { DistributedNotificationCenter::defaultCenter().post("News", "found", PropertyList()); });
  EXPECT_TRUE(test::serveBusUntil([&] { return !mHeard.empty(); }));
  EXPECT_EQ(mHeard, (std::vector<Heard>{{"News", "found", PropertyList()}}));
  mCenter.removeObserver(this);
}

TEST_F(DistributedNotificationCenterTest, BelievesTheOwnerOfThePortOnANewBus) {
  std::unique_ptr<LocalMessagePort> port = LocalMessagePort::create("Believed", {});
  mCenter.believeOnly("Believed");
  observe("News");
  mBus.end();
  EXPECT_FALSE(test::serveBusUntil([] { return false; }));
  port.reset();
  const test::PrivateBus second;
  // Under the unique name that the owner had on the bus before.
  DistributedNotificationCenter::defaultCenter().post("News", "forged", PropertyList());
  test::LoopThread later;
  later.run([&] {
    port = LocalMessagePort::create("Believed", {});
    DistributedNotificationCenter::defaultCenter().post("News", "believed", PropertyList());
  });
  EXPECT_TRUE(test::serveBusUntil([&] { return !mHeard.empty(); }));
  EXPECT_EQ(mHeard, (std::vector<Heard>{{"News", "believed", PropertyList()}}));
  later.run([&] { port.reset(); });
  mCenter.removeObserver(this);
}

}  // namespace
}  // namespace vorn
