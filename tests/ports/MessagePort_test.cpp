#include "ports/MessagePort.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <future>
#include <numeric>
#include <thread>
#include <vector>

#include "ports/BusConnection.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using Status = RemoteMessagePort::Status;
using Failure = LocalMessagePort::Failure;

constexpr auto ample = 20s;

struct Received {
  std::int32_t messageID = 0;
  Bytes data;
  std::string sender;
  friend bool operator==(const Received&, const Received&) = default;
};

std::string ownUniqueName() {
  const char* name = nullptr;
  sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
  return name != nullptr ? name : "";
}

// A port on a thread of its own that keeps what it receives.
class ServedPort {
 public:
  explicit ServedPort(const std::string& name, Bytes reply = {}) {
    mThread.run([&] {
      mPort = LocalMessagePort::create(name, [this, reply](const LocalMessagePort::Message& message) {
        mReceived.push_back(
            {message.messageID, Bytes(message.data.begin(), message.data.end()), std::string(message.sender)});
        return reply;
      });
    });
  }
  ~ServedPort() { remove(); }

  bool exists() const { return mPort != nullptr; }
  void remove() {
    mThread.run([&] { mPort.reset(); });
  }
  std::vector<Received> received() {
    std::vector<Received> copy;
    mThread.run([&] { copy = mReceived; });
    return copy;
  }

 private:
  std::unique_ptr<LocalMessagePort> mPort;
  std::vector<Received> mReceived;
  test::LoopThread mThread;
};

class MessagePortTest : public testing::Test {
 protected:
  test::PrivateBus mBus;
};

TEST_F(MessagePortTest, CarriesAMessageAndBringsTheReplyBack) {
  ServedPort served("Served", {7, 8, 9});
  const auto remote = RemoteMessagePort::lookUp("Served");
  ASSERT_TRUE(remote);
  EXPECT_EQ(remote->name(), "Served");
  Bytes reply;
  EXPECT_EQ(remote->sendRequest(4, Bytes{1, 0, 255}, ample, &reply), Status::Success);
  EXPECT_EQ(reply, (Bytes{7, 8, 9}));
  EXPECT_EQ(served.received(), (std::vector<Received>{{4, {1, 0, 255}, ownUniqueName()}}));
}

TEST_F(MessagePortTest, CarriesEveryMessageIDAndEmptyData) {
  ServedPort served("Served");
  const auto remote = RemoteMessagePort::lookUp("Served");
  ASSERT_TRUE(remote);
  Bytes reply{1};
  EXPECT_EQ(remote->sendRequest(INT32_MIN, {}, ample, &reply), Status::Success);
  EXPECT_EQ(reply, Bytes());
  EXPECT_EQ(remote->sendRequest(INT32_MAX, {}, ample), Status::Success);
  const std::string sender = ownUniqueName();
  EXPECT_EQ(served.received(), (std::vector<Received>{{INT32_MIN, {}, sender}, {INT32_MAX, {}, sender}}));
}

TEST_F(MessagePortTest, CarriesMegabytesBothWays) {
  Bytes data(std::size_t{4} << 20);
  std::iota(data.begin(), data.end(), std::uint8_t{0});
  ServedPort served("Served", data);
  const auto remote = RemoteMessagePort::lookUp("Served");
  ASSERT_TRUE(remote);
  Bytes reply;
  EXPECT_EQ(remote->sendRequest(1, data, ample, &reply), Status::Success);
  EXPECT_TRUE(reply == data);
  EXPECT_TRUE(served.received().at(0).data == data);
}

TEST_F(MessagePortTest, RefusesWhatTheBusCannotCarryAndStaysUsable) {
  ServedPort served("Served");
  const auto remote = RemoteMessagePort::lookUp("Served");
  ASSERT_TRUE(remote);
  const Bytes tooMuch((std::size_t{1} << 26) + 1);
  EXPECT_EQ(remote->sendRequest(1, tooMuch, ample), Status::TransportError);
  EXPECT_EQ(remote->post(2, tooMuch), Status::TransportError);
  EXPECT_EQ(remote->sendRequest(3, Bytes{3}, ample), Status::Success);
  EXPECT_EQ(served.received(), (std::vector<Received>{{3, {3}, ownUniqueName()}}));
}

TEST_F(MessagePortTest, AnswersAnErrorInPlaceOfAReplyThatTheBusCannotCarry) {
  ServedPort served("Served", Bytes((std::size_t{1} << 26) + 1));
  const auto remote = RemoteMessagePort::lookUp("Served");
  ASSERT_TRUE(remote);
  EXPECT_EQ(remote->sendRequest(1, {}, ample), Status::TransportError);
  EXPECT_EQ(served.received().size(), 1U);
}

