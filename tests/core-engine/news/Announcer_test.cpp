#include "core-engine/news/Announcer.h"

#include <gtest/gtest.h>

#include "core-engine/TestParts.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using Connection = Device::Connection;
using Names = std::vector<std::string>;

const Names announcement = {"Device Attached 273", "commandReplyNotification273"};

class AnnouncerTest : public testing::Test, protected TestParts {
 protected:
  AnnouncerTest() : TestParts(bundle()) { ports.names = {"ClientPort", "OtherPort"}; }

  void served(std::int32_t messageID, const std::string& port = "ClientPort") {
    announcer.noteServed(static_cast<MessageID>(messageID),
                         {":1.7", PropertyList::dictionary({{"ResponseMsgPortName", port}})});
  }
  void registers(const std::string& port = "ClientPort") {
    clients.add({":1.7", port, 273});
    served(0, port);
  }
  // The names of what was posted since the last call.
  Names take() {
    Names names;
    for (const auto& each : std::exchange(news.posted, {})) names.push_back(each.name);
    return names;
  }
  // Up to the moment when the mouse was announced to a client that has just registered.
  void announceOnce() {
    registers();
    served(4);
    scheduler.advance(250ms);
    EXPECT_EQ(take(), announcement);
  }

  DeviceNews deviceNews{device, news};
  Announcer announcer{clients, ports, device, deviceNews, scheduler};
};

TEST_F(AnnouncerTest, AnnouncesTheMouseAQuarterOfASecondAfterTheFirstRequestForAllSettings) {
  registers();
  scheduler.advance(5s);
  EXPECT_EQ(take(), Names());
  served(4);
  scheduler.advance(249ms);
  EXPECT_EQ(take(), Names());
  scheduler.advance(1ms);
  EXPECT_EQ(take(), announcement);
}

TEST_F(AnnouncerTest, AnnouncesTheWirelessMouseAsItsOwnProduct) {
  device.setConnection(Connection::Wireless);
  registers();
  served(4);
  scheduler.advance(250ms);
  EXPECT_EQ(take(), (Names{"Device Attached 0", "commandReplyNotification0"}));
}

TEST_F(AnnouncerTest, AnnouncesOnceToAClientThatReadsItsSettingsThen) {
  announceOnce();
  scheduler.advance(1s);
  served(4);
  served(14);
  scheduler.advance(1h);
  for (const std::int32_t query : {4, 14, 15, 16}) served(query);
  scheduler.advance(1h);
  EXPECT_EQ(take(), Names());
}

TEST_F(AnnouncerTest, AnnouncesOnceToAClientThatAsksForTheFirmwareThen) {
  announceOnce();
  served(14);
  scheduler.advance(2s);
  served(14);
  EXPECT_EQ(take(), Names());
}

TEST_F(AnnouncerTest, AnnouncesOnceMoreAtTheFirstQueryOfAClientThatDidNotHear) {
  for (const std::int32_t query : {14, 15, 16}) {
    announceOnce();
    scheduler.advance(1001ms);
    EXPECT_EQ(take(), Names()) << query;
    served(query);
    EXPECT_EQ(take(), announcement) << query;
    scheduler.advance(2s);
    served(query);
    EXPECT_EQ(take(), Names()) << query;
  }
}

TEST_F(AnnouncerTest, DoesNotTakeABatteryQueryForASignOfHearing) {
  announceOnce();
  served(15);
  served(16);
  scheduler.advance(1001ms);
  served(15);
  EXPECT_EQ(take(), announcement);
}

TEST_F(AnnouncerTest, LooksAtEveryClientForItself) {
  registers();
  registers("OtherPort");
  served(4);
  scheduler.advance(100ms);
  served(4, "OtherPort");
  scheduler.advance(150ms);
  EXPECT_EQ(take(), announcement);
  scheduler.advance(100ms);
  EXPECT_EQ(take(), announcement);
  served(4);
  scheduler.advance(1001ms);
  served(14);
  EXPECT_EQ(take(), Names());
  served(14, "OtherPort");
  EXPECT_EQ(take(), announcement);
}

TEST_F(AnnouncerTest, AnnouncesAfterEveryRegistration) {
  announceOnce();
  announceOnce();
}

