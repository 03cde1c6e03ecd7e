// vornctl with the real engine.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

#include "ctl/EngineClient.h"
#include "ctl/EngineSession.h"
#include "ctl/RecordFile.h"
#include "ctl/VornCtl.h"
#include "model/ProfileKeys.h"
#include "model/PropertyList.h"

namespace vorn::ctl::test {
namespace {

using vorn::test::ChildProcess;

// A client for which the engine catches keys.
class CaptureOfAnother {
 public:
  CaptureOfAnother() { EXPECT_TRUE(mEngine.request(MessageID::StartSingleKeyRecording)); }

 private:
  EngineClient mEngine{std::chrono::seconds(20)};
};

class VornCtlSessionTest : public EngineSession {
 protected:
  // Whether the monitor prints this line; others may come in between.
  static bool prints(ChildProcess& monitor, const std::string& expected) {
    return monitor.waitForLine([&](const std::string& line) { return line == expected; }).has_value();
  }
};

TEST_F(VornCtlSessionTest, TellsTheStateOfEngineAndMouse) {
  done({"set", "DPIX", "900"});
  done({"device", "battery", "60"});
  done({"device", "charging", "charging"});
  done({"device", "firmware", "2.5"});
  EXPECT_EQ(outputOf({"status"}),
            "Engine:       running\n"
            "Mouse:        present, on its cable, firmware 2.5\n"
            "Battery:      60 %, charging\n"
            "Profile:      1 \"Default\" of 1\n"
            "Keymap:       1\n"
            "Sensitivity:  900 DPI, stage 2\n"
            "Polling rate: 1000 Hz\n"
            "Macros:       0\n");
  done({"device", "plug", "wireless"});
  EXPECT_NE(
      outputOf({"status"}).find("Mouse:        present, on its wireless receiver, firmware 2.5\nBattery:      60 %\n"),
      std::string::npos);
  EXPECT_NE(outputOf({"status", "--json"}).find(R"("connection":"wireless")"), std::string::npos);
  done({"device", "battery", "100"});
  done({"device", "plug", "wired"});
  EXPECT_NE(outputOf({"status"}).find("Battery:      not in use\n"), std::string::npos);
  done({"device", "unplug"});
  EXPECT_EQ(outputOf({"status", "--json"}),
            R"({"DPIX":900,"DPIY":900,"KeymapID":0,"PollingRate":1000,"StageValue":1,"isPresent":false,"macros":0,)"
            R"("profile":{"id":0,"name":"Default"},"profiles":1})"
            "\n");
}

TEST_F(VornCtlSessionTest, IsNoFaultInTheLogOfTheEngine) {
  for (const char* dpi : {"900", "1000", "1100", "1200"}) done({"set", "DPIX", dpi});
  engine.signal(SIGTERM);
  std::string lines;
  while (const auto line = engine.waitForLine([](const std::string&) { return true; })) lines += *line + "\n";
  EXPECT_EQ(lines.find("no answer"), std::string::npos) << lines;
}

TEST_F(VornCtlSessionTest, ManagesProfiles) {
  EXPECT_EQ(outputOf({"profiles", "add", "Games"}), "Profile 2 \"Games\"\n");
  EXPECT_EQ(outputOf({"profiles", "copy", "Games"}), "Profile 3 \"Games(2)\"\n");
  done({"assign", "1", "profile", "Games(2)"});
  done({"assign", "2", "profile", "Games"});
  done({"profiles", "delete", "Games"});
  EXPECT_EQ(outputOf({"get", "Keys/43"}), "{\"command\":17,\"param1\":1,\"param2\":0}\n");
  EXPECT_EQ(outputOf({"get", "Keymap/0/Keys/20"}), "{\"command\":45,\"param1\":20,\"param2\":0}\n");
  done({"device", "click", "Tab"});
  EXPECT_EQ(outputOf({"profiles", "list"}), "  1  Default\n* 2  Games(2)\n");
  done({"profiles", "export", "1", folder.path("p")});
  done({"profiles", "switch", "1"});
  EXPECT_EQ(outputOf({"profiles", "import", folder.path("p.SkarnProfile")}), "Profile 3 \"Default(2)\"\n");
  EXPECT_EQ(outputOf({"get", "Keys", "--profile", "3"}), outputOf({"get", "Keys"}));
}

TEST_F(VornCtlSessionTest, ManagesMacros) {
  const auto event = [](int command, int delay) {
    return PropertyList::dictionary({{"command", command}, {"delay", delay}, {"page", 7}, {"argument", 4}});
  };
  const PropertyList macro = PropertyList::dictionary(
      {{"MacroName", "Jump"},
       {"sequence", PropertyList::dictionary({{"events", PropertyList::array({event(1, 0), event(0, 20)})}})}});
  ASSERT_FALSE(writeRecord(folder.path("m.SkarnMacro"), macro, RecordKind::Macro));
  EXPECT_EQ(outputOf({"macros", "import", folder.path("m.SkarnMacro")}), "Macro 1 \"Jump\"\n");
  EXPECT_EQ(outputOf({"macros", "import", folder.path("m.SkarnMacro")}), "Macro 2 \"Jump(2)\"\n");
  EXPECT_EQ(outputOf({"macros", "rename", "2", "Run"}), "Macro 2 \"Run\"\n");
  EXPECT_EQ(outputOf({"macros", "show", "Run"}).find("0.020 seconds delay\n"),
            outputOf({"macros", "show", "1"}).find('\n') + 1);
  done({"assign", "1", "macro", "Run"});
  done({"macros", "delete", "Jump"});
  EXPECT_EQ(outputOf({"get", "Keys/43"}), "{\"command\":10,\"param1\":0,\"param2\":1}\n");
  done({"macros", "export", "Run", folder.path("out")});
  EXPECT_EQ(*readRecord(folder.path("out.SkarnMacro"), RecordKind::Macro),
            macro.with("MacroName", "Run").with("delay", 20));
}

TEST_F(VornCtlSessionTest, WorksTheVirtualMouse) {
  done({"assign", "3", "button", "2"});
  done({"device", "press", "3"});
  EXPECT_EQ(outputOf({"device", "state"}),
            "battery: 100\ncharging: none\nconnection: wired\nfirmware: 1.00\nforgottenOutput: 0\n"
            "isFirmwareFailing: false\noutput: 1\npressed: [\"26\"]\n");
  done({"device", "release", "3"});
  done({"device", "click", "wheel-up"});
  done({"device", "click", "stage-up"});
  std::string output = outputOf({"device", "output"});
  for (const std::string expected : {"  press button 2\n", "  release button 2\n", "  wheel 1\n"}) {
    const std::size_t end = output.find(expected);
    ASSERT_NE(end, std::string::npos) << output;
    EXPECT_EQ(output.substr(0, end).find_first_not_of("0123456789"), std::string::npos) << output;
    output.erase(0, end + expected.size());
  }
  EXPECT_EQ(output, "");
  EXPECT_EQ(outputOf({"device", "output", "--json"}), "[]\n");
  EXPECT_EQ(outputOf({"get", "StageValue"}), "2\n");
  done({"device", "unplug"});
  const Ended run = runVornCtl({"device", "press", "3"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.output, "vornctl: The mouse is not plugged in\n");
}

TEST_F(VornCtlSessionTest, AsksOfTheMouseWhatNobodyElseHears) {
  ChildProcess monitor(vornctlCommandLine({"monitor"}));
  EXPECT_TRUE(prints(monitor, "listening"));
  outputOf({"status"});
  done({"set", "ProfileOSDOn", "0"});
  const auto next = monitor.waitForLine([](const std::string&) { return true; });
  EXPECT_EQ(next, "Profile Updated 273: Profile Name=Default, Source App=org.vorn.vornctl");
}

TEST_F(VornCtlSessionTest, ListsSettingsAndKeysWithoutAnEngine) {
  engine.signal(SIGTERM);
  engine.waitForEnd();
  const std::string settings = outputOf({"get", "--list"});
  EXPECT_EQ(std::count(settings.begin(), settings.end(), '\n'), static_cast<std::ptrdiff_t>(profileKeys.size()));
  EXPECT_NE(settings.find("\nDPIX                  profile  a whole number from 100 to 5600 DPI\n"), std::string::npos);
  EXPECT_NE(settings.find("\nPollingRate           device   125, 500 or 1000 Hz\n"), std::string::npos);
  EXPECT_NE(settings.find("\nScrollLED             profile  0 or 1 (off, on)\n"), std::string::npos);
  EXPECT_NE(outputOf({"get", "--list", "--json"})
                .find(R"({"key":"DPIX","maximum":5600,"minimum":100,"scope":"profile",)"
                      R"("takes":"a whole number from 100 to 5600 DPI","type":"integer","unit":"DPI"})"),
            std::string::npos);
  EXPECT_EQ(outputOf({"keys"}).find("A\nB\n"), 0U);
  EXPECT_EQ(outputOf({"keys", "--json"}).find(R"([{"name":"A","usage":4},)"), 0U);
}

TEST_F(VornCtlSessionTest, TypesAChordInTheOrderOfFingers) {
  ChildProcess monitor(vornctlCommandLine({"monitor"}));
  EXPECT_TRUE(prints(monitor, "listening"));
  CaptureOfAnother capture;
  done({"device", "type", "ctrl+shift+k"});
  EXPECT_TRUE(prints(monitor, "SingleKeyEvent273: singleKey=0, singleKeyModif=1"));
  EXPECT_TRUE(prints(monitor, "SingleKeyEvent273: singleKey=0, singleKeyModif=3"));
  EXPECT_TRUE(prints(monitor, "SingleKeyEvent273: singleKey=14, singleKeyModif=3"));
}

TEST_F(VornCtlSessionTest, FollowsTheNewsUntilItIsInterrupted) {
  for (const int number : {SIGINT, SIGTERM}) {
    ChildProcess monitor(vornctlCommandLine({"monitor", "--json"}));
    EXPECT_TRUE(prints(monitor, R"({"name":"listening","userInfo":{}})"));
    done({"set", "ProfileOSDOn", number == SIGINT ? "0" : "1"});
    EXPECT_TRUE(prints(
        monitor,
        R"({"name":"Profile Updated 273","userInfo":{"Profile Name":"Default","Source App":"org.vorn.vornctl"}})"));
    done({"device", "unplug"});
    EXPECT_TRUE(prints(monitor, R"({"name":"Device Removed 273","userInfo":{}})"));
    done({"device", "plug", "wired"});
    EXPECT_TRUE(prints(monitor, R"({"name":"Device Attached 273","userInfo":{}})"));
    monitor.signal(number);
    EXPECT_EQ(monitor.waitForEnd(), 0);
  }
}

TEST_F(VornCtlSessionTest, TellsKeymapUpdatesWithoutTheWholeSettings) {
  ChildProcess monitor(vornctlCommandLine({"monitor"}));
  EXPECT_TRUE(prints(monitor, "listening"));
  done({"set", "KeymapID", "3"});
  EXPECT_TRUE(prints(monitor, "Keymap Updated 273: KeymapID=3, Source App=org.vorn.vornctl"));
  bus.end();
  EXPECT_TRUE(prints(monitor, "vornctl: the session bus is gone"));
  EXPECT_EQ(monitor.waitForEnd(), 3);
}

}  // namespace
}  // namespace vorn::ctl::test