TEST_F(MessagePortTest, IsNotFoundUnderANameThatNobodyOwnsOrThatIsNone) {
  EXPECT_FALSE(RemoteMessagePort::lookUp("Nobody"));
  for (const std::string& name : {std::string(), std::string("two words"), std::string("1st"), std::string("a\0b", 3),
                                  std::string("dot."), std::string("\xff"), std::string(300, 'n')}) {
    EXPECT_FALSE(RemoteMessagePort::lookUp(name)) << name;
    Failure failure = Failure::Other;
    std::string error;
    EXPECT_EQ(LocalMessagePort::create(
                  name, [](const auto&) { return Bytes(); }, &failure, &error),
              nullptr)
        << name;
    EXPECT_EQ(failure, Failure::InvalidName) << name;
    EXPECT_NE(error, "") << name;
  }
}

TEST_F(MessagePortTest, StartsNoServiceByLookingUpOrSending) {
  EXPECT_FALSE(RemoteMessagePort::lookUp(test::PrivateBus::startablePort));
  ServedPort served{std::string(test::PrivateBus::startablePort)};
  const auto remote = RemoteMessagePort::lookUp(test::PrivateBus::startablePort);
  ASSERT_TRUE(remote);
  served.remove();
  EXPECT_EQ(remote->sendRequest(1, Bytes{1}, ample), Status::InvalidPort);
  EXPECT_EQ(remote->post(1, Bytes{1}), Status::Success);
  EXPECT_FALSE(RemoteMessagePort::lookUp(test::PrivateBus::startablePort));
  EXPECT_FALSE(mBus.hasStartedService());
}

TEST_F(MessagePortTest, TimesOutWhileItsOwnerDoesNotReturn) {
  test::LoopThread thread;
  std::unique_ptr<LocalMessagePort> port;
  std::promise<void> release;
  thread.run([&] {
    port = LocalMessagePort::create("Stuck", [&, released = release.get_future().share()](const auto&) {
      released.wait();
      return Bytes{1};
    });
  });
  const auto remote = RemoteMessagePort::lookUp("Stuck");
  ASSERT_TRUE(remote);
  Bytes reply{5};
  EXPECT_EQ(remote->sendRequest(1, {}, 30ms, &reply), Status::Timeout);
  EXPECT_EQ(remote->sendRequest(1, {}, 0ms), Status::Timeout);
  EXPECT_EQ(reply, Bytes());
  release.set_value();
  EXPECT_EQ(remote->sendRequest(1, {}, ample, &reply), Status::Success);
  EXPECT_EQ(reply, Bytes{1});
  thread.run([&] { port.reset(); });
}

TEST_F(MessagePortTest, HasOneOwnerAtATime) {
  ServedPort first("Single", {1});
  ASSERT_TRUE(first.exists());
  Failure failure = Failure::Other;
  std::string error;
  const auto create = [&] {
    return LocalMessagePort::create(
        "Single", [](const auto&) { return Bytes{2}; }, &failure, &error);
  };
  EXPECT_EQ(create(), nullptr);
  EXPECT_EQ(failure, Failure::NameTaken);
  EXPECT_EQ(error, "Another program has the port: org.vorn.MessagePort.Single");
  const auto remote = RemoteMessagePort::lookUp("Single");
  ASSERT_TRUE(remote);
  Bytes reply;
  EXPECT_EQ(remote->sendRequest(1, {}, ample, &reply), Status::Success);
  EXPECT_EQ(reply, Bytes{1});

  first.remove();
  EXPECT_FALSE(RemoteMessagePort::lookUp("Single"));
  const auto own = create();
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(own->name(), "Single");
  EXPECT_EQ(create(), nullptr);
  EXPECT_EQ(failure, Failure::NameTaken);
  EXPECT_TRUE(RemoteMessagePort::lookUp("Single"));
}

