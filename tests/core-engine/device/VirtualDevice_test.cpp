#include "core-engine/device/VirtualDevice.h"

#include <gtest/gtest.h>

#include <vector>

#include "model/Controls.h"

namespace vorn::engine::test {
namespace {

using Connection = Device::Connection;
using Events = std::vector<DeviceEvent>;

class VirtualDeviceTest : public testing::Test {
 protected:
  VirtualDeviceTest() {
    device.setEventHandler([this](const DeviceEvent& event) { events.push_back(event); });
    device.setOutputHandler([this](const OutputEvent& event) { outputs.push_back(event); });
  }

  VirtualDevice device;
  Events events;
  std::vector<OutputEvent> outputs;
};

TEST_F(VirtualDeviceTest, IsOnItsCableAtFirst) {
  EXPECT_TRUE(device.isPresent());
  EXPECT_TRUE(device.isWired());
  EXPECT_EQ(device.firmwareVersion(), "1.00");
  EXPECT_EQ(device.batteryPercent(), 100);
  EXPECT_EQ(device.chargingStatus(), ChargingStatus::NoBatteryDisplay);
}

TEST_F(VirtualDeviceTest, HasNothingToTellWhileAbsent) {
  device.setConnection(Connection::Absent);
  EXPECT_EQ(events, Events{ConnectionChanged{}});
  EXPECT_FALSE(device.isPresent());
  EXPECT_FALSE(device.isWired());
  EXPECT_EQ(device.firmwareVersion(), "");
  EXPECT_EQ(device.batteryPercent(), 0);
  EXPECT_EQ(device.chargingStatus(), ChargingStatus::NoBatteryDisplay);
}

TEST_F(VirtualDeviceTest, ChargesOnItsCableUntilItIsFull) {
  device.setBattery(40);
  EXPECT_EQ(device.chargingStatus(), ChargingStatus::Charging);
  device.setConnection(Connection::Wireless);
  EXPECT_EQ(device.chargingStatus(), ChargingStatus::OnBattery);
  EXPECT_FALSE(device.isWired());
  EXPECT_EQ(events, (Events{BatteryChanged{}, ConnectionChanged{}}));
}

TEST_F(VirtualDeviceTest, KeepsTheBatteryLevelWithinItsRange) {
  device.setBattery(-5);
  EXPECT_EQ(device.batteryPercent(), 0);
  device.setBattery(500);
  EXPECT_EQ(device.batteryPercent(), 100);
}

TEST_F(VirtualDeviceTest, TellsNothingWhenNothingChanges) {
  device.setConnection(Connection::Wired);
  device.setBattery(100);
  EXPECT_EQ(events, Events());
}

TEST_F(VirtualDeviceTest, TellsThePressAndReleaseOfItsControls) {
  EXPECT_TRUE(device.setControl("43", true));
  EXPECT_TRUE(device.setControl("07", true));
  EXPECT_EQ(device.pressedControls(), (VirtualDevice::Controls{"07", "43"}));
  EXPECT_TRUE(device.setControl("43", false));
  EXPECT_EQ(device.pressedControls(), VirtualDevice::Controls{"07"});
  EXPECT_EQ(events, (Events{ControlChanged{"43", true}, ControlChanged{"07", true}, ControlChanged{"43", false}}));
}

TEST_F(VirtualDeviceTest, TellsNothingOfAControlThatStaysAsItIs) {
  EXPECT_TRUE(device.setControl("43", false));
  EXPECT_TRUE(device.setControl("43", true));
  EXPECT_TRUE(device.setControl("43", true));
  EXPECT_EQ(events, (Events{ControlChanged{"43", true}}));
}

TEST_F(VirtualDeviceTest, HasTwentySevenControlsAndKeysForKeymapAndStage) {
  for (const auto identifier : keys::keyIdentifiers) EXPECT_TRUE(device.setControl(identifier, true));
  for (const auto identifier : keys::buttonIdentifiers) EXPECT_TRUE(device.setControl(identifier, true));
  for (const char* key : {"keymap", "stage-up", "stage-down"}) EXPECT_TRUE(device.setControl(key, true));
  EXPECT_EQ(events.size(), 30U);
}

TEST_F(VirtualDeviceTest, HasNothingPressedAfterItWasPluggedOrUnplugged) {
  device.setControl("43", true);
  device.setConnection(Connection::Wireless);
  EXPECT_EQ(device.pressedControls(), VirtualDevice::Controls());
}

TEST_F(VirtualDeviceTest, TellsTypedKeysAndButtonsAlsoWhileAbsent) {
  device.setConnection(Connection::Absent);
  EXPECT_TRUE(device.typeKey(7, 4, true));
  EXPECT_TRUE(device.typeKey(7, 231, false));
  EXPECT_TRUE(device.typeKey(9, 9, true));
  EXPECT_EQ(events,
            (Events{ConnectionChanged{}, KeyChanged{7, 4, true}, KeyChanged{7, 231, false}, KeyChanged{9, 9, true}}));
}

TEST_F(VirtualDeviceTest, TellsNothingOfWhatCannotBeTyped) {
  EXPECT_FALSE(device.typeKey(7, 3, true));
  EXPECT_FALSE(device.typeKey(7, 232, true));
  EXPECT_FALSE(device.typeKey(9, 0, true));
  EXPECT_FALSE(device.typeKey(9, 10, true));
  EXPECT_FALSE(device.typeKey(1, 4, true));
  EXPECT_FALSE(device.typeKey(65536 + 7, 4, true));
  EXPECT_EQ(events, Events());
}

TEST_F(VirtualDeviceTest, HasTheChargingStatusItIsGivenUntilItsConnectionChanges) {
  device.setChargingStatus(ChargingStatus::Charging);
  device.setChargingStatus(ChargingStatus::Charging);
  EXPECT_EQ(device.chargingStatus(), ChargingStatus::Charging);
  EXPECT_EQ(events, Events{BatteryChanged{}});
  device.setChargingStatus(std::nullopt);
  EXPECT_EQ(device.chargingStatus(), ChargingStatus::NoBatteryDisplay);
  device.setChargingStatus(ChargingStatus::Charging);
  device.setConnection(Connection::Wireless);
  EXPECT_EQ(device.chargingStatus(), ChargingStatus::OnBattery);
}

TEST_F(VirtualDeviceTest, TellsNothingOfItsBatteryWhileAbsent) {
  device.setConnection(Connection::Absent);
  events.clear();
  device.setBattery(20);
  device.setChargingStatus(ChargingStatus::Charging);
  EXPECT_EQ(events, Events());
  EXPECT_EQ(device.chargingStatus(), ChargingStatus::NoBatteryDisplay);
  device.setConnection(Connection::Wireless);
  EXPECT_EQ(device.batteryPercent(), 20);
}

TEST_F(VirtualDeviceTest, HasNoOtherControls) {
  EXPECT_FALSE(device.setControl("99", true));
  device.setConnection(Connection::Absent);
  EXPECT_FALSE(device.setControl("43", true));
  EXPECT_EQ(events, Events{ConnectionChanged{}});
}

TEST_F(VirtualDeviceTest, GivesItsOutputToTheDesktopWhilePresent) {
  const OutputEvent keyDown{7, 4, 1};
  device.emit(keyDown);
  device.setConnection(Connection::Absent);
  device.emit({7, 4, 0});
  EXPECT_EQ(outputs, std::vector<OutputEvent>{keyDown});
}

TEST_F(VirtualDeviceTest, TellsTheFirmwareItIsGiven) {
  device.setFirmwareVersion("2.31");
  EXPECT_EQ(device.firmwareVersion(), "2.31");
}

TEST_F(VirtualDeviceTest, TellsNoFirmwareVersionWhileItsFirmwareFails) {
  device.setFirmwareFailing(true);
  EXPECT_TRUE(device.isFirmwareFailing());
  EXPECT_EQ(device.firmwareVersion(), "");
  device.setFirmwareFailing(false);
  EXPECT_EQ(device.firmwareVersion(), "1.00");
}

}  // namespace
}  // namespace vorn::engine::test
