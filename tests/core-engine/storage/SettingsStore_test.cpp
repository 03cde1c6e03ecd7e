#include "core-engine/storage/SettingsStore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core-engine/MemoryFileSystem.h"
#include "core-engine/TestBundle.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine::test {
namespace {

using Outcome = SettingsStore::Outcome;
using Lines = std::vector<std::string>;

const std::string folder = "/state";
const std::string currentPath = folder + "/settings.plist";
const std::string lastGoodPath = folder + "/settings.last-good.plist";

Bytes encoded(const PropertyList& value) {
  return encodeBinaryPropertyList(value).value();
}

Bytes text(std::string_view characters) {
  return {characters.begin(), characters.end()};
}

// A store on a disk, as it is after a start of the engine.
struct Engine {
  explicit Engine(MemoryFileSystem& disk, PropertyList factoryProfile = {})
      : file(disk, log, folder), store(file, log) {
    store.load([factoryProfile] { return factoryProfile; });
  }
  Outcome change(const PropertyList& bundle) {
    return store.apply([&](const PropertyList&) { return bundle; });
  }

  Lines lines;
  Log log{[this](const std::string& line) { lines.push_back(line); }};
  SettingsFile file;
  SettingsStore store;
};

PropertyList stored(MemoryFileSystem disk) {
  return Engine(disk).store.bundle();
}

MemoryFileSystem diskWith(const PropertyList& bundle) {
  MemoryFileSystem disk;
  disk.put(currentPath, encoded(bundle));
  return disk;
}

// A disk whose engine has made a change before, so that both files are there.
MemoryFileSystem usedDisk() {
  MemoryFileSystem disk = diskWith(bundle("oldest"));
  EXPECT_EQ(Engine(disk).change(bundle("old")), Outcome::Done);
  return disk;
}

TEST(SettingsStoreTest, IsEmptyWithoutFiles) {
  MemoryFileSystem disk;
  const Engine engine(disk);
  EXPECT_TRUE(engine.store.isEmpty());
  EXPECT_EQ(engine.lines, Lines());
}

TEST(SettingsStoreTest, FillsAnEmptyStoreDurably) {
  MemoryFileSystem disk;
  Engine(disk).store.fill(bundle("first"));
  for (const MemoryFileSystem& after : disk.afterCrash()) EXPECT_EQ(stored(after), bundle("first"));
}

TEST(SettingsStoreTest, KeepsItsBundleWhenFilledAgain) {
  MemoryFileSystem disk = diskWith(bundle("mine"));
  Engine engine(disk);
  engine.store.fill(bundle("factory"));
  EXPECT_EQ(engine.store.bundle(), bundle("mine"));
  EXPECT_EQ(stored(disk), bundle("mine"));
}

TEST(SettingsStoreTest, ServesTheFirstBundleEvenWhenTheDiskRefusesIt) {
  MemoryFileSystem disk;
  Engine engine(disk);
  disk.failFrom(1, std::errc::read_only_file_system);
  engine.store.fill(bundle("factory"));
  EXPECT_EQ(engine.store.bundle(), bundle("factory"));
  EXPECT_EQ(engine.change(bundle("changed")), Outcome::NotSaved);
  disk.work();
  EXPECT_EQ(engine.change(bundle("factory")), Outcome::Done);
  EXPECT_EQ(stored(disk), bundle("factory"));
}

TEST(SettingsStoreTest, GivesATransformationTheBundleInForce) {
  MemoryFileSystem disk = diskWith(bundle("old"));
  Engine engine(disk);
  const Outcome outcome = engine.store.apply([](const PropertyList& old) {
    return old.with("DeviceSettings", old["DeviceSettings"].with("PollingRate", 500));
  });
  EXPECT_EQ(outcome, Outcome::Done);
  EXPECT_EQ(
      engine.store.bundle(),
      bundle("old").with("DeviceSettings", PropertyList::dictionary({{"ActiveProfile", 0}, {"PollingRate", 500}})));
  EXPECT_EQ(stored(disk), engine.store.bundle());
}

TEST(SettingsStoreTest, TellsAChangeWhenItIsOnTheDisk) {
  MemoryFileSystem disk = diskWith(bundle("old"));
  Engine engine(disk);
  Lines calls;
  engine.store.setChangeHandler([&](const PropertyList& before, const PropertyList& after, const ChangeOrigin&) {
    const PropertyList saved = stored(disk);
    for (const PropertyList& each : {before, after, saved}) {
      calls.push_back(each["Profiles"].at(0)["ProfileName"].toString());
    }
  });
  EXPECT_EQ(engine.change(bundle("new")), Outcome::Done);
  EXPECT_EQ(calls, (Lines{"old", "new", "new"}));
  EXPECT_EQ(engine.change(bundle("new")), Outcome::Done);
  EXPECT_EQ(engine.store.apply([](const PropertyList&) { return std::nullopt; }), Outcome::Refused);
  disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(engine.change(bundle("newer")), Outcome::NotSaved);
  EXPECT_EQ(calls.size(), 3U);
}

TEST(SettingsStoreTest, TellsNoChangeWhereItsFirstBundleIsOnlySaved) {
  MemoryFileSystem disk;
  Engine engine(disk);
  int calls = 0;
  engine.store.setChangeHandler([&](const PropertyList&, const PropertyList&, const ChangeOrigin&) { ++calls; });
  disk.failFrom(1, std::errc::no_space_on_device);
  engine.store.fill(bundle("factory"));
  disk.work();
  EXPECT_EQ(engine.change(bundle("factory")), Outcome::Done);
  EXPECT_EQ(calls, 0);
}

TEST(SettingsStoreTest, RefusesWhatTheTransformationRefuses) {
  MemoryFileSystem disk = diskWith(bundle("old"));
  Engine engine(disk);
  EXPECT_EQ(engine.store.apply([](const PropertyList&) { return std::nullopt; }), Outcome::Refused);
  EXPECT_EQ(engine.store.bundle(), bundle("old"));
}

TEST(SettingsStoreTest, RefusesAnIncompleteBundle) {
  MemoryFileSystem disk = diskWith(bundle("old"));
  Engine engine(disk);
  EXPECT_EQ(engine.change(bundle("new").without("Macros")), Outcome::Refused);
  EXPECT_EQ(engine.store.bundle(), bundle("old"));
  EXPECT_EQ(stored(disk), bundle("old"));
}

TEST(SettingsStoreTest, RefusesChangesWhileEmpty) {
  MemoryFileSystem disk;
  Engine engine(disk);
  EXPECT_EQ(engine.change(bundle("new")), Outcome::Refused);
  EXPECT_EQ(disk.paths(), std::vector<std::string>());
}

TEST(SettingsStoreTest, WritesNothingForAChangeThatChangesNothing) {
  MemoryFileSystem disk = diskWith(bundle("old"));
  Engine engine(disk);
  disk.work();
  EXPECT_EQ(engine.change(bundle("old")), Outcome::Done);
  EXPECT_EQ(disk.operations(), 0);
}

TEST(SettingsStoreTest, KeepsTheFormerSettingsAsTheLastGoodOnes) {
  MemoryFileSystem disk = usedDisk();
  EXPECT_EQ(disk.paths(), (std::vector<std::string>{lastGoodPath, currentPath}));
  EXPECT_EQ(disk.contents(lastGoodPath), encoded(bundle("oldest")));
  EXPECT_EQ(disk.contents(currentPath), encoded(bundle("old")));
}

TEST(SettingsStoreTest, WritesOnWhenTheDiskTakesOnlyPiecesAtATime) {
  MemoryFileSystem disk = usedDisk();
  disk.setMaximumWrite(100);
  EXPECT_EQ(Engine(disk).change(bundle("new")), Outcome::Done);
  EXPECT_EQ(stored(disk), bundle("new"));
}

TEST(SettingsStoreTest, FailsWhenTheDiskTakesNothing) {
  MemoryFileSystem disk = usedDisk();
  disk.setMaximumWrite(0);
  EXPECT_EQ(Engine(disk).change(bundle("new")), Outcome::NotSaved);
  EXPECT_EQ(stored(disk), bundle("old"));
}

// Crashes the engine at every operation of a change and starts it again on every disk that may be left.
void expectOldOrNewAfterEveryCrash(const MemoryFileSystem& start, const PropertyList& old) {
  bool isFinished = false;
  for (int operation = 1; !isFinished; ++operation) {
    MemoryFileSystem disk = start;
    Engine engine(disk);
    if (engine.store.isEmpty()) engine.store.fill(old);
    disk.setMaximumWrite(1000);
    disk.crashAt(operation);
    try {
      EXPECT_EQ(engine.change(bundle("new")), Outcome::Done);
      isFinished = true;
    } catch (const MemoryFileSystem::Crash&) {
    }
    for (const MemoryFileSystem& after : disk.afterCrash()) {
      const PropertyList found = stored(after);
      EXPECT_TRUE(found == bundle("new") || (!isFinished && found == old))
          << "operation " << operation << ": " << found["Profiles"].at(0)["ProfileName"].string();
    }
    ASSERT_LT(operation, 100);
  }
}

TEST(SettingsStoreTest, HoldsTheOldOrTheNewSettingsAfterACrashAtAnyStep) {
  expectOldOrNewAfterEveryCrash(usedDisk(), bundle("old"));
}

TEST(SettingsStoreTest, HoldsTheOldOrTheNewSettingsAfterACrashAtAnyStepOfTheFirstChange) {
  expectOldOrNewAfterEveryCrash(MemoryFileSystem(), bundle("old"));
}

TEST(SettingsStoreTest, HoldsTheOldOrTheNewSettingsAfterACrashAtAnyStepWithOnlyTheLastGoodFile) {
  MemoryFileSystem disk;
  disk.put(lastGoodPath, encoded(bundle("old")));
  expectOldOrNewAfterEveryCrash(disk, bundle("old"));
}

TEST(SettingsStoreTest, HoldsTheOldOrTheNewSettingsAfterACrashAtAnyStepWithADamagedFile) {
  MemoryFileSystem disk;
  disk.put(currentPath, text("bplist00 cut off"));
  disk.put(lastGoodPath, encoded(bundle("old")));
  expectOldOrNewAfterEveryCrash(disk, bundle("old"));
}

class SettingsStoreFaultTest : public testing::TestWithParam<std::errc> {};

TEST_P(SettingsStoreFaultTest, RefusesTheChangeWhicheverStepFailsOnce) {
  for (int operation = 1;; ++operation) {
    MemoryFileSystem disk = usedDisk();
    Engine engine(disk);
    disk.setMaximumWrite(1000);
    disk.failAt(operation, GetParam());
    const Outcome outcome = engine.change(bundle("new"));
    if (disk.operations() < operation) {
      EXPECT_EQ(outcome, Outcome::Done);
      break;
    }
    EXPECT_EQ(outcome, Outcome::NotSaved) << operation;
    EXPECT_EQ(engine.store.bundle(), bundle("old")) << operation;
    EXPECT_EQ(engine.lines, Lines{"vorn-core-engine: cannot save the settings in /state: " +
                                  std::make_error_code(GetParam()).message()});
    EXPECT_EQ(disk.contents(currentPath), encoded(bundle("old"))) << operation;
    EXPECT_EQ(disk.contents(folder + "/settings.new.plist"), std::nullopt) << operation;
    EXPECT_EQ(stored(disk), bundle("old")) << operation;
    disk.work();
    EXPECT_EQ(engine.change(bundle("new")), Outcome::Done) << operation;
    EXPECT_EQ(stored(disk), bundle("new")) << operation;
    ASSERT_LT(operation, 100);
  }
}

TEST_P(SettingsStoreFaultTest, PutsNothingInForceWhicheverStepFailsOnceWithOnlyTheLastGoodFile) {
  for (int operation = 1;; ++operation) {
    MemoryFileSystem disk;
    disk.put(lastGoodPath, encoded(bundle("old")));
    Engine engine(disk);
    disk.failAt(operation, GetParam());
    const Outcome outcome = engine.change(bundle("new"));
    if (disk.operations() < operation) break;
    EXPECT_EQ(outcome, Outcome::NotSaved) << operation;
    EXPECT_EQ(disk.paths(), std::vector<std::string>{lastGoodPath}) << operation;
    ASSERT_LT(operation, 100);
  }
}

TEST_P(SettingsStoreFaultTest, BringsTheBundleInForceBackToTheDiskAfterASaveThatLeftAnother) {
  for (int operation = 1;; ++operation) {
    MemoryFileSystem disk = usedDisk();
    Engine engine(disk);
    disk.failFrom(operation, GetParam());
    engine.change(bundle("new"));
    if (disk.operations() < operation) break;
    disk.work();
    EXPECT_EQ(engine.change(bundle("old")), Outcome::Done) << operation;
    EXPECT_EQ(stored(disk), bundle("old")) << operation;
    ASSERT_LT(operation, 100);
  }
}

TEST_P(SettingsStoreFaultTest, LosesNothingWhenEveryStepFromSomeStepOnFails) {
  for (int operation = 1;; ++operation) {
    MemoryFileSystem disk = usedDisk();
    Engine engine(disk);
    disk.failFrom(operation, GetParam());
    const Outcome outcome = engine.change(bundle("new"));
    if (disk.operations() < operation) break;
    EXPECT_EQ(outcome, Outcome::NotSaved) << operation;
    EXPECT_EQ(engine.store.bundle(), bundle("old")) << operation;
    disk.work();
    for (const MemoryFileSystem& after : disk.afterCrash()) {
      const PropertyList found = stored(after);
      EXPECT_TRUE(found == bundle("old") || found == bundle("new")) << operation;
    }
    EXPECT_EQ(engine.change(bundle("newer")), Outcome::Done) << operation;
    EXPECT_EQ(stored(disk), bundle("newer")) << operation;
    ASSERT_LT(operation, 100);
  }
}

INSTANTIATE_TEST_SUITE_P(Errors, SettingsStoreFaultTest,
                         testing::Values(std::errc::no_space_on_device, std::errc::io_error,
                                         std::errc::read_only_file_system, std::errc::permission_denied));

TEST(SettingsStoreTest, TellsASaveFaultOnceAndItsEnd) {
  MemoryFileSystem disk = usedDisk();
  Engine engine(disk);
  disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(engine.change(bundle("new")), Outcome::NotSaved);
  EXPECT_EQ(engine.change(bundle("newer")), Outcome::NotSaved);
  disk.work();
  EXPECT_EQ(engine.change(bundle("newest")), Outcome::Done);
  EXPECT_EQ(engine.lines, (Lines{"vorn-core-engine: cannot save the settings in /state: No space left on device",
                                 "vorn-core-engine: the settings are saved again"}));
}

TEST(SettingsStoreTest, FallsBackOnTheLastGoodFileAndKeepsTheDamagedOne) {
  MemoryFileSystem disk = usedDisk();
  disk.put(currentPath, text("garbage"));
  const Engine engine(disk);
  EXPECT_EQ(engine.store.bundle(), bundle("oldest"));
  EXPECT_EQ(disk.contents(currentPath + ".damaged-1"), text("garbage"));
  EXPECT_EQ(disk.paths(), (std::vector<std::string>{lastGoodPath, currentPath + ".damaged-1"}));
  ASSERT_EQ(engine.lines.size(), 3U);
  EXPECT_TRUE(engine.lines[0].starts_with("vorn-core-engine: cannot use /state/settings.plist: "));
  EXPECT_EQ(engine.lines[1], "vorn-core-engine: it is kept as /state/settings.plist.damaged-1");
  EXPECT_EQ(engine.lines[2], "vorn-core-engine: using the last good settings, /state/settings.last-good.plist");
}

TEST(SettingsStoreTest, NeverOverwritesAFileThatWasMovedAside) {
  MemoryFileSystem disk;
  disk.put(currentPath + ".damaged-1", text("first"));
  disk.put(currentPath + ".damaged-2", text("second"));
  disk.put(currentPath, text("third"));
  EXPECT_TRUE(Engine(disk).store.isEmpty());
  EXPECT_EQ(disk.contents(currentPath + ".damaged-1"), text("first"));
  EXPECT_EQ(disk.contents(currentPath + ".damaged-2"), text("second"));
  EXPECT_EQ(disk.contents(currentPath + ".damaged-3"), text("third"));
}

TEST(SettingsStoreTest, IsEmptyWhenBothFilesAreDamaged) {
  MemoryFileSystem disk;
  disk.put(currentPath, text("one"));
  disk.put(lastGoodPath, encoded(PropertyList::dictionary({{"Profiles", PropertyList::array()}})));
  const Engine engine(disk);
  EXPECT_TRUE(engine.store.isEmpty());
  EXPECT_EQ(disk.paths(), (std::vector<std::string>{lastGoodPath + ".damaged-1", currentPath + ".damaged-1"}));
}

TEST(SettingsStoreTest, TakesAnUnreadableFileForADamagedOne) {
  MemoryFileSystem disk = usedDisk();
  disk.failAt(2, std::errc::io_error);  // the first operation removes what a save may have left
  const Engine engine(disk);
  EXPECT_EQ(engine.store.bundle(), bundle("oldest"));
  EXPECT_EQ(disk.contents(currentPath + ".damaged-1"), encoded(bundle("old")));
}

TEST(SettingsStoreTest, SavesNothingOverADamagedFileThatCannotBeMovedAside) {
  MemoryFileSystem disk;
  disk.put(currentPath, text("precious"));
  disk.failFrom(3, std::errc::read_only_file_system);
  Engine engine(disk);
  EXPECT_TRUE(engine.store.isEmpty());
  engine.store.fill(bundle("factory"));
  EXPECT_EQ(engine.change(bundle("new")), Outcome::NotSaved);
  EXPECT_EQ(disk.contents(currentPath), text("precious"));
  disk.work();
  EXPECT_EQ(engine.change(bundle("new")), Outcome::Done);
  EXPECT_EQ(disk.contents(currentPath + ".damaged-1"), text("precious"));
  EXPECT_EQ(stored(disk), bundle("new"));
}

TEST(SettingsStoreTest, CompletesStoredSettingsFromTheFactoryProfile) {
  const PropertyList cut = bundleOf({profile("mine").without("DPIX").without("Keymap")});
  MemoryFileSystem disk = diskWith(cut);
  const Engine engine(disk, profile("factory").with("DPIX", 1600));
  EXPECT_EQ(engine.store.bundle(), bundleOf({profile("mine").with("DPIX", 1600)}));
  EXPECT_EQ(engine.lines, Lines{"vorn-core-engine: the stored settings were incomplete; factory values stand in for "
                                "what was missing"});
}

// A bundle whose file has exactly this size.
PropertyList bundleOfSize(std::size_t size) {
  const auto withBallast = [](std::size_t length) {
    return bundle("large").with("Ballast", PropertyList::data(Bytes(length)));
  };
  const std::size_t guess = size - 20'000;
  return withBallast(guess + size - encoded(withBallast(guess)).size());
}

TEST(SettingsStoreTest, RefusesSettingsThatNoMessageCouldCarryAndKeepsTheOldOnes) {
  MemoryFileSystem disk = diskWith(bundle("old"));
  Engine engine(disk);
  const PropertyList large = bundleOfSize(maximumSize - 10);
  ASSERT_EQ(encoded(large).size(), maximumSize - 10);
  EXPECT_EQ(engine.change(large), Outcome::TooLarge);
  EXPECT_EQ(engine.store.bundle(), bundle("old"));
  EXPECT_EQ(disk.contents(currentPath), encoded(bundle("old")));
  EXPECT_EQ(engine.change(bundle("new")), Outcome::Done);
}

TEST(SettingsStoreTest, TakesLargeSettingsThatAMessageCanCarry) {
  MemoryFileSystem disk = diskWith(bundle("old"));
  Engine engine(disk);
  EXPECT_EQ(engine.change(bundleOfSize(maximumSize - 5000)), Outcome::Done);
}

TEST(SettingsStoreTest, MovesStoredSettingsAsideThatNoMessageCouldCarry) {
  MemoryFileSystem disk = usedDisk();
  const Bytes large = encoded(bundleOfSize(maximumSize - 10));
  disk.put(currentPath, large);
  const Engine engine(disk);
  EXPECT_EQ(engine.store.bundle(), bundle("oldest"));
  EXPECT_TRUE(disk.contents(currentPath + ".damaged-1") == large);
  ASSERT_FALSE(engine.lines.empty());
  EXPECT_EQ(engine.lines[0],
            "vorn-core-engine: cannot use /state/settings.plist: the settings would be too large to be sent");
}

TEST(SettingsStoreTest, MovesFoldersOutOfItsWay) {
  MemoryFileSystem disk = diskWith(bundle("old"));
  disk.putFolder(folder + "/settings.new.plist");
  disk.putFolder(lastGoodPath);
  Engine engine(disk);
  EXPECT_EQ(engine.change(bundle("new")), Outcome::Done);
  EXPECT_EQ(engine.lines, (Lines{"vorn-core-engine: /state/settings.new.plist is kept as "
                                 "/state/settings.new.plist.damaged-1",
                                 "vorn-core-engine: /state/settings.last-good.plist is kept as "
                                 "/state/settings.last-good.plist.damaged-1"}));
  EXPECT_EQ(disk.contents(lastGoodPath), encoded(bundle("old")));
  EXPECT_EQ(stored(disk), bundle("new"));
}

TEST(SettingsStoreTest, KeepsTheLastGoodFileWhereSomebodyElseWroteTheOtherOne) {
  MemoryFileSystem disk = usedDisk();
  Engine engine(disk);
  disk.put(currentPath, text("a stranger's"));
  EXPECT_EQ(engine.change(bundle("new")), Outcome::Done);
  EXPECT_EQ(disk.contents(lastGoodPath), encoded(bundle("oldest")));
  EXPECT_EQ(disk.contents(currentPath + ".damaged-1"), text("a stranger's"));
  EXPECT_EQ(engine.lines,
            (Lines{"vorn-core-engine: somebody changed /state/settings.plist",
                   "vorn-core-engine: /state/settings.plist is kept as /state/settings.plist.damaged-1"}));
  EXPECT_EQ(engine.change(bundle("newer")), Outcome::Done);
  EXPECT_EQ(disk.contents(lastGoodPath), encoded(bundle("new")));
}

TEST(SettingsStoreTest, WritesNothingWhileAnotherEngineHoldsTheFolder) {
  MemoryFileSystem disk = usedDisk();
  Engine engine(disk);
  disk.isLockedByAnother = true;
  EXPECT_EQ(engine.change(bundle("new")), Outcome::NotSaved);
  EXPECT_EQ(engine.lines, Lines{"vorn-core-engine: cannot save the settings in /state: another engine uses them"});
  EXPECT_EQ(stored(disk), bundle("old"));
  disk.isLockedByAnother = false;
  EXPECT_EQ(engine.change(bundle("new")), Outcome::Done);
}

TEST(SettingsStoreTest, RemovesWhatAnInterruptedSaveLeft) {
  MemoryFileSystem disk = usedDisk();
  disk.put(folder + "/settings.new.plist", text("half"));
  const Engine engine(disk);
  EXPECT_EQ(disk.paths(), (std::vector<std::string>{lastGoodPath, currentPath}));
}

}  // namespace
}  // namespace vorn::engine::test
