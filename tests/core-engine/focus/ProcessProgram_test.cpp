#include "core-engine/focus/ProcessProgram.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "support/ChildProcess.h"

namespace vorn::engine::test {
namespace {

using Words = std::vector<std::string>;

TEST(ProcessProgramTest, IsTheFileThatRuns) {
  EXPECT_EQ(programOf("/usr/games/chess", {"chess", "--white"}), "/usr/games/chess");
  EXPECT_EQ(programOf("/usr/games/chess", {}), "/usr/games/chess");
}

TEST(ProcessProgramTest, IsWhatItWasCalledByWhereTheFileCannotBeSeenOrRunsOthers) {
  EXPECT_EQ(programOf("", {"chess"}), "chess");
  EXPECT_EQ(programOf("/opt/wine64-preloader", {"C:\\Games\\Chess.exe", "-x"}), "C:\\Games\\Chess.exe");
}

TEST(ProcessProgramTest, IsTheScriptThatAnInterpreterRuns) {
  EXPECT_EQ(programOf("/usr/bin/python3.11", {"/usr/bin/python3", "-B", "/usr/games/chess", "/tmp/x"}),
            "/usr/games/chess");
  EXPECT_EQ(programOf("/usr/bin/env", {"env", "/usr/bin/chess"}), "/usr/bin/chess");
}

TEST(ProcessProgramTest, IsTheInterpreterWhereItRunsNoFile) {
  EXPECT_EQ(programOf("/usr/bin/python3", {"python3", "-m", "chess", "/tmp/x"}), "/usr/bin/python3");
  EXPECT_EQ(programOf("/usr/bin/bash", {"-bash"}), "/usr/bin/bash");
  EXPECT_EQ(programOf("", {}), "");
}

TEST(ProcessProgramTest, IsFoundForAProcessThatRunsAndForNoOther) {
  EXPECT_EQ(programOfProcess(getpid()).substr(programOfProcess(getpid()).rfind('/')), "/test_core_engine");
  vorn::test::ChildProcess child({"sleep", "600"});
  // Between fork and exec it is still this program.
  while (programOfProcess(child.id()).ends_with("test_core_engine")) usleep(1000);
  EXPECT_TRUE(programOfProcess(child.id()).ends_with("/sleep")) << programOfProcess(child.id());
  EXPECT_EQ(programOfProcess(0), "");
  EXPECT_EQ(programOfProcess(-1), "");
}

}  // namespace
}  // namespace vorn::engine::test
