#include "core-engine/device/linux/MouseServices.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "SystemFixture.h"
#include "core-engine/TestParts.h"

namespace vorn::engine {
namespace {

using namespace std::chrono_literals;
using Way = DeviceAbilities::Way;

const std::string resolution = "set /org/freedesktop/ratbag1/resolution/hidraw3/p1/r1 Resolution ";
const std::string rate = "set /org/freedesktop/ratbag1/profile/hidraw3/p1 ReportRate ";
const std::string firstLed = "set /org/freedesktop/ratbag1/led/hidraw3/p1/l0 ";
const std::string secondLed = "set /org/freedesktop/ratbag1/led/hidraw3/p1/l1 ";
constexpr Sensitivity factory{1600, 1200};

MouseHardware mouse() {
  MouseHardware hardware;
  hardware.id = "usb-1234:abcd-A1";
  hardware.rawNodes = {"/dev/hidraw2", "/dev/hidraw3"};
  hardware.powerSupplies = {"hidpp_battery_0"};
  return hardware;
}

// What the mouse of the double is at first.
DeviceValues factoryValues() {
  DeviceValues values;
  values.sensitivity = factory;
  values.pollingRate = 1000;
  values.light = {true, 0, 4, 4, {{1, 0, 0}, {0, 1, 0}}};
  return values;
}

class MouseServicesTest : public SystemFixture {
 protected:
  void start(const Calls& commands = {"ratbag add hidraw3 usb:1234:abcd:0", "ratbag start"}) {
    mSystem = std::make_unique<vorn::test::FakeSystemProcess>(commands);
  }
  void startKnown() {
    start();
    mServices.apply(mValues);
    mServices.update(mouse());
    ASSERT_TRUE(becomesTrue([this] { return mServices.sensitivity() == factory; }));
    handleAll();
  }
  void obey(const std::string& command) { EXPECT_TRUE(mSystem->obey(command)) << command; }
  bool becomesSensitivity(std::optional<Sensitivity> sensitivity) {
    return becomesTrue([this, sensitivity] { return mServices.sensitivity() == sensitivity; });
  }
  // As a control does that is held: it changes the sensitivity.
  void press(Sensitivity sensitivity) {
    mServices.noteControl(true);
    apply(sensitivity);
  }
  void release(Sensitivity sensitivity) {
    mServices.noteControl(false);
    apply(sensitivity);
  }
  void apply(Sensitivity sensitivity) {
    mValues.sensitivity = sensitivity;
    mServices.apply(mValues);
  }
  bool hasNoCalls() {
    handleAll();
    return !mSystem->nextCall();
  }

  std::unique_ptr<vorn::test::FakeSystemProcess> mSystem;
  test::ManualScheduler mScheduler;
  DeviceValues mValues = factoryValues();
  int mHardwareChanges = 0;
  int mBatteryChanges = 0;
  int mSleeps = 0;
  int mAppearances = 0;
  MouseServices mServices{mScheduler,
                          {[this] { ++mHardwareChanges; }, [this] { ++mBatteryChanges; }, [this] { ++mSleeps; },
                           [this] { ++mAppearances; }}};
};

TEST_F(MouseServicesTest, SetsWhatIsAskedOfAMouseThatBecomesKnown) {
  start();
  DeviceValues values = factoryValues();
  values.sensitivity = {900, 401};
  values.pollingRate = 500;
  values.light = {true, 0, 2, 4, {{0, 0, 1}, {1, 0.5, 1}}};
  mServices.apply(values);
  mServices.update(mouse());
  EXPECT_EQ(mServices.sensitivity(), std::nullopt);
  ASSERT_TRUE(becomesTrue([this] { return mHardwareChanges > 0; }));
  // What is under way counts already, so that nothing is scaled in vain meanwhile.
  EXPECT_EQ(mServices.sensitivity(), (Sensitivity{800, 400}));
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{rate + "500", "commit"}));
  EXPECT_EQ(callsToCommit(*mSystem),
            (Calls{resolution + "800x400", firstLed + "Color 0,0,85", secondLed + "Color 255,255,255", "commit"}));
  handleAll();
  EXPECT_EQ(mServices.sensitivity(), (Sensitivity{800, 400}));
  EXPECT_TRUE(hasNoCalls());
}

