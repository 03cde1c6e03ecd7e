// vornctl macros record, with an engine that does what it is told and with the real one.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <string>
#include <vector>

#include "ctl/VornCtl.h"
#include "model/PropertyList.h"
#include "protocol/EngineProtocol.h"
#include "support/FakeEngineProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::ctl::test {
namespace {

using vorn::test::ChildProcess;
using vorn::test::FakeEngineProcess;
using vorn::test::PropertyListFile;

PropertyList status(int status) {
  return PropertyList::dictionary({{"ReturnStatus", status}});
}

PropertyList settingsWith(const std::vector<std::string>& macros) {
  PropertyList list = PropertyList::array();
  for (const std::string& name : macros) list = list.appending(PropertyList::dictionary({{"MacroName", name}}));
  const PropertyList profiles = PropertyList::array({PropertyList::dictionary({{"ProfileName", "One"}})});
  return PropertyList::dictionary(
      {{"AllDevSettings", PropertyList::dictionary({{"Profiles", profiles}, {"Macros", list}})}, {"ReturnStatus", 0}});
}

std::string nextLine(ChildProcess& process) {
  return process.waitForLine([](const std::string&) { return true; }).value_or("");
}

// The rest of what it says.
std::string restOf(ChildProcess& process) {
  std::string rest;
  while (const auto line = process.waitForLine([](const std::string&) { return true; })) rest += *line + "\n";
  return rest;
}

using Requests = std::vector<FakeEngineProcess::Request>;

class VornCtlRecordingTest : public testing::Test {
 protected:
  VornCtlRecordingTest() {
    EXPECT_TRUE(engine.obey("on 4 reply " + settings.path()));
    EXPECT_TRUE(engine.obey("on * reply " + done.path()));
  }

  static PropertyList newsOf(const std::vector<std::string>& lines) {
    PropertyList list = PropertyList::array();
    for (const std::string& line : lines) list = list.appending(line);
    return PropertyList::dictionary({{"messagesArray", list}});
  }
  // client: whose recording the lines belong to; not told where it is empty.
  void tellLines(const std::vector<std::string>& lines, const std::string& client = {}) {
    const PropertyList told = newsOf(lines);
    const PropertyListFile news(client.empty() ? told : told.with("ResponseMsgPortName", client));
    EXPECT_TRUE(engine.obey("post MacroSequence273 \"\" " + news.path()));
  }
  // Those that came, but for the ones for all settings, without the keys that all have.
  Requests requests() {
    Requests all;
    for (FakeEngineProcess::Request& request : engine.takeRequests()) {
      if (request.messageID == 4) continue;
      for (const char* key : {"ProductID", "ResponseMsgPortName", "Source App", "IsVisitor"}) {
        EXPECT_TRUE(request.body.contains(key)) << key;
        request.body = request.body.without(key);
      }
      all.push_back(request);
    }
    return all;
  }
  static FakeEngineProcess::Request start(int macro, int isAppending = 0) { return about(18, macro, isAppending); }
  static FakeEngineProcess::Request stop() { return {19, PropertyList::dictionary()}; }
  static FakeEngineProcess::Request save(int macro, int isAppending = 0) { return about(20, macro, isAppending); }
  static FakeEngineProcess::Request about(int messageID, int macro, int isAppending) {
    return {messageID, PropertyList::dictionary({{"macroID", macro}, {"isAppendRecording", isAppending}})};
  }

