#include "core-engine/history/HistoryJournal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "core-engine/TestMacros.h"
#include "core-engine/history/HistoryEngine.h"
#include "core-engine/history/HistoryRecords.h"
#include "core-engine/rules/MacroRules.h"
#include "core-engine/rules/ProfileRules.h"

namespace vorn::engine::test {
namespace {

const std::string historyPath = "/state/history";
const std::string settingsPath = "/state/settings.plist";

PropertyList startBundle() {
  return bundleOf({profile("a"), profile("b"), profile("c")})
      .with("Macros", PropertyList::array({macro("Hi", 0, {keyPress(4), keyRelease(4, 50)}), macro("Ho", 1)}));
}

using Engine = HistoryEngine;

MemoryFileSystem freshDisk() {
  MemoryFileSystem disk;
  disk.put(settingsPath, encodeBinaryPropertyList(startBundle()).value());
  return disk;
}

// Three changes, of which the last one is undone.
MemoryFileSystem usedDisk() {
  MemoryFileSystem disk = freshDisk();
  Engine engine(disk);
  engine.rename("first");
  engine.change(withoutMacro(engine.now(), 0).value);
  engine.rename("last", 2);
  EXPECT_EQ(engine.undo(), History::Outcome::Done);
  return disk;
}

TEST(HistoryJournalTest, GivesTheNextEngineTheSameEntries) {
  MemoryFileSystem disk = freshDisk();
  std::vector<HistoryEntry> entries;
  PropertyList last;
  {
    Engine engine(disk);
    engine.rename("first");
    engine.rename("by the mouse", 1, mouse);
    engine.change(withoutMacro(engine.now(), 0).value);
    engine.rename("last", 2);
    last = engine.now();
    EXPECT_EQ(engine.undo(), History::Outcome::Done);
    entries = engine.entries();
  }
  Engine engine(disk);
  EXPECT_EQ(engine.entries(), entries);
  EXPECT_EQ(engine.history.entries().standing(), 2U);
  EXPECT_EQ(engine.redo(), History::Outcome::Done);
  EXPECT_EQ(engine.now(), last);
  engine.undoAll();
  EXPECT_EQ(engine.now(),
            *withUpdatedProfile(startBundle(), 1, PropertyList::dictionary({{"ProfileName", "by the mouse"}})).bundle);
  EXPECT_EQ(engine.lines, std::vector<std::string>());
}

TEST(HistoryJournalTest, HoldsOnceWhatManyEntriesHave) {
  MemoryFileSystem disk = freshDisk();
  {
    Engine engine(disk);
    for (int round = 0; round < 2; ++round) {
      const PropertyList profiles = engine.now()["Profiles"];
      engine.change(engine.now().with("Profiles", profiles.appending(profile("copy"))));
      engine.change(engine.now().with("Profiles", profiles));
    }
  }
  Engine engine(disk);
  const auto entries = engine.entries();
  ASSERT_EQ(entries.size(), 4U);
  for (std::size_t each = 0; each < 4; each += 2) {
    EXPECT_EQ(entries[each].edits[0].after.at(0)["ProfileName"].string(), "copy");
    EXPECT_EQ(entries[each].edits[0].after.elements().data(), entries[0].edits[0].after.elements().data());
    EXPECT_EQ(entries[each + 1].edits[0].before.elements().data(), entries[0].edits[0].after.elements().data());
  }
}

TEST(HistoryJournalTest, GoesOnOverManyStartsWithIDsThatNeverComeTwice) {
  MemoryFileSystem disk = freshDisk();
  for (int start = 0; start < 5; ++start) {
    Engine engine(disk);
    engine.rename("kept " + std::to_string(start));
    engine.rename("undone " + std::to_string(start));
    engine.undo();
    // Dragged there and back: an ID without an entry.
    engine.change(*withUpdatedProfile(engine.now(), 0, PropertyList::dictionary({{"DPIX", 900}})).bundle);
    engine.change(*withUpdatedProfile(engine.now(), 0, PropertyList::dictionary({{"DPIX", 800}})).bundle);
  }
  Engine engine(disk);
  std::vector<std::uint64_t> ids;
  for (const HistoryEntry& each : engine.entries()) ids.push_back(each.id);
  EXPECT_EQ(ids, (std::vector<std::uint64_t>{1, 4, 7, 10, 13}));
  engine.undoAll();
  EXPECT_EQ(engine.now(), startBundle());
}

TEST(HistoryJournalTest, FitsTheSettingsWhereverTheEngineWasKilled) {
  for (int operation = 1;; ++operation) {
    MemoryFileSystem disk = usedDisk();
    bool hasCrashed = false;
    try {
      Engine engine(disk);
      disk.crashAt(operation);
      engine.rename("one");
      engine.rename("two", 1);
      engine.undo();
      engine.redo();
      disk.work();
    } catch (const MemoryFileSystem::Crash&) {
      hasCrashed = true;
    }
    disk.work();
    Engine engine(disk);
    EXPECT_GE(engine.entries().size(), 2U) << operation;
    engine.undoAll();
    EXPECT_EQ(engine.now(), startBundle()) << operation;
    if (!hasCrashed) break;
  }
}

TEST(HistoryJournalTest, IsWholeOrGoneWhereverTheMachineEnded) {
  for (int operation = 1;; ++operation) {
    MemoryFileSystem disk = usedDisk();
    bool hasCrashed = false;
    try {
      Engine engine(disk);
      disk.crashAt(operation);
      engine.rename("one");
      engine.undo();
      disk.work();
    } catch (const MemoryFileSystem::Crash&) {
      hasCrashed = true;
    }
    for (MemoryFileSystem& found : disk.afterCrash()) {
      found.work();
      Engine engine(found);
      const bool isWhole = !engine.entries().empty();
      engine.undoAll();
      EXPECT_TRUE(!isWhole || engine.now() == startBundle()) << operation;
    }
    if (!hasCrashed) break;
  }
}

TEST(HistoryJournalTest, KeepsNoChangeFromBeingSavedAndIsWholeAgainWhenTheDiskWorks) {
  for (int operation = 1; operation < 12; ++operation) {
    MemoryFileSystem disk = usedDisk();
    {
      Engine engine(disk);
      disk.failAt(operation, std::errc::no_space_on_device);
      engine.rename("one");
      disk.work();
      EXPECT_EQ(engine.rename("two"), SettingsStore::Outcome::Done) << operation;
      EXPECT_EQ(engine.undo(), History::Outcome::Done) << operation;
    }
    Engine engine(disk);
    engine.undoAll();
    EXPECT_EQ(engine.now(), startBundle()) << operation;
  }
}

TEST(HistoryJournalTest, KeepsThatAnEntryIsGoneWhoseUndoingChangedNothing) {
  MemoryFileSystem disk = freshDisk();
  {
    Engine engine(disk);
    engine.rename("one");
    engine.rename("by the mouse", 0, mouse);
    EXPECT_EQ(engine.undo(), History::Outcome::ChangedSince);
  }
  const Engine engine(disk);
  EXPECT_EQ(engine.entries().size(), 0U);
}

TEST(HistoryJournalTest, TakesNoPlaceThatLiesDeeperThanAnythingInTheSettings) {
  std::vector<PropertyList> steps(10'000, PropertyList("a"));
  HistoryStep step;
  step.added = HistoryEntry{1, 1, "", PropertyList::dictionary(), {{PropertyList::array(steps), 1, 2}}};
  EXPECT_FALSE(stepIn(recordOf(step)));
  steps.resize(34);
  step.added->edits = {{PropertyList::array(steps), 1, 2}};
  EXPECT_EQ(stepIn(recordOf(step)), step);
}

TEST(HistoryJournalTest, TellsOnceThatItCannotBeWritten) {
  MemoryFileSystem disk = usedDisk();
  disk.putFolder(historyPath);
  Engine engine(disk);
  EXPECT_EQ(engine.rename("one"), SettingsStore::Outcome::Done);
  EXPECT_EQ(engine.rename("two"), SettingsStore::Outcome::Done);
  ASSERT_EQ(engine.lines.size(), 1U);
  EXPECT_EQ(engine.lines[0].rfind("vorn-core-engine: cannot keep the history in /state/history: ", 0), 0U);
  EXPECT_EQ(engine.undo(), History::Outcome::Done);
}

TEST(HistoryJournalTest, ForgetsWhatDoesNotLeadToTheSettingsThatAreThere) {
  MemoryFileSystem disk = usedDisk();
  disk.put(settingsPath, encodeBinaryPropertyList(startBundle().with("Further", 1)).value());
  Engine engine(disk);
  EXPECT_EQ(engine.entries().size(), 0U);
  EXPECT_EQ(engine.lines, std::vector<std::string>());
}

TEST(HistoryJournalTest, IsWholeOrGoneWhereverItsFileIsCutOffOrDamaged) {
  MemoryFileSystem disk = usedDisk();
  Engine engine(disk);
  const std::vector<HistoryEntry> whole = engine.entries();
  const std::vector<HistoryEntry> beforeTheLast(whole.begin(), whole.end() - 1);
  EXPECT_EQ(whole.size(), 3U);
  const Bytes contents = disk.contents(historyPath).value();
  const auto expectWholeOrGone = [&](const Bytes& found) {
    MemoryFileSystem foundDisk;
    foundDisk.put(historyPath, found);
    History history{engine.store, engine.scheduler, [] { return std::int64_t{0}; }};
    HistoryJournal(foundDisk, engine.log, "/state", history).load(engine.file.loadedFingerprint());
    const std::vector<HistoryEntry> entries(history.entries().all().begin(), history.entries().all().end());
    // The settings are those of before the last change, too.
    return entries.empty() || entries == beforeTheLast || (entries == whole && found == contents);
  };
  EXPECT_TRUE(expectWholeOrGone(contents));
  for (std::size_t position = 0; position < contents.size(); ++position) {
    const Bytes cut(contents.begin(), contents.begin() + static_cast<std::ptrdiff_t>(position));
    Bytes damaged = contents;
    damaged[position] ^= 0x11;
    ASSERT_TRUE(expectWholeOrGone(cut)) << position;
    ASSERT_TRUE(expectWholeOrGone(damaged)) << position;
  }
}

TEST(HistoryJournalTest, TakesNothingFromAForeignFile) {
  std::mt19937 random(1);
  Bytes noise(100'000);
  for (auto& each : noise) each = static_cast<std::uint8_t>(random());
  const Bytes settings = freshDisk().contents(settingsPath).value();
  for (const Bytes& contents : {noise, settings, Bytes()}) {
    MemoryFileSystem disk = freshDisk();
    disk.put(historyPath, contents);
    Engine engine(disk);
    EXPECT_EQ(engine.entries().size(), 0U);
    EXPECT_EQ(disk.contents("/state/history.damaged"), contents);
    EXPECT_EQ(engine.lines,
              std::vector<std::string>{"vorn-core-engine: the history in /state/history is damaged and begins anew; it "
                                       "is kept as /state/history.damaged"});
    engine.rename("one");
    Engine next(disk);
    EXPECT_EQ(next.entries().size(), 1U);
  }
}

TEST(HistoryJournalTest, StaysSmall) {
  MemoryFileSystem disk;
  disk.put(settingsPath, encodeBinaryPropertyList(bundleWithMacros({macro("Hi", 0)})).value());
  std::vector<PropertyList> many;
  for (int each = 0; each < 100; ++each) many.push_back(keyPress(4 + each % 2, each));
  {
    Engine engine(disk);
    std::size_t largest = 0;
    for (int each = 0; each < 600; ++each) {
      for (PropertyList& event : many) event = event.with("delay", each);
      engine.change(withRecordedEvents(engine.now(), 0, PropertyList::array(many), false).value);
      largest = std::max(largest, disk.contents(historyPath)->size());
    }
    EXPECT_LT(largest, 5 * HistoryJournal::usualSize);
    EXPECT_GT(largest, HistoryJournal::usualSize);
  }
  Engine engine(disk);
  EXPECT_EQ(engine.entries().size(), HistoryEntries::maximumCount);
}

}  // namespace
}  // namespace vorn::engine::test
