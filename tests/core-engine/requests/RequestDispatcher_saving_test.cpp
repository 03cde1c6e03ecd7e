// Requests while the disk takes its time.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "core-engine/history/History.h"
#include "core-engine/requests/Farewell.h"
#include "core-engine/requests/RequestDispatcher.h"
#include "core-engine/requests/RequestIntake.h"
#include "core-engine/storage/HeldDisk.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using Answers = std::vector<MemoryPorts::Answer>;

class RequestDispatcherSavingTest : public testing::Test {
 protected:
  RequestDispatcherSavingTest() {
    held.hold(parts.disk);
    parts.ports.names = {"One", "Two"};
  }
  void send(const std::string& port, std::int32_t messageID, const PropertyList& body = PropertyList::dictionary()) {
    const PropertyList whole = body.with("ProductID", 273).with("ResponseMsgPortName", port);
    EXPECT_TRUE(intake.receive({messageID, encodeBinaryPropertyList(whole).value(), ":1." + port}));
  }
  void rename(const std::string& port, const std::string& name) {
    send(port, 6,
         PropertyList::dictionary(
             {{"ProfileID", 0}, {"DeviceSettingsDictionary", PropertyList::dictionary({{"ProfileName", name}})}}));
  }
  // From now on a save takes a second, which has passed when its bundle comes into force.
  void slowDown() {
    parts.store.setChangeHandler(
        [this](const auto&, const auto&, const auto&) { parts.scheduler.advance(std::chrono::seconds(1)); });
  }
  // The engine is told to end while so many requests wait, few enough that none is served when another arrives. Each of
  // them takes the time, and has the processor for the work. Returns how many are answered.
  std::size_t answeredAtTheEnd(std::size_t count, Scheduler::Duration time, Scheduler::Duration work) {
    for (std::size_t number = 0; number < count; ++number) send("One", 4);
    servingTime = time;
    serveLastRequests(intake, turns, parts.store, parts.scheduler,
                      [this, work] { return work * static_cast<std::int64_t>(parts.ports.answers.size()); });
    EXPECT_EQ(outcomes(), std::vector<std::string>(parts.ports.answers.size(), "One 4: 0"));
    return parts.ports.answers.size();
  }
  std::vector<std::string> outcomes() const {
    std::vector<std::string> result;
    for (const MemoryPorts::Answer& answer : parts.ports.answers) {
      result.push_back(answer.port + " " + std::to_string(answer.messageID) + ": " +
                       std::to_string(answer.body["ReturnStatus"].toInt()));
    }
    return result;
  }
  static PropertyList changed(const std::string& name, int status = 0) {
    return PropertyList::dictionary({{"ReturnDictionary", bundle(name)}, {"ReturnStatus", status}});
  }

  HeldDisk held;
  Scheduler::Duration servingTime{};  // of every request, beside what the disk takes
  TestParts parts{bundle("old"), &held.thread()};
  RequestDispatcher dispatcher{parts.parts(), parts.ports};
  SettingsTurns turns{parts.store};
  RequestIntake intake{parts.log, parts.scheduler, [this](const auto& message, const std::function<void()>& done) {
                         dispatcher.receive(message, done);
                         parts.scheduler.advance(servingTime);
                       }};
};

TEST_F(RequestDispatcherSavingTest, AnswersAChangeAndServesTheNextRequestWhenItIsOnTheDisk) {
  rename("One", "new");
  send("Two", 4);
  intake.serveNext();
  held.awaitSync();
  // What arrives meanwhile is taken, and waits.
  rename("One", "newer");
  EXPECT_FALSE(intake.serveNext());
  EXPECT_EQ(parts.ports.answers, Answers());
  held.goOn();
  parts.store.settle();
  EXPECT_EQ(parts.ports.answers, (Answers{{"One", 6, changed("new")}}));
  intake.serveNext();
  EXPECT_EQ(parts.ports.answers.back().body["AllDevSettings"], bundle("new"));
  intake.serveNext();
  held.goOn();
  parts.store.settle();
  EXPECT_EQ(parts.ports.answers.size(), 3U);
  EXPECT_EQ(parts.ports.answers.back(), (MemoryPorts::Answer{"One", 6, changed("newer")}));
  EXPECT_TRUE(intake.isEmpty());
}

