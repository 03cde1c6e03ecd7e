#include "core-engine/history/HistoryFixture.h"

namespace vorn::engine::test {
namespace {

using std::chrono::milliseconds;

class HistoryGesturesTest : public HistoryFixture {};

TEST_F(HistoryGesturesTest, TheStepsOfADraggedSliderAreOneChange) {
  const PropertyList before = now();
  for (const int dpi : {900, 1000, 1100}) {
    update(window, setting("DPIX", dpi));
    letPass(milliseconds(900));
  }
  EXPECT_EQ(entries(), Kinds{"sensitivity"});
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
}

TEST_F(HistoryGesturesTest, ASliderThatIsDraggedBackLeavesNoChange) {
  const PropertyList before = now()["Profiles"].at(0)["DPIX"];
  update(window, setting("DPIX", before.toInt() + 100));
  update(window, setting("DPIX", before));
  EXPECT_EQ(entries(), Kinds());
}

TEST_F(HistoryGesturesTest, ASliderThatIsTakenUpLaterOrByAnotherOrInAnotherProfileIsAnotherChange) {
  update(window, setting("DPIX", 900));
  letPass(milliseconds(1100));
  update(window, setting("DPIX", 1000));
  update(other, setting("DPIX", 1100));
  update(other, setting("DPIX", 1200), 2);
  EXPECT_EQ(entries(), (Kinds{"sensitivity", "sensitivity", "sensitivity", "sensitivity"}));
}

TEST_F(HistoryGesturesTest, TwoAssignmentsInARowAreTwoChanges) {
  update(window, setting("Keys", setting("43", assignment(3))));
  update(window, setting("Keys", setting("43", assignment(4))));
  EXPECT_EQ(entries(), (Kinds{"assignment", "assignment"}));
}

TEST_F(HistoryGesturesTest, ADeletedMacroComesBackWithTheAssignmentsThatTheDeletionTook) {
  const PropertyList before = now();
  deleteMacro(window, 1);
  cleanUp(window);
  EXPECT_EQ(entries(), Kinds{"macroDeleted"});
  EXPECT_EQ(mHistory.entries().all().front().description,
            PropertyList::dictionary({{"kind", "macroDeleted"}, {"macro", "Macro 2"}}));
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
}

TEST_F(HistoryGesturesTest, WhatAnotherClientReplacesAfterADeletionIsAChangeOfItsOwn) {
  deleteMacro(window, 1);
  cleanUp(other);
  EXPECT_EQ(entries(), (Kinds{"macroDeleted", "assignment"}));
}

TEST_F(HistoryGesturesTest, ADeletedProfileIsOneChangeWithTheSwitchThatFollows) {
  update(window, setting("ProfileName", "kept"), 1);
  const PropertyList before = now();
  deleteProfile(window, 3);
  switchProfile(window, 2);
  EXPECT_EQ(entries(), (Kinds{"profileRenamed", "profileDeleted"}));
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
}

TEST_F(HistoryGesturesTest, ANewProfileIsOneChangeWithTheSwitchToIt) {
  makeRoom(4);
  const PropertyList before = now();
  addProfile(window, "New");
  letPass(milliseconds(4900));
  switchProfile(window, 4);
  const PropertyList after = now();
  EXPECT_EQ(entries(), Kinds{"profileAdded"});
  EXPECT_EQ(mHistory.entries().all().front().description,
            PropertyList::dictionary({{"kind", "profileAdded"}, {"profile", "New"}}));
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
  EXPECT_EQ(redo().outcome, Outcome::Done);
  EXPECT_EQ(now(), after);
}

TEST_F(HistoryGesturesTest, ASwitchToAnotherProfileOrByAnotherOrLaterIsNoPartOfTheAddition) {
  makeRoom(2);
  addProfile(window, "A");
  switchProfile(window, 1);
  addProfile(window, "B");
  switchProfile(other, 3);
  switchProfile(window, 0);
  addProfile(window, "C");
  letPass(milliseconds(5100));
  switchProfile(window, 4);
  EXPECT_EQ(entries(), (Kinds{"profileAdded", "profileSwitched", "profileAdded", "profileSwitched", "profileSwitched",
                              "profileAdded", "profileSwitched"}));
}

TEST_F(HistoryGesturesTest, TheProfilesOfOneImportAreOneChange) {
  makeRoom(2);
  const PropertyList before = now();
  addProfile(window, "A");
  for (const char* name : {"B", "C"}) {
    letPass(milliseconds(4900));
    addProfile(window, name, true);
  }
  const PropertyList after = now();
  EXPECT_EQ(entries(), Kinds{"profileAdded"});
  EXPECT_EQ(mHistory.entries().all().front().description,
            PropertyList::dictionary({{"kind", "profileAdded"}, {"profile", "A"}, {"count", 3}}));
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
  EXPECT_EQ(redo().outcome, Outcome::Done);
  EXPECT_EQ(now(), after);
}

TEST_F(HistoryGesturesTest, ProfilesThatAreAddedApartAreChangesOfTheirOwn) {
  makeRoom(1);
  addProfile(window, "A");
  addProfile(window, "B");
  addProfile(other, "C", true);
  letPass(milliseconds(5100));
  addProfile(other, "D", true);
  EXPECT_EQ(entries(), (Kinds{"profileAdded", "profileAdded", "profileAdded", "profileAdded"}));
}

TEST_F(HistoryGesturesTest, AProfileContinuesNothingThatWasTakenBackOrWasNoAddition) {
  makeRoom(2);
  update(window, setting("PollingRate", 125));
  addProfile(window, "A", true);
  addProfile(window, "B");
  undo();
  addProfile(window, "C", true);
  EXPECT_EQ(entries(), (Kinds{"pollingRate", "profileAdded", "profileAdded"}));
}

TEST_F(HistoryGesturesTest, ADeletedProfileIsOneChangeWithNoMoreThanItsCleanUp) {
  const auto switchTo = [this](int profileID) {
    request(asking(window, MessageID::SwitchProfile),
            [&](const PropertyList& bundle) { return *withActiveProfile(bundle, profileID).bundle; });
  };
  const auto deleteLast = [this] {
    request(asking(window, MessageID::DeleteProfile), [](const PropertyList& bundle) {
      return *withoutProfile(bundle, static_cast<std::int32_t>(bundle["Profiles"].size()) - 1).bundle;
    });
  };
  deleteLast();
  switchTo(1);
  switchTo(0);
  EXPECT_EQ(entries(), (Kinds{"profileDeleted", "profileSwitched"}));
  deleteLast();
  cleanUp(window);
  switchTo(1);
  EXPECT_EQ(entries(), (Kinds{"profileDeleted", "profileSwitched", "profileDeleted", "profileSwitched"}));
}

TEST_F(HistoryGesturesTest, TheTimeOfACleanUpCountsFromTheDeletion) {
  deleteMacro(window, 1);
  letPass(milliseconds(4000));
  request(asking(window, MessageID::ReplaceAllProfiles), [](const PropertyList& bundle) {
    return *withUpdatedProfile(bundle, 0, setting("Keys", setting("43", assignment(45, 43)))).bundle;
  });
  EXPECT_EQ(entries(), Kinds{"macroDeleted"});
  letPass(milliseconds(1100));
  cleanUp(window);
  EXPECT_EQ(entries().size(), 2U);
}

}  // namespace
}  // namespace vorn::engine::test
