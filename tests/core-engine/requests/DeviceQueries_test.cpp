#include "core-engine/requests/DeviceQueries.h"

#include <gtest/gtest.h>

#include "core-engine/DeviceReports.h"
#include "core-engine/requests/RequestDispatcher.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine::test {
namespace {

using Posts = std::vector<RecordingNewsPort::News>;
using Connection = Device::Connection;

class DeviceQueriesTest : public testing::Test, protected TestParts {
 protected:
  DeviceQueriesTest() : TestParts(bundle()) { ports.names = {"ClientPort"}; }

  // What is posted for the query; it must have no other answer.
  Posts postsFor(std::int32_t messageID, std::int32_t product, bool isOfVisitor = false) {
    news.posted.clear();
    PropertyList body = PropertyList::dictionary({{"ProductID", product}, {"ResponseMsgPortName", "ClientPort"}});
    if (isOfVisitor) body = body.with("IsVisitor", true);
    dispatcher.receive({messageID, encodeBinaryPropertyList(body).value(), ":1.7"});
    EXPECT_TRUE(ports.answers.empty());
    return news.posted;
  }

  RequestDispatcher dispatcher{parts(), ports};
};

TEST_F(DeviceQueriesTest, GiveTheFirmwareVersionAndTheChargingStatusUnderTheProductThatAsked) {
  EXPECT_EQ(postsFor(14, 273), (Posts{firmwareOf(true, 0, "1.00"), charging(2)}));
  EXPECT_EQ(postsFor(14, 0), (Posts{firmwareOf(true, 0, "1.00", "0"), charging(2, "0")}));
}

TEST_F(DeviceQueriesTest, GiveAStatusAndNoVersionWhereTheFirmwareFails) {
  device.setFirmwareFailing(true);
  EXPECT_EQ(postsFor(14, 273), (Posts{firmwareOf(true, 1, ""), charging(2)}));
  device.setFirmwareFailing(false);
  EXPECT_EQ(postsFor(14, 273), (Posts{firmwareOf(true, 0, "1.00"), charging(2)}));
}

TEST_F(DeviceQueriesTest, GiveTheBatteryLevelAndTheChargingStatus) {
  device.setConnection(Connection::Wireless);
  device.setBattery(42);
  EXPECT_EQ(postsFor(15, 273), Posts{level(42)});
  EXPECT_EQ(postsFor(15, 0), Posts{level(42, "0")});
  EXPECT_EQ(postsFor(16, 0), Posts{charging(0, "0")});
}

TEST_F(DeviceQueriesTest, TellWhetherTheMouseIsOnItsCableOrItsReceiver) {
  device.setConnection(Connection::Wireless);
  EXPECT_EQ(postsFor(14, 273), (Posts{firmwareOf(false, 0, "1.00"), charging(0)}));
}

TEST_F(DeviceQueriesTest, GiveNoBatteryLevelWhereNoBatteryIsDisplayed) {
  EXPECT_EQ(postsFor(15, 273), Posts{level(255)});
  device.setBattery(99);
  EXPECT_EQ(postsFor(15, 273), Posts{level(99)});
}

TEST_F(DeviceQueriesTest, AreAnsweredToAVisitorAlone) {
  for (const std::int32_t messageID : {14, 15, 16}) {
    Posts expected = postsFor(messageID, 273);
    for (RecordingNewsPort::News& each : expected) each.receiver = ":1.7";
    EXPECT_EQ(postsFor(messageID, 273, true), expected);
  }
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
