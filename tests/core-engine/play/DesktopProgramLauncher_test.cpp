// Real programs, and applications and a service manager that only listen.
#include "core-engine/play/DesktopProgramLauncher.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "support/BusPump.h"
#include "support/ChangedEnvironment.h"
#include "support/FakeApplication.h"
#include "support/FakeServiceManager.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

using vorn::test::FakeApplication;
using vorn::test::serveBusUntil;
using Texts = std::vector<std::string>;

constexpr const char* busName = "org.vorn.My-Editor";
constexpr const char* objectPath = "/org/vorn/My_Editor";
const std::string activated = "org.freedesktop.Application Activate []";

class DesktopProgramLauncherTest : public testing::Test {
 protected:
  DesktopProgramLauncherTest() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE"}) environment.set(name, std::nullopt);
  }
  ~DesktopProgramLauncherTest() override { BusConnection::forThisThread().close(); }

  std::string writeEntry(const std::string& lines, const std::string& name = busName) const {
    const std::string path = folder.path(name + ".desktop");
    std::ofstream(path) << "[Desktop Entry]\nType=Application\n" + lines;
    return path;
  }
  // One that can be activated, and leaves the file "run" where it is started as a program.
  std::string activatable(const std::string& name = busName) const {
    return writeEntry("DBusActivatable=true\nExec=/bin/sh -c \"touch " + folder.path("run") + "\"\n", name);
  }
  void launch(const std::string& path) {
    launcher->launch(path, [this](const std::string& reason) { failures.push_back(reason); });
  }
  bool hasRun() {
    return serveBusUntil([this] { return std::filesystem::exists(folder.path("run")); });
  }

  vorn::test::PrivateBus bus;
  TemporaryFolder folder;
  vorn::test::ChangedEnvironment environment;
  std::unique_ptr<DesktopProgramLauncher> launcher = std::make_unique<DesktopProgramLauncher>(false);
  Texts failures;
};

TEST_F(DesktopProgramLauncherTest, ActivatesAnApplicationThatRuns) {
  FakeApplication application(busName, objectPath);
  launch(activatable());
  EXPECT_TRUE(serveBusUntil([&] { return !application.calls().empty(); }));
  EXPECT_EQ(application.calls(), Texts{activated});
}

TEST_F(DesktopProgramLauncherTest, HandsOnAStartupIDToTheApplicationItActivates) {
  environment.set("DISPLAY", ":98");
  FakeApplication application(busName, objectPath);
  launch(activatable());
  EXPECT_TRUE(serveBusUntil([&] { return !application.calls().empty(); }));
  const std::string call = application.calls().front();
  const std::regex expected(
      R"(org\.freedesktop\.Application Activate \[\['activation-token' <s '(vorn-core-engine/[^']*)'>\] )"
      R"(\['desktop-startup-id' <s '(vorn-core-engine/[^']*)'>\]\])");
  std::smatch match;
  ASSERT_TRUE(std::regex_match(call, match, expected)) << call;
  EXPECT_EQ(match[1], match[2]);
}

TEST_F(DesktopProgramLauncherTest, HandsOnNoStartupIDToAnApplicationThatTakesNone) {
  environment.set("DISPLAY", ":98");
  FakeApplication application(busName, objectPath);
  launch(writeEntry("DBusActivatable=true\nStartupNotify=false\n"));
  EXPECT_TRUE(serveBusUntil([&] { return !application.calls().empty(); }));
  EXPECT_EQ(application.calls(), Texts{activated});
}

TEST_F(DesktopProgramLauncherTest, HasTheBusStartAnApplicationThatDoesNotRun) {
  bus.installService(busName, "/bin/sh -c \"touch " + folder.path("started") + "\"");
  launch(activatable());
  EXPECT_TRUE(serveBusUntil([&] { return std::filesystem::exists(folder.path("started")); }));
  FakeApplication application(busName, objectPath);
  EXPECT_TRUE(serveBusUntil([&] { return !application.calls().empty(); }));
  EXPECT_EQ(application.calls(), Texts{activated});
  EXPECT_FALSE(std::filesystem::exists(folder.path("run")));
}

TEST_F(DesktopProgramLauncherTest, RunsTheProgramOfAnApplicationThatTheBusCannotStart) {
  launch(activatable());
  EXPECT_TRUE(hasRun());
  EXPECT_EQ(failures, Texts{});
}