TEST_F(MouseServicesTest, OffersWhatTheServicesKnow) {
  mServices.apply(mValues);
  EXPECT_EQ(mServices.abilities(), DeviceAbilities());
  startKnown();
  DeviceAbilities known;
  known.sensitivity = Way::Hardware;
  known.hasPollingRate = known.hasLight = true;
  EXPECT_EQ(mServices.abilities(), known);
  obey("power start");
  obey("power add mouse hidpp_battery_0 72.6 2");
  ASSERT_TRUE(becomesTrue([this] { return mBatteryChanges == 1; }));
  known.hasBattery = true;
  EXPECT_EQ(mServices.abilities(), known);
  EXPECT_EQ(mServices.batteryPercent(), 73);
  EXPECT_EQ(mServices.chargingStatus(), ChargingStatus::OnBattery);
  mServices.update({});
  EXPECT_EQ(mServices.abilities(), DeviceAbilities());
  EXPECT_EQ(mServices.batteryPercent(), 0);
  EXPECT_EQ(mServices.chargingStatus(), ChargingStatus::NoBatteryDisplay);
}

TEST_F(MouseServicesTest, SetsEachKindOnlyWhenTheSettingsChangeIt) {
  startKnown();
  EXPECT_TRUE(hasNoCalls());
  mValues.light.effect = 4;
  mServices.apply(mValues);
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{firstLed + "Mode 2", "commit"}));
  handleAll();
  mValues.light.isOn = false;
  mServices.apply(mValues);
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{firstLed + "Mode 0", secondLed + "Mode 0", "commit"}));
  handleAll();
  mValues.assigned.insert("20");
  mServices.apply(mValues);
  EXPECT_TRUE(hasNoCalls());
  mValues.pollingRate = 250;
  mServices.apply(mValues);
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{rate + "250", "commit"}));
}

TEST_F(MouseServicesTest, TurnsTheLightOffAtTheLowestPositionOfItsBrightness) {
  startKnown();
  mValues.light.brightness = 1;
  mServices.apply(mValues);
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{firstLed + "Mode 0", secondLed + "Mode 0", "commit"}));
}

TEST_F(MouseServicesTest, DimsTheLightOnBattery) {
  mValues.light.brightnessOnBattery = 3;
  startKnown();
  obey("power start");
  obey("power add mouse hidpp_battery_0 50 2");
  ASSERT_TRUE(becomesTrue([this] { return mBatteryChanges == 1; }));
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{firstLed + "Color 170,0,0", "commit"}));
  handleAll();
  obey("power change mouse 51 1");
  ASSERT_TRUE(becomesTrue([this] { return mBatteryChanges == 2; }));
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{firstLed + "Color 255,0,0", "commit"}));
}

TEST_F(MouseServicesTest, WritesAnotherSensitivityAtOnceThatNoControlHasBrought) {
  startKnown();
  apply({400, 400});
  EXPECT_EQ(mServices.sensitivity(), (Sensitivity{400, 400}));
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{resolution + "400x400", "commit"}));
}

TEST_F(MouseServicesTest, WritesNoSensitivityThatLastsOnlyWhileAControlIsHeld) {
  startKnown();
  press({400, 400});
  mScheduler.advance(10s);
  EXPECT_EQ(mServices.sensitivity(), factory);
  release(factory);
  mScheduler.advance(10s);
  EXPECT_EQ(mServices.sensitivity(), factory);
  EXPECT_TRUE(hasNoCalls());
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(MouseServicesTest, WritesWhatControlsHaveBroughtWhenItHasLasted) {
  startKnown();
  for (const std::int32_t each : {400, 200, 800}) {
    press({each, each});
    mServices.noteControl(false);
    mScheduler.advance(999ms);
  }
  EXPECT_TRUE(hasNoCalls());
  EXPECT_EQ(mServices.sensitivity(), factory);
  const int changes = mHardwareChanges;
  mScheduler.advance(1ms);
  EXPECT_EQ(mServices.sensitivity(), (Sensitivity{800, 800}));
  EXPECT_EQ(mHardwareChanges, changes + 1);
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{resolution + "800x800", "commit"}));
}

