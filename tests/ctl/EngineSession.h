// A bus with the real engine, and vornctl beside it.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "ctl/VornCtl.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::ctl::test {

class EngineSession : public testing::Test {
 protected:
  EngineSession() { awaitReady(engine); }

  Words engineCommandLine() const {
    return {"/bin/sh",    "-c",          "exec \"$0\" \"$@\" 2>&1", ENGINE_PROGRAM, "--state-dir", folder.path("state"),
            "--defaults", BUILT_DEFAULTS};
  }
  static void awaitReady(vorn::test::ChildProcess& process) {
    const auto isReady = [](const std::string& line) { return line.find("ready, ") != std::string::npos; };
    EXPECT_TRUE(process.waitForLine(isReady));
  }

  static std::string outputOf(const Words& words) {
    const Ended run = runVornCtl(words);
    EXPECT_EQ(run.status, 0) << run.output;
    return run.output;
  }
  static void done(const Words& words) { EXPECT_EQ(outputOf(words), ""); }

  vorn::test::PrivateBus bus;
  engine::test::TemporaryFolder folder;
  vorn::test::ChildProcess engine{engineCommandLine()};
};

}  // namespace vorn::ctl::test
