// How vornctl ends when something is wrong.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "ctl/VornCtl.h"
#include "model/PropertyList.h"
#include "support/FakeEngineProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::ctl::test {
namespace {

using vorn::test::FakeEngineProcess;
using vorn::test::PropertyListFile;

class VornCtlFailuresTest : public testing::Test {
 protected:
  static void expectFailure(const Words& words, int status, const std::string& text, const Words& environment = {}) {
    const Ended run = runVornCtl(words, environment);
    EXPECT_EQ(run.status, status) << run.output;
    EXPECT_EQ(run.output, "vornctl: " + text + "\n");
  }
  static PropertyList settings(const PropertyList& bundle) {
    return PropertyList::dictionary({{"AllDevSettings", bundle}, {"ReturnStatus", 0}});
  }

  vorn::test::PrivateBus bus;
  const PropertyListFile answer{settings(PropertyList::dictionary(
      {{"Profiles", PropertyList::array({PropertyList::dictionary(
                        {{"ProfileName", "One"}, {"DPIX", 800}, {"PollingRate", 500}, {"ScrollLED", 1}})})},
       {"DeviceSettings", PropertyList::dictionary({{"ActiveProfile", 0}})}}))};
};

TEST_F(VornCtlFailuresTest, OfTheCommandLineEndWith2WithoutAnEngine) {
  expectFailure({"status", "--frob"}, 2, "unknown option --frob");
  expectFailure({"assign", "99", "disable"}, 2, "there is no control \"99\"");
  expectFailure({"assign", "1", "macro", "1", "--repeat", "0"}, 2, "--repeat takes 1 to 10, held or toggle");
  expectFailure({"device", "plug", "glued"}, 2, "device plug takes wired or wireless");
  expectFailure({"device", "press", "99"}, 2, "there is no control \"99\"");
  expectFailure({"device", "type", "button:10"}, 2,
                "there is no button \"button:10\"; the buttons are button:1 to button:9");
  expectFailure({"device", "battery", "101"}, 2, "device battery takes a percentage from 0 to 100");
  expectFailure({"device", "charging", "full"}, 2, "device charging takes battery, charging, none or usual");
}

TEST_F(VornCtlFailuresTest, NameTheCommandsThatAreNear) {
  const std::pair<Words, const char*> table[] = {
      {{"profile", "list"}, R"("profile list"; did you mean "profiles list"?)"},
      {{"profiles", "lsit"}, R"("profiles lsit"; did you mean "profiles list"?)"},
      {{"list", "macros"}, R"("list macros"; did you mean "macros list"?)"},
      {{"export"}, R"("export"; did you mean "profiles export" or "macros export"?)"},
      {{"stauts"}, R"("stauts"; did you mean "status"?)"},
      {{"macro"}, R"("macro"; "macros" takes list, show, record, rename, delete, export or import)"},
      {{"macros", "frobnicate"},
       R"("macros frobnicate"; "macros" takes list, show, record, rename, delete, export or import)"},
      {{"frobnicate"}, R"("frobnicate"; --help lists them)"},
  };
  for (const auto& [words, text] : table) expectFailure(words, 2, "unknown command " + std::string(text));
}

TEST_F(VornCtlFailuresTest, AreObjectsOfJSONWhereThatIsWanted) {
  const std::pair<Words, std::string> table[] = {
      {{"--json", "frob\nnicate"},
       R"({"error":"usage","message":"unknown command \"frob\nnicate\"; --help lists them","status":2})"},
      {{"status", "--frob", "--json"}, R"({"error":"usage","message":"unknown option --frob","status":2})"},
      {{"status", "--json"},
       R"({"error":"no-engine","message":"no core engine runs in this session; start vorn-core-engine","status":3})"},
      {{"--json", "profiles", "import", "/nonexistent"},
       R"({"error":"file","message":"/nonexistent: No such file or directory","status":5})"},
  };
  for (const auto& [words, expected] : table) {
    const Ended run = runVornCtl(words);
    EXPECT_EQ(run.output, expected + "\n");
    EXPECT_EQ(run.status, expected.at(expected.size() - 2) - '0');
  }
  const Ended plain = runVornCtl({"status", "--frob", "--", "--json"});
  EXPECT_EQ(plain.output, "vornctl: unknown option --frob\n");
}