  vorn::test::PrivateBus bus;
  PropertyListFile settings{settingsWith({"Jump", "Run"})};
  PropertyListFile done{status(0)};
  FakeEngineProcess engine;
};

TEST_F(VornCtlRecordingTest, PrintsWhatIsTypedAndSavesItOnASignal) {
  for (const int number : {SIGINT, SIGTERM}) {
    ChildProcess recording(vornctlCommandLine({"macros", "record", "run"}));
    EXPECT_EQ(nextLine(recording), "Recording macro 2 \"Run\"");
    tellLines({"Key Press A"});
    EXPECT_EQ(nextLine(recording), "Key Press A");
    tellLines({"0.020 seconds delay\n", "Key Release A"});
    EXPECT_EQ(nextLine(recording), "0.020 seconds delay");
    EXPECT_EQ(nextLine(recording), "Key Release A");
    EXPECT_EQ(requests(), Requests{start(1)});
    recording.signal(number);
    EXPECT_EQ(restOf(recording), "Macro 2 \"Run\": 2 events recorded\n");
    EXPECT_EQ(recording.waitForEnd(), 0);
    EXPECT_EQ(requests(), (Requests{stop(), save(1)}));
  }
}

TEST_F(VornCtlRecordingTest, TakesTheLinesThatComeWithTheStop) {
  const PropertyListFile news(PropertyList::dictionary({{"messagesArray", PropertyList::array({"Key Press A"})}}));
  ASSERT_TRUE(engine.obey("on 19 post MacroSequence273 \"\" " + news.path() + " ; reply " + done.path()));
  ChildProcess recording(vornctlCommandLine({"macros", "record", "1"}));
  EXPECT_EQ(nextLine(recording), "Recording macro 1 \"Jump\"");
  recording.signal(SIGINT);
  EXPECT_EQ(restOf(recording), "Key Press A\nMacro 1 \"Jump\": 1 event recorded\n");
  EXPECT_EQ(requests(), (Requests{start(0), stop(), save(0)}));
}

TEST_F(VornCtlRecordingTest, AppendsBehindTheEventsWhereThatIsWanted) {
  ChildProcess recording(vornctlCommandLine({"macros", "record", "1", "--append"}));
  EXPECT_EQ(nextLine(recording), "Recording macro 1 \"Jump\"");
  tellLines({"0.020 seconds delay\n", "Key Press A", "0.010 seconds delay\n", "Key Release A"});
  EXPECT_EQ(nextLine(recording), "0.020 seconds delay");
  recording.signal(SIGINT);
  EXPECT_NE(restOf(recording).find("Macro 1 \"Jump\": 2 events recorded\n"), std::string::npos);
  EXPECT_EQ(requests(), (Requests{start(0, 1), stop(), save(0, 1)}));
}

TEST_F(VornCtlRecordingTest, MakesAMacroOfTheNameWhereThatIsWanted) {
  ChildProcess recording(vornctlCommandLine({"macros", "record", "--new", "Run"}));
  EXPECT_EQ(nextLine(recording), "Recording macro 3 \"Run(2)\"");
  const PropertyListFile more(settingsWith({"Jump", "Run", "Run(2)"}));
  ASSERT_TRUE(engine.obey("on 4 reply " + more.path()));
  tellLines({"Key Press A"});
  EXPECT_EQ(nextLine(recording), "Key Press A");
  recording.signal(SIGINT);
  EXPECT_EQ(restOf(recording), "Macro 3 \"Run(2)\": 1 event recorded\n");
  const PropertyList added = PropertyList::dictionary({{"MacroName", "Run(2)"}});
  EXPECT_EQ(requests(),
            (Requests{{32, PropertyList::dictionary({{"MacroContents", added}})}, start(2), stop(), save(2)}));
}

TEST_F(VornCtlRecordingTest, FollowsItsMacroAndSavesNothingWithoutIt) {
  for (const bool isThere : {true, false}) {
    ASSERT_TRUE(engine.obey("on 4 reply " + settings.path()));
    ChildProcess recording(vornctlCommandLine({"macros", "record", "Run"}));
    EXPECT_EQ(nextLine(recording), "Recording macro 2 \"Run\"");
    tellLines({"Key Press A"});
    EXPECT_EQ(nextLine(recording), "Key Press A");
    const PropertyListFile fewer(settingsWith({isThere ? "Run" : "Jump"}));
    ASSERT_TRUE(engine.obey("on 4 reply " + fewer.path()));
    recording.signal(SIGINT);
    EXPECT_EQ(restOf(recording), isThere ? "Macro 1 \"Run\": 1 event recorded\n"
                                         : "vornctl: the macro is gone, and what was recorded with it\n");
    EXPECT_EQ(recording.waitForEnd(), isThere ? 0 : 1);
    EXPECT_EQ(requests(), isThere ? (Requests{start(1), stop(), save(0)}) : (Requests{start(1), stop()}));
  }
}

TEST_F(VornCtlRecordingTest, SavesNothingWhereNothingWasTyped) {
  const Ended run = runVornCtl({"macros", "record", "1", "--seconds", "0.01"});
  EXPECT_EQ(run.output, "Recording macro 1 \"Jump\"\nvornctl: nothing was typed; the macro is as it was\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(requests(), (Requests{start(0), stop()}));
}

TEST_F(VornCtlRecordingTest, CountsNothingThatIsToldBeforeItsStartIsAnswered) {
  const PropertyListFile news(newsOf({"Key Press A"}).with("ResponseMsgPortName", "Other"));
  ASSERT_TRUE(engine.obey("on 18 post MacroSequence273 \"\" " + news.path() + " ; reply " + done.path()));
  ChildProcess recording(vornctlCommandLine({"macros", "record", "1"}));
  EXPECT_EQ(nextLine(recording), "Recording macro 1 \"Jump\"");
  recording.signal(SIGINT);
  EXPECT_EQ(restOf(recording), "vornctl: nothing was typed; the macro is as it was\n");
  EXPECT_EQ(recording.waitForEnd(), 1);
  EXPECT_EQ(requests(), (Requests{start(0), stop()}));
}

TEST_F(VornCtlRecordingTest, EndsAtOnceWithoutSavingWhenAnotherProgramBeginsToRecord) {
  for (const std::vector<std::string>& ofTheOther : {std::vector<std::string>(), {"Key Press B"}}) {
    ChildProcess recording(vornctlCommandLine({"macros", "record", "1"}));
    EXPECT_EQ(nextLine(recording), "Recording macro 1 \"Jump\"");
    tellLines({"Key Press A"}, std::string(vornctlReplyPortPrefix) + std::to_string(recording.id()));
    EXPECT_EQ(nextLine(recording), "Key Press A");
    tellLines(ofTheOther, "Other");
    EXPECT_EQ(restOf(recording), "vornctl: another program has begun to record\n");
    EXPECT_EQ(recording.waitForEnd(), 1);
    EXPECT_EQ(requests(), Requests{start(0)});
  }
}

TEST_F(VornCtlRecordingTest, DeletesTheMacroThatItMadeWhereNothingWasTyped) {
  ChildProcess recording(vornctlCommandLine({"macros", "record", "--new", "Walk"}));
  EXPECT_EQ(nextLine(recording), "Recording macro 3 \"Walk\"");
  const PropertyListFile more(settingsWith({"Run", "Walk"}));
  ASSERT_TRUE(engine.obey("on 4 reply " + more.path()));
  recording.signal(SIGINT);
  EXPECT_EQ(restOf(recording), "vornctl: nothing was typed; the new macro is deleted again\n");
  EXPECT_EQ(recording.waitForEnd(), 1);
  const PropertyList added = PropertyList::dictionary({{"MacroName", "Walk"}});
  EXPECT_EQ(requests(), (Requests{{32, PropertyList::dictionary({{"MacroContents", added}})},
                                  start(2),
                                  stop(),
                                  {22, PropertyList::dictionary({{"macroID", 1}})}}));
}

TEST_F(VornCtlRecordingTest, KeepsTheMacroThatItMadeWhereSomebodyGaveItEvents) {
  ChildProcess recording(vornctlCommandLine({"macros", "record", "--new", "Walk"}));
  EXPECT_EQ(nextLine(recording), "Recording macro 3 \"Walk\"");
  const PropertyList event = PropertyList::dictionary({{"command", 1}, {"delay", 0}, {"page", 7}, {"argument", 4}});
  const PropertyList sequence = PropertyList::dictionary({{"events", PropertyList::array({event})}});
  const PropertyList filled = PropertyList::dictionary({{"MacroName", "Walk"}, {"sequence", sequence}});
  const PropertyListFile more(PropertyList::dictionary(
      {{"AllDevSettings", PropertyList::dictionary({{"Macros", PropertyList::array({filled})}})},
       {"ReturnStatus", 0}}));
  ASSERT_TRUE(engine.obey("on 4 reply " + more.path()));
  tellLines({}, "Other");
  EXPECT_EQ(restOf(recording), "vornctl: another program has begun to record\n");
  const Requests all = requests();
  ASSERT_EQ(all.size(), 2U);
  EXPECT_EQ(all[1], start(2));
}

TEST_F(VornCtlRecordingTest, StopsNothingThatDidNotBegin) {
  const PropertyListFile tooLarge(status(5));
  ASSERT_TRUE(engine.obey("on 18 reply " + tooLarge.path()));
  const Ended run = runVornCtl({"macros", "record", "1"});
  EXPECT_EQ(run.output, "vornctl: the record is too large\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(requests(), Requests{start(0)});
}

TEST_F(VornCtlRecordingTest, AsksNothingWhereTheWordsAreWrong) {
  EXPECT_EQ(runVornCtl({"macros", "record", "Rum"}).output,
            "vornctl: there is no macro \"Rum\"; did you mean \"Run\"?\n");
  EXPECT_EQ(runVornCtl({"macros", "record", "Run", "--new", "--append"}).status, 2);
  EXPECT_EQ(runVornCtl({"macros", "record", "--new", ""}).status, 2);
  EXPECT_EQ(runVornCtl({"macros", "record", "Run", "--seconds", "0"}).status, 2);
  EXPECT_EQ(requests(), Requests());
}

TEST_F(VornCtlRecordingTest, EndsWithTheEngine) {
  ChildProcess recording(vornctlCommandLine({"macros", "record", "1"}));
  EXPECT_EQ(nextLine(recording), "Recording macro 1 \"Jump\"");
  engine.process().signal(SIGKILL);
  EXPECT_EQ(restOf(recording), "vornctl: the core engine has gone, and what was recorded with it\n");
  EXPECT_EQ(recording.waitForEnd(), 3);
}

TEST_F(VornCtlRecordingTest, TellsEachLineAndTheEndAsJSON) {
  ChildProcess recording(vornctlCommandLine({"macros", "record", "1", "--json"}));
  EXPECT_EQ(nextLine(recording), R"({"id":0,"name":"Jump"})");
  tellLines({"0.020 seconds delay\n", "Key Press A"});
  EXPECT_EQ(nextLine(recording), R"({"line":"0.020 seconds delay"})");
  EXPECT_EQ(nextLine(recording), R"({"line":"Key Press A"})");
  recording.signal(SIGINT);
  EXPECT_EQ(restOf(recording), "{\"events\":1,\"id\":0,\"name\":\"Jump\"}\n");
}

TEST_F(VornCtlRecordingTest, SavesWhatNobodyReadsAnyMore) {
  const std::string reader = "{ for line in 1 2; do read -r text; printf '%s\\n' \"$text\"; done; }";
  ChildProcess recording({"/bin/sh", "-c", "\"$0\" macros record 1 2>&1 | " + reader, VORNCTL_PROGRAM});
  EXPECT_EQ(nextLine(recording), "Recording macro 1 \"Jump\"");
  tellLines({"Key Press A"});
  EXPECT_EQ(nextLine(recording), "Key Press A");
  // The reader has gone by the time of one of these.
  while (recording.isRunning() && !engine.waitForRequest(19, std::chrono::milliseconds(20))) tellLines({"Key Press B"});
  const auto saved = engine.waitForRequest(20);
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved->body["macroID"], PropertyList(0));
}

class VornCtlRecordingSessionTest : public testing::Test {
 protected:
  VornCtlRecordingSessionTest() {
    EXPECT_TRUE(engine.waitForLine([](const std::string& line) { return line.find("ready, ") != std::string::npos; }));
  }

  vorn::test::PrivateBus bus;
  engine::test::TemporaryFolder folder;
  ChildProcess engine{{"/bin/sh", "-c", "exec \"$0\" \"$@\" 2>&1", ENGINE_PROGRAM, "--state-dir", folder.path("state"),
                       "--defaults", BUILT_DEFAULTS}};
};

TEST_F(VornCtlRecordingSessionTest, RecordsWhatAnotherProgramTypesOnTheMouse) {
  for (const bool isAppending : {false, true}) {
    Words words = {"macros", "record", "Typed"};
    words.emplace_back(isAppending ? "--append" : "--new");
    ChildProcess recording(vornctlCommandLine(words));
    EXPECT_EQ(nextLine(recording), "Recording macro 1 \"Typed\"");
    EXPECT_EQ(runVornCtl({"device", "type", "ctrl+c"}).status, 0);
    std::string lines;
    for (int count = isAppending ? 8 : 7; count > 0; --count) lines += nextLine(recording) + "\n";
    recording.signal(SIGINT);
    EXPECT_EQ(restOf(recording), "Macro 1 \"Typed\": 4 events recorded\n");
    EXPECT_EQ(recording.waitForEnd(), 0);
    const std::string shown = runVornCtl({"macros", "show", "Typed"}).output;
    EXPECT_TRUE(shown.ends_with(lines)) << shown << "does not end in\n" << lines;
    EXPECT_EQ(std::count(shown.begin(), shown.end(), '\n'), isAppending ? 15 : 7);
  }
}

TEST_F(VornCtlRecordingSessionTest, LosesItsRecordingToAnotherClientThatBegins) {
  ChildProcess first(vornctlCommandLine({"macros", "record", "--new", "First"}));
  EXPECT_EQ(nextLine(first), "Recording macro 1 \"First\"");
  ChildProcess second(vornctlCommandLine({"macros", "record", "--new", "Second"}));
  EXPECT_EQ(nextLine(second), "Recording macro 2 \"Second\"");
  EXPECT_EQ(restOf(first), "vornctl: another program has begun to record; the new macro is deleted again\n");
  EXPECT_EQ(first.waitForEnd(), 1);
  EXPECT_EQ(runVornCtl({"device", "type", "A"}).status, 0);
  EXPECT_EQ(nextLine(second).find("Key Press A"), 0U);
  second.signal(SIGTERM);
  EXPECT_TRUE(restOf(second).ends_with("Macro 1 \"Second\": 2 events recorded\n"));
  EXPECT_EQ(runVornCtl({"macros", "list"}).output, "  1  Second\n");
}

TEST_F(VornCtlRecordingSessionTest, KeepsItsNewMacroForTheOtherClientThatRecordsIt) {
  ChildProcess first(vornctlCommandLine({"macros", "record", "--new", "Both"}));
  EXPECT_EQ(nextLine(first), "Recording macro 1 \"Both\"");
  ChildProcess second(vornctlCommandLine({"macros", "record", "Both"}));
  EXPECT_EQ(nextLine(second), "Recording macro 1 \"Both\"");
  EXPECT_EQ(restOf(first), "vornctl: another program has begun to record\n");
  EXPECT_EQ(runVornCtl({"device", "type", "A"}).status, 0);
  EXPECT_EQ(nextLine(second), "Key Press A");
  second.signal(SIGTERM);
  EXPECT_TRUE(restOf(second).ends_with("Macro 1 \"Both\": 2 events recorded\n"));
}

TEST_F(VornCtlRecordingSessionTest, LeavesNoNewMacroBehindWhereNothingWasTyped) {
  EXPECT_EQ(runVornCtl({"macros", "record", "--new", "Empty", "--seconds", "0.01"}).output,
            "Recording macro 1 \"Empty\"\nvornctl: nothing was typed; the new macro is deleted again\n");
  EXPECT_EQ(runVornCtl({"macros", "list"}).output, "");
}

}  // namespace
}  // namespace vorn::ctl::test
