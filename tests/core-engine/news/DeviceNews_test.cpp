#include "core-engine/news/DeviceNews.h"

#include <gtest/gtest.h>

#include "core-engine/DeviceReports.h"
#include "core-engine/TestParts.h"
#include "core-engine/requests/RequestDispatcher.h"

namespace vorn::engine::test {
namespace {

using Posts = std::vector<RecordingNewsPort::News>;
using Connection = Device::Connection;

const RecordingNewsPort::News attached{"Device Attached 273", {}};
const RecordingNewsPort::News attachedWireless{"Device Attached 0", {}};
const RecordingNewsPort::News removed{"Device Removed 273", {}};

class DeviceNewsTest : public testing::Test {
 protected:
  explicit DeviceNewsTest(Connection connection = Connection::Wired) : device(connection) {
    device.setEventHandler([this](const DeviceEvent& event) {
      if (std::holds_alternative<ConnectionChanged>(event)) news.announce();
      if (std::holds_alternative<BatteryChanged>(event)) news.batteryChanged();
    });
  }
  Posts take() { return std::exchange(port.posted, {}); }

  VirtualDevice device;
  RecordingNewsPort port;
  DeviceNews news{device, port};
};

TEST_F(DeviceNewsTest, AnnounceTheMouseOnItsCableWithItsChargingStatus) {
  news.announce();
  EXPECT_EQ(take(), (Posts{attached, charging(2)}));
}

TEST_F(DeviceNewsTest, AnnounceTheWirelessMouseAsProductZero) {
  device.setConnection(Connection::Wireless);
  EXPECT_EQ(take(), (Posts{attachedWireless, charging(0, "0")}));
}

TEST_F(DeviceNewsTest, TellTheRemovalOfBothProductsAlike) {
  device.setConnection(Connection::Absent);
  EXPECT_EQ(take(), Posts{removed});
  device.setConnection(Connection::Wireless);
  take();
  device.setConnection(Connection::Absent);
  EXPECT_EQ(take(), Posts{removed});
}

TEST_F(DeviceNewsTest, TellNoRemovalBetweenCableAndReceiver) {
  device.setBattery(60);
  take();
  device.setConnection(Connection::Wireless);
  device.setConnection(Connection::Wired);
  EXPECT_EQ(take(), (Posts{attachedWireless, charging(0, "0"), attached, charging(1)}));
}

TEST_F(DeviceNewsTest, TellTheLevelUnderTheProductInUseWhileTheBatteryGoesDown) {
  device.setConnection(Connection::Wireless);
  take();
  device.setBattery(67);
  device.setBattery(33);
  EXPECT_EQ(take(), (Posts{level(67, "0"), level(33, "0")}));
}

TEST_F(DeviceNewsTest, TellTheFirmwareVersionThatComesLaterThanTheMouse) {
  device.setFirmwareVersion("");
  device.setConnection(Connection::Wireless);
  take();
  device.setFirmwareVersion("2.10");
  news.firmwareChanged();
  news.firmwareChanged();
  EXPECT_EQ(take(), Posts{firmwareOf(false, 0, "2.10", "0")});
  device.setFirmwareVersion("2.20");
  news.firmwareChanged();
  EXPECT_EQ(take(), Posts{firmwareOf(false, 0, "2.20", "0")});
}

TEST_F(DeviceNewsTest, TellNoFirmwareVersionThatClientsAskFor) {
  news.firmwareChanged();
  EXPECT_EQ(take(), Posts{});
  device.setConnection(Connection::Absent);
  device.setFirmwareVersion("2.10");
  news.firmwareChanged();
  EXPECT_EQ(take(), Posts{removed});
  device.setConnection(Connection::Wired);
  take();
  news.firmwareChanged();
  EXPECT_EQ(take(), Posts{});
}

TEST_F(DeviceNewsTest, AFirmwareVersionThatIsNoLongerKnownIsWhatItWas) {
  device.setFirmwareFailing(true);
  news.firmwareChanged();
  device.setFirmwareFailing(false);
  news.firmwareChanged();
  EXPECT_EQ(take(), Posts{});
}

TEST_F(DeviceNewsTest, TellTheLevelBeforeTheStatusThatHidesIt) {
  device.setBattery(99);
  EXPECT_EQ(take(), (Posts{level(99), charging(1)}));
  device.setBattery(100);
  EXPECT_EQ(take(), (Posts{level(100), charging(2)}));
}

TEST_F(DeviceNewsTest, TellNoLevelWhereNoneIsDisplayed) {
  device.setChargingStatus(ChargingStatus::NoBatteryDisplay);
  device.setBattery(50);
  EXPECT_EQ(take(), Posts());
  device.setChargingStatus(ChargingStatus::Charging);
  EXPECT_EQ(take(), Posts{charging(1)});
}

TEST_F(DeviceNewsTest, TellNothingOfTheBatteryOfAnAbsentMouse) {
  device.setConnection(Connection::Absent);
  take();
  device.setBattery(10);
  news.batteryChanged();
  EXPECT_EQ(take(), Posts());
  device.setConnection(Connection::Wired);
  EXPECT_EQ(take(), (Posts{attached, charging(1)}));
}

TEST_F(DeviceNewsTest, TellWhatChangedSinceTheAnnouncementOnly) {
  device.setConnection(Connection::Wireless);
  take();
  news.batteryChanged();
  EXPECT_EQ(take(), Posts());
}

}  // namespace
}  // namespace vorn::engine::test