TEST_F(MessagePortTest, IsToldFromAnotherPortOfTheSameThread) {
  test::LoopThread thread;
  std::unique_ptr<LocalMessagePort> first;
  std::unique_ptr<LocalMessagePort> second;
  thread.run([&] {
    first = LocalMessagePort::create("First", [](const auto&) { return Bytes{1}; });
    second = LocalMessagePort::create("Second", [](const auto&) { return Bytes{2}; });
  });
  ASSERT_TRUE(first && second);
  const auto replyOf = [](std::string_view name) {
    Bytes reply;
    const auto remote = RemoteMessagePort::lookUp(name);
    if (remote) remote->sendRequest(1, {}, ample, &reply);
    return reply;
  };
  EXPECT_EQ(replyOf("First"), Bytes{1});
  EXPECT_EQ(replyOf("Second"), Bytes{2});
  thread.run([&] { first.reset(); });
  EXPECT_EQ(replyOf("First"), Bytes());
  EXPECT_EQ(replyOf("Second"), Bytes{2});
  thread.run([&] { second.reset(); });
}

TEST_F(MessagePortTest, MayBeDestroyedByItsOwnCallback) {
  test::LoopThread thread;
  std::unique_ptr<LocalMessagePort> port;
  thread.run([&] {
    port = LocalMessagePort::create("ShortLived", [&port, text = std::string(1000, 'x')](const auto&) {
      port.reset();
      return Bytes(text.begin(), text.begin() + 2);
    });
  });
  const auto remote = RemoteMessagePort::lookUp("ShortLived");
  ASSERT_TRUE(remote);
  Bytes reply;
  EXPECT_EQ(remote->sendRequest(1, {}, ample, &reply), Status::Success);
  EXPECT_EQ(reply, (Bytes{'x', 'x'}));
  EXPECT_EQ(remote->sendRequest(1, {}, ample), Status::InvalidPort);
  EXPECT_FALSE(RemoteMessagePort::lookUp("ShortLived"));
}

TEST_F(MessagePortTest, TakesPostedMessagesInTheirOrder) {
  ServedPort served("Served", {1});
  const auto remote = RemoteMessagePort::lookUp("Served");
  ASSERT_TRUE(remote);
  EXPECT_EQ(remote->post(1, Bytes{1}), Status::Success);
  EXPECT_EQ(remote->post(2, Bytes{2}), Status::Success);
  EXPECT_EQ(remote->sendRequest(3, Bytes{3}, ample), Status::Success);
  const std::string sender = ownUniqueName();
  EXPECT_EQ(served.received(), (std::vector<Received>{{1, {1}, sender}, {2, {2}, sender}, {3, {3}, sender}}));
}

TEST_F(MessagePortTest, CarriesAMessageThatIsSentLaterAndTellsWhenItWasTaken) {
  ServedPort served("Served", {7});
  std::vector<Status> told;
  RemoteMessagePort::sendLater("Served", 4, Bytes{1, 0, 255}, ample, [&](Status status) { told.push_back(status); });
  EXPECT_EQ(told, std::vector<Status>());
  ASSERT_TRUE(test::serveBusUntil([&] { return !told.empty(); }));
  EXPECT_EQ(told, std::vector<Status>{Status::Success});
  EXPECT_EQ(served.received(), (std::vector<Received>{{4, {1, 0, 255}, ownUniqueName()}}));
}

TEST_F(MessagePortTest, TellsOnceWhyAMessageThatIsSentLaterWasNotTaken) {
  const ServedPort served("Served");
  std::vector<Status> told;
  const auto done = [&](Status status) { told.push_back(status); };
  RemoteMessagePort::sendLater("no name", 4, {}, ample, done);
  RemoteMessagePort::sendLater("Served", 4, Bytes((std::size_t{1} << 26) + 1), ample, done);
  EXPECT_EQ(told, (std::vector<Status>{Status::TransportError, Status::TransportError}));
  RemoteMessagePort::sendLater("Nobody", 4, {}, ample, done);
  ASSERT_TRUE(test::serveBusUntil([&] { return told.size() == 3; }));
  EXPECT_EQ(told.back(), Status::InvalidPort);
}

TEST_F(MessagePortTest, ForgetsAMessageThatIsSentLaterWithItsThread) {
  std::promise<Status> told;
  std::thread([&] {
    const auto silent = LocalMessagePort::create("Silent", {});
    RemoteMessagePort::sendLater("Silent", 4, {}, ample, [&](Status status) { told.set_value(status); });
  }).join();
  EXPECT_EQ(told.get_future().get(), Status::TransportError);
}

TEST_F(MessagePortTest, TellsWhenATrackedMessageWasRead) {
  ServedPort served("Served");
  std::vector<Status> told;
  RemoteMessagePort::postTracked("Served", 4, Bytes{1, 2}, [&](Status status) { told.push_back(status); });
  EXPECT_EQ(told, std::vector<Status>());
  ASSERT_TRUE(test::serveBusUntil([&] { return !told.empty(); }));
  EXPECT_EQ(told, std::vector<Status>{Status::Success});
  EXPECT_EQ(served.received(), (std::vector<Received>{{4, {1, 2}, ownUniqueName()}}));
}

