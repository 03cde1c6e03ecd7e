#include "link/PortEngineLink.h"

#include <gtest/gtest.h>

#include "model/PropertyListCodec.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr int patientPolls = 2000;
constexpr int shortPolls = 5;

Bytes encoded(const PropertyList& value) {
  return encodeBinaryPropertyList(value).value();
}

struct Received {
  std::int32_t messageID = 0;
  PropertyList body;
  friend bool operator==(const Received&, const Received&) = default;
};

// An engine's port on a thread of this process; it returns data to every Send.
class EnginePort {
 public:
  EnginePort() {
    mThread.run([&] {
      mPort = LocalMessagePort::create(enginePortName, [this](const LocalMessagePort::Message& message) {
        mReceived.push_back({message.messageID, decodePropertyList(message.data).value_or(PropertyList())});
        return encoded(PropertyList::dictionary({{"synchronous", true}}));
      });
    });
  }
  ~EnginePort() {
    mThread.run([&] { mPort.reset(); });
  }
  std::vector<Received> received() {
    std::vector<Received> copy;
    mThread.run([&] { copy = mReceived; });
    return copy;
  }

 private:
  std::vector<Received> mReceived;
  std::unique_ptr<LocalMessagePort> mPort;
  test::LoopThread mThread;
};

class PortEngineLinkTest : public testing::Test {
 protected:
  // Answers as an engine does, from the connection that has its port; what the reply port gave back.
  Bytes answer(const Bytes& data, std::int32_t messageID = 4) {
    if (!RemoteMessagePort::lookUp(enginePortName)) mEnginePort = LocalMessagePort::create(enginePortName, {});
    Bytes returned;
    const auto port = RemoteMessagePort::lookUp(configuratorReplyPortName);
    const auto status =
        port ? port->sendRequest(messageID, data, 20s, &returned) : RemoteMessagePort::Status::InvalidPort;
    EXPECT_EQ(status, RemoteMessagePort::Status::Success);
    return returned;
  }

  test::PrivateBus mBus;
  std::unique_ptr<LocalMessagePort> mEnginePort;
  PortEngineLink mLink;
};

TEST_F(PortEngineLinkTest, SendsNothingAndTellsNothingWithoutAnEngine) {
  ASSERT_TRUE(mLink.createLocalPort());
  EXPECT_FALSE(mLink.isEngineAvailable());
  EXPECT_EQ(mLink.send(PropertyList::dictionary({{"ProductID", 273}}), MessageID::GetAllSettings), -50);
  EXPECT_FALSE(mLink.waitForReply(shortPolls, 1ms));
  EXPECT_TRUE(mLink.reply().isNone());
}

TEST_F(PortEngineLinkTest, MayBeginItsPortAndAskForTheOutcomeLater) {
  mLink.beginLocalPort();
  EXPECT_TRUE(mLink.createLocalPort());
  EXPECT_TRUE(RemoteMessagePort::lookUp(configuratorReplyPortName));
  EXPECT_TRUE(mLink.createLocalPort());
  PortEngineLink second;
  second.beginLocalPort();
  EXPECT_FALSE(second.createLocalPort());
  EXPECT_FALSE(second.createLocalPort());
}

TEST_F(PortEngineLinkTest, MayGoWhileItsPortIsBegun) {
  {
    PortEngineLink link;
    link.beginLocalPort();
  }
  EXPECT_FALSE(RemoteMessagePort::lookUp(configuratorReplyPortName));
}

TEST_F(PortEngineLinkTest, SendsEveryRequestWholeAndIgnoresWhatSendReturns) {
  EnginePort engine;
  ASSERT_TRUE(mLink.createLocalPort());
  EXPECT_TRUE(mLink.isEngineAvailable());
  const PropertyList request = PropertyList::dictionary(
      {{"ProductID", 273}, {"ResponseMsgPortName", configuratorReplyPortName}, {"IsDeviceWired", 1}});
  const PropertyList release = PropertyList::dictionary({{"ProductID", 273}});
  EXPECT_EQ(mLink.send(request, MessageID::RegisterDevice), -50);
  EXPECT_EQ(mLink.send(release, MessageID::ReleaseDevice), -50);
  EXPECT_EQ(sendRequest(release, MessageID::QueryBatteryLevel), -50);
  EXPECT_EQ(engine.received(), (std::vector<Received>{{0, request}, {38, release}, {15, release}}));
  EXPECT_FALSE(mLink.waitForReply(shortPolls, 1ms));
}

TEST_F(PortEngineLinkTest, DoesNotSendWhatCannotBeSerialised) {
  EnginePort engine;
  EXPECT_EQ(mLink.send(PropertyList(), MessageID::GetAllSettings), -50);
  EXPECT_EQ(engine.received(), std::vector<Received>());
}

TEST_F(PortEngineLinkTest, LooksTheEngineUpAnewForEveryRequestFromAnyThread) {
  const PropertyList request = PropertyList::dictionary({{"ProductID", 0}});
  EXPECT_EQ(mLink.send(request, MessageID::QueryFirmwareVersion), -50);
  for (int round = 0; round < 2; ++round) {
    EnginePort engine;
    std::thread([&] {
      EXPECT_TRUE(mLink.isEngineAvailable());
      EXPECT_EQ(mLink.send(request, MessageID::QueryFirmwareVersion), -50);
    }).join();
    EXPECT_EQ(mLink.send(request, MessageID::QueryBatteryLevel), -50);
    EXPECT_EQ(engine.received(), (std::vector<Received>{{14, request}, {15, request}}));
  }
  EXPECT_FALSE(mLink.isEngineAvailable());
}

