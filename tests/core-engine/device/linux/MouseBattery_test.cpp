#include "core-engine/device/linux/MouseBattery.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "SystemFixture.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine {
namespace {

using Told = std::pair<std::optional<int>, ChargingStatus>;

class MouseBatteryTest : public SystemFixture {
 protected:
  void follow(const std::vector<std::string>& supplies = {"hidpp_battery_0"}, bool isWired = true) {
    mBattery.emplace(supplies, isWired, [this] { mTold.push_back(now()); });
  }
  Told now() const { return {mBattery->percent(), mBattery->chargingStatus()}; }
  bool hasTold(std::size_t count) {
    return becomesTrue([&] { return mTold.size() >= count; });
  }

  std::optional<MouseBattery> mBattery;
  std::vector<Told> mTold;
};

constexpr auto onBattery = ChargingStatus::OnBattery;
constexpr auto charging = ChargingStatus::Charging;
constexpr auto none = ChargingStatus::NoBatteryDisplay;

TEST_F(MouseBatteryTest, IsFoundByTheNameOfItsSupplyAmongOthers) {
  vorn::test::FakeSystemProcess system({"power start", "power add battery_BAT0 BAT0 40 2",
                                        "power add mouse hidpp_battery_0 72.6 2",
                                        "power add other hidpp_battery_1 10 1"});
  follow();
  EXPECT_EQ(now(), Told(std::nullopt, none));
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(mTold, std::vector{Told(73, onBattery)});
}

TEST_F(MouseBatteryTest, IsFoundByItsPathInTheSystemToo) {
  vorn::test::FakeSystemProcess system(
      {"power start", "power add mouse /sys/devices/x/power_supply/hid-aa-battery 50 1"});
  follow({"/sys/devices/other/path/hid-aa-battery"});
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(mTold, std::vector{Told(50, charging)});
}

TEST_F(MouseBatteryTest, TellsEveryChangeAndNoneOfAnother) {
  vorn::test::FakeSystemProcess system(
      {"power start", "power add mouse hidpp_battery_0 50 2", "power add other x 10 1"});
  follow();
  ASSERT_TRUE(hasTold(1));
  handleAll();
  std::size_t changes = 1;
  for (const char* command : {"power change mouse 49 2", "power change other 9 1", "power change mouse 49 1",
                              "power change mouse 100 4", "power change mouse 100 5", "power change mouse 99 6",
                              "power change mouse 250 2", "power change mouse -3 2", "power change mouse nan 2"}) {
    EXPECT_TRUE(system.obey(command));
    if (std::string(command).find("other") == std::string::npos) {
      ASSERT_TRUE(hasTold(++changes)) << command;
    }
  }
  EXPECT_EQ(mTold, (std::vector{Told(50, onBattery), Told(49, onBattery), Told(49, charging), Told(100, none),
                                Told(100, charging), Told(99, onBattery), Told(100, onBattery), Told(0, onBattery),
                                Told(std::nullopt, none)}));
}

TEST_F(MouseBatteryTest, IsShownWhenItIsFullAndHasNoCable) {
  vorn::test::FakeSystemProcess system({"power start", "power add mouse hidpp_battery_0 100 4"});
  follow({"hidpp_battery_0"}, false);
  ASSERT_TRUE(hasTold(1));
  EXPECT_TRUE(system.obey("power change mouse 99 2"));
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(mTold, (std::vector{Told(100, onBattery), Told(99, onBattery)}));
}

TEST_F(MouseBatteryTest, IsNotShownWhileTheServiceHasToGuessItsLevel) {
  vorn::test::FakeSystemProcess system({"power start", "power add mouse hidpp_battery_0 10 2", "power level mouse 3"});
  follow();
  ASSERT_TRUE(hasTold(1));
  EXPECT_TRUE(system.obey("power level mouse 0"));
  ASSERT_TRUE(hasTold(2));
  EXPECT_TRUE(system.obey("power level mouse 1"));
  ASSERT_TRUE(hasTold(3));
  EXPECT_EQ(mTold, (std::vector{Told(10, onBattery), Told(std::nullopt, none), Told(10, onBattery)}));
}

TEST_F(MouseBatteryTest, IsNotAskedForWhenItWasOnlyLookedAt) {
  vorn::test::FakeSystemProcess system({"power start", "power add mouse hidpp_battery_0 50 2"});
  follow();
  ASSERT_TRUE(hasTold(1));
  handleAll();
  EXPECT_TRUE(system.obey("power poll mouse 49"));
  handleAll();
  handleAll();
  EXPECT_EQ(mTold, std::vector{Told(50, onBattery)});
  EXPECT_TRUE(system.obey("power change mouse 48 2"));
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(now(), Told(48, onBattery));
}

TEST_F(MouseBatteryTest, GoesWithItsMouseWhileItIsCharged) {
  vorn::test::FakeSystemProcess system({"power start", "power add mouse hidpp_battery_0 50 1"});
  follow();
  ASSERT_TRUE(hasTold(1));
  EXPECT_TRUE(system.obey("power remove mouse"));
  ASSERT_TRUE(becomesTrue([this] { return now() == Told(std::nullopt, none); }));
}

TEST_F(MouseBatteryTest, ComesAndGoesWithItsMouseAndWithTheService) {
  vorn::test::FakeSystemProcess system({"power start"});
  follow();
  handleAll();
  EXPECT_TRUE(system.obey("power add mouse hidpp_battery_0 50 2"));
  ASSERT_TRUE(hasTold(1));
  EXPECT_TRUE(system.obey("power unplug mouse"));
  ASSERT_TRUE(hasTold(2));
  EXPECT_TRUE(system.obey("power remove mouse"));
  EXPECT_TRUE(system.obey("power add mouse hidpp_battery_0 60 1"));
  ASSERT_TRUE(hasTold(3));
  EXPECT_TRUE(system.obey("power stop"));
  ASSERT_TRUE(hasTold(4));
  EXPECT_TRUE(system.obey("power start"));
  ASSERT_TRUE(hasTold(5));
  system.end();
  ASSERT_TRUE(hasTold(6));
  const Told gone(std::nullopt, none);
  EXPECT_EQ(mTold, (std::vector{Told(50, onBattery), gone, Told(60, charging), gone, Told(60, charging), gone}));
}

TEST_F(MouseBatteryTest, IsNotKnownFromAServiceThatTalksNonsense) {
  vorn::test::FakeSystemProcess system({"power start", "power garbage on"});
  follow();
  handleAll();
  handleAll();
  EXPECT_EQ(now(), Told(std::nullopt, none));
  EXPECT_TRUE(system.obey("power garbage off"));
  EXPECT_TRUE(system.obey("power stop"));
  EXPECT_TRUE(system.obey("power add mouse hidpp_battery_0 60 1"));
  EXPECT_TRUE(system.obey("power start"));
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(mTold, std::vector{Told(60, charging)});
}

TEST_F(MouseBatteryTest, WaitsForAServiceThatHangsWithoutHinderingAnything) {
  vorn::test::FakeSystemProcess system({"power start", "power add mouse hidpp_battery_0 50 2"});
  system.pause();
  follow();
  handleAll();
  EXPECT_EQ(now(), Told(std::nullopt, none));
  system.resume();
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(mTold, std::vector{Told(50, onBattery)});
}

TEST_F(MouseBatteryTest, HasTheServiceStartedButOnlyForAMouseWithABattery) {
  const test::TemporaryFolder folder;
  const std::string mark = folder.path("started");
  mBus.installService("org.freedesktop.UPower", "/bin/touch " + mark);
  follow({});
  handleAll();
  EXPECT_FALSE(std::filesystem::exists(mark));
  follow();
  EXPECT_TRUE(becomesTrue([&] { return std::filesystem::exists(mark); }));
}

TEST_F(MouseBatteryTest, IsNotKnownWithoutABus) {
  mBus.end();
  follow();
  EXPECT_EQ(now(), Told(std::nullopt, none));
}

}  // namespace
}  // namespace vorn::engine
