#include "ports/SignalWatch.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ports/BusConnection.h"
#include "ports/BusObject.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

constexpr const char* path = "/org/vorn/SignalTest";
constexpr const char* interface = "org.vorn.SignalTest1";

// An object with some signals on another connection.
class SignalWatchTest : public testing::Test {
 protected:
  SignalWatchTest() {
    mThread.run([this] {
      mObject = BusObject::create({"org.vorn.SignalTest",
                                   path,
                                   interface,
                                   {},
                                   {{"Changed", {}}, {"Other", {}}, {"Count", {{"u", "count"}, {"s", "word"}}}}});
      EXPECT_NE(mObject, nullptr);
      const char* name = nullptr;
      sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
      mConnection = name;
    });
  }
  ~SignalWatchTest() override {
    mThread.run([this] { mObject.reset(); });
  }
  void emit(const std::string& signal, const std::vector<PropertyList>& values = {}) {
    mThread.run([&] { EXPECT_TRUE(mObject->emit(signal, values)); });
  }

  test::PrivateBus mBus;
  std::unique_ptr<BusObject> mObject;
  std::string mConnection;
  test::LoopThread mThread;
};

TEST_F(SignalWatchTest, HearsTheSignalAndWhoSentIt) {
  std::vector<std::string> senders;
  const SignalWatch watch({path, interface, "Changed"},
                          [&](const ReceivedSignal& received) { senders.push_back(received.sender); });
  emit("Changed");
  emit("Other");
  emit("Changed");
  ASSERT_TRUE(test::serveBusUntil([&] { return senders.size() >= 2; }));
  EXPECT_EQ(senders, (std::vector<std::string>{mConnection, mConnection}));
}

TEST_F(SignalWatchTest, HearsWhatTheSignalCarriesAndOfWhichObject) {
  std::vector<ReceivedSignal> below;
  SignalSource source{"/org/vorn", interface, "Count"};
  source.hasObjectsBelow = true;
  source.busName = "org.vorn.SignalTest";
  const SignalWatch watchBelow(source, [&](const ReceivedSignal& received) { below.push_back(received); });
  std::vector<ReceivedSignal> exact;
  const SignalWatch watch({path, interface, "Count"},
                          [&](const ReceivedSignal& received) { exact.push_back(received); });
  const SignalWatch elsewhere({"/org/vorn", interface, "Count"}, [](const ReceivedSignal&) { FAIL(); });
  emit("Count", {5, "five"});
  ASSERT_TRUE(test::serveBusUntil([&] { return !below.empty() && !exact.empty(); }));
  for (const ReceivedSignal& received : {below.front(), exact.front()}) {
    EXPECT_EQ(received.sender, mConnection);
    EXPECT_EQ(received.path, path);
    EXPECT_EQ(received.values, (std::vector<PropertyList>{5, "five"}));
  }
}

TEST_F(SignalWatchTest, MayEndInItsHandler) {
  int signals = 0;
  std::optional<SignalWatch> watch;
  watch.emplace(SignalSource{path, interface, "Changed"}, [&](const ReceivedSignal&) {
    ++signals;
    watch.reset();
  });
  int others = 0;
  const SignalWatch other({path, interface, "Other"}, [&](const ReceivedSignal&) { ++others; });
  emit("Changed");
  emit("Changed");
  emit("Other");
  ASSERT_TRUE(test::serveBusUntil([&] { return others == 1; }));
  EXPECT_EQ(signals, 1);
}

TEST(SignalWatchWithoutABusTest, HearsNothing) {
  test::PrivateBus bus;
  bus.end();
  const SignalWatch watch({path, interface, "Changed"}, [](const ReceivedSignal&) { FAIL(); });
}

}  // namespace
}  // namespace vorn