TEST_F(MouseServicesTest, TakesAChangeJustAfterAReleaseForTheControls) {
  startKnown();
  mServices.noteControl(true);
  mServices.noteControl(false);
  mScheduler.advance(500ms);
  apply({400, 400});
  EXPECT_EQ(mServices.sensitivity(), factory);
  apply(factory);
  mScheduler.advance(10s);
  EXPECT_TRUE(hasNoCalls());
}

TEST_F(MouseServicesTest, KeepsWhatIsWrittenFromAMouseThatGoesBeforeItHasLasted) {
  startKnown();
  press({400, 400});
  mServices.noteControl(false);
  mServices.update({});
  mScheduler.advance(10s);
  EXPECT_EQ(mServices.sensitivity(), std::nullopt);
  EXPECT_TRUE(hasNoCalls());
  mServices.update(mouse());
  ASSERT_TRUE(becomesSensitivity(Sensitivity{400, 400}));
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{resolution + "400x400", "commit"}));
}

TEST_F(MouseServicesTest, AcceptsWhatIsSetElsewhereUntilTheSettingsChange) {
  startKnown();
  obey("ratbag resolution hidraw3 400 400");
  ASSERT_TRUE(becomesSensitivity(Sensitivity{400, 400}));
  obey("ratbag rate hidraw3 125");
  handleAll();
  mValues.assigned.insert("20");
  mServices.apply(mValues);
  EXPECT_TRUE(hasNoCalls());
  apply({800, 800});
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{resolution + "800x800", "commit"}));
}

TEST_F(MouseServicesTest, TellsWhatTheMouseHasWhenItTakesAnotherValue) {
  startKnown();
  obey("ratbag clamp 400");
  apply({3200, 3200});
  EXPECT_EQ(mServices.sensitivity(), (Sensitivity{3200, 3200}));
  ASSERT_TRUE(becomesSensitivity(Sensitivity{400, 400}));
  handleAll();
  EXPECT_EQ(mServices.sensitivity(), (Sensitivity{400, 400}));
}

TEST_F(MouseServicesTest, TellsWhatTheMouseHasWhenItRefuses) {
  startKnown();
  obey("ratbag refuse Resolution");
  const int changes = mHardwareChanges;
  apply({400, 400});
  EXPECT_EQ(mServices.sensitivity(), (Sensitivity{400, 400}));
  ASSERT_TRUE(becomesTrue([&] { return mHardwareChanges > changes; }));
  EXPECT_EQ(mServices.sensitivity(), factory);
  EXPECT_EQ(callsToCommit(*mSystem), Calls{"commit"});
  EXPECT_TRUE(hasNoCalls());
}

TEST_F(MouseServicesTest, AppliesEverythingToAMouseThatIsForgottenAndKnownAgain) {
  startKnown();
  obey("ratbag remove hidraw3");
  ASSERT_TRUE(becomesSensitivity(std::nullopt));
  EXPECT_EQ(mServices.abilities(), DeviceAbilities());
  apply({400, 400});
  EXPECT_TRUE(hasNoCalls());
  obey("ratbag add hidraw3 usb:1234:abcd:0");
  ASSERT_TRUE(becomesSensitivity(Sensitivity{400, 400}));
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{resolution + "400x400", "commit"}));
}

TEST_F(MouseServicesTest, AppliesEverythingAfterASleep) {
  startKnown();
  obey("login start");
  handleAll();
  obey("ratbag resolution hidraw3 400 400");
  ASSERT_TRUE(becomesSensitivity(Sensitivity{400, 400}));
  obey("login sleep");
  ASSERT_TRUE(becomesTrue([this] { return mSleeps == 1; }));
  EXPECT_TRUE(hasNoCalls());
  obey("login wake");
  ASSERT_TRUE(becomesSensitivity(factory));
  EXPECT_EQ(callsToCommit(*mSystem), (Calls{resolution + "1600x1200", "commit"}));
  EXPECT_EQ(mSleeps, 1);
}

