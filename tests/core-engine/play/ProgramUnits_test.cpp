#include "core-engine/play/ProgramUnits.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "support/BusPump.h"
#include "support/ChangedEnvironment.h"
#include "support/FakeServiceManager.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

using vorn::test::serveBusUntil;

class ProgramUnitsTest : public testing::Test {
 protected:
  ProgramUnitsTest() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE"}) environment.set(name, std::nullopt);
  }
  std::string write(const std::string& name, const std::string& contents, mode_t mode = 0644) const {
    std::ofstream(folder.path(name)) << contents;
    EXPECT_EQ(::chmod(folder.path(name).c_str(), mode), 0);
    return folder.path(name);
  }
  std::string writeEntry(const std::string& lines) const {
    return write("tell-all.desktop", "[Desktop Entry]\nType=Application\n" + lines);
  }
  void launch(const std::string& path) { launch(path, units); }
  void launch(const std::string& path, ProgramUnits& started) {
    std::string error;
    const auto program = launchedProgram(path, error);
    if (!program) return failures.push_back(error);
    started.start(*program, [this](const ProgramUnits::Failure& failure) {
      failures.push_back(failure.reason);
      isUntaken = failure.isUntaken;
    });
  }
  // The only call of the manager so far, with SUFFIX in the place of the random end of the unit's name.
  std::string request() {
    EXPECT_TRUE(serveBusUntil([this] { return !manager.calls().empty(); }));
    EXPECT_EQ(manager.calls().size(), 1U);
    return std::regex_replace(manager.calls().front(), std::regex("@[0-9a-f]{16}\\."), "@SUFFIX.");
  }
  std::string unit() {
    const std::string call = manager.calls().at(0);
    const std::size_t start = call.find('\'') + 1;
    return call.substr(start, call.find('\'', start) - start);
  }
  std::string requestFor(const std::string& name, const std::string& description, const std::string& where,
                         const std::string& program, const std::string& arguments) const {
    return "StartTransientUnit 'app-vorn-" + name + "@SUFFIX.service' 'fail' [('Description' <s '" + description +
           ", launched with the mouse'>) ('Type' <s 'exec'>) ('ExitType' <s 'cgroup'>) ('Slice' <s 'app.slice'>) "
           "('CollectMode' <s 'inactive-or-failed'>) ('WorkingDirectory' <s '-" +
           where + "'>) ('ExecStartEx' <a(sasas) [('" + program + "' [" + arguments + "] ['no-env-expand'])]>)] []";
  }

  vorn::test::PrivateBus bus;
  vorn::test::FakeServiceManager manager;
  TemporaryFolder folder;
  ProgramUnits units{ProgramUnits::Environment::OfManager};
  std::vector<std::string> failures;
  bool isUntaken = false;
  vorn::test::ChangedEnvironment environment;
};

TEST_F(ProgramUnitsTest, AsksForTheProgramOfADesktopEntryInItsFolder) {
  const std::string program = write("tell", "#!/bin/sh\n", 0755);
  launch(writeEntry("Exec=" + program + " \"a b\" %U \"\\\\$HOME\"\nPath=" + folder.path() + "/bin/..\n"));
  EXPECT_EQ(request(),
            requestFor("tell\\x2dall", "tell-all", folder.path() + "/", program, "'" + program + "' 'a b' '$HOME'"));
  manager.removeJob(unit(), "done");
  EXPECT_EQ(failures, std::vector<std::string>{});
}

TEST_F(ProgramUnitsTest, AsksForAProgramOfPathInTheHome) {
  launch(writeEntry("Exec=sh -c true\n"));
  const std::string told = request();
  const std::string home = std::getenv("HOME");
  EXPECT_TRUE(told == requestFor("tell\\x2dall", "tell-all", home, "/usr/bin/sh", "'sh' '-c' 'true'") ||
              told == requestFor("tell\\x2dall", "tell-all", home, "/bin/sh", "'sh' '-c' 'true'"))
      << told;
}

