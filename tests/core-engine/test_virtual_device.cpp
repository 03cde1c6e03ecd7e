#include <gtest/gtest.h>

#include <vector>

#include "core-engine/VirtualDevice.h"

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
  EXPECT_TRUE(device.setControl("07", false));
  EXPECT_EQ(events, (Events{ControlChanged{"43", true}, ControlChanged{"07", false}}));
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

}  // namespace
}  // namespace vorn::engine::test