TEST_F(MessagePortTest, TellsWhyATrackedMessageIsReadByNobody) {
  const ServedPort served("Served");
  std::vector<Status> told;
  const auto read = [&](Status status) { told.push_back(status); };
  RemoteMessagePort::postTracked("no name", 4, {}, read);
  RemoteMessagePort::postTracked("Served", 4, Bytes((std::size_t{1} << 26) + 1), read);
  EXPECT_EQ(told, (std::vector<Status>{Status::InvalidPort, Status::TransportError}));
  RemoteMessagePort::postTracked("Nobody", 4, {}, read);
  ASSERT_TRUE(test::serveBusUntil([&] { return told.size() == 3; }));
  EXPECT_EQ(told.back(), Status::InvalidPort);
}

TEST_F(MessagePortTest, TellsNothingOfATrackedMessageThatIsNotYetRead) {
  const auto unread = LocalMessagePort::create("Unread", [](const LocalMessagePort::Message&) { return Bytes(); });
  std::vector<Status> told;
  test::LoopThread other;
  other.run([&] { RemoteMessagePort::postTracked("Unread", 4, {}, [&](Status status) { told.push_back(status); }); });
  // The bus has handled what came before this call.
  other.run([] { RemoteMessagePort::lookUp("Unread"); });
  std::size_t count = 1;
  other.run([&] { count = told.size(); });
  EXPECT_EQ(count, 0U);
  ASSERT_TRUE(test::serveBusUntil([&] {
    other.run([&] { count = told.size(); });
    return count == 1;
  }));
}

TEST_F(MessagePortTest, MayBeOneOfThisThreadItself) {
  std::vector<std::int32_t> received;
  const auto port = LocalMessagePort::create("Own", [&](const LocalMessagePort::Message& message) {
    received.push_back(message.messageID);
    return Bytes();
  });
  ASSERT_TRUE(port);
  const auto remote = RemoteMessagePort::lookUp("Own");
  ASSERT_TRUE(remote);
  EXPECT_EQ(remote->post(5, {}), Status::Success);
  EXPECT_TRUE(test::serveBusUntil([&] { return !received.empty(); }));
  EXPECT_EQ(received, std::vector<std::int32_t>{5});
}

TEST_F(MessagePortTest, TellsTheSenderThatAMessageWasRefused) {
  test::LoopThread other;
  std::unique_ptr<LocalMessagePort> port;
  other.run(
      [&] { port = LocalMessagePort::create("Full", [](const LocalMessagePort::Message&) { return std::nullopt; }); });
  sd_bus_error error{};
  sd_bus_call_method(BusConnection::forThisThread().handle(), "org.vorn.MessagePort.Full", messagePortObjectPath,
                     messagePortInterface, "Send", &error, nullptr, "iay", 4, 0);
  EXPECT_STREQ(error.name, SD_BUS_ERROR_LIMITS_EXCEEDED);
  sd_bus_error_free(&error);
  other.run([&] { port.reset(); });
}

// The error name with which a foreign program's call is answered.
template <typename... Arguments>
std::string errorOfCall(const char* member, const char* signature, Arguments... arguments) {
  sd_bus_error error{};
  sd_bus_call_method(BusConnection::forThisThread().handle(), "org.vorn.MessagePort.Served", messagePortObjectPath,
                     messagePortInterface, member, &error, nullptr, signature, arguments...);
  std::string name = error.name != nullptr ? error.name : "";
  sd_bus_error_free(&error);
  return name;
}

TEST_F(MessagePortTest, AnswersCallsOfAnotherShapeWithAnError) {
  ServedPort served("Served");
  EXPECT_EQ(errorOfCall("Send", ""), SD_BUS_ERROR_INVALID_ARGS);
  EXPECT_EQ(errorOfCall("Send", "i", 1), SD_BUS_ERROR_INVALID_ARGS);
  EXPECT_EQ(errorOfCall("Send", "is", 1, "text"), SD_BUS_ERROR_INVALID_ARGS);
  EXPECT_EQ(errorOfCall("Receive", "i", 1), SD_BUS_ERROR_UNKNOWN_METHOD);
  EXPECT_TRUE(served.received().empty());
  EXPECT_EQ(errorOfCall("Send", "iay", 1, 0), "");
  EXPECT_EQ(served.received().size(), 1U);
}

}  // namespace
}  // namespace vorn