TEST_F(DesktopProgramLauncherTest, RunsTheProgramOfAnApplicationWhoseServiceFails) {
  bus.installService(busName, "/bin/false");
  launch(activatable());
  EXPECT_TRUE(hasRun());
  EXPECT_EQ(failures, Texts{});
}

TEST_F(DesktopProgramLauncherTest, RunsTheProgramOfAnApplicationThatDoesNotKnowActivation) {
  FakeApplication application(busName, "/elsewhere");
  launch(activatable());
  EXPECT_TRUE(hasRun());
  EXPECT_EQ(failures, Texts{});
}

TEST_F(DesktopProgramLauncherTest, RunsTheProgramOfAnEntryWhoseNameIsNoBusName) {
  FakeApplication application(busName, objectPath);
  launch(activatable("editor"));
  EXPECT_TRUE(hasRun());
  EXPECT_EQ(application.calls(), Texts{});
}

TEST_F(DesktopProgramLauncherTest, TellsWhyAnApplicationRefusesAndStartsNoSecondOne) {
  FakeApplication application(busName, objectPath, "org.vorn.Busy");
  launch(activatable());
  EXPECT_TRUE(serveBusUntil([this] { return !failures.empty(); }));
  EXPECT_EQ(failures, Texts{"cannot activate org.vorn.My-Editor: Not now"});
  EXPECT_FALSE(std::filesystem::exists(folder.path("run")));
}

TEST_F(DesktopProgramLauncherTest, TellsThatThereIsNeitherAServiceNorAProgram) {
  launch(writeEntry("DBusActivatable=true\nExec=no-such-program-anywhere\n"));
  EXPECT_TRUE(serveBusUntil([this] { return !failures.empty(); }));
  ASSERT_EQ(failures.size(), 1U);
  EXPECT_TRUE(failures.front().starts_with("cannot activate org.vorn.My-Editor: ")) << failures.front();
  EXPECT_TRUE(failures.front().ends_with("; there is no program no-such-program-anywhere")) << failures.front();
}

TEST_F(DesktopProgramLauncherTest, StartsNothingThatCountsAsNotInstalled) {
  FakeApplication application(busName, objectPath);
  launch(writeEntry("DBusActivatable=true\nExec=/bin/sh\nTryExec=no-such-program-anywhere\n"));
  EXPECT_EQ(failures, Texts{"there is no program no-such-program-anywhere"});
  EXPECT_EQ(application.calls(), Texts{});
}

TEST_F(DesktopProgramLauncherTest, RunsAProgramInTheTerminalThatTheDesktopNames) {
  std::filesystem::create_directory(folder.path("bin"));
  const std::string terminal = folder.path("bin/xdg-terminal-exec");
  std::ofstream(terminal) << "#!/bin/sh\nfor each; do echo \"$each\"; done > " + folder.path("saying") + "\nmv " +
                                 folder.path("saying") + " " + folder.path("run") + "\n";
  std::filesystem::permissions(terminal, std::filesystem::perms::owner_all);
  environment.set("PATH", folder.path("bin") + ":/usr/bin:/bin");
  launch(writeEntry("Terminal=true\nExec=sh -c \"a b\"\n"));
  EXPECT_TRUE(hasRun());
  std::ifstream file(folder.path("run"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "sh\n-c\na b\n");
}

TEST_F(DesktopProgramLauncherTest, LeavesAProgramToTheManagerOfTheSession) {
  vorn::test::FakeServiceManager manager;
  launch(writeEntry("Exec=/bin/sh -c \"touch " + folder.path("run") + "\"\n"));
  EXPECT_TRUE(serveBusUntil([&] { return !manager.calls().empty(); }));
  ASSERT_EQ(manager.calls().size(), 1U);
  EXPECT_TRUE(manager.calls().front().starts_with("StartTransientUnit 'app-vorn-org.vorn.My\\x2dEditor@"))
      << manager.calls().front();
  EXPECT_FALSE(std::filesystem::exists(folder.path("run")));
}

TEST_F(DesktopProgramLauncherTest, CallsNobodyBackAfterItsEnd) {
  FakeApplication application(busName, objectPath, "org.vorn.Busy");
  launch(activatable());
  launcher.reset();
  EXPECT_TRUE(serveBusUntil([&] { return !application.calls().empty(); }));
  // A second one hears its refusal, and so the first would have heard its own.
  launcher = std::make_unique<DesktopProgramLauncher>(false);
  launch(activatable());
  EXPECT_TRUE(serveBusUntil([this] { return !failures.empty(); }));
  EXPECT_EQ(failures.size(), 1U);
}

}  // namespace
}  // namespace vorn::engine::test
