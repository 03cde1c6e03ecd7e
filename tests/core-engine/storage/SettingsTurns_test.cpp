// Work for the settings while the disk takes its time.
#include "core-engine/storage/SettingsTurns.h"

#include <gtest/gtest.h>

#include <string>

#include "core-engine/storage/HeldDisk.h"

namespace vorn::engine::test {
namespace {

class SettingsTurnsTest : public testing::Test {
 protected:
  SettingsTurnsTest() { held.hold(parts.disk); }

  void change(const std::string& name) {
    parts.store.put(bundle(name), [](SettingsStore::Outcome) {});
  }
  SettingsTurns::Work noting(char letter) {
    return [this, letter] { done += letter; };
  }
  // The save under way ends.
  void endSave() {
    held.goOn();
    parts.store.settle();
    turns.goOn();
  }

  HeldDisk held;
  TestParts parts{bundle("old"), &held.thread()};
  SettingsTurns turns{parts.store};
  std::string done;
};

TEST_F(SettingsTurnsTest, DoWorkAtOnceWhereNothingIsSaved) {
  EXPECT_TRUE(turns.isFree());
  turns.whenSaved(noting('a'));
  turns.inTurn(noting('b'));
  EXPECT_EQ(done, "ab");
}

TEST_F(SettingsTurnsTest, DoWorkForTheSettingsWhenTheSaveHasEndedAndOtherWorkAtOnce) {
  change("new");
  turns.inTurn(noting('a'));
  turns.whenSaved([this] { done += parts.store.bundle() == bundle("new") ? 'b' : '?'; });
  EXPECT_EQ(done, "a");
  EXPECT_FALSE(turns.isFree());
  turns.goOn();
  EXPECT_EQ(done, "a");
  endSave();
  EXPECT_EQ(done, "ab");
  EXPECT_TRUE(turns.isFree());
}

TEST_F(SettingsTurnsTest, LetNothingPassByWhatWaits) {
  change("new");
  turns.whenSaved(noting('a'));
  turns.inTurn(noting('b'));
  turns.whenSaved(noting('c'));
  EXPECT_EQ(done, "");
  endSave();
  EXPECT_EQ(done, "abc");
}

TEST_F(SettingsTurnsTest, AwaitTheSavesOfTheWorkItself) {
  change("first");
  turns.whenSaved([this] { change("second"); });
  turns.whenSaved([this] { done += parts.store.bundle() == bundle("second") ? 'b' : '?'; });
  endSave();
  EXPECT_EQ(done, "");
  endSave();
  EXPECT_EQ(done, "b");
}

TEST_F(SettingsTurnsTest, WaitForTheDiskWhereTooMuchWaits) {
  change("new");
  for (std::size_t i = 0; i < SettingsTurns::maximumWaiting; ++i) turns.whenSaved(noting('a'));
  EXPECT_EQ(done, "");
  held.goOn();
  turns.whenSaved(noting('b'));
  EXPECT_EQ(done, std::string(SettingsTurns::maximumWaiting, 'a') + 'b');
}

}  // namespace
}  // namespace vorn::engine::test