TEST_F(VornCtlFailuresTest, ToWaitOrToGetThroughAreObjectsOfJSONToo) {
  FakeEngineProcess engine({"on 4 silent"});
  EXPECT_EQ(runVornCtl({"profiles", "list", "--timeout", "0.05", "--json"}).output,
            R"({"error":"no-answer","message":"the engine does not answer in time","status":4})"
            "\n");
  ASSERT_TRUE(engine.obey("on 4 reply " + answer.path()));
  EXPECT_EQ(runVornCtl({"get", "Nope", "--json"}).output,
            R"({"error":"refused","message":"the profile has no value \"Nope\"; get --list lists them","status":1})"
            "\n");
}

TEST_F(VornCtlFailuresTest, ToFindAnEngineOrABusEndWith3) {
  for (const Words& words : {Words{"status"}, Words{"profiles", "list"}, Words{"device", "state"}})
    expectFailure(words, 3, "no core engine runs in this session; start vorn-core-engine");
  const Words noBus = {"DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent"};
  for (const Words& words : {Words{"status"}, Words{"monitor"}, Words{"device", "state"}}) {
    const Ended run = runVornCtl(words, noBus);
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.output.find("vornctl: cannot reach the session bus: "), 0U) << run.output;
  }
}

TEST_F(VornCtlFailuresTest, ToFindWhatTheEngineDoesNotHaveEndWith3) {
  const FakeEngineProcess engine;
  expectFailure({"history"}, 3, "the core engine of this session does not offer the history");
  expectFailure({"device", "state"}, 3, "the core engine of this session does not offer the virtual mouse");
}

TEST_F(VornCtlFailuresTest, OfAnEngineThatDoesNotAnswerEndWith4) {
  FakeEngineProcess engine({"on 4 silent"});
  expectFailure({"profiles", "list", "--timeout", "0.05"}, 4, "the engine does not answer in time");
  ASSERT_TRUE(engine.obey("on 4 freeze"));
  expectFailure({"profiles", "list", "--timeout", "0.05"}, 4, "the engine does not answer in time");
}

TEST_F(VornCtlFailuresTest, OfAnEngineThatRefusesEndWith1) {
  FakeEngineProcess engine({"on 4 reply " + answer.path()});
  const std::pair<int, std::string> table[] = {
      {1, "the engine has no settings"},
      {2, "the engine could not use the request"},
      {3, "out of range: no such position, no room for one more, or the last one"},
      {4, "the engine could not save the change"},
      {5, "the record is too large"},
      {6, "the engine left out values that it cannot use"},
      {7, "nothing is running or recorded"},
      {8, "no mouse was connected, and the settings have not been read since"},
      {9, "the profiles have changed meanwhile"},
      {10, "the engine refused with status 10"},
      {-1, "the engine refused with status -1"},
  };
  for (const auto& [status, text] : table) {
    const PropertyListFile refusal(PropertyList::dictionary({{"ReturnStatus", status}}));
    ASSERT_TRUE(engine.obey("on 6 reply " + refusal.path()));
    expectFailure({"set", "DPIX", "900"}, 1, text);
  }
}

TEST_F(VornCtlFailuresTest, OfAnEngineThatTalksNonsenseEndWith1) {
  const PropertyListFile empty(PropertyList::dictionary());
  const PropertyListFile array(PropertyList::array());
  const PropertyListFile odd(settings(PropertyList::dictionary({{"Profiles", 5}})));
  FakeEngineProcess engine;
  for (const std::string& action : {"reply " + empty.path(), "reply " + odd.path()}) {
    ASSERT_TRUE(engine.obey("on 4 " + action));
    expectFailure({"status"}, 1, "the engine has no settings");
  }
  for (const std::string& action : {std::string("empty"), std::string("data 00ff"), "reply " + array.path()}) {
    ASSERT_TRUE(engine.obey("on 4 " + action));
    expectFailure({"status"}, 1, "the answer of the engine cannot be understood");
  }
}

