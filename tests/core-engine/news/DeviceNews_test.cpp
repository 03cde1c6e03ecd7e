#include "core-engine/news/DeviceNews.h"

#include <gtest/gtest.h>

#include "core-engine/TestParts.h"
#include "core-engine/requests/RequestDispatcher.h"

namespace vorn::engine::test {
namespace {

using Posts = std::vector<RecordingNewsPort::News>;
using Connection = Device::Connection;

RecordingNewsPort::News level(std::int32_t percent, const std::string& product = "273") {
  return {"commandReplyNotification" + product,
          PropertyList::dictionary({{"MessageID", 15}, {"BatteryPercentLevel", percent}})};
}

RecordingNewsPort::News charging(std::int32_t status, const std::string& product = "273") {
  return {"commandReplyNotification" + product,
          PropertyList::dictionary({{"MessageID", 16}, {"DeviceChargingStatus", status}})};
}

RecordingNewsPort::News firmware(std::int32_t status, const std::string& version, const std::string& product = "273") {
  return {"commandReplyNotification" + product,
          PropertyList::dictionary({{"MessageID", 14}, {"ReturnStatus", status}, {"FirmwareVersion", version}})};
}

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

class DeviceQueriesTest : public testing::Test, protected TestParts {
 protected:
  DeviceQueriesTest() : TestParts(bundle()) { ports.names = {"ClientPort"}; }

  // What is posted for the query; it must have no other answer.
  Posts postsFor(std::int32_t messageID, std::int32_t product) {
    news.posted.clear();
    const PropertyList body = PropertyList::dictionary({{"ProductID", product}, {"ResponseMsgPortName", "ClientPort"}});
    dispatcher.receive({messageID, encodeBinaryPropertyList(body).value(), ":1.7"});
    EXPECT_TRUE(ports.answers.empty());
    return news.posted;
  }

  RequestDispatcher dispatcher{parts(), ports};
};

TEST_F(DeviceQueriesTest, GiveTheFirmwareVersionAndTheChargingStatusUnderTheProductThatAsked) {
  EXPECT_EQ(postsFor(14, 273), (Posts{firmware(0, "1.00"), charging(2)}));
  EXPECT_EQ(postsFor(14, 0), (Posts{firmware(0, "1.00", "0"), charging(2, "0")}));
}

TEST_F(DeviceQueriesTest, GiveAStatusAndNoVersionWhereTheFirmwareFails) {
  device.setFirmwareFailing(true);
  EXPECT_EQ(postsFor(14, 273), (Posts{firmware(1, ""), charging(2)}));
  device.setFirmwareFailing(false);
  EXPECT_EQ(postsFor(14, 273), (Posts{firmware(0, "1.00"), charging(2)}));
}

TEST_F(DeviceQueriesTest, GiveTheBatteryLevelAndTheChargingStatus) {
  device.setConnection(Connection::Wireless);
  device.setBattery(42);
  EXPECT_EQ(postsFor(15, 273), Posts{level(42)});
  EXPECT_EQ(postsFor(15, 0), Posts{level(42, "0")});
  EXPECT_EQ(postsFor(16, 0), Posts{charging(0, "0")});
}

TEST_F(DeviceQueriesTest, GiveUnknownValuesOfAnAbsentMouse) {
  device.setConnection(Connection::Absent);
  EXPECT_EQ(postsFor(14, 273), Posts{firmware(1, "")});
  EXPECT_EQ(postsFor(15, 273), Posts{level(255)});
  EXPECT_EQ(postsFor(16, 273), Posts{charging(2)});
}

TEST_F(DeviceQueriesTest, GiveNothingOfOtherProducts) {
  for (const std::int32_t messageID : {14, 15, 16}) EXPECT_EQ(postsFor(messageID, 274), Posts());
  EXPECT_EQ(lines, std::vector<std::string>{"vorn-core-engine: client :1.7: asks about the unknown product 274"});
}

}  // namespace
}  // namespace vorn::engine::test
