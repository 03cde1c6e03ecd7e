// What controls change in the settings.
#include <gtest/gtest.h>

#include <memory>

#include "core-engine/AssignmentFixture.h"
#include "core-engine/requests/ProfileRequests.h"
#include "core-engine/storage/HeldDisk.h"
#include "model/Controls.h"

namespace vorn::engine::test {
namespace {

class AssignmentPlayerSettingsTest : public AssignmentFixture {
 protected:
  std::int32_t keymap(std::int64_t position = 0) { return profile(position)["KeymapID"].toInt(); }
  // "DPIX", "DPIY" and "IndependentXYOn" of the first profile.
  std::vector<std::int32_t> sensitivity() {
    return {profile()["DPIX"].toInt(), profile()["DPIY"].toInt(), profile()["IndependentXYOn"].toInt()};
  }
  void giveStages(std::vector<PropertyList> stages, std::int32_t current) {
    setProfile(0, profile()
                      .with("Stages", PropertyList::array(std::move(stages)))
                      .with("StageValue", current)
                      .with("IndependentXYOn", 0));
  }
  // Serves a request of a client; the status of its answer.
  std::int32_t ask(const RequestHandler& handler, std::string_view key, const PropertyList& value) {
    EngineParts all = parts.parts();
    const Answer answer = answerOf(handler, all, {":1.7", PropertyList::dictionary({{key, value}})});
    return answer.value()["ReturnStatus"].toInt();
  }
  // The second profile becomes active; there, "43" holds the fourth keymap.
  void holdKeymapInSecondProfile() {
    parts.profiles.switchTo(1);
    const PropertyList second = profile(1);
    setProfile(1, second.with("Keys", second["Keys"].with("43", assignment(50, 3, 1))));
    press("43");
    EXPECT_EQ(keymap(1), 3);
  }
  // All profiles, one after the other.
  std::vector<std::int32_t> keymaps() {
    std::vector<std::int32_t> result;
    for (const PropertyList& each : parts.store.bundle()["Profiles"].elements()) {
      result.push_back(each["KeymapID"].toInt());
    }
    return result;
  }
  void giveThreeStages(std::int32_t current) {
    giveStages({stage(400, 400), stage(1600, 800, 1), stage(3200, 3200)}, current);
  }
};

using Sensitivity = std::vector<std::int32_t>;
using Keymaps = std::vector<std::int32_t>;

TEST_F(AssignmentPlayerSettingsTest, TakesBackWhatWasHeldInAProfileThatWasMovedAndRenamedMeanwhile) {
  holdKeymapInSecondProfile();
  const PropertyList former = parts.store.bundle()["Profiles"];
  const PropertyList renamed = former.at(1).with("ProfileName", "Another");
  const PropertyList now = PropertyList::array({renamed, former.at(0), former.at(2)});
  parts.store.apply([&](const PropertyList& bundle) { return bundle.with("Profiles", now); });
  parts.profiles.profilesMoved(former, {1, 0, 2});
  release("43");
  EXPECT_EQ(keymaps(), (Keymaps{0, 0, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, ForgetsWhatWasHeldInAProfileThatIsGoneOrWasChangedMeanwhile) {
  holdKeymapInSecondProfile();
  const PropertyList former = parts.store.bundle()["Profiles"];
  parts.profiles.profilesMoved(former, {0, -1, 1});
  release("43");
  EXPECT_EQ(keymap(1), 3);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesTheProfile) {
  assign("43", assignment(17, 2));
  press("43");
  EXPECT_EQ(activeProfile(), 2);
  EXPECT_EQ(parts.stored(), parts.store.bundle());
  release("43");
  EXPECT_EQ(activeProfile(), 2);
  EXPECT_EQ(takeEvents(), OutputEvents());
}

TEST_F(AssignmentPlayerSettingsTest, StaysInItsProfileWhenThereIsNoSuchOther) {
  const PropertyList text = PropertyList::dictionary({{"command", 17}, {"param1", "1"}, {"param2", 0}});
  for (const PropertyList& assignment : {assignment(17, 3), assignment(17, -1), text}) {
    assign("43", assignment);
    const PropertyList before = parts.store.bundle();
    tap("43");
    EXPECT_EQ(parts.store.bundle(), before);
  }
}

TEST_F(AssignmentPlayerSettingsTest, LooksControlsUpInTheProfileThatItSwitchedTo) {
  assign("43", assignment(17, 1));
  assign("20", assignment(1, 0));
  tap("43");
  tap("20");
  EXPECT_EQ(takeEvents(), (OutputEvents{keyDown(20), keyUp(20)}));
}

TEST_F(AssignmentPlayerSettingsTest, PutsAnotherKeymapIntoForce) {
  assign("43", assignment(50, 3));
  assign("20", assignment(1, 0), 3);
  tap("43");
  EXPECT_EQ(keymap(), 3);
  EXPECT_EQ(profile()["Keys"], profile()["Keymap"].at(3)["Keys"]);
  EXPECT_EQ(profile()["Buttons"], profile()["Keymap"].at(3)["Buttons"]);
  tap("20");
  EXPECT_EQ(takeEvents(), (OutputEvents{buttonDown(1), buttonUp(1)}));
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesTheKeymapBackWhenTheControlIsLetGo) {
  assign("43", assignment(50, 3, 1));
  press("43");
  EXPECT_EQ(keymap(), 3);
  release("43");
  EXPECT_EQ(keymap(), 0);
  EXPECT_EQ(profile()["Keys"]["43"], assignment(50, 3, 1));
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackToTheFirstKeymapWhenTwoControlsOverlap) {
  assign("43", assignment(50, 3, 1));
  assign("20", assignment(50, 5, 1), 3);
  press("43");
  press("20");
  EXPECT_EQ(keymap(), 5);
  release("43");
  EXPECT_EQ(keymap(), 5);
  release("20");
  EXPECT_EQ(keymap(), 0);

  press("43");
  press("20");
  release("20");
  EXPECT_EQ(keymap(), 3);
  release("43");
  EXPECT_EQ(keymap(), 0);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackOnceWhenTwoControlsHoldTheSameKeymap) {
  assign("43", assignment(50, 3, 1));
  assign("20", assignment(50, 3, 1), 3);
  press("43");
  press("20");
  release("43");
  EXPECT_EQ(keymap(), 3);
  release("20");
  EXPECT_EQ(keymap(), 0);
}

TEST_F(AssignmentPlayerSettingsTest, LeavesAKeymapThatSomebodyElseChoseMeanwhile) {
  assign("43", assignment(50, 3, 1));
  press("43");
  tap(keymapKey);
  EXPECT_EQ(keymap(), 4);
  release("43");
  EXPECT_EQ(keymap(), 4);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackInTheProfileWhereItSwitched) {
  assign("43", assignment(50, 3, 1));
  assign("20", assignment(17, 1), 3);
  press("43");
  tap("20");
  EXPECT_EQ(activeProfile(), 1);
  release("43");
  EXPECT_EQ(keymap(0), 0);
  EXPECT_EQ(keymap(1), 0);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackInEachOfTwoProfiles) {
  assign("43", assignment(50, 3, 1));
  assign("20", assignment(17, 1), 3);
  const PropertyList second = profile(1);
  setProfile(1, second.with("KeymapID", 3).with("Keys", second["Keys"].with("4", assignment(50, 5, 1))));
  press("43");
  tap("20");
  press("4");
  EXPECT_EQ(keymap(1), 5);
  release("43");
  EXPECT_EQ(keymap(0), 0);
  release("4");
  EXPECT_EQ(keymap(1), 3);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackInItsProfileWhenOneBeforeItIsDeleted) {
  holdKeymapInSecondProfile();
  setProfile(2, profile(2).with("KeymapID", 3));
  EXPECT_EQ(ask(deleteProfile, requestKeys::ProfileID, 0), 0);
  EXPECT_EQ(keymaps(), (Keymaps{3, 3}));
  const PropertyList before = parts.store.bundle();
  release("43");
  EXPECT_EQ(profile(0)["ProfileName"], "Two");
  EXPECT_EQ(keymaps(), (Keymaps{0, 3}));
  EXPECT_EQ(parts.store.bundle()["Profiles"].at(1), before["Profiles"].at(1));
  EXPECT_EQ(parts.store.bundle()["DeviceSettings"], before["DeviceSettings"]);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackInItsProfileWhenOneBehindItIsDeleted) {
  holdKeymapInSecondProfile();
  EXPECT_EQ(ask(deleteProfile, requestKeys::ProfileID, 2), 0);
  release("43");
  EXPECT_EQ(keymaps(), (Keymaps{0, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesNothingBackWhenItsProfileIsDeleted) {
  holdKeymapInSecondProfile();
  setProfile(2, profile(2).with("KeymapID", 3));
  EXPECT_EQ(ask(deleteProfile, requestKeys::ProfileID, 1), 0);
  release("43");
  EXPECT_EQ(keymaps(), (Keymaps{0, 3}));
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackWhereItSwitchedWhenADeletionIsRefusedOrNotSaved) {
  holdKeymapInSecondProfile();
  EXPECT_NE(ask(deleteProfile, requestKeys::ProfileID, 3), 0);
  EXPECT_NE(ask(deleteProfile, requestKeys::ProfileID, "0"), 0);
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_NE(ask(deleteProfile, requestKeys::ProfileID, 0), 0);
  EXPECT_NE(ask(replaceAllProfiles, requestKeys::AllProfiles, PropertyList::array({profile(0)})), 0);
  parts.disk.work();
  release("43");
  EXPECT_EQ(keymaps(), (Keymaps{0, 0, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesNothingBackInProfilesThatReplacedAll) {
  holdKeymapInSecondProfile();
  const PropertyList other = profile(1).with("ProfileName", "Other");
  EXPECT_EQ(ask(replaceAllProfiles, requestKeys::AllProfiles, PropertyList::array({other, other})), 0);
  release("43");
  EXPECT_EQ(keymaps(), (Keymaps{3, 3}));
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackWhenAllProfilesAreReplacedByThemselves) {
  giveThreeStages(2);
  assign("43", assignment(49, 0));
  press("43");
  EXPECT_EQ(sensitivity(), (Sensitivity{400, 400, 0}));
  EXPECT_EQ(ask(replaceAllProfiles, requestKeys::AllProfiles, parts.store.bundle()["Profiles"]), 0);
  release("43");
  EXPECT_EQ(sensitivity(), (Sensitivity{800, 800, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackWhatAReplacementOfAllProfilesLeavesAlone) {
  assign("43", assignment(50, 3, 1));
  assign("20", assignment(50, 5, 1), 3);
  press("43");
  press("20");
  const PropertyList all = parts.store.bundle()["Profiles"];
  EXPECT_EQ(ask(replaceAllProfiles, requestKeys::AllProfiles, all.replacing(0, profile().with("BrightnessNormal", 7))),
            0);
  release("43");
  EXPECT_EQ(keymap(), 5);
  release("20");
  EXPECT_EQ(keymap(), 0);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesNothingBackThatAReplacementOfAllProfilesChose) {
  assign("43", assignment(50, 3, 1));
  press("43");
  const PropertyList held = parts.store.bundle()["Profiles"];
  const PropertyList chosen = held.replacing(0, profile().with("KeymapID", 5));
  EXPECT_EQ(ask(replaceAllProfiles, requestKeys::AllProfiles, chosen), 0);
  EXPECT_EQ(ask(replaceAllProfiles, requestKeys::AllProfiles, held), 0);
  release("43");
  EXPECT_EQ(keymap(), 3);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesNothingBackInAProfileThatMoved) {
  holdKeymapInSecondProfile();
  setProfile(0, profile(0).with("KeymapID", 3));
  const PropertyList swapped = PropertyList::array({profile(1), profile(0)});
  EXPECT_EQ(ask(replaceAllProfiles, requestKeys::AllProfiles, swapped), 0);
  release("43");
  EXPECT_EQ(keymaps(), (Keymaps{3, 3}));
}

TEST_F(AssignmentPlayerSettingsTest, TakesARepeatedPressForOne) {
  player.handle(ControlChanged{std::string(keymapKey), true});
  player.handle(ControlChanged{std::string(keymapKey), true});
  EXPECT_EQ(keymap(), 1);
}

TEST_F(AssignmentPlayerSettingsTest, StepsThroughAllKeymapsInACycle) {
  std::vector<std::int32_t> seen;
  for (std::int64_t position = 0; position < 8; ++position) assign("43", assignment(50, 255), position);
  for (int step = 0; step < 8; ++step) {
    tap("43");
    seen.push_back(keymap());
  }
  EXPECT_EQ(seen, (std::vector<std::int32_t>{1, 2, 3, 4, 5, 6, 7, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, StaysInItsKeymapWhenThereIsNoSuchOther) {
  for (const std::int32_t target : {8, 254, -1}) {
    for (const std::int32_t switchBack : {0, 1}) {
      assign("43", assignment(50, target, switchBack));
      const PropertyList before = parts.store.bundle();
      tap("43");
      EXPECT_EQ(parts.store.bundle(), before);
    }
  }
}

TEST_F(AssignmentPlayerSettingsTest, GoesUpAndDownTheStages) {
  giveThreeStages(0);
  assign("43", assignment(11, 0));
  assign("20", assignment(12, 0));
  tap("43");
  EXPECT_EQ(profile()["StageValue"].toInt(), 1);
  EXPECT_EQ(sensitivity(), (Sensitivity{1600, 800, 1}));
  tap("43");
  EXPECT_EQ(sensitivity(), (Sensitivity{3200, 3200, 0}));
  tap("20");
  tap("20");
  EXPECT_EQ(profile()["StageValue"].toInt(), 0);
  EXPECT_EQ(sensitivity(), (Sensitivity{400, 400, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, EndsAtTheHighestAndTheLowestStage) {
  giveThreeStages(2);
  tap(stageUpKey);
  EXPECT_EQ(profile()["StageValue"].toInt(), 2);
  EXPECT_EQ(sensitivity(), (Sensitivity{3200, 3200, 0}));
  giveThreeStages(0);
  tap(stageDownKey);
  EXPECT_EQ(profile()["StageValue"].toInt(), 0);
  EXPECT_EQ(sensitivity(), (Sensitivity{400, 400, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, TakesAStageBeyondTheLastForTheLast) {
  giveThreeStages(9);
  tap(stageDownKey);
  EXPECT_EQ(profile()["StageValue"].toInt(), 1);
}

TEST_F(AssignmentPlayerSettingsTest, HasNoStageToGoToWithoutStages) {
  const PropertyList before = parts.store.bundle();
  tap(stageUpKey);
  EXPECT_EQ(parts.store.bundle(), before);
}

TEST_F(AssignmentPlayerSettingsTest, ChangesTheSensitivityOnTheFlyWithTheWheel) {
  assign("43", assignment(15, 0));
  press("43");
  tap("06");
  tap("06");
  tap("07");
  EXPECT_EQ(sensitivity(), (Sensitivity{900, 900, 0}));
  EXPECT_EQ(takeEvents(), OutputEvents());
  release("43");
  tap("06");
  EXPECT_EQ(sensitivity(), (Sensitivity{900, 900, 0}));
  EXPECT_EQ(takeEvents(), (OutputEvents{{1, 0x38, 1}}));
}

TEST_F(AssignmentPlayerSettingsTest, KeepsTheSensitivityOnTheFlyWithinItsRange) {
  assign("43", assignment(15, 0));
  setProfile(0, profile().with("DPIX", 5550).with("DPIY", 150));
  press("43");
  tap("06");
  EXPECT_EQ(sensitivity(), (Sensitivity{5600, 250, 0}));
  tap("07");
  tap("07");
  EXPECT_EQ(sensitivity(), (Sensitivity{5400, 100, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, SetsBothAxesOnTheFlyWhereTheyAreLocked) {
  assign("43", assignment(15, 0));
  setProfile(0, profile().with("DPIX", 800).with("DPIY", 1200).with("IndependentXYOn", 0));
  press("43");
  tap("06");
  EXPECT_EQ(sensitivity(), (Sensitivity{900, 900, 0}));
  setProfile(0, profile().with("DPIY", 1200).with("IndependentXYOn", 1));
  tap("06");
  EXPECT_EQ(sensitivity(), (Sensitivity{1000, 1300, 1}));
}

TEST_F(AssignmentPlayerSettingsTest, TakesTheSlowestStageWhileTheControlIsHeld) {
  giveThreeStages(2);
  setProfile(0, profile().with("DPIX", 3000).with("DPIY", 2900).with("IndependentXYOn", 1));
  assign("43", assignment(49, 0));
  press("43");
  EXPECT_EQ(sensitivity(), (Sensitivity{400, 400, 0}));
  EXPECT_EQ(profile()["StageValue"].toInt(), 2);
  release("43");
  EXPECT_EQ(sensitivity(), (Sensitivity{3000, 2900, 1}));
}

TEST_F(AssignmentPlayerSettingsTest, KeepsASensitivityThatSomebodyElseChoseMeanwhile) {
  giveThreeStages(0);
  assign("43", assignment(49, 0));
  press("43");
  tap(stageUpKey);
  release("43");
  EXPECT_EQ(sensitivity(), (Sensitivity{1600, 800, 1}));
}

TEST_F(AssignmentPlayerSettingsTest, TakesTheSensitivityBackWhenTheMouseIsUnplugged) {
  giveThreeStages(2);
  assign("43", assignment(49, 0));
  press("43");
  parts.device.setConnection(Device::Connection::Absent);
  EXPECT_EQ(sensitivity(), (Sensitivity{800, 800, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, TakesTheSensitivityBackWhenTheEngineEnds) {
  giveThreeStages(2);
  assign("43", assignment(49, 0));
  auto ending = std::make_unique<AssignmentPlayer>(parts.parts(), launcher);
  ending->handle(ControlChanged{"43", true});
  EXPECT_EQ(sensitivity(), (Sensitivity{400, 400, 0}));
  ending.reset();
  EXPECT_EQ(sensitivity(), (Sensitivity{800, 800, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, LeavesTheSettingsAloneWhenTheDiskIsFull) {
  giveThreeStages(0);
  assign("43", assignment(50, 3, 1));
  const PropertyList before = parts.store.bundle();
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  press("43");
  EXPECT_EQ(parts.store.bundle(), before);
  parts.disk.work();
  release("43");
  EXPECT_EQ(parts.store.bundle(), before);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackAtTheNextEventWhenTheDiskWasFull) {
  assign("43", assignment(50, 3, 1));
  press("43");
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  release("43");
  player.handle(KeyChanged{7, 4, true});
  EXPECT_EQ(keymap(), 3);
  parts.disk.work();
  player.handle(KeyChanged{7, 4, false});
  EXPECT_EQ(keymap(), 0);
  EXPECT_EQ(parts.stored(), parts.store.bundle());
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackWithTheNextPressThatSwitchesTheSame) {
  assign("43", assignment(50, 3, 1));
  assign("43", assignment(50, 3, 1), 3);
  press("43");
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  release("43");
  press("43");
  EXPECT_EQ(keymap(), 3);
  parts.disk.work();
  release("43");
  EXPECT_EQ(keymap(), 0);
}

TEST_F(AssignmentPlayerSettingsTest, SwitchesBackInItsProfileWhenADeletionComesBeforeTheDiskWorksAgain) {
  holdKeymapInSecondProfile();
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  release("43");
  parts.disk.work();
  EXPECT_EQ(ask(deleteProfile, requestKeys::ProfileID, 0), 0);
  parts.profiles.takeBackReleased();
  EXPECT_EQ(keymaps(), (Keymaps{0, 0}));
}

TEST_F(AssignmentPlayerSettingsTest, LeavesAKeymapThatSomebodyElseChoseBeforeTheDiskWorkedAgain) {
  assign("43", assignment(50, 3, 1));
  press("43");
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  release("43");
  parts.disk.work();
  setProfile(0, profile().with("KeymapID", 5));
  parts.profiles.takeBackReleased();
  EXPECT_EQ(keymap(), 5);
  setProfile(0, profile().with("KeymapID", 3));
  parts.profiles.takeBackReleased();
  EXPECT_EQ(keymap(), 3);
}

class AssignmentPlayerSavingTest : public testing::Test {
 protected:
  void hold() { held.hold(parts.disk); }
  // A save is under way, and ends.
  void endSave() {
    EXPECT_TRUE(parts.store.isSaving());
    held.goOn();
    parts.store.settle();
  }
  PropertyList first() { return parts.store.bundle()["Profiles"].at(0); }

  HeldDisk held;
  TestParts parts{bundleOf({profile("One")}), &held.thread()};
};

TEST_F(AssignmentPlayerSavingTest, DoesNotWaitForTheDisk) {
  RecordingLauncher launcher;
  AssignmentPlayer player(parts.parts(), launcher);
  hold();
  player.handle(ControlChanged{std::string(keymapKey), true});
  EXPECT_EQ(first()["KeymapID"], PropertyList(0));
  // What is typed and the battery need no settings.
  player.handle(KeyChanged{7, 4, true});
  player.handle(BatteryChanged{});
  EXPECT_EQ(first()["KeymapID"], PropertyList(0));
  endSave();
  EXPECT_EQ(first()["KeymapID"], PropertyList(1));
  EXPECT_EQ(parts.stored(), parts.store.bundle());
}

TEST_F(AssignmentPlayerSavingTest, TakesBackOneAfterTheOtherWhatWasLetGoAtOnce) {
  const PropertyList before = parts.store.bundle();
  hold();
  parts.profiles.changeWhileHeld("43", PropertyList::dictionary({{"DPIX", 300}}));
  endSave();
  parts.profiles.changeWhileHeld("20", PropertyList::dictionary({{"KeymapID", 3}}));
  endSave();
  EXPECT_EQ(first()["KeymapID"], PropertyList(3));
  parts.profiles.release("43");
  parts.profiles.release("20");
  EXPECT_EQ(first()["DPIX"], PropertyList(300));
  endSave();
  EXPECT_EQ(first()["KeymapID"], PropertyList(3));
  endSave();
  EXPECT_FALSE(parts.store.isSaving());
  EXPECT_EQ(parts.store.bundle(), before);
}

TEST_F(AssignmentPlayerSettingsTest, ChangesNothingWithoutSettings) {
  TestParts empty;
  AssignmentPlayer fresh(empty.parts(), launcher);
  for (const std::string_view control : {keymapKey, stageUpKey, stageDownKey}) {
    fresh.handle(ControlChanged{std::string(control), true});
    fresh.handle(ControlChanged{std::string(control), false});
  }
  EXPECT_TRUE(empty.store.isEmpty());
}

}  // namespace
}  // namespace vorn::engine::test