TEST_F(AnnouncerTest, TellsNothingToAClientWhoseRegistrationWasRefused) {
  served(0);
  for (const std::int32_t messageID : {4, 14, 15, 16}) served(messageID);
  scheduler.advance(5s);
  EXPECT_EQ(take(), Names());
  EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(AnnouncerTest, AnnouncesOnceToAClientThatWasThereBeforeTheEngine) {
  for (const std::int32_t messageID : {6, 14, 18}) {
    const std::string port = "Port" + std::to_string(messageID);
    ports.names.insert(port);
    served(messageID, port);
    scheduler.advance(249ms);
    EXPECT_EQ(take(), Names()) << messageID;
    scheduler.advance(1ms);
    EXPECT_EQ(take(), announcement) << messageID;
    for (const std::int32_t query : {4, 14, 15, 16}) served(query, port);
    scheduler.advance(1h);
    EXPECT_EQ(take(), Names()) << messageID;
  }
}

TEST_F(AnnouncerTest, TellsNothingToAStrangerThatIsGoneOrWhileNoMouseIsHere) {
  served(4);
  ports.lose("ClientPort");
  scheduler.advance(1s);
  device.setConnection(Connection::Absent);
  served(4, "OtherPort");
  scheduler.advance(1s);
  EXPECT_EQ(take(), Names());
  EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(AnnouncerTest, TellsNothingToAVisitor) {
  const PropertyList body = PropertyList::dictionary({{"ResponseMsgPortName", "ClientPort"}, {"IsVisitor", true}});
  announcer.noteServed(MessageID::GetAllSettings, {":1.7", body});
  EXPECT_EQ(scheduler.pending(), 0U);
  served(4);
  scheduler.advance(250ms);
  EXPECT_EQ(take(), announcement) << "who is a visitor no more is one that the engine hears of";
}

TEST_F(AnnouncerTest, AnnouncesOnceToAStrangerThatRegistersMeanwhile) {
  served(14);
  registers();
  served(4);
  scheduler.advance(1s);
  EXPECT_EQ(take(), announcement);
}

TEST_F(AnnouncerTest, TellsNothingToAClientThatReleasedTheMouseOrEnded) {
  registers();
  served(4);
  clients.release(":1.7");
  scheduler.advance(250ms);
  registers();
  served(4);
  ports.lose("ClientPort");
  scheduler.advance(250ms);
  EXPECT_EQ(take(), Names());
}

TEST_F(AnnouncerTest, TellsThatTheMouseWentSinceTheRegistration) {
  registers();
  served(4);
  device.setConnection(Connection::Absent);
  scheduler.advance(250ms);
  EXPECT_EQ(take(), Names{"Device Removed 273"});
}

TEST_F(AnnouncerTest, AnnouncesAMouseThatComesWhileTheClientStarts) {
  device.setConnection(Connection::Absent);
  registers();
  device.setConnection(Connection::Wired);
  scheduler.advance(1s);
  EXPECT_EQ(take(), announcement);
}

TEST_F(AnnouncerTest, NeedsNotAnnounceAMouseThatAStartingClientHasSeenComing) {
  device.setConnection(Connection::Absent);
  registers();
  device.setConnection(Connection::Wired);
  served(4);
  scheduler.advance(1s);
  EXPECT_EQ(take(), Names());
}

TEST_F(AnnouncerTest, TellsAnAbsenceByTheAnswerToTheRegistrationAlone) {
  device.setConnection(Connection::Absent);
  registers();
  scheduler.advance(1s);
  EXPECT_EQ(take(), Names());
}

TEST_F(AnnouncerTest, SchedulesNothingWhenAllIsTold) {
  announceOnce();
  EXPECT_EQ(scheduler.pending(), 0U);
  {
    Announcer other(clients, ports, device, deviceNews, scheduler);
    other.noteServed(MessageID::RegisterDevice,
                     {":1.7", PropertyList::dictionary({{"ResponseMsgPortName", "ClientPort"}})});
    other.noteServed(MessageID::GetAllSettings,
                     {":1.7", PropertyList::dictionary({{"ResponseMsgPortName", "ClientPort"}})});
    EXPECT_EQ(scheduler.pending(), 1U);
  }
  EXPECT_EQ(scheduler.pending(), 0U);
}

}  // namespace
}  // namespace vorn::engine::test
