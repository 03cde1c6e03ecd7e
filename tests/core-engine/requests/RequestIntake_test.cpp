#include "core-engine/requests/RequestIntake.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core-engine/TestParts.h"

namespace vorn::engine::test {
namespace {

using Lines = std::vector<std::string>;
using namespace std::chrono_literals;

class RequestIntakeTest : public testing::Test {
 protected:
  bool isTaken(const std::string& sender, std::int32_t messageID, std::size_t size = 10) {
    return intake.receive({messageID, Bytes(size), sender}).has_value();
  }
  void serveAll() {
    while (intake.serveNext()) continue;
  }

  Lines served;
  Lines lines;
  Log log{[this](const std::string& line) { lines.push_back(line); }};
  ManualScheduler scheduler;
  Scheduler::Duration duration{};  // of each service
  RequestIntake intake{log, scheduler, [this](const LocalMessagePort::Message& message, const auto& done) {
                         served.push_back(std::string(message.sender) + " " + std::to_string(message.messageID) + " " +
                                          std::to_string(message.data.size()));
                         scheduler.advance(duration);
                         done();
                       }};
};

TEST_F(RequestIntakeTest, ServesTheRequestsOfAConnectionInTheirOrder) {
  EXPECT_FALSE(intake.serveNext());
  for (const int number : {1, 2, 3}) EXPECT_TRUE(isTaken(":1.1", number));
  EXPECT_EQ(served, Lines());
  EXPECT_TRUE(intake.serveNext());
  EXPECT_EQ(served, Lines{":1.1 1 10"});
  serveAll();
  EXPECT_EQ(served, (Lines{":1.1 1 10", ":1.1 2 10", ":1.1 3 10"}));
}

TEST_F(RequestIntakeTest, LetsConnectionsTakeTurns) {
  for (const int number : {1, 2, 3}) isTaken(":1.1", number);
  isTaken(":1.2", 4);
  isTaken(":1.3", 5);
  serveAll();
  EXPECT_EQ(served, (Lines{":1.1 1 10", ":1.2 4 10", ":1.3 5 10", ":1.1 2 10", ":1.1 3 10"}));
}

TEST_F(RequestIntakeTest, ServesInBetweenWhenMessagesDoNotStopComing) {
  for (std::size_t count = 0; count < RequestIntake::maximumArrivals; ++count) isTaken(":1.1", 1);
  EXPECT_EQ(served.size(), 1U);
}

TEST_F(RequestIntakeTest, LetsAConnectionPauseThatSendsWithoutAwaitingItsAnswers) {
  int wakeUps = 0;
  intake.setReadyHandler([&] { ++wakeUps; });
  duration = 10ms;
  for (std::size_t count = 0; count <= RequestIntake::patientWaiting; ++count) isTaken(":1.1", 1);
  isTaken(":1.1", 1);
  served.clear();
  EXPECT_TRUE(served.empty());
  EXPECT_FALSE(intake.serveNext());
  isTaken(":1.2", 2);
  EXPECT_FALSE(intake.serveNext());
  EXPECT_EQ(served, Lines{":1.2 2 10"});
  // The pause is four times as long as the service, of which the other one's took a part.
  scheduler.advance(29ms);
  EXPECT_EQ(wakeUps, 0);
  scheduler.advance(1ms);
  EXPECT_EQ(wakeUps, 1);
  intake.serveNext();
  EXPECT_EQ(served, (Lines{":1.2 2 10", ":1.1 1 10"}));
}

TEST_F(RequestIntakeTest, LetsNobodyPauseWhoHasFewRequestsWaiting) {
  duration = 10ms;
  for (const int number : {1, 2, 3}) isTaken(":1.1", number);
  serveAll();
  EXPECT_EQ(served.size(), 3U);
}

TEST_F(RequestIntakeTest, ServesNothingElseUntilARequestIsAtItsEnd) {
  std::function<void()> end;
  RequestIntake slow(log, scheduler, [&](const LocalMessagePort::Message& message, const auto& done) {
    served.emplace_back(message.sender);
    end = done;
  });
  int wakeUps = 0;
  slow.setReadyHandler([&] { ++wakeUps; });
  const auto receive = [&](const std::string& sender) { slow.receive({1, {}, sender}); };
  for (const char* sender : {":1.1", ":1.2"}) receive(sender);
  EXPECT_FALSE(slow.serveNext());
  receive(":1.1");
  EXPECT_FALSE(slow.serveNext());
  EXPECT_EQ(served, Lines{":1.1"});
  EXPECT_EQ(wakeUps, 0);
  end();
  EXPECT_EQ(wakeUps, 1);
  EXPECT_FALSE(slow.serveNext());
  EXPECT_EQ(served, (Lines{":1.1", ":1.2"}));
  EXPECT_FALSE(slow.isEmpty());
  end();
  slow.serveNext();
  end();
  EXPECT_EQ(served, (Lines{":1.1", ":1.2", ":1.1"}));
  EXPECT_TRUE(slow.isEmpty());
}

TEST_F(RequestIntakeTest, LetsNobodyPauseWhenItIsToComeToAnEnd) {
  duration = 10ms;
  for (std::size_t count = 0; count < RequestIntake::maximumWaiting; ++count) isTaken(":1.1", 1);
  intake.endPauses();
  serveAll();
  EXPECT_EQ(served.size(), RequestIntake::maximumWaiting);
  EXPECT_TRUE(intake.isEmpty());
}

TEST_F(RequestIntakeTest, RefusesWhatAConnectionSendsBeyondItsBoundAndNothingOfOthers) {
  const std::size_t inBetween = RequestIntake::maximumWaiting / RequestIntake::maximumArrivals;
  for (std::size_t count = 0; count < RequestIntake::maximumWaiting + inBetween; ++count) {
    EXPECT_TRUE(isTaken(":1.1", 1));
  }
  EXPECT_EQ(served.size(), inBetween);
  EXPECT_FALSE(isTaken(":1.1", 1));
  EXPECT_TRUE(isTaken(":1.2", 2));
  EXPECT_EQ(lines, Lines{"vorn-core-engine: messages refused: 1, the last one of client :1.1: too many of its requests "
                         "wait"});
}

TEST_F(RequestIntakeTest, TellsRefusalsOnceASecond) {
  for (int count = 0; count < 3; ++count) EXPECT_FALSE(isTaken(":1.1", 4, 5'000'000));
  EXPECT_EQ(lines.size(), 1U);
  scheduler.advance(1s);
  EXPECT_FALSE(isTaken(":1.1", 4, 5'000'000));
  EXPECT_EQ(lines, (Lines{"vorn-core-engine: messages refused: 1, the last one of client :1.1: a body of 5000000 bytes",
                          "vorn-core-engine: messages refused: 3, the last one of client :1.1: a body of 5000000 "
                          "bytes"}));
}

TEST_F(RequestIntakeTest, TakesLargeBodiesOnlyWhereARequestNeedsThem) {
  EXPECT_TRUE(isTaken(":1.1", 4, maximumBodySize(4)));
  EXPECT_FALSE(isTaken(":1.2", 4, maximumBodySize(4) + 1));
  serveAll();
  EXPECT_TRUE(isTaken(":1.3", 7, maximumBodySize(7)));
  EXPECT_FALSE(isTaken(":1.4", 7, maximumBodySize(7) + 1));
}

TEST_F(RequestIntakeTest, KeepsFewLargeBodiesWaiting) {
  EXPECT_TRUE(isTaken(":1.1", 4, 4'000'000));
  EXPECT_TRUE(isTaken(":1.1", 4, 4'000'000));
  EXPECT_FALSE(isTaken(":1.1", 4, 4'000'000));
  serveAll();
  EXPECT_TRUE(isTaken(":1.1", 4, 4'000'000));
}

// An intake whose first request is never at its end, as long as a save takes.
class RequestIntakeFullTest : public RequestIntakeTest {
 protected:
  RequestIntakeFullTest() {
    isTaken(":1.0", 1);
    intake.serveNext();
  }
  bool isTaken(const std::string& sender, std::int32_t messageID, std::size_t size = 10) {
    return intake.receive({messageID, Bytes(size), sender}).has_value();
  }
  // How many bytes are taken of the connections, each of which sends bodies of the size as long as they are taken.
  std::size_t takenOf(int connections, std::size_t size) {
    std::size_t taken = 0;
    for (int number = 1; number <= connections; ++number) {
      while (isTaken(":2." + std::to_string(number), 4, size)) taken += size;
    }
    return taken;
  }

