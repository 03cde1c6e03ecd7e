#include "core-engine/storage/SettingsBackups.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core-engine/MemoryFileSystem.h"
#include "core-engine/TestBundle.h"
#include "core-engine/TestParts.h"

namespace vorn::engine::test {
namespace {

using Lines = std::vector<std::string>;

class SettingsBackupsTest : public testing::Test {
 protected:
  SettingsBackupsTest() {
    store.addKeeper(backups);
    store.fill(bundle("first"));
  }
  void change(const std::string& name, SettingsStore::Outcome outcome = SettingsStore::Outcome::Done) {
    EXPECT_EQ(store.apply([&](const PropertyList&) { return bundle(name); }), outcome);
  }
  Lines dates() const {
    Lines result;
    for (const SettingsBackups::Backup& each : backups.list()) result.push_back(each.date);
    return result;
  }
  PropertyList read(const std::string& date) {
    error.clear();
    return backups.read(date, error).value_or(PropertyList());
  }
  static std::string pathOf(const std::string& date) { return "/state/backups/settings-" + date + ".plist"; }

  MemoryFileSystem disk;
  Lines lines;
  Log log{[this](const std::string& line) { lines.push_back(line); }};
  std::string today = "2026-03-01";
  std::string error;
  SettingsFile file{disk, log, "/state"};
  SettingsBackups backups{disk, log, "/state", [this] { return today; }};
  SettingsStore store{file, log};
};

TEST_F(SettingsBackupsTest, KeepWhatWasBeforeTheFirstChangeOfEachDay) {
  EXPECT_EQ(dates(), Lines());
  change("second");
  change("third");
  today = "2026-03-02";
  change("fourth");
  change("fifth");
  EXPECT_EQ(dates(), (Lines{"2026-03-02", "2026-03-01"}));
  EXPECT_EQ(read("2026-03-01"), bundle("first"));
  EXPECT_EQ(read("2026-03-02"), bundle("third"));
  EXPECT_EQ(backups.list()[0].size, disk.contents(pathOf("2026-03-02"))->size());
}

TEST_F(SettingsBackupsTest, LeaveThatOfAnEarlierEngineOfTheDay) {
  change("second");
  SettingsBackups later{disk, log, "/state", [this] { return today; }};
  later.willSave(bundle("second"), bundle("third"), {});
  later.keep({});
  EXPECT_EQ(read("2026-03-01"), bundle("first"));
}

TEST_F(SettingsBackupsTest, AreThirtyAndTheOldestGoes) {
  disk.put("/state/backups/mine.txt", {1});
  for (int day = 10; day < 45; ++day) {
    today = "2026-0" + std::to_string(day / 28 + 1) + "-" + std::to_string(day % 28 + 10);
    change(today);
  }
  const Lines all = dates();
  ASSERT_EQ(all.size(), SettingsBackups::maximumCount);
  EXPECT_TRUE(std::is_sorted(all.rbegin(), all.rend()));
  EXPECT_EQ(all.front(), today);
  EXPECT_TRUE(disk.contents("/state/backups/mine.txt"));
}

TEST_F(SettingsBackupsTest, OfDaysToComeGoFirstAndNeverTheOneJustWritten) {
  for (int day = 10; day < 39; ++day) disk.put(pathOf("2099-01-" + std::to_string(day)), {1});
  disk.put(pathOf("2025-01-01"), {1});
  change("second");
  const Lines all = dates();
  ASSERT_EQ(all.size(), SettingsBackups::maximumCount);
  EXPECT_EQ(all.front(), "2099-01-38");
  EXPECT_EQ(Lines(all.end() - 3, all.end()), (Lines{"2099-01-11", "2026-03-01", "2025-01-01"}));
  EXPECT_EQ(read("2026-03-01"), bundle("first"));
}

TEST_F(SettingsBackupsTest, AreRegularFiles) {
  disk.putFolder(pathOf("2026-02-01"));
  change("second");
  EXPECT_EQ(dates(), Lines{"2026-03-01"});
}

TEST_F(SettingsBackupsTest, ThatCannotBeWrittenKeepNoChangeAndAreTriedAgain) {
  disk.putFolder("/state/backups/settings.new.plist");
  change("second");
  change("third");
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].rfind("vorn-core-engine: cannot keep a backup in /state/backups: ", 0), 0U);
  disk.rename("/state/backups/settings.new.plist", "/state/elsewhere");
  change("fourth");
  EXPECT_EQ(read("2026-03-01"), bundle("first"));
  EXPECT_EQ(lines.size(), 1U);
}

TEST_F(SettingsBackupsTest, AreWholeOrNotThereWhereverTheMachineEnds) {
  for (int operation = 1;; ++operation) {
    MemoryFileSystem crashing = disk;
    bool hasCrashed = false;
    try {
      SettingsBackups written{crashing, log, "/state", [this] { return today; }};
      crashing.crashAt(operation);
      written.willSave(bundle("old"), bundle("new"), {});
      written.keep({});
    } catch (const MemoryFileSystem::Crash&) {
      hasCrashed = true;
    }
    for (MemoryFileSystem& found : crashing.afterCrash()) {
      found.work();
      SettingsBackups next{found, log, "/state", [this] { return today; }};
      for (const SettingsBackups::Backup& each : next.list()) {
        EXPECT_EQ(next.read(each.date, error).value_or(PropertyList()), bundle("old")) << operation;
      }
      EXPECT_TRUE(hasCrashed || next.list().size() == 1);
    }
    if (!hasCrashed) break;
  }
}

TEST_F(SettingsBackupsTest, TellWhyOneCannotBeRead) {
  const auto reasonOf = [this](const std::string& date) {
    EXPECT_EQ(read(date), PropertyList());
    return error;
  };
  EXPECT_EQ(reasonOf("2020-01-01"), "there is no backup of 2020-01-01");
  EXPECT_EQ(reasonOf("../settings"), "\"../settings\" is no date like 2026-11-22");
  disk.put(pathOf("2026-01-01"), encodeBinaryPropertyList(PropertyList::dictionary({{"a", 1}})).value());
  EXPECT_EQ(reasonOf("2026-01-01"),
            "the backup of 2026-01-01 is damaged (it does not hold whole settings); the settings stay as they are");
  disk.failAt(1, std::errc::io_error);
  EXPECT_EQ(reasonOf("2026-01-02").rfind("cannot read " + pathOf("2026-01-02") + ": ", 0), 0U);
}

TEST_F(SettingsBackupsTest, AreNeverTakenWhereTheyAreCutOff) {
  change("second");
  const Bytes whole = disk.contents(pathOf(today)).value();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    disk.put(pathOf(today), Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    ASSERT_EQ(read(today), PropertyList()) << size;
    ASSERT_EQ(error.rfind("the backup of 2026-03-01 is damaged (", 0), 0U) << error;
  }
}

}  // namespace
}  // namespace vorn::engine::test
