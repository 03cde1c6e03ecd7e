// The store while the disk takes its time.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "core-engine/TestBundle.h"
#include "core-engine/storage/HeldDisk.h"

namespace vorn::engine::test {
namespace {

using Outcome = SettingsStore::Outcome;
using Lines = std::vector<std::string>;

class SettingsStoreSavingTest : public testing::Test {
 protected:
  SettingsStoreSavingTest() {
    held.hold(parts.disk);
    parts.store.setChangeHandler([this](const PropertyList& before, const PropertyList& after, const ChangeOrigin&) {
      told.push_back(nameIn(before) + " to " + nameIn(after));
    });
  }
  static std::string nameIn(const PropertyList& settings) {
    return settings["Profiles"].at(0)["ProfileName"].toString();
  }
  void put(const std::string& name) {
    parts.store.put(bundle(name), [this, name](Outcome outcome) {
      told.push_back(name + (outcome == Outcome::Done ? " done" : " not saved") +
                     ", in force: " + nameIn(parts.store.bundle()));
    });
  }

  HeldDisk held;
  TestParts parts{bundle("old"), &held.thread()};
  Lines told;
};

TEST_F(SettingsStoreSavingTest, CountsOtherWorkOfTheDiskAsASave) {
  std::string read;
  parts.store.useDisk([&read] { read = "read"; },
                      [&] {
                        told.push_back(read + ", saving: " + (parts.store.isSaving() ? "yes" : "no"));
                        put("new");
                      });
  EXPECT_TRUE(parts.store.isSaving());
  EXPECT_EQ(told, Lines());
  held.goOn();
  // Not before what was begun then has ended, too.
  parts.store.settle();
  EXPECT_EQ(told, (Lines{"read, saving: no", "old to new", "new done, in force: new"}));
  EXPECT_FALSE(parts.store.isSaving());
}

TEST_F(SettingsStoreSavingTest, PutsABundleInForceWhenItsSaveHasEnded) {
  put("new");
  held.awaitSync();
  EXPECT_TRUE(parts.store.isSaving());
  parts.store.settleEnded();
  EXPECT_TRUE(parts.store.isSaving());
  EXPECT_EQ(nameIn(parts.store.bundle()), "old");
  EXPECT_EQ(told, Lines());
  held.goOn();
  parts.store.settle();
  EXPECT_FALSE(parts.store.isSaving());
  EXPECT_EQ(told, (Lines{"old to new", "new done, in force: new"}));
  EXPECT_EQ(parts.stored(), bundle("new"));
  parts.store.settle();
  EXPECT_EQ(told.size(), 2U);
}

TEST_F(SettingsStoreSavingTest, KeepsTheOldBundleWhenTheDiskDoesNotTakeTheNewOne) {
  parts.disk.failAt(4, std::errc::io_error);
  put("new");
  parts.store.settle();
  EXPECT_EQ(told, Lines{"new not saved, in force: old"});
  EXPECT_EQ(parts.stored(), bundle("old"));
}

TEST_F(SettingsStoreSavingTest, EndsASaveBeforeItAppliesAnotherChange) {
  put("new");
  held.awaitSync();
  held.goOn();
  held.goOn();
  const Outcome outcome = parts.store.apply([](const PropertyList& now) { return bundle(nameIn(now) + "er"); });
  EXPECT_EQ(outcome, Outcome::Done);
  EXPECT_EQ(told, (Lines{"old to new", "new done, in force: new", "new to newer"}));
  EXPECT_EQ(parts.stored(), bundle("newer"));
}

TEST_F(SettingsStoreSavingTest, EndsASaveButTellsNobodyWhenItGoes) {
  {
    MemoryFileSystem disk;
    HeldDisk other;
    SettingsFile file(disk, parts.log, "/state");
    SettingsStore store(file, parts.log, &other.thread());
    store.fill(bundle("old"));
    other.hold(disk);
    store.put(bundle("new"), [this](Outcome) { told.emplace_back("done"); });
    other.awaitSync();
    other.goOn();
  }
  EXPECT_EQ(told, Lines());
}

TEST_F(SettingsStoreSavingTest, SavesNothingOnceItIsClosed) {
  parts.store.close();
  parts.disk.work();
  put("new");
  EXPECT_EQ(told, Lines{"new not saved, in force: old"});
  EXPECT_EQ(parts.disk.operations(), 0);
  EXPECT_EQ(parts.lines, Lines());
}

}  // namespace
}  // namespace vorn::engine::test
