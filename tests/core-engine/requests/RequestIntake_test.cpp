#include "core-engine/requests/RequestIntake.h"

#include <gtest/gtest.h>

#include <string>
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

}  // namespace
}  // namespace vorn::engine::test
