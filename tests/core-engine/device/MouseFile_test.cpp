#include "core-engine/device/MouseFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core-engine/MemoryFileSystem.h"
#include "core-engine/device/FakeMice.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine::test {
namespace {

const std::string path = "/state/mouse.plist";
const std::string acme = "usb-16c0:27db-A1";
const std::string other = "usb-16c0:27db-B2";

class MouseFileTest : public testing::Test {
 protected:
  KnownMice load() { return MouseFile(mDisk, mLog, "/state").load(); }
  void put(const PropertyList& contents) { mDisk.put(path, encodeBinaryPropertyList(contents).value_or(Bytes())); }
  static MouseRecord taught() {
    MouseRecord record;
    record.controls.teach("43", side);
    record.resolution = 1600;
    return record;
  }
  static KnownMice known() { return KnownMice().withChosen(acme, "Acme Mouse").with(other, {"Other", taught()}); }

  MemoryFileSystem mDisk;
  std::vector<std::string> mLines;
  Log mLog{[this](const std::string& line) { mLines.push_back(line); }};
};

TEST_F(MouseFileTest, IsTheVirtualMouseWithoutAFile) {
  EXPECT_EQ(load(), KnownMice());
  EXPECT_EQ(load().chosen, "virtual");
  EXPECT_EQ(mLines, std::vector<std::string>());
}

TEST_F(MouseFileTest, KeepsTheChoiceItsNameAndWhatEachMouseWasTaught) {
  EXPECT_FALSE(MouseFile(mDisk, mLog, "/state").save(known()));
  EXPECT_EQ(mDisk.paths(), std::vector<std::string>{path});
  const KnownMice loaded = load();
  EXPECT_EQ(loaded, known());
  EXPECT_EQ(loaded.of(acme), (KnownMouse{"Acme Mouse", {}}));
  EXPECT_EQ(loaded.of(other), (KnownMouse{"Other", taught()}));
}

TEST_F(MouseFileTest, ForgetsAMouseThatIsNotChosenAndWasToldNothing) {
  const KnownMice mice = known().withChosen(other, "Other").with(other, {"Other", {}});
  EXPECT_EQ(mice.mice.size(), 1U);
  EXPECT_EQ(mice.withChosen(mice::virtualMouse, ""), KnownMice());
}

TEST_F(MouseFileTest, HoldsTheOldOrTheNewChoiceWhateverEndsTheMachine) {
  ASSERT_FALSE(MouseFile(mDisk, mLog, "/state").save(known()));
  const KnownMice later = known().withChosen(other, "Other");
  MemoryFileSystem counted = mDisk;
  counted.work();
  ASSERT_FALSE(MouseFile(counted, mLog, "/state").save(later));
  for (int step = 1; step <= counted.operations(); ++step) {
    MemoryFileSystem disk = mDisk;
    disk.crashAt(step);
    EXPECT_THROW((void)MouseFile(disk, mLog, "/state").save(later), MemoryFileSystem::Crash);
    for (MemoryFileSystem& after : disk.afterCrash()) {
      const KnownMice found = MouseFile(after, mLog, "/state").load();
      EXPECT_TRUE(found == known() || found == later) << step;
    }
  }
  EXPECT_EQ(mLines, std::vector<std::string>());
}

TEST_F(MouseFileTest, KeepsWhatItHeldWhereTheDiskRefuses) {
  ASSERT_FALSE(MouseFile(mDisk, mLog, "/state").save(known()));
  MemoryFileSystem counted = mDisk;
  counted.work();
  const KnownMice later = known().withChosen(other, "Other");
  ASSERT_FALSE(MouseFile(counted, mLog, "/state").save(later));
  for (int step = 1; step < counted.operations(); ++step) {
    MemoryFileSystem disk = mDisk;
    disk.failAt(step, std::errc::no_space_on_device);
    EXPECT_EQ(MouseFile(disk, mLog, "/state").save(later), std::errc::no_space_on_device) << step;
    disk.work();
    EXPECT_EQ(MouseFile(disk, mLog, "/state").load(), known()) << step;
    EXPECT_EQ(disk.paths(), std::vector<std::string>{path}) << step;
  }
}

TEST_F(MouseFileTest, MovesADamagedFileAsideAndUsesTheVirtualMouse) {
  const std::string text = "no property list";
  const std::vector<PropertyList> useless = {
      PropertyList(),
      PropertyList::array(),
      PropertyList::dictionary(),
      PropertyList::dictionary({{"chosen", 3}, {"mice", PropertyList::dictionary()}}),
      PropertyList::dictionary({{"chosen", acme}, {"mice", PropertyList::array()}}),
      PropertyList::dictionary({{"chosen", ""}, {"mice", PropertyList::dictionary()}}),
      PropertyList::dictionary({{"chosen", "a\nb"}, {"mice", PropertyList::dictionary()}}),
      PropertyList::dictionary({{"chosen", std::string(257, 'a')}, {"mice", PropertyList::dictionary()}})};
  std::vector<std::string> kept;
  const auto expectMoved = [&] {
    EXPECT_EQ(load(), KnownMice());
    kept.push_back(path + ".damaged-" + std::to_string(kept.size() + 1));
    EXPECT_TRUE(mDisk.contents(kept.back()));
    EXPECT_EQ(mDisk.paths().size(), kept.size());
    EXPECT_EQ(mLines.back(), "vorn-core-engine: it is kept as " + kept.back());
  };
  mDisk.put(path, Bytes(text.begin(), text.end()));
  expectMoved();
  EXPECT_TRUE(
      mLines.front().starts_with("vorn-core-engine: cannot use /state/mouse.plist, so the virtual mouse is used: "));
  mDisk.put(path, Bytes(MouseFile::maximumSize + 1));
  expectMoved();
  for (const PropertyList& each : useless) {
    put(each);
    expectMoved();
  }
}

TEST_F(MouseFileTest, OverwritesNoDamagedFileThatIsStillInTheWay) {
  put(PropertyList::dictionary());
  MouseFile file(mDisk, mLog, "/state");
  mDisk.failFrom(2, std::errc::permission_denied);
  EXPECT_EQ(file.load(), KnownMice());
  EXPECT_EQ(file.save(known()), std::errc::permission_denied);
  mDisk.work();
  EXPECT_EQ(mDisk.paths(), std::vector<std::string>{path});
  EXPECT_FALSE(file.save(known()));
  EXPECT_EQ(mDisk.paths(), (std::vector<std::string>{path, path + ".damaged-1"}));
}

TEST_F(MouseFileTest, PassesOverWhatCannotStandInARecord) {
  put(PropertyList::dictionary(
      {{"chosen", acme},
       {"mice", PropertyList::dictionary(
                    {{acme, PropertyList::dictionary({{"name", "Acme\x1b[2J"}, {"resolution", 99}, {"controls", 4}})},
                     {other, 7},
                     {"", PropertyList::dictionary()},
                     {"virtual", PropertyList::dictionary({{"resolution", 800}})},
                     {"bad\tid", PropertyList::dictionary({{"resolution", 800}})}})}}));
  KnownMice expected;
  expected.chosen = acme;
  expected.mice = {{acme, {}}, {other, {}}};
  EXPECT_EQ(load(), expected);
  EXPECT_EQ(mLines, std::vector<std::string>());
}

}  // namespace
}  // namespace vorn::engine::test
