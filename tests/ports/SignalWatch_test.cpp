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

// An object with two signals on another connection.
class SignalWatchTest : public testing::Test {
 protected:
  SignalWatchTest() {
    mThread.run([this] {
      mObject = BusObject::create({"org.vorn.SignalTest", path, interface, {}, {{"Changed", {}}, {"Other", {}}}});
      EXPECT_NE(mObject, nullptr);
      const char* name = nullptr;
      sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
      mConnection = name;
    });
  }
  ~SignalWatchTest() override {
    mThread.run([this] { mObject.reset(); });
  }
  void emit(const std::string& signal) {
    mThread.run([&] { EXPECT_TRUE(mObject->emit(signal, {})); });
  }

  test::PrivateBus mBus;
  std::unique_ptr<BusObject> mObject;
  std::string mConnection;
  test::LoopThread mThread;
};

TEST_F(SignalWatchTest, HearsTheSignalAndWhoSentIt) {
  std::vector<std::string> senders;
  const SignalWatch watch(path, interface, "Changed", [&](const std::string& sender) { senders.push_back(sender); });
  emit("Changed");
  emit("Other");
  emit("Changed");
  ASSERT_TRUE(test::serveBusUntil([&] { return senders.size() >= 2; }));
  EXPECT_EQ(senders, (std::vector<std::string>{mConnection, mConnection}));
}

TEST_F(SignalWatchTest, MayEndInItsHandler) {
  int signals = 0;
  std::optional<SignalWatch> watch;
  watch.emplace(path, interface, "Changed", [&](const std::string&) {
    ++signals;
    watch.reset();
  });
  int others = 0;
  const SignalWatch other(path, interface, "Other", [&](const std::string&) { ++others; });
  emit("Changed");
  emit("Changed");
  emit("Other");
  ASSERT_TRUE(test::serveBusUntil([&] { return others == 1; }));
  EXPECT_EQ(signals, 1);
}

TEST(SignalWatchWithoutABusTest, HearsNothing) {
  test::PrivateBus bus;
  bus.end();
  const SignalWatch watch(path, interface, "Changed", [](const std::string&) { FAIL(); });
}

}  // namespace
}  // namespace vorn
