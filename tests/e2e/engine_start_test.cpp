// The configurator as a process of its own where no engine runs, and the bus could start one.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "e2e/ConfiguratorProcess.h"
#include "protocol/EngineProtocol.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::test {
namespace {

using namespace std::chrono_literals;

constexpr const char* stateVariable = "XDG_STATE_HOME";
constexpr const char* askedFor = "asking the session to start the engine";
// Never takes the name.
constexpr const char* slowCommand = "/bin/true";

// The activation file as it is installed, but for the folder of the built programs.
std::string activationFile() {
  std::ifstream file(ACTIVATION_FILE);
  std::string text(std::istreambuf_iterator<char>(file), {});
  const std::string folder = "@bindir@";
  return text.replace(text.find(folder), folder.size(), std::filesystem::path(ENGINE_PROGRAM).parent_path().string());
}

// The settings of what the bus starts lie in a folder of the test's own.
class StateHome {
 public:
  StateHome() { setenv(stateVariable, mFolder.path("state").c_str(), 1); }
  ~StateHome() { unsetenv(stateVariable); }
  StateHome(const StateHome&) = delete;
  StateHome& operator=(const StateHome&) = delete;

  std::string engineFolder() const { return mFolder.path("state/vorn-core-engine"); }

 private:
  engine::test::TemporaryFolder mFolder;
};

class EngineStartTest : public testing::Test {
 protected:
  StateHome mState;
  PrivateBus mBus;
};

TEST_F(EngineStartTest, BringsTheSettingsOfAnInstalledEngineIntoTheWindow) {
  mBus.installServiceFile(engineServiceName, activationFile());
  ConfiguratorProcess configurator;
  EXPECT_NE(configurator.waitFor(askedFor), "");
  EXPECT_NE(configurator.waitFor("engine found"), "");
  EXPECT_NE(configurator.waitFor("registered"), "");
  EXPECT_NE(configurator.waitFor("settings loaded: 1 profiles, 0 macros"), "");
  EXPECT_NE(configurator.waitFor("window painted"), "");
  EXPECT_NE(configurator.waitFor("request 14: "), "");
  EXPECT_EQ(configurator.quit(), 0);
  EXPECT_TRUE(std::filesystem::exists(mState.engineFolder()));
}

TEST_F(EngineStartTest, BringsThemAfterALaunchInTheBackground) {
  mBus.installServiceFile(engineServiceName, activationFile());
  ConfiguratorProcess configurator({"--verbose", "--launch-in-background"});
  EXPECT_NE(configurator.waitFor(askedFor), "");
  EXPECT_NE(configurator.waitFor("settings loaded: 1 profiles, 0 macros"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(EngineStartTest, IsWaitedForWhileItTakesItsTime) {
  mBus.installService(engineServiceName, slowCommand);
  ConfiguratorProcess configurator;
  ASSERT_NE(configurator.waitFor(askedFor), "");
  const EngineProcess engine(mState.engineFolder());
  EXPECT_NE(configurator.waitFor("engine found"), "");
  EXPECT_NE(configurator.waitFor("settings loaded: 1 profiles, 0 macros"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(EngineStartTest, MayBeInterruptedByTheEndOfTheProgram) {
  mBus.installService(engineServiceName, slowCommand);
  ConfiguratorProcess configurator;
  ASSERT_NE(configurator.waitFor(askedFor), "");
  configurator.process().signal(SIGTERM);
  EXPECT_EQ(configurator.process().waitForEnd(1500ms), 0);
}

TEST_F(EngineStartTest, ThatFailsLeavesTheStartAsItIsWithoutOne) {
  mBus.installService(engineServiceName, "/bin/false");
  ConfiguratorProcess configurator;
  EXPECT_NE(configurator.waitFor("the engine was not started: Process org.vorn.CoreEngine exited with status 1"), "");
  EXPECT_NE(configurator.waitFor("no engine: waiting for an answer all the same"), "");
  EXPECT_NE(configurator.waitFor("request 0: "), "");
  EXPECT_EQ(configurator.quit(), 0);
}

}  // namespace
}  // namespace vorn::test