TEST_F(PortEngineLinkTest, KeepsAnAnswerThatNobodyWaitsForUntilTheNextWait) {
  ASSERT_TRUE(mLink.createLocalPort());
  const PropertyList settings = PropertyList::dictionary({{"AllDevSettings", PropertyList::dictionary()}});
  EXPECT_EQ(answer(encoded(settings)), encoded(settings));
  EXPECT_TRUE(mLink.waitForReply(1, 0ms));
  EXPECT_EQ(mLink.reply(), settings);
  EXPECT_EQ(mLink.reply(), settings);
  mLink.emptySlot();
  EXPECT_TRUE(mLink.reply().isNone());
  EXPECT_FALSE(mLink.waitForReply(shortPolls, 1ms));
}

TEST_F(PortEngineLinkTest, KeepsTheSecondOfTwoAnswers) {
  ASSERT_TRUE(mLink.createLocalPort());
  answer(encoded(PropertyList::dictionary({{"ReturnStatus", 1}})));
  answer(encoded(PropertyList::dictionary({{"ReturnStatus", 0}})), 99);
  EXPECT_TRUE(mLink.waitForReply(patientPolls));
  EXPECT_EQ(mLink.reply(), PropertyList::dictionary({{"ReturnStatus", 0}}));
}

TEST_F(PortEngineLinkTest, LeavesTheSlotAloneForAnAnswerWithoutData) {
  ASSERT_TRUE(mLink.createLocalPort());
  EXPECT_EQ(answer({}), Bytes());
  EXPECT_TRUE(mLink.reply().isNone());
  answer(encoded(PropertyList::dictionary({{"ReturnStatus", 5}})));
  EXPECT_EQ(answer({}), Bytes());
  EXPECT_EQ(mLink.reply(), PropertyList::dictionary({{"ReturnStatus", 5}}));
}

TEST_F(PortEngineLinkTest, StoresAnEmptyDictionaryForDataThatIsNone) {
  ASSERT_TRUE(mLink.createLocalPort());
  answer(encoded(PropertyList::dictionary({{"ReturnStatus", 5}})));
  const Bytes garbage{'g', 'a', 'r', 'b', 'l', 'e'};
  EXPECT_EQ(answer(garbage), garbage);
  EXPECT_EQ(mLink.reply(), PropertyList::dictionary());
  EXPECT_TRUE(mLink.waitForReply(1, 0ms));
  mLink.emptySlot();
  answer(encoded(PropertyList::array({1, 2})));
  EXPECT_EQ(mLink.reply(), PropertyList::dictionary());
}

TEST_F(PortEngineLinkTest, HearsNobodyButTheEngine) {
  const EnginePort engine;
  ASSERT_TRUE(mLink.createLocalPort());
  // From this thread's connection, which is not the engine's.
  EXPECT_EQ(answer(encoded(PropertyList::dictionary({{"ReturnStatus", 0}}))), Bytes());
  EXPECT_TRUE(mLink.reply().isNone());
}

TEST_F(PortEngineLinkTest, HasOneReplyPortPerName) {
  ASSERT_TRUE(mLink.createLocalPort());
  EXPECT_TRUE(mLink.createLocalPort());
  PortEngineLink second;
  EXPECT_FALSE(second.createLocalPort());
  PortEngineLink other("VornCtlReplyPort1");
  EXPECT_TRUE(other.createLocalPort());
  answer(encoded(PropertyList::dictionary({{"ReturnStatus", 0}})));
  EXPECT_TRUE(mLink.waitForReply(patientPolls));
  EXPECT_TRUE(second.reply().isNone());
  EXPECT_TRUE(other.reply().isNone());
}

TEST_F(PortEngineLinkTest, GivesItsReplyPortUpWhenItGoes) {
  {
    PortEngineLink link("ShortLived");
    ASSERT_TRUE(link.createLocalPort());
    EXPECT_TRUE(RemoteMessagePort::lookUp("ShortLived"));
  }
  EXPECT_FALSE(RemoteMessagePort::lookUp("ShortLived"));
}

TEST_F(PortEngineLinkTest, TracesRequestsAndAnswers) {
  struct Line {
    std::string direction;
    std::int32_t messageID = 0;
    PropertyList body;
    bool operator==(const Line&) const = default;
  };
  std::vector<Line> lines;
  PortEngineLink link("TracedReplyPort");
  link.setTrace([&](const char* direction, std::int32_t messageID, const PropertyList& body) {
    lines.push_back({direction, messageID, body});
  });
  const PropertyList request = PropertyList::dictionary({{"ProductID", 273}});
  const PropertyList reply = PropertyList::dictionary({{"ReturnStatus", 0}});
  link.send(request, MessageID::AddMacro);
  link.replyReceived({32, encoded(reply), ":1.5"});
  EXPECT_EQ(lines, (std::vector<Line>{{"request", 32, request}, {"answer", 32, reply}}));
}

TEST_F(PortEngineLinkTest, OutlivesItsBusAndHearsAnswersAgainOnANewOne) {
  ASSERT_TRUE(mLink.createLocalPort());
  mBus.end();
  EXPECT_FALSE(mLink.isEngineAvailable());
  EXPECT_EQ(mLink.send(PropertyList::dictionary({{"ProductID", 273}}), MessageID::GetAllSettings), -50);
  EXPECT_FALSE(mLink.waitForReply(shortPolls, 1ms));

  const test::PrivateBus second;
  PortEngineLink link;
  ASSERT_TRUE(link.createLocalPort());
  answer(encoded(PropertyList::dictionary({{"ReturnStatus", 0}})));
  EXPECT_TRUE(link.waitForReply(patientPolls));
}

}  // namespace
}  // namespace vorn
