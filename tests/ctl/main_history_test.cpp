// vornctl takes changes back and makes them again, with the real engine.
#include <gtest/gtest.h>

#include <csignal>
#include <sstream>
#include <string>
#include <vector>

#include "ctl/EngineClient.h"
#include "ctl/EngineSession.h"

namespace vorn::ctl::test {
namespace {

using Lines = std::vector<std::string>;

class VornCtlHistoryTest : public EngineSession {
 protected:
  // The lines of the history without their times.
  static Lines history() {
    std::istringstream output(outputOf({"history"}));
    Lines lines;
    for (std::string line; std::getline(output, line);) {
      constexpr std::size_t idWidth = 6;
      constexpr std::size_t timeWidth = 21;
      EXPECT_EQ(line.substr(idWidth + 4, 1), "-") << line;
      EXPECT_EQ(line.substr(idWidth + 13, 1), ":") << line;
      lines.push_back(line.erase(idWidth, timeWidth));
    }
    return lines;
  }
  static PropertyList settings() {
    EngineClient engine{std::chrono::seconds(20)};
    const auto answer = engine.request(MessageID::GetAllSettings);
    return answer ? (*answer)["AllDevSettings"] : PropertyList();
  }
  static void refused(const Words& words, const std::string& message) {
    const Ended run = runVornCtl(words);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, message);
  }
};

TEST_F(VornCtlHistoryTest, TakesChangesBackAndMakesThemAgain) {
  const PropertyList first = settings();
  done({"set", "PollingRate", "125"});
  done({"assign", "4", "key", "k"});
  const PropertyList last = settings();
  EXPECT_EQ(history(), (Lines{R"(2     vornctl  Control 4 to key K, profile "Default", keymap 1)",
                              R"(1     vornctl  Polling rate, profile "Default")"}));
  EXPECT_EQ(outputOf({"undo"}), "Undone: Control 4 to key K, profile \"Default\", keymap 1\n");
  EXPECT_EQ(outputOf({"undo"}), "Undone: Polling rate, profile \"Default\"\n");
  EXPECT_EQ(settings(), first);
  EXPECT_EQ(history(), (Lines{R"(2     vornctl  Control 4 to key K, profile "Default", keymap 1 (undone))",
                              R"(1     vornctl  Polling rate, profile "Default" (undone))"}));
  refused({"undo"}, "vornctl: No change is left to be undone\n");
  EXPECT_EQ(settings(), first);

  EXPECT_EQ(outputOf({"redo"}), "Made again: Polling rate, profile \"Default\"\n");
  EXPECT_EQ(outputOf({"redo"}), "Made again: Control 4 to key K, profile \"Default\", keymap 1\n");
  EXPECT_EQ(settings(), last);
  refused({"redo"}, "vornctl: No change is left to be made again\n");
  EXPECT_EQ(settings(), last);
}

TEST_F(VornCtlHistoryTest, GoesToAChangeOfTheList) {
  const PropertyList first = settings();
  done({"set", "PollingRate", "125"});
  const PropertyList second = settings();
  done({"set", "PollingRate", "500"});
  done({"set", "AutoSwitchOn", "1"});
  EXPECT_EQ(outputOf({"history", "go", "1"}), "Changes undone or made again: 2\n");
  EXPECT_EQ(settings(), second);
  EXPECT_EQ(outputOf({"history", "go", "0", "--json"}), "{\"changes\":1,\"conflicts\":0}\n");
  EXPECT_EQ(settings(), first);
  refused({"history", "go", "4"}, "vornctl: There is no such change\n");
  EXPECT_EQ(settings(), first);
}

TEST_F(VornCtlHistoryTest, NeverForcesWhatAnotherHasChangedSince) {
  done({"set", "StageValue", "3"});
  done({"device", "click", "stage-up"});
  const PropertyList now = settings();
  EXPECT_NE(now["Profiles"].at(0)["StageValue"], PropertyList(3));
  refused({"undo"}, "vornctl: All that it changed has been changed again since; nothing has been changed now\n");
  EXPECT_EQ(settings(), now);
  EXPECT_EQ(history(), Lines());
}

TEST_F(VornCtlHistoryTest, TellsTheEntriesAsJsonWithoutWhatTheMouseSwitches) {
  done({"device", "click", "keymap"});
  EXPECT_EQ(outputOf({"history", "--json"}), "[]\n");
}

TEST_F(VornCtlHistoryTest, PutsABackupInThePlaceOfTheSettings) {
  EXPECT_EQ(outputOf({"backups", "list"}), "");
  const PropertyList first = settings();
  done({"set", "PollingRate", "125"});
  outputOf({"profiles", "add", "Further"});
  const PropertyList second = settings();
  const std::string list = outputOf({"backups", "list"});
  // Of before the first change: the last line, whichever day the other change was made on.
  ASSERT_GT(list.size(), 2U);
  const std::string oldest = list.substr(list.rfind('\n', list.size() - 2) + 1);
  const std::string date = oldest.substr(0, oldest.find(' '));
  done({"backups", "restore", date});
  EXPECT_EQ(settings(), first);
  EXPECT_EQ(outputOf({"undo"}), "Undone: Backup of " + date + " restored\n");
  EXPECT_EQ(settings(), second);
  refused({"backups", "restore", "2001-01-01"}, "vornctl: there is no backup of 2001-01-01\n");
  folder.write("state/backups/settings-2001-01-01.plist", Bytes(100, 1));
  const Ended damaged = runVornCtl({"backups", "restore", "2001-01-01"});
  EXPECT_EQ(damaged.status, 1);
  EXPECT_EQ(damaged.output.rfind("vornctl: the backup of 2001-01-01 is damaged (", 0), 0U) << damaged.output;
  EXPECT_EQ(settings(), second);
}

TEST_F(VornCtlHistoryTest, KeepsTheHistoryThroughAKillOfTheEngine) {
  const PropertyList first = settings();
  done({"set", "PollingRate", "125"});
  done({"set", "AutoSwitchOn", "1"});
  outputOf({"undo"});
  const Lines before = history();
  engine.signal(SIGKILL);
  engine.waitForEnd();
  vorn::test::ChildProcess next(engineCommandLine());
  awaitReady(next);
  EXPECT_EQ(history(), before);
  outputOf({"undo"});
  EXPECT_EQ(settings(), first);
}

TEST_F(VornCtlHistoryTest, TellsThatTheEngineDoesNotAnswerInTime) {
  outputOf({"history"});
  engine.signal(SIGSTOP);
  const std::pair<const char*, const char*> table[] = {{"history", "history"}, {"device", "virtual mouse"}};
  for (const auto& [command, object] : table) {
    Words words = {command, "--timeout", "0.05"};
    if (words[0] == "device") words.emplace_back("state");
    const Ended run = runVornCtl(words);
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(run.output, "vornctl: the " + std::string(object) + " does not answer in time\n");
  }
  engine.signal(SIGCONT);
}

TEST_F(VornCtlHistoryTest, TellsWhatIsNoChangeOfTheList) {
  const Ended run = runVornCtl({"history", "go", "last"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.output, "vornctl: CHANGE is a number that \"vornctl history\" prints, or 0\n");
}

}  // namespace
}  // namespace vorn::ctl::test