  RequestIntake intake{log, scheduler, [](const LocalMessagePort::Message&, const auto&) {}};
};

TEST_F(RequestIntakeFullTest, KeepsFewLargeBodiesOfAllConnectionsWaiting) {
  EXPECT_EQ(takenOf(40, 4'000'000), 16'000'000U);
  EXPECT_EQ(lines,
            Lines{"vorn-core-engine: messages refused: 1, the last one of client :2.1: too many of its requests wait"});
  EXPECT_TRUE(isTaken(":3.1", 4, RequestIntake::maximumSmallSize));
  EXPECT_FALSE(isTaken(":3.2", 4, RequestIntake::maximumSmallSize + 777'000));
}

TEST_F(RequestIntakeFullTest, TakesASingleBodyThatIsLargerThanTheBoundOfAll) {
  ASSERT_GT(maximumBodySize(7), RequestIntake::maximumLargeWaiting);
  EXPECT_TRUE(isTaken(":2.1", 4));
  EXPECT_TRUE(isTaken(":2.1", 4));
  EXPECT_TRUE(isTaken(":2.2", 7, maximumBodySize(7)));
  EXPECT_FALSE(isTaken(":2.3", 7, maximumBodySize(7)));
  EXPECT_FALSE(isTaken(":2.4", 4, 1'000'000));
}

TEST_F(RequestIntakeFullTest, KeepsRoomForTheFirstSmallRequestOfAFurtherConnection) {
  const std::size_t size = 10'000;
  EXPECT_LE(takenOf(20, size), RequestIntake::maximumSmallWaiting);
  EXPECT_FALSE(isTaken(":2.1", 4, size));
  EXPECT_TRUE(isTaken(":3.1", 4, size));
  EXPECT_FALSE(isTaken(":3.1", 4, size));
  EXPECT_TRUE(isTaken(":3.2", 4, size));
}

TEST_F(RequestIntakeFullTest, TakesOnlySoManySmallRequestsOfAnyNumberOfConnections) {
  const std::size_t size = 1000;
  const std::size_t maximum = RequestIntake::maximumSmallWaiting + RequestIntake::maximumFirstWaiting;
  EXPECT_LE(takenOf(20'000, size), maximum * size / (size + RequestIntake::overhead));
  EXPECT_FALSE(isTaken(":3.1", 4, size));
}

TEST_F(RequestIntakeFullTest, HasRoomAgainWhenWhatWaitedHasBeenServed) {
  const auto take = [&](RequestIntake& each, const std::string& sender) {
    return each.receive({4, Bytes(4'000'000), sender}).has_value();
  };
  RequestIntake serving(log, scheduler, [](const LocalMessagePort::Message&, const auto& done) { done(); });
  for (const char* sender : {":2.1", ":2.2", ":2.3", ":2.4"}) EXPECT_TRUE(take(serving, sender));
  EXPECT_FALSE(take(serving, ":2.5"));
  EXPECT_TRUE(serving.serveNext());
  EXPECT_TRUE(take(serving, ":2.5"));
  EXPECT_FALSE(take(serving, ":2.6"));
}

// Connections are called PROCESS.NUMBER; those of "gone" are there no more.
class RequestIntakeManyConnectionsTest : public testing::Test {
 protected:
  void send(const std::string& sender) { ASSERT_TRUE(intake.receive({6, Bytes(10), sender})); }
  // So many connections of the process, with a request each.
  void sendAll(const std::string& process, int count) {
    for (int number = 0; number < count; ++number) send(process + "." + std::to_string(number));
  }
  void tellAll() {
    for (const auto& [sender, told] : std::exchange(asked, {})) told(processOf(sender));
  }
  static std::optional<std::uint32_t> processOf(const std::string& sender) {
    if (sender.starts_with("gone.")) return std::nullopt;
    return static_cast<std::uint32_t>(std::stoi(sender));
  }
  // The position in the order in which all are served.
  std::size_t turnOf(const std::string& sender) {
    while (intake.serveNext()) continue;
    return static_cast<std::size_t>(std::ranges::find(served, sender) - served.begin());
  }

  Lines served;
  Log log{[](const std::string&) {}};
  ManualScheduler scheduler;
  std::vector<std::pair<std::string, RequestIntake::ToldProcess>> asked;
  RequestIntake intake{log, scheduler,
                       [this](const LocalMessagePort::Message& message, const auto& done) {
                         served.emplace_back(message.sender);
                         done();
                       },
                       [this](const std::string& sender, RequestIntake::ToldProcess told) {
                         asked.emplace_back(sender, std::move(told));
                       }};
};

TEST_F(RequestIntakeManyConnectionsTest, ShareTheTurnsOfTheirProcess) {
  sendAll("1", 200);
  send("2.0");
  send("2.1");
  tellAll();
  const std::size_t before = served.size();
  EXPECT_LE(turnOf("2.0"), before + RequestIntake::fewConnections + 2);
  EXPECT_LE(turnOf("2.1"), before + RequestIntake::fewConnections + 4);
  EXPECT_EQ(served.size(), 202U);
}

TEST_F(RequestIntakeManyConnectionsTest, ShareTheTurnsOfAllThatAreGone) {
  sendAll("gone", 200);
  send("2.0");
  tellAll();
  const std::size_t before = served.size();
  EXPECT_LE(turnOf("2.0"), before + RequestIntake::fewConnections + 2);
  EXPECT_EQ(served.size(), 201U);
}

TEST_F(RequestIntakeManyConnectionsTest, TakeTheirTurnsInTheOrderOfTheirRequestsWhileTheirProcessesAreUnknown) {
  sendAll("1", 10);
  send("2.0");
  EXPECT_EQ(turnOf("2.0"), 10U);
}

TEST_F(RequestIntakeManyConnectionsTest, AreAskedForTheirProcessOnce) {
  sendAll("1", 10);
  EXPECT_EQ(asked.size(), 10 - RequestIntake::fewConnections);
  tellAll();
  while (intake.serveNext()) continue;
  sendAll("1", 10);
  // Those that were among the first are further ones now.
  EXPECT_LE(asked.size(), RequestIntake::fewConnections);
}

TEST_F(RequestIntakeManyConnectionsTest, AreNotAskedForAnythingWhileTheyAreFew) {
  for (int round = 0; round < 10; ++round) {
    sendAll("1", RequestIntake::fewConnections);
    while (intake.serveNext()) continue;
  }
  EXPECT_EQ(asked.size(), 0U);
}

TEST_F(RequestIntakeManyConnectionsTest, MayBeToldOfWhenNothingOfThemWaits) {
  sendAll("1", 10);
  while (intake.serveNext()) continue;
  tellAll();
  {
    RequestIntake other(
        log, scheduler, [](const LocalMessagePort::Message&, const auto& done) { done(); },
        [this](const std::string& sender, RequestIntake::ToldProcess told) {
          asked.emplace_back(sender, std::move(told));
        });
    for (const char* sender : {"1", "2", "3", "4", "5"}) other.receive({6, {}, sender});
  }
  EXPECT_EQ(asked.size(), 1U);
  tellAll();
  sendAll("1", 10);
  EXPECT_EQ(turnOf("1.9"), served.size() - 1);
}

}  // namespace
}  // namespace vorn::engine::test
