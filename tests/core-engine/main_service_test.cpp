// The program itself as a service manager starts it.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "core-engine/TestBundle.h"
#include "model/PropertyListCodec.h"
#include "ports/BusMethodCall.h"
#include "protocol/VirtualMouse.h"
#include "support/BusPump.h"
#include "support/ChildProcess.h"
#include "support/FakeServiceManager.h"
#include "support/NotifySocket.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

using vorn::test::ChildProcess;
using vorn::test::serveBusUntil;
using namespace std::chrono_literals;

class CoreEngineServiceTest : public testing::Test {
 protected:
  CoreEngineServiceTest() {
    const PropertyList launch = PropertyList::dictionary({{"command", 46}, {"param1", entry}, {"param2", 0}});
    std::filesystem::create_directory(state);
    folder.write("state/settings.plist", encodeBinaryPropertyList(launching(launch)).value());
    std::ofstream(entry) << "[Desktop Entry]\nType=Application\nExec=/bin/sh -c \"touch " + folder.path("run") + "\"\n";
  }

  static PropertyList launching(const PropertyList& assignment) {
    const PropertyList usual = bundle("one");
    PropertyList profile = usual["Profiles"].at(0);
    profile = profile.with("Keys", profile["Keys"].with("8", assignment));
    const PropertyList keymap = profile["Keymap"].at(0);
    profile = profile.with("Keymap",
                           profile["Keymap"].replacing(0, keymap.with("Keys", keymap["Keys"].with("8", assignment))));
    return usual.with("Profiles", usual["Profiles"].replacing(0, profile));
  }

  std::unique_ptr<ChildProcess> startEngine(const std::vector<std::string>& more) const {
    std::vector<std::string> commandLine = {"/bin/sh",           "-c",          "exec \"$0\" \"$@\" 2>&1",
                                            CORE_ENGINE_PROGRAM, "--state-dir", state};
    commandLine.insert(commandLine.end(), more.begin(), more.end());
    auto engine = std::make_unique<ChildProcess>(commandLine);
    EXPECT_TRUE(engine->waitForLine([](const std::string& line) { return line.find("ready, ") != std::string::npos; }));
    return engine;
  }
  static void pressControl() {
    const BusAnswer answer = callBusMethod({virtualMouse::busName, virtualMouse::objectPath, virtualMouse::interface},
                                           virtualMouse::methods::Press, {{"s", "8"}}, 20s);
    EXPECT_EQ(answer.status, BusAnswer::Status::Success) << answer.error;
  }

  bool hasRun() const {
    const auto end = std::chrono::steady_clock::now() + 20s;
    while (!std::filesystem::exists(folder.path("run")) && std::chrono::steady_clock::now() < end) {
      std::this_thread::sleep_for(2ms);
    }
    return std::filesystem::exists(folder.path("run"));
  }

  vorn::test::PrivateBus bus;
  TemporaryFolder folder;
  const std::string state = folder.path("state");
  const std::string entry = folder.path("touch.desktop");
};

TEST_F(CoreEngineServiceTest, TellsItsManagerWhenItIsReadyAndWhenItEnds) {
  const vorn::test::NotifySocket socket;
  const auto engine = startEngine({});
  EXPECT_EQ(socket.next(), "READY=1\nSTATUS=profiles: 1, macros: 0, settings in " + state);
  engine->signal(SIGTERM);
  EXPECT_EQ(socket.next(), "STOPPING=1");
  EXPECT_EQ(engine->waitForEnd(), 0);
}

TEST_F(CoreEngineServiceTest, LeavesWhatControlsLaunchToItsManager) {
  vorn::test::FakeServiceManager manager;
  const auto engine = startEngine({"--service"});
  pressControl();
  EXPECT_TRUE(serveBusUntil([&] { return !manager.calls().empty(); }));
  ASSERT_EQ(manager.calls().size(), 1U);
  EXPECT_TRUE(manager.calls().front().starts_with("StartTransientUnit 'app-vorn-touch@")) << manager.calls().front();
  EXPECT_FALSE(std::filesystem::exists(folder.path("run")));
}

TEST_F(CoreEngineServiceTest, LogsWhatItsManagerCannotRun) {
  vorn::test::FakeServiceManager manager;
  manager.refuse("No room");
  const auto engine = startEngine({"--service"});
  pressControl();
  EXPECT_TRUE(engine->waitForLine([&](const std::string& line) {
    return line == "vorn-core-engine: client the mouse: cannot launch " + entry +
                       ": cannot start /bin/sh: the service manager says: No room";
  }));
}

TEST_F(CoreEngineServiceTest, LeavesThemToTheManagerOfTheSessionTooWhereItIsNoService) {
  vorn::test::FakeServiceManager manager;
  const auto engine = startEngine({});
  pressControl();
  EXPECT_TRUE(serveBusUntil([&] { return !manager.calls().empty(); }));
  ASSERT_EQ(manager.calls().size(), 1U);
  const std::string call = manager.calls().front();
  EXPECT_TRUE(call.starts_with("StartTransientUnit 'app-vorn-touch@")) << call;
  EXPECT_NE(call.find("'DBUS_SESSION_BUS_ADDRESS=" + bus.address() + "'"), std::string::npos) << call;
  EXPECT_FALSE(std::filesystem::exists(folder.path("run")));
}

TEST_F(CoreEngineServiceTest, LaunchesProgramsItselfWhereThereIsNoManager) {
  const auto engine = startEngine({});
  pressControl();
  EXPECT_TRUE(hasRun());
}

TEST_F(CoreEngineServiceTest, LaunchesProgramsItselfWhereTheManagerRefuses) {
  vorn::test::FakeServiceManager manager;
  manager.refuse("No room");
  const auto engine = startEngine({});
  pressControl();
  EXPECT_TRUE(hasRun());
  EXPECT_EQ(manager.calls().size(), 1U);
}

TEST_F(CoreEngineServiceTest, LaunchesNothingInItsOwnSandbox) {
  const auto engine = startEngine({"--service"});
  pressControl();
  EXPECT_TRUE(engine->waitForLine([&](const std::string& line) {
    return line ==
           "vorn-core-engine: client the mouse: cannot launch " + entry +
               ": cannot start /bin/sh: the service manager says: Name \"org.freedesktop.systemd1\" does not exist";
  }));
  EXPECT_FALSE(std::filesystem::exists(folder.path("run")));
}

}  // namespace
}  // namespace vorn::engine::test
