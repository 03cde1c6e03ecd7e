// vornctl chooses and teaches mice, with the real engine; what it does with mice that are plugged in, with a double of
// the engine's object.
#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "ctl/EngineSession.h"
#include "ports/BusObject.h"
#include "protocol/Mice.h"
#include "support/LoopThread.h"

namespace vorn::ctl::test {
namespace {

class VornCtlMiceTest : public EngineSession {
 protected:
  static void fails(const Words& words, int status, const std::string& message) {
    const Ended run = runVornCtl(words);
    EXPECT_EQ(run.status, status);
    EXPECT_EQ(run.output, message);
  }
};

TEST_F(VornCtlMiceTest, UsesTheVirtualMouseAtFirst) {
  EXPECT_EQ(outputOf({"mice", "show"}),
            "Name:         Virtual mouse\nID:           virtual\nState:        in use\n"
            "Sensitivity:  set in the mouse\nOffers:       polling rate, light, power settings, battery\n");
  const std::string list = outputOf({"mice", "list"});
  const std::string last = "* Virtual mouse                 virtual\n";
  EXPECT_TRUE(list.ends_with(last)) << list;
  done({"mice", "use", "virtual"});
  EXPECT_NE(outputOf({"mice", "list", "--json"}).find("\"connection\":\"virtual\""), std::string::npos);
}

TEST_F(VornCtlMiceTest, TellsWhyTheEngineRefuses) {
  fails({"mice", "teach", "4"}, 1, "vornctl: The virtual mouse has all controls already\n");
  fails({"mice", "forget"}, 1, "vornctl: The virtual mouse is what it is\n");
  fails({"mice", "resolution", "800"}, 1, "vornctl: The virtual mouse is what it is\n");
}

TEST_F(VornCtlMiceTest, KnowsWrongWordsWithoutAnEngine) {
  fails({"mice", "teach", "99"}, 2, "vornctl: there is no control \"99\"\n");
  fails({"mice", "forget", "nothing"}, 2, "vornctl: there is no control \"nothing\"\n");
  fails({"mice", "resolution", "99"}, 2,
        "vornctl: mice resolution takes 100 to 32000 DPI, or 0 for what is known of the mouse\n");
  fails({"mice", "use"}, 2, "vornctl: usage: vornctl mice use MOUSE\n");
  fails({"mice", "use", "no such"}, 1, "vornctl: there is no mouse \"no such\"; \"vornctl mice list\" lists them\n");
}

TEST_F(VornCtlMiceTest, ExaminesTheMachineAndTheEngine) {
  const Ended run = runVornCtl({"doctor"});
  EXPECT_TRUE(run.output.starts_with("fine      Engine: it runs\n")) << run.output;
  EXPECT_NE(run.output.find(" Mouse in use: the virtual one"), std::string::npos) << run.output;
  const bool isMissing = run.output.find("\nmissing ") != std::string::npos;
  EXPECT_EQ(run.status, isMissing ? 1 : 0);
  const std::string json = runVornCtl({"doctor", "--json"}).output;
  EXPECT_TRUE(json.starts_with(R"([{"remedy":"","state":"fine","text":"it runs","what":"Engine"},)")) << json;
}

// An object in the engine's place, beside an engine's port.
class TaughtMouse : public testing::Test {
 protected:
  TaughtMouse() {
    mThread.run([this] {
      BusObjectDescription description{mice::busName, mice::objectPath, mice::interface, {}, {}};
      description.methods = {
          {mice::methods::Teach, {{"s", "control"}}, {}, [this](const std::vector<PropertyList>& given) {
             mAsked.push_back(given[0].toString());
             return BusReply::success();
           }}};
      description.signals = {
          {mice::signalNames::Taught, {{"s", "control"}, {"b", "isTaught"}, {"s", "source"}, {"s", "former"}}}};
      mObject = BusObject::create(std::move(description));
      ASSERT_TRUE(mObject);
    });
  }
  ~TaughtMouse() override {
    mThread.run([this] { mObject.reset(); });
  }

  void tell(const std::vector<PropertyList>& values) {
    mThread.run([&] { EXPECT_TRUE(mObject->emit(mice::signalNames::Taught, values)); });
  }
  // vornctl, from when the engine has been asked.
  static std::unique_ptr<vorn::test::ChildProcess> teaching() {
    auto process = std::make_unique<vorn::test::ChildProcess>(vornctlCommandLine({"mice", "teach", "4"}));
    EXPECT_TRUE(process->waitForLine(
        [](const std::string& line) { return line == "Press what is to be control 4 E, or turn the wheel"; }));
    return process;
  }
  static void endsWith(vorn::test::ChildProcess& process, int status, const std::string& line) {
    const auto last = process.waitForLine([](const std::string&) { return true; });
    EXPECT_EQ(last.value_or(""), line);
    EXPECT_EQ(process.waitForEnd(), status);
  }

  vorn::test::PrivateBus mBus;
  std::vector<std::string> mAsked;
  std::unique_ptr<BusObject> mObject;
  vorn::test::LoopThread mThread;
};

class VornCtlMiceTeachingTest : public TaughtMouse {};

TEST_F(VornCtlMiceTeachingTest, WaitsForWhatIsTaught) {
  const auto process = teaching();
  EXPECT_EQ(mAsked, std::vector<std::string>{"8"});
  tell({"8", true, "BTN_SIDE", "20"});
  endsWith(*process, 0, "Control 4 E is BTN_SIDE now, which control 2 Q has lost");
}

TEST_F(VornCtlMiceTeachingTest, SaysThatNothingWasTaught) {
  const auto process = teaching();
  tell({"8", false, "", ""});
  endsWith(*process, 1, "vornctl: nothing was taught");
}

TEST_F(VornCtlMiceTeachingTest, EndsWithASignal) {
  const auto process = teaching();
  ::kill(process->id(), SIGINT);
  endsWith(*process, 1, "vornctl: nothing was taught");
}

TEST_F(VornCtlMiceTeachingTest, EndsWithTheEngine) {
  const auto process = teaching();
  mThread.run([this] { mObject.reset(); });
  endsWith(*process, 3, "vornctl: the core engine is gone");
}

}  // namespace
}  // namespace vorn::ctl::test
