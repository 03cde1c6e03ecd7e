// vornctl where no engine runs, and the bus could start one.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "ctl/VornCtl.h"
#include "ports/MessagePort.h"
#include "protocol/EngineProtocol.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::ctl::test {
namespace {

using vorn::test::ChildProcess;

class VornCtlStartTest : public testing::Test {
 protected:
  VornCtlStartTest() { install("exec " ENGINE_PROGRAM " --defaults " BUILT_DEFAULTS " --state-dir " + mState); }

  // The bus runs this in place of the one before, and whether it did is seen afterwards.
  void install(const std::string& command) const {
    mBus.installService(engineServiceName, "/bin/sh -c \"touch " + mMark + "; " + command + "\"");
  }
  bool wasStarted() const { return std::filesystem::exists(mMark); }
  static void expectOutput(const Words& words, int status, const std::string& output) {
    const Ended run = runVornCtl(words);
    EXPECT_EQ(run.status, status);
    EXPECT_EQ(run.output, output);
  }

  engine::test::TemporaryFolder mFolder;
  const std::string mMark = mFolder.path("started");
  const std::string mState = mFolder.path("state");
  vorn::test::PrivateBus mBus;
};

TEST_F(VornCtlStartTest, HasAnInstalledEngineStartedAndGoesOn) {
  expectOutput({"profiles", "list"}, 0, "* 1  Default\n");
  EXPECT_TRUE(wasStarted());
  expectOutput({"get", "DPIX", "--no-start"}, 0, "800\n");
}

TEST_F(VornCtlStartTest, HasItStartedForTheVirtualMouseToo) {
  expectOutput({"device", "battery", "40"}, 0, "");
  EXPECT_TRUE(wasStarted());
  EXPECT_NE(runVornCtl({"device", "state"}).output.find("battery: 40\n"), std::string::npos);
}

TEST_F(VornCtlStartTest, LeavesItWhereItOnlyLooksOrIsToldTo) {
  const std::string none = "vornctl: no core engine runs in this session; start vorn-core-engine\n";
  expectOutput({"status"}, 3, none);
  expectOutput({"profiles", "list", "--no-start"}, 3, none);
  expectOutput({"--no-start", "device", "state"}, 3, none);
  EXPECT_FALSE(wasStarted());
  EXPECT_FALSE(RemoteMessagePort::lookUp(enginePortName));
}

TEST_F(VornCtlStartTest, LeavesItWhereItListens) {
  ChildProcess monitor(vornctlCommandLine({"monitor"}));
  EXPECT_TRUE(monitor.waitForLine([](const std::string& line) { return line == "listening"; }));
  monitor.signal(SIGTERM);
  EXPECT_EQ(monitor.waitForEnd(), 0);
  EXPECT_FALSE(wasStarted());
}

TEST_F(VornCtlStartTest, LeavesItToCompleteAWord) {
  const std::string programs = std::filesystem::path(VORNCTL_PROGRAM).parent_path();
  ChildProcess shell({"env", "PATH=" + programs + ":/usr/bin:/bin", "bash", "--norc", "-c",
                      "source \"$0\"; COMP_WORDS=(vornctl profiles switch ''); COMP_CWORD=3; _vornctl",
                      COMPLETION_SCRIPT});
  EXPECT_EQ(shell.waitForEnd(), 0);
  EXPECT_FALSE(wasStarted());
}

TEST_F(VornCtlStartTest, TellsWhyTheEngineCannotBeStarted) {
  install("exit 1");
  expectOutput({"profiles", "list"}, 3,
               "vornctl: the core engine cannot be started: Process org.vorn.CoreEngine exited with status 1\n");
}

TEST_F(VornCtlStartTest, WaitsForItNoLongerThanForAnAnswer) {
  install("exit 0");
  expectOutput({"profiles", "list", "--timeout", "0.05"}, 4,
               "vornctl: the core engine has been asked to start, but is not there in time\n");
}

}  // namespace
}  // namespace vorn::ctl::test