TEST_F(MouseServicesTest, LeavesAMouseAloneOfWhichNothingIsAsked) {
  startKnown();
  mServices.apply({});
  obey("ratbag resolution hidraw3 400 400");
  ASSERT_TRUE(becomesSensitivity(Sensitivity{400, 400}));
  EXPECT_TRUE(hasNoCalls());
}

TEST_F(MouseServicesTest, FindsAMouseWithoutRawNodesByItsModel) {
  start();
  MouseHardware hardware = mouse();
  hardware.rawNodes.clear();
  mServices.update(hardware);
  EXPECT_TRUE(becomesSensitivity(factory));
}

TEST_F(MouseServicesTest, LooksForAMouseAgainWhenItsRawNodesCome) {
  start();
  MouseHardware hardware = mouse();
  hardware.rawNodes = {"/dev/hidraw2"};
  mServices.update(hardware);
  handleAll();
  EXPECT_EQ(mServices.sensitivity(), std::nullopt);
  mServices.update(mouse());
  EXPECT_TRUE(becomesSensitivity(factory));
}

TEST_F(MouseServicesTest, FollowsABatteryThatGetsAnotherName) {
  start({"power start", "power add mouse hidpp_battery_0 50 2", "power add again hidpp_battery_1 40 2"});
  mServices.update(mouse());
  ASSERT_TRUE(becomesTrue([this] { return mServices.batteryPercent() == 50; }));
  MouseHardware hardware = mouse();
  hardware.powerSupplies = {"hidpp_battery_1"};
  mServices.update(hardware);
  EXPECT_EQ(mBatteryChanges, 2);
  EXPECT_EQ(mServices.batteryPercent(), 0);
  ASSERT_TRUE(becomesTrue([this] { return mBatteryChanges == 3; }));
  EXPECT_EQ(mServices.batteryPercent(), 40);
}

TEST_F(MouseServicesTest, HearsOfBatteriesWhileTheMouseHasNone) {
  start({"power start"});
  MouseHardware hardware = mouse();
  hardware.powerSupplies = {};
  mServices.update(hardware);
  handleAll();
  obey("power add mouse hidpp_battery_0 50 2");
  ASSERT_TRUE(becomesTrue([this] { return mAppearances == 1; }));
  mServices.update(mouse());
  ASSERT_TRUE(becomesTrue([this] { return mServices.batteryPercent() == 50; }));
  obey("power add other hidpp_battery_1 40 2");
  handleAll();
  EXPECT_EQ(mAppearances, 1);
}

TEST_F(MouseServicesTest, HidesABatteryThatIsFullOfAMouseOnItsCableAlone) {
  start({"power start", "power add mouse hidpp_battery_0 100 4"});
  MouseHardware hardware = mouse();
  hardware.isWireless = true;
  mServices.update(hardware);
  ASSERT_TRUE(becomesTrue([this] { return mServices.batteryPercent() == 100; }));
  EXPECT_EQ(mServices.chargingStatus(), ChargingStatus::OnBattery);
  mServices.update(mouse());
  ASSERT_TRUE(becomesTrue([this] { return mServices.batteryPercent() == 100; }));
  EXPECT_EQ(mServices.chargingStatus(), ChargingStatus::NoBatteryDisplay);
}

TEST_F(MouseServicesTest, DoesWithoutABus) {
  mBus.end();
  mServices.update(mouse());
  mServices.apply(mValues);
  press({400, 400});
  mScheduler.advance(10s);
  EXPECT_EQ(mServices.sensitivity(), std::nullopt);
  EXPECT_EQ(mServices.abilities(), DeviceAbilities());
}

}  // namespace
}  // namespace vorn::engine
