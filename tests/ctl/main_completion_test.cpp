// What vornctl offers the completion of shells, with the real engine and without; completion.bash and its like test
// what shells make of it.
#include <gtest/gtest.h>

#include <string>

#include "ctl/EngineSession.h"

namespace vorn::ctl::test {
namespace {

class VornCtlCompletionTest : public EngineSession {
 protected:
  static std::string offersAfter(Words words) {
    words.insert(words.begin(), {"complete", "--"});
    words.emplace_back();
    return outputOf(words);
  }
};

TEST_F(VornCtlCompletionTest, OffersTheNamesOfTheRunningEngine) {
  outputOf({"profiles", "add", "Work & Play"});
  outputOf({"profiles", "add", "Two\nlines"});
  const std::string first = outputOf({"get", "ProfileName", "--profile", "1"});
  // No shell could pass a name on that is printed in another way.
  EXPECT_EQ(offersAfter({"profiles", "switch"}), first + "Work & Play\n");
  EXPECT_EQ(offersAfter({"mice", "use"}), "virtual\n");
  EXPECT_EQ(offersAfter({"history", "go"}), "2\n1\n0\tthe time before all of them\n");
  const std::string backups = offersAfter({"backups", "restore"});
  EXPECT_EQ(outputOf({"backups", "list"}).substr(0, 10) + "\n", backups);
}

TEST_F(VornCtlCompletionTest, TellsWhatFilesMayStandThere) {
  EXPECT_EQ(offersAfter({"macros", "import"}), "\tfiles\tSkarnMacro\n");
  EXPECT_EQ(offersAfter({"profiles", "import", "--all"}), "\tfolders\n");
  EXPECT_EQ(offersAfter({"assign", "1", "launch"}), "\tfiles\t\n");
}

TEST_F(VornCtlCompletionTest, TellsTheWordsAsJsonToo) {
  EXPECT_EQ(outputOf({"complete", "--json", "--", "backups", ""}),
            R"([{"description":"list the settings of before the first change of each day","word":"list"},)"
            R"({"description":"put a backup in the place of the settings","word":"restore"}])"
            "\n");
}

TEST(VornCtlCompletionWithoutEngineTest, OffersWhatNeedsNoneAndStartsNone) {
  const vorn::test::PrivateBus bus;
  EXPECT_EQ(runVornCtl({"complete", "--", "profiles", "switch", ""}).output, "");
  EXPECT_EQ(runVornCtl({"complete", "--", "backups", "r"}).output,
            "list\tlist the settings of before the first change of each day\n"
            "restore\tput a backup in the place of the settings\n");
  const Ended withoutBus = runVornCtl({"complete", "--", "mice", "use", ""}, {"DBUS_SESSION_BUS_ADDRESS=disabled:"});
  EXPECT_EQ(withoutBus.output, "");
  EXPECT_EQ(withoutBus.status, 0);
}

}  // namespace
}  // namespace vorn::ctl::test
