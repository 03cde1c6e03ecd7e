// With the real ratbagd, which shows no mouse where there is no hardware, and with its own client at the double of it:
// what the engine talks to in the other tests is what it will meet.
#include <gtest/gtest.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <vector>

#include "SystemFixture.h"
#include "core-engine/device/linux/RatbagMouse.h"

namespace vorn::engine {
namespace {

constexpr const char* daemonProgram = "/usr/bin/ratbagd";
constexpr const char* clientProgram = "/usr/bin/ratbagctl";

class RatbagMouseRealTest : public SystemFixture {
 protected:
  // What it writes, and its exit status at the end.
  static std::vector<std::string> runClient(const std::vector<std::string>& arguments) {
    std::vector<std::string> commandLine = {clientProgram};
    commandLine.insert(commandLine.end(), arguments.begin(), arguments.end());
    vorn::test::ChildProcess client(commandLine);
    std::vector<std::string> lines;
    while (const auto line = client.waitForLine([](const std::string&) { return true; })) lines.push_back(*line);
    lines.push_back("status " + std::to_string(client.waitForEnd().value_or(-1)));
    return lines;
  }
};

TEST_F(RatbagMouseRealTest, IsStartedByTheBusKnowsNoMouseAndMayBeKilled) {
  if (access(daemonProgram, X_OK) != 0) GTEST_SKIP() << daemonProgram << " is not installed (Debian package ratbagd)";
  mBus.installService("org.freedesktop.ratbag1", std::string("/usr/bin/env ") + vorn::test::PrivateBus::systemAddress +
                                                     "=" + mBus.address() + " " + daemonProgram);
  std::vector<RatbagMouse::News> news;
  const RatbagMouse mouse({{"hidraw987654"}}, [&](RatbagMouse::News each) { news.push_back(each); });
  const auto stands = [&](RatbagMouse::Standing standing) {
    return becomesTrue([&] { return mouse.standing() == standing; });
  };
  ASSERT_TRUE(stands(RatbagMouse::Standing::NotListed));
  const BusTarget bus{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", Bus::System};
  const BusAnswer process =
      callBusMethod(bus, "GetConnectionUnixProcessID", {{"s", "org.freedesktop.ratbag1"}}, std::chrono::seconds(20));
  ASSERT_EQ(process.values.size(), 1U) << process.error;
  kill(process.values.front().toInt(), SIGKILL);
  ASSERT_TRUE(stands(RatbagMouse::Standing::NotRunning));
  EXPECT_TRUE(news.empty());
}

TEST_F(RatbagMouseRealTest, HasADoubleThatItsOwnClientListsAndSets) {
  if (access(clientProgram, X_OK) != 0) GTEST_SKIP() << clientProgram << " is not installed (Debian package ratbagd)";
  vorn::test::FakeSystemProcess daemon({"ratbag add hidraw3 usb:1234:abcd:0", "ratbag start"});
  const std::vector<std::string> list = runClient({"list"});
  ASSERT_EQ(list.size(), 2U);
  EXPECT_NE(list[0].find("Acme Mouse"), std::string::npos) << list[0];
  EXPECT_EQ(list[1], "status 0");

  std::vector<RatbagMouse::News> news;
  const RatbagMouse mouse({{"hidraw3"}}, [&](RatbagMouse::News each) { news.push_back(each); });
  ASSERT_TRUE(becomesTrue([&] { return mouse.state() != nullptr; }));
  EXPECT_EQ(runClient({"Acme", "dpi", "get"}), (std::vector<std::string>{"1600x1200dpi", "status 0"}));
  EXPECT_EQ(runClient({"Acme", "dpi", "get-all"}),
            (std::vector<std::string>{"200 400 800 1200 1600 3200", "status 0"}));
  EXPECT_EQ(runClient({"Acme", "rate", "get-all"}), (std::vector<std::string>{"125 250 500 1000", "status 0"}));
  EXPECT_EQ(runClient({"Acme", "dpi", "set", "400"}), std::vector<std::string>{"status 0"});
  EXPECT_EQ(runClient({"Acme", "rate", "set", "500"}), std::vector<std::string>{"status 0"});
  EXPECT_EQ(runClient({"Acme", "led", "0", "set", "mode", "on", "color", "102030"}),
            std::vector<std::string>{"status 0"});
  ASSERT_TRUE(becomesTrue([&] {
    return mouse.state()->resolution == RatbagResolution{400, 400} && mouse.state()->reportRate == 500 &&
           mouse.state()->leds.at(0).color == RatbagColor{16, 32, 48};
  }));
}

}  // namespace
}  // namespace vorn::engine
