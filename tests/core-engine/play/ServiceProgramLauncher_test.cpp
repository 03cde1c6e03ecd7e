#include "core-engine/play/ServiceProgramLauncher.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "support/BusPump.h"
#include "support/FakeServiceManager.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

using vorn::test::serveBusUntil;

class ServiceProgramLauncherTest : public testing::Test {
 protected:
  std::string write(const std::string& name, const std::string& contents, mode_t mode = 0644) const {
    std::ofstream(folder.path(name)) << contents;
    EXPECT_EQ(::chmod(folder.path(name).c_str(), mode), 0);
    return folder.path(name);
  }
  std::string writeEntry(const std::string& lines) const {
    return write("tell-all.desktop", "[Desktop Entry]\nType=Application\n" + lines);
  }
  void launch(const std::string& path) {
    launcher.launch(path, [this](const std::string& reason) { failures.push_back(reason); });
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
  ServiceProgramLauncher launcher;
  std::vector<std::string> failures;
};

TEST_F(ServiceProgramLauncherTest, AsksForTheProgramOfADesktopEntryInItsFolder) {
  const std::string program = write("tell", "#!/bin/sh\n", 0755);
  launch(writeEntry("Exec=" + program + " \"a b\" %U \"\\\\$HOME\"\nPath=" + folder.path() + "/bin/..\n"));
  EXPECT_EQ(request(),
            requestFor("tell\\x2dall", "tell-all", folder.path() + "/", program, "'" + program + "' 'a b' '$HOME'"));
  manager.removeJob(unit(), "done");
  EXPECT_EQ(failures, std::vector<std::string>{});
}

TEST_F(ServiceProgramLauncherTest, AsksForAProgramOfPathInTheHome) {
  launch(writeEntry("Exec=sh -c true\n"));
  const std::string told = request();
  const std::string home = std::getenv("HOME");
  EXPECT_TRUE(told == requestFor("tell\\x2dall", "tell-all", home, "/usr/bin/sh", "'sh' '-c' 'true'") ||
              told == requestFor("tell\\x2dall", "tell-all", home, "/bin/sh", "'sh' '-c' 'true'"))
      << told;
}

TEST_F(ServiceProgramLauncherTest, StartsAProgramWithAFolderOfNowhereInTheRoot) {
  launch(writeEntry("Exec=/bin/sh\nPath=bin\n"));
  EXPECT_EQ(request(), requestFor("tell\\x2dall", "tell-all", "/", "/bin/sh", "'/bin/sh'"));
}

TEST_F(ServiceProgramLauncherTest, TellsThatTheProgramDoesNotRun) {
  launch(writeEntry("Exec=/bin/sh\n"));
  request();
  EXPECT_EQ(failures, std::vector<std::string>{});
  manager.removeJob(unit(), "failed");
  EXPECT_TRUE(serveBusUntil([this] { return !failures.empty(); }));
  EXPECT_EQ(failures, std::vector<std::string>{"cannot start /bin/sh: the service manager could not run it (failed); "
                                               "its journal tells why"});
}

TEST_F(ServiceProgramLauncherTest, AsksForNothingWhereThereIsNoProgram) {
  launch(writeEntry("Exec=no-such-program-anywhere\n"));
  launch(folder.path("None.app/"));
  EXPECT_EQ(failures, (std::vector<std::string>{"there is no program no-such-program-anywhere",
                                                "no application bundle with an Info.plist"}));
  EXPECT_EQ(manager.calls(), std::vector<std::string>{});
}

TEST_F(ServiceProgramLauncherTest, TellsWhatTheManagerSays) {
  manager.refuse("No room");
  launch(writeEntry("Exec=/bin/sh\n"));
  EXPECT_TRUE(serveBusUntil([this] { return !failures.empty(); }));
  EXPECT_EQ(failures, std::vector<std::string>{"cannot start /bin/sh: the service manager says: No room"});
}

}  // namespace
}  // namespace vorn::engine::test