TEST_F(VornCtlFailuresTest, InWhatIsNamedEndWith1Or2) {
  FakeEngineProcess engine({"on 4 reply " + answer.path()});
  expectFailure({"profiles", "switch", "2"}, 1, "there is no profile \"2\"");
  expectFailure({"profiles", "move", "1", "2"}, 1, "there is no position 2; the last is 1");
  expectFailure({"profiles", "move", "1", "0"}, 1, "there is no position 0; the last is 1");
  expectFailure({"profiles", "switch", "0"}, 1, "there is no profile \"0\"");
  expectFailure({"profiles", "delete", "Two\nlines"}, 1, "there is no profile \"Two\\nlines\"");
  expectFailure({"get", "DPIX", "--profile", "Two"}, 1, "there is no profile \"Two\"");
  expectFailure({"get", "Nope"}, 1, "the profile has no value \"Nope\"; get --list lists them");
  expectFailure({"get", "DPI"}, 1, "the profile has no value \"DPI\"; did you mean \"DPIX\"?");
  expectFailure({"get"}, 2, "get takes either KEY or --list");
  expectFailure({"get", "DPIX", "--list"}, 2, "get takes either KEY or --list");
  expectFailure({"assignments", "--keymap", "9"}, 2, "--keymap takes 1 to 8");
  expectFailure({"profiles", "add", ""}, 2, "a profile needs a name");
  expectFailure({"profiles", "move", "1", "up"}, 2, "\"up\" is no position");
  expectFailure({"profiles", "rename", "1", ""}, 2, "a profile needs a name");
  expectFailure({"macros", "show", "1"}, 1, "there is no macro \"1\"");
  expectFailure({"set", "DPIX", "fast"}, 2, "\"fast\" is not a whole number");
  expectFailure({"set", "DPIX", "99"}, 1, "DPIX takes a whole number from 100 to 5600 DPI");
  for (const char* rate : {"300", "124", "1001", "on"}) {
    expectFailure({"set", "PollingRate", rate}, 1, "PollingRate takes 125, 500 or 1000 Hz");
  }
  expectFailure({"set", "ScrollLED", "2"}, 1, "ScrollLED takes 0 or 1 (off, on)");
}

TEST_F(VornCtlFailuresTest, WithFilesEndWith5) {
  const engine::test::TemporaryFolder folder;
  FakeEngineProcess engine({"on 4 reply " + answer.path()});
  expectFailure({"profiles", "import", folder.path("no")}, 5, folder.path("no") + ": No such file or directory");
  expectFailure({"profiles", "import", "--all", folder.path("no")}, 5,
                folder.path("no") + ": No such file or directory");
  expectFailure({"profiles", "export", "1"}, 2,
                "usage: vornctl profiles export PROFILE FILE|-, or vornctl profiles export --all FOLDER");
  expectFailure({"profiles", "export", "1", folder.path("no/file")}, 5,
                folder.path("no/file.SkarnProfile") + ": No such file or directory");
  const std::string full = "exec \"$0\" --help > /dev/full";
  vorn::test::ChildProcess process({"/bin/sh", "-c", full, VORNCTL_PROGRAM});
  EXPECT_EQ(process.waitForEnd(), 5);
}

TEST_F(VornCtlFailuresTest, KeepARecordFromATerminal) {
  FakeEngineProcess engine({"on 4 reply " + answer.path()});
  const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0 || ::grantpt(terminal) != 0 || ::unlockpt(terminal) != 0)
    GTEST_SKIP() << "this machine has no pseudo-terminals";
  vorn::test::ChildProcess process(
      {"/bin/sh", "-c", "exec \"$0\" profiles export 1 - 2>&1 1> \"$1\"", VORNCTL_PROGRAM, ::ptsname(terminal)});
  EXPECT_EQ(process.waitForLine([](const std::string&) { return true; }),
            "vornctl: standard output is a terminal; send it to a file or a program");
  EXPECT_EQ(process.waitForEnd(), 5);
  ::close(terminal);
}

TEST_F(VornCtlFailuresTest, AreNoneForHelpAndVersion) {
  const Ended help = runVornCtl({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.output.find("Usage: vornctl [OPTION]... COMMAND [ARGUMENT]...\n"), 0U);
  const Ended version = runVornCtl({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.output, "vornctl " SKARN_VERSION "\n");
}

}  // namespace
}  // namespace vorn::ctl::test