TEST_F(ProgramUnitsTest, StartsAProgramWithAFolderOfNowhereInTheRoot) {
  launch(writeEntry("Exec=/bin/sh\nPath=bin\n"));
  EXPECT_EQ(request(), requestFor("tell\\x2dall", "tell-all", "/", "/bin/sh", "'/bin/sh'"));
}

TEST_F(ProgramUnitsTest, TellsThatTheProgramDoesNotRun) {
  launch(writeEntry("Exec=/bin/sh\n"));
  request();
  EXPECT_EQ(failures, std::vector<std::string>{});
  manager.removeJob(unit(), "failed");
  EXPECT_TRUE(serveBusUntil([this] { return !failures.empty(); }));
  EXPECT_EQ(failures, std::vector<std::string>{"cannot start /bin/sh: the service manager could not run it (failed); "
                                               "its journal tells why"});
  EXPECT_FALSE(isUntaken);
}

TEST_F(ProgramUnitsTest, AsksForNothingWhereThereIsNoProgram) {
  launch(writeEntry("Exec=no-such-program-anywhere\n"));
  launch(folder.path("None.app/"));
  EXPECT_EQ(failures, (std::vector<std::string>{"there is no program no-such-program-anywhere",
                                                "no application bundle with an Info.plist"}));
  EXPECT_EQ(manager.calls(), std::vector<std::string>{});
}

TEST_F(ProgramUnitsTest, TellsWhatTheManagerSays) {
  manager.refuse("No room");
  launch(writeEntry("Exec=/bin/sh\n"));
  EXPECT_TRUE(serveBusUntil([this] { return !failures.empty(); }));
  EXPECT_EQ(failures, std::vector<std::string>{"cannot start /bin/sh: the service manager says: No room"});
  EXPECT_TRUE(isUntaken);
}

TEST_F(ProgramUnitsTest, GivesTheManagersEnvironmentAStartupIDAlone) {
  environment.set("DISPLAY", ":98");
  launch(writeEntry("Exec=/bin/sh\n"));
  const std::string told = request();
  const std::string before = " ('Environment' <as ['DESKTOP_STARTUP_ID=vorn-core-engine/tell_all/";
  EXPECT_NE(told.find(before), std::string::npos) << told;
  EXPECT_EQ(std::regex_replace(told, std::regex(R"( \('Environment' <as \['DESKTOP_STARTUP_ID=[^ ]*'\]>\))"), ""),
            requestFor("tell\\x2dall", "tell-all", std::getenv("HOME"), "/bin/sh", "'/bin/sh'"));
}

TEST_F(ProgramUnitsTest, GivesTheEnginesOwnEnvironmentWhereItIsNotTheManagers) {
  environment.set("DISPLAY", "far:98");
  environment.set("XAUTHORITY", "/far/authority");
  environment.set("OF_THE_TERMINAL", "a 'b'");
  environment.set("NOTIFY_SOCKET", "/none");
  environment.set("BINARY", "\x01");
  environment.set("no-name", "x");
  ProgramUnits own(ProgramUnits::Environment::OfEngine);
  launch(writeEntry("Exec=/bin/sh\n"), own);
  const std::string told = request();
  for (const char* given : {"'DISPLAY=far:98'", "'OF_THE_TERMINAL=a 'b''", "'PATH="})
    EXPECT_NE(told.find(given), std::string::npos) << told;
  for (const char* missing : {"NOTIFY_SOCKET=", "BINARY=", "no-name", "DESKTOP_STARTUP_ID", "'_="})
    EXPECT_EQ(told.find(missing), std::string::npos) << told;
  // The display of the manager's session is another one.
  EXPECT_NE(told.find(" ('UnsetEnvironment' <as ['WAYLAND_DISPLAY']>) "), std::string::npos) << told;
}

TEST_F(ProgramUnitsTest, LeavesTheDisplayToTheManagerWhereTheEngineHasNone) {
  ProgramUnits own(ProgramUnits::Environment::OfEngine);
  launch(writeEntry("Exec=/bin/sh\n"), own);
  EXPECT_EQ(request().find("UnsetEnvironment"), std::string::npos);
}

}  // namespace
}  // namespace vorn::engine::test