TEST_F(RequestDispatcherSavingTest, TakesAChangeBackBehindTheRequestsOfTheSameConnection) {
  History history{parts.store, parts.scheduler, [] { return std::int64_t{0}; }};
  parts.store.setChangeHandler([&](const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
    history.note(before, after, origin);
  });
  std::vector<History::Outcome> undone;
  rename("One", "new");
  rename("One", "newer");
  EXPECT_TRUE(intake.receive(":1.One", [&](const std::function<void()>& done) {
    history.undo(0, [&undone, done](const History::Result& result) {
      undone.push_back(result.outcome);
      done();
    });
  }));
  send("One", 4);
  for (const char* name : {"new", "newer", "new"}) {
    intake.serveNext();
    held.awaitSync();
    EXPECT_EQ(undone.size(), 0U);
    held.goOn();
    parts.store.settle();
    EXPECT_EQ(parts.store.bundle(), bundle(name));
  }
  EXPECT_EQ(undone, std::vector{History::Outcome::Done});
  EXPECT_EQ(parts.ports.answers.size(), 2U);
  intake.serveNext();
  EXPECT_EQ(parts.ports.answers.back().body["AllDevSettings"], bundle("new"));
  EXPECT_TRUE(intake.isEmpty());
}

TEST_F(RequestDispatcherSavingTest, RefusesAChangeThatTheDiskDoesNotTakeAndNoneAfterIt) {
  rename("One", "refused");
  rename("Two", "taken");
  parts.disk.failAt(4, std::errc::no_space_on_device);
  intake.serveNext();
  held.goOn();
  held.goOn();
  parts.store.settle();
  parts.disk.work();
  intake.serveNext();
  parts.store.settle();
  EXPECT_EQ(parts.ports.answers, (Answers{{"One", 6, changed("old", 4)}, {"Two", 6, changed("taken")}}));
}

TEST_F(RequestDispatcherSavingTest, KeepsARecordingUntilItsSaveHasEnded) {
  send("One", 32, PropertyList::dictionary({{"MacroContents", PropertyList::dictionary({{"MacroName", "m"}})}}));
  send("One", 18, PropertyList::dictionary({{"macroID", 0}}));
  held.goOn();
  intake.serveNext();
  parts.store.settle();
  intake.serveNext();
  parts.recorder.note({7, 4, true});
  const PropertyList save = PropertyList::dictionary({{"macroID", 0}});
  send("One", 20, save);
  parts.disk.failAt(4, std::errc::io_error);
  intake.serveNext();
  held.goOn();
  parts.store.settle();
  EXPECT_EQ(parts.ports.answers.back().body["ReturnStatus"], PropertyList(4));
  EXPECT_TRUE(parts.recorder.belongsTo("One"));
  parts.disk.work();
  send("One", 20, save);
  intake.serveNext();
  held.goOn();
  parts.store.settle();
  EXPECT_EQ(parts.ports.answers.back().body["ReturnStatus"], PropertyList(0));
  EXPECT_FALSE(parts.recorder.belongsTo("One"));
}

TEST_F(RequestDispatcherSavingTest, ServesWhatWaitsBehindASlowSaveBeforeItsEnd) {
  rename("One", "new");
  intake.serveNext();
  held.awaitSync();
  rename("Two", "newer");
  send("One", 4);
  held.goOn();
  held.goOn();
  slowDown();
  serveLastRequests(intake, turns, parts.store, parts.scheduler);
  EXPECT_EQ(outcomes(), (std::vector<std::string>{"One 6: 0", "Two 6: 0", "One 4: 0"}));
  EXPECT_EQ(parts.stored(), bundle("newer"));
}

TEST_F(RequestDispatcherSavingTest, RefusesFurtherChangesBeforeItsEndWhenTheDiskIsSlowAndAnswersTheRest) {
  rename("One", "new");
  rename("Two", "refused");
  send("One", 4);
  held.goOn();
  slowDown();
  serveLastRequests(intake, turns, parts.store, parts.scheduler);
  EXPECT_EQ(outcomes(), (std::vector<std::string>{"One 6: 0", "Two 6: 4", "One 4: 0"}));
  EXPECT_EQ(parts.stored(), bundle("new"));
}

TEST_F(RequestDispatcherSavingTest, AnswersAllBeforeItsEndWhereItIsOnlyOthersThatTakeTheTime) {
  EXPECT_EQ(answeredAtTheEnd(15, 50ms, 5ms), 15U);
}

TEST_F(RequestDispatcherSavingTest, EndsWhenTheAnswersAreTooMuchWork) {
  // Five until it saves no more, four for the rest.
  EXPECT_EQ(answeredAtTheEnd(15, 50ms, 50ms), 9U);
}

TEST_F(RequestDispatcherSavingTest, EndsThoughOthersLeaveItNoProcessor) {
  // One until it saves no more, three for the rest.
  EXPECT_EQ(answeredAtTheEnd(15, 1s, 0ms), 4U);
}

}  // namespace
}  // namespace vorn::engine::test
