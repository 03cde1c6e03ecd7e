#include "core-engine/history/History.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core-engine/MemoryFileSystem.h"
#include "core-engine/TestBundle.h"
#include "core-engine/TestParts.h"
#include "core-engine/rules/MacroRules.h"
#include "core-engine/rules/ProfileRules.h"
#include "protocol/History.h"
#include "support/StandardBundle.h"

namespace vorn::engine::test {
namespace {

using Outcome = History::Outcome;
using std::chrono::milliseconds;
namespace kinds = history::kinds;

const ChangeOrigin mouse;
const ChangeOrigin window{ChangeOrigin::Kind::Request, ":1.1", "org.vorn.SkarnConfigurator", MessageID::UpdateProfile};
const ChangeOrigin other{ChangeOrigin::Kind::Request, ":1.2", "org.vorn.vornctl", MessageID::UpdateProfile};

ChangeOrigin asking(ChangeOrigin origin, MessageID request) {
  origin.request = request;
  return origin;
}

PropertyList setting(std::string_view key, const PropertyList& value) {
  return PropertyList::dictionary({{key, value}});
}

class HistoryTest : public testing::Test {
 protected:
  HistoryTest() {
    mStore.fill(bundleWithMacros(3));
    mStore.setChangeHandler([this](const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
      mHistory.note(before, after, origin);
    });
    mHistory.setChangeHandler([this] { ++mTold; });
  }

  // A request of the author that makes the new bundle.
  template <typename Change>
  void request(const ChangeOrigin& origin, const Change& change) {
    const auto outcome =
        mStore.apply([&](const PropertyList& bundle) { return std::optional(change(bundle)); }, origin);
    EXPECT_EQ(outcome, SettingsStore::Outcome::Done);
  }
  // What an operation of the history comes to, which is done within the call without a disk thread.
  template <typename Operation>
  static History::Result resultOf(const Operation& operation) {
    std::vector<History::Result> told;
    operation([&told](const History::Result& result) { told.push_back(result); });
    EXPECT_EQ(told.size(), 1U);
    return told.empty() ? History::Result{} : told.front();
  }
  History::Result undo() {
    return resultOf([this](const auto& done) { mHistory.undo(0, done); });
  }
  History::Result redo() {
    return resultOf([this](const auto& done) { mHistory.redo(0, done); });
  }
  History::Result goTo(std::uint64_t id) {
    return resultOf([this, id](const auto& done) { mHistory.goTo(id, done); });
  }
  void update(const ChangeOrigin& origin, const PropertyList& settings, std::int32_t profileID = 0) {
    request(origin,
            [&](const PropertyList& bundle) { return *withUpdatedProfile(bundle, profileID, settings).bundle; });
  }
  void deleteMacro(const ChangeOrigin& origin, std::int32_t macroID) {
    request(asking(origin, MessageID::DeleteMacro),
            [&](const PropertyList& bundle) { return withoutMacro(bundle, macroID).value; });
  }
  // What a client sends after a deletion.
  void cleanUp(const ChangeOrigin& origin) {
    request(asking(origin, MessageID::ReplaceAllProfiles), [](const PropertyList& bundle) {
      const PropertyList keys = setting("Keys", setting("43", assignment(45, 43)));
      return *withUpdatedProfile(bundle, 1, keys).bundle;
    });
  }
  void addProfile(const ChangeOrigin& origin, const std::string& name, bool isContinuation = false) {
    ChangeOrigin adding = asking(origin, MessageID::AddProfile);
    adding.isContinuation = isContinuation;
    request(adding, [&](const PropertyList& bundle) {
      return *withAddedProfile(bundle, bundle["Profiles"].at(0).with("ProfileName", name), PropertyList()).bundle;
    });
  }
  void switchProfile(const ChangeOrigin& origin, std::int64_t position) {
    request(asking(origin, MessageID::SwitchProfile),
            [&](const PropertyList& bundle) { return *withActiveProfile(bundle, position).bundle; });
  }
  void deleteProfile(const ChangeOrigin& origin, std::int64_t position) {
    request(asking(origin, MessageID::DeleteProfile),
            [&](const PropertyList& bundle) { return *withoutProfile(bundle, position).bundle; });
  }
  // So many profiles are left, without an entry.
  void makeRoom(std::size_t count) {
    while (now()["Profiles"].size() > count) deleteProfile(mouse, static_cast<std::int64_t>(count));
  }
  void letPass(milliseconds time) { mScheduler.advance(time); }

  const PropertyList& now() const { return mStore.bundle(); }
  std::vector<std::string> entries() const {
    std::vector<std::string> result;
    for (const History::Entry& each : mHistory.entries().all()) result.push_back(each.description["kind"].toString());
    return result;
  }

  using Kinds = std::vector<std::string>;

  MemoryFileSystem mDisk;
  Log mLog{[](const std::string&) {}};
  SettingsFile mFile{mDisk, mLog, "/state"};
  SettingsStore mStore{mFile, mLog};
  ManualScheduler mScheduler;
  std::int64_t mTime = 1'700'000'000;
  History mHistory{mStore, mScheduler, [this] { return mTime; }};
  int mTold = 0;
};

TEST_F(HistoryTest, AChangeIsTakenBackAndMadeAgainExactly) {
  const PropertyList before = now();
  update(window, setting("PollingRate", 125));
  const PropertyList after = now();

  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
  EXPECT_EQ(undo().outcome, Outcome::NothingLeft);
  EXPECT_EQ(now(), before);

  EXPECT_EQ(redo().outcome, Outcome::Done);
  EXPECT_EQ(now(), after);
  EXPECT_EQ(redo().outcome, Outcome::NothingLeft);
  EXPECT_EQ(now(), after);
}

TEST_F(HistoryTest, OnlyTheChangeThatIsMeantIsTakenBackOrMadeAgain) {
  const auto undoOnly = [this](std::uint64_t id) {
    return resultOf([this, id](const auto& done) { mHistory.undo(id, done); }).outcome;
  };
  const auto redoOnly = [this](std::uint64_t id) {
    return resultOf([this, id](const auto& done) { mHistory.redo(id, done); }).outcome;
  };
  EXPECT_EQ(undoOnly(1), Outcome::NothingLeft);
  update(window, setting("PollingRate", 125));
  const PropertyList first = now();
  update(other, setting("ScrollLED", 0));
  const PropertyList second = now();
  const int told = mTold;
  for (const std::uint64_t id : {1U, 3U}) EXPECT_EQ(undoOnly(id), Outcome::Outdated);
  EXPECT_EQ(now(), second);
  EXPECT_EQ(mHistory.entries().standing(), 2U);
  EXPECT_EQ(mTold, told);

  EXPECT_EQ(undoOnly(2), Outcome::Done);
  EXPECT_EQ(now(), first);
  EXPECT_EQ(undoOnly(2), Outcome::Outdated);
  EXPECT_EQ(redoOnly(1), Outcome::Outdated);
  EXPECT_EQ(now(), first);
  EXPECT_EQ(redoOnly(2), Outcome::Done);
  EXPECT_EQ(now(), second);
  EXPECT_EQ(redoOnly(2), Outcome::NothingLeft);
}

TEST_F(HistoryTest, AnEntryTellsWhoAndWhenAndWhat) {
  update(other, setting("PollingRate", 125), 2);
  ASSERT_EQ(mHistory.entries().all().size(), 1U);
  const History::Entry& entry = mHistory.entries().all().front();
  EXPECT_EQ(entry.id, 1U);
  EXPECT_EQ(entry.time, mTime);
  EXPECT_EQ(entry.sourceApp, "org.vorn.vornctl");
  EXPECT_EQ(entry.description, PropertyList::dictionary({{"kind", "pollingRate"}, {"profile", "Profile 3"}}));
}

TEST_F(HistoryTest, WhatTheMouseSwitchesIsNoEntryAndStaysWhenAChangeIsTakenBack) {
  update(window, setting("PollingRate", 125));
  update(mouse, setting("KeymapID", 4));
  EXPECT_EQ(entries(), Kinds{"pollingRate"});

  const PropertyList rate = bundleWithMacros(3)["Profiles"].at(0)["PollingRate"];
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now()["Profiles"].at(0)["PollingRate"], rate);
  EXPECT_EQ(now()["Profiles"].at(0)["KeymapID"], PropertyList(4));
}

TEST_F(HistoryTest, ANewChangeEndsWhatCouldBeMadeAgain) {
  update(window, setting("PollingRate", 125));
  EXPECT_EQ(undo().outcome, Outcome::Done);
  update(other, setting("AutoSwitchOn", 1));
  EXPECT_EQ(entries(), Kinds{"application"});
  EXPECT_EQ(redo().outcome, Outcome::NothingLeft);
}

TEST_F(HistoryTest, ARequestThatChangesNothingIsNoEntry) {
  update(window, setting("PollingRate", 125));
  update(window, setting("PollingRate", 125));
  EXPECT_EQ(entries(), Kinds{"pollingRate"});
  EXPECT_EQ(mTold, 1);
}

TEST_F(HistoryTest, AnotherKeymapToLookAtIsNoEntryAndStaysWhenTheChangeBeforeItIsTakenBack) {
  update(window, setting("Keys", setting("43", assignment(3))));
  const PropertyList before = now();
  update(window, setting("KeymapID", 4));
  EXPECT_NE(now(), before);
  EXPECT_EQ(entries(), Kinds{"assignment"});
  EXPECT_EQ(mTold, 1);

  const History::Result result = undo();
  EXPECT_EQ(result.outcome, Outcome::Done);
  EXPECT_EQ(result.conflicts, 0U);
  update(mouse, setting("KeymapID", 0));
  EXPECT_EQ(now(), bundleWithMacros(3));
}

TEST_F(HistoryTest, AnotherKeymapToLookAtEndsNothingThatCouldBeMadeAgain) {
  update(window, setting("PollingRate", 125));
  const PropertyList after = now();
  undo();
  update(window, setting("KeymapID", 4));
  EXPECT_EQ(redo().outcome, Outcome::Done);
  update(window, setting("KeymapID", 0));
  EXPECT_EQ(now(), after);
}

TEST_F(HistoryTest, AnotherKeymapToLookAtIsNoPartOfTheGestureAroundIt) {
  update(window, setting("DPIX", 900));
  update(window, setting("KeymapID", 4));
  update(window, setting("DPIX", 1000));
  EXPECT_EQ(entries(), (Kinds{"sensitivity", "sensitivity"}));
  goTo(0);
  EXPECT_EQ(now()["Profiles"].at(0)["KeymapID"], PropertyList(4));
}

TEST_F(HistoryTest, WhatAllHaveChangedSinceIsNotTakenBackAndNoLongerOffered) {
  update(window, setting("PollingRate", 125));
  update(mouse, setting("PollingRate", 500));
  const PropertyList before = now();

  const History::Result result = undo();
  EXPECT_EQ(result.outcome, Outcome::ChangedSince);
  // It is in the profile and in the device settings.
  EXPECT_EQ(result.conflicts, 1U);
  EXPECT_EQ(now(), before);
  EXPECT_EQ(entries(), Kinds());
}

TEST_F(HistoryTest, WhatStandsIsTakenBackAndTheRestIsTold) {
  update(window, PropertyList::dictionary({{"KeymapID", 3}, {"PollingRate", 125}}));
  update(mouse, setting("KeymapID", 5));

  const History::Result result = undo();
  EXPECT_EQ(result.outcome, Outcome::Done);
  EXPECT_EQ(result.conflicts, 1U);
  EXPECT_EQ(now()["Profiles"].at(0)["KeymapID"], PropertyList(5));
}

TEST_F(HistoryTest, WhatWouldBeNoSettingsAnyMoreGoesAndTheNextChangeCanBeUndone) {
  const PropertyList rate = now()["Profiles"].at(0)["PollingRate"];
  update(window, setting("PollingRate", 125));
  request(asking(window, MessageID::DeleteProfile),
          [](const PropertyList& bundle) { return *withoutProfile(bundle, 3).bundle; });
  while (now()["Profiles"].size() < keys::maximumProfiles) {
    request(mouse, [](const PropertyList& bundle) { return *withAddedProfile(bundle, profile("new"), {}).bundle; });
  }
  const PropertyList before = now();
  EXPECT_EQ(undo().outcome, Outcome::ChangedSince);
  EXPECT_EQ(now(), before);
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now()["Profiles"].at(0)["PollingRate"], rate);
}

TEST_F(HistoryTest, WhatWouldBeTooLargeGoesAndTheNextChangeCanBeUndone) {
  const PropertyList large = PropertyList::data(Bytes(std::size_t{40} * 1024 * 1024));
  const PropertyList rate = now()["Profiles"].at(0)["PollingRate"];
  request(mouse, [&](const PropertyList& bundle) { return bundle.with("large", large); });
  request(window, [](const PropertyList& bundle) { return bundle.without("large"); });
  update(other, setting("PollingRate", 125));
  request(mouse, [&](const PropertyList& bundle) { return bundle.with("another", large); });
  const History::Result result = goTo(0);
  EXPECT_EQ(result.outcome, Outcome::Done);
  EXPECT_EQ(result.entries, 1U);
  EXPECT_EQ(now()["Profiles"].at(0)["PollingRate"], rate);
  EXPECT_EQ(entries(), Kinds{"pollingRate"});
}

TEST_F(HistoryTest, AnAdditionThatNoLongerStandsIsNotToldAsTakenBack) {
  request(asking(window, MessageID::AddProfile),
          [](const PropertyList& bundle) { return *withoutProfile(bundle, 3).bundle; });
  request(asking(other, MessageID::AddProfile),
          [](const PropertyList& bundle) { return *withAddedProfile(bundle, profile("new"), {}).bundle; });
  const auto last = static_cast<std::int32_t>(now()["Profiles"].size()) - 1;
  update(mouse, setting("PollingRate", 125), last);
  const PropertyList before = now();
  const History::Result result = undo();
  EXPECT_EQ(result.outcome, Outcome::ChangedSince);
  EXPECT_EQ(result.conflicts, 1U);
  EXPECT_EQ(now(), before);
}

TEST_F(HistoryTest, AnUndoThatTheDiskDoesNotTakeChangesNothingAndCanBeTriedAgain) {
  const PropertyList before = now();
  update(window, setting("PollingRate", 125));
  const PropertyList after = now();
  mDisk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(undo().outcome, Outcome::NotSaved);
  EXPECT_EQ(now(), after);

  mDisk.work();
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
}

TEST_F(HistoryTest, EveryChangeOfTheEntriesIsTold) {
  update(window, setting("PollingRate", 125));
  EXPECT_EQ(mTold, 1);
  undo();
  EXPECT_EQ(mTold, 2);
  redo();
  EXPECT_EQ(mTold, 3);
  redo();
  EXPECT_EQ(mTold, 3);
}

TEST_F(HistoryTest, TheOldestOfMoreThanTwoHundredIsForgotten) {
  const PropertyList rate = setting("PollingRate", 125);
  for (int each = 0; each < 201; ++each) {
    update(each % 2 == 0 ? window : other, each % 2 == 0 ? rate : setting("PollingRate", 500));
  }
  EXPECT_EQ(mHistory.entries().all().size(), HistoryEntries::maximumCount);
  EXPECT_EQ(mHistory.entries().all().front().id, 2U);
  int undone = 0;
  while (undo().outcome == Outcome::Done) ++undone;
  EXPECT_EQ(undone, 200);
  EXPECT_EQ(now()["Profiles"].at(0)["PollingRate"], PropertyList(125));
}

TEST_F(HistoryTest, GoesBackToAChangeAndOnToALaterOneInOneSave) {
  std::vector<PropertyList> states{now()};
  for (int each = 0; each < 4; ++each) {
    update(each % 2 == 0 ? window : other, setting("PollingRate", 125), each);
    update(window, setting("ProfileName", "Renamed " + std::to_string(each)), each);
    states.push_back(now());
  }
  int saves = 0;
  mDisk.onSync = [&saves] { ++saves; };
  History::Result result = goTo(2);
  EXPECT_EQ(result.outcome, Outcome::Done);
  EXPECT_EQ(result.entries, 6U);
  EXPECT_EQ(now(), states[1]);
  EXPECT_EQ(saves, 1);
  EXPECT_EQ(goTo(6).entries, 4U);
  EXPECT_EQ(now(), states[3]);
  EXPECT_EQ(goTo(0).entries, 6U);
  EXPECT_EQ(now(), states[0]);
  EXPECT_EQ(goTo(8).entries, 8U);
  EXPECT_EQ(now(), states[4]);

  result = goTo(8);
  EXPECT_EQ(result.outcome, Outcome::Done);
  EXPECT_EQ(result.entries, 0U);
  EXPECT_EQ(goTo(9).outcome, Outcome::NothingLeft);
  EXPECT_EQ(now(), states[4]);
}

TEST_F(HistoryTest, WhatNoLongerStandsIsLeftOutOfTheWayBack) {
  update(window, setting("PollingRate", 125));
  update(window, setting("PollingRate", 125), 1);
  update(window, setting("AutoSwitchOn", 1));
  const PropertyList rate = bundleWithMacros(3)["Profiles"].at(0)["PollingRate"];
  update(mouse, setting("PollingRate", 500), 1);
  const History::Result result = goTo(0);
  EXPECT_EQ(result.outcome, Outcome::Done);
  EXPECT_EQ(result.entries, 2U);
  // The rate of the second profile, and the one of the device that the change before had set.
  EXPECT_EQ(result.conflicts, 2U);
  EXPECT_EQ(now()["Profiles"].at(1)["PollingRate"], PropertyList(500));
  EXPECT_EQ(now()["Profiles"].at(0)["PollingRate"], rate);
  EXPECT_EQ(entries(), (Kinds{"pollingRate", "application"}));
  EXPECT_EQ(mHistory.entries().standing(), 0U);
  EXPECT_EQ(goTo(3).entries, 2U);
  EXPECT_EQ(mHistory.entries().standing(), 2U);
}

TEST_F(HistoryTest, WhatIsTakenBackTellsWhereMacrosHaveGone) {
  std::vector<std::vector<ArrayMove>> moves;
  std::vector<PropertyList> befores;
  mHistory.setAppliedHandler([&](const PropertyList& before, const auto&, const std::vector<ArrayMove>& macroMoves) {
    befores.push_back(before);
    moves.push_back(macroMoves);
  });
  const PropertyList first = now();
  deleteMacro(window, 1);
  const PropertyList second = now();
  undo();
  redo();
  update(window, setting("PollingRate", 125));
  undo();
  using Moves = std::vector<ArrayMove>;
  EXPECT_EQ(moves, (std::vector<Moves>{{{1, 0, 1}}, {{1, 1, 0}}, {}}));
  ASSERT_EQ(befores.size(), 3U);
  EXPECT_EQ(befores[0], second);
  EXPECT_EQ(befores[1], first);
}

TEST_F(HistoryTest, WhatIsTakenBackTellsWhereProfilesHaveGone) {
  std::vector<std::vector<std::int64_t>> told;
  mHistory.setAppliedHandler(
      [&](const PropertyList&, const std::vector<std::int64_t>& places, const auto&) { told.push_back(places); });
  for (const int each : {0, 1, 2, 3}) update(mouse, setting("ProfileName", "Name " + std::to_string(each)), each);
  request(asking(window, MessageID::DeleteProfile),
          [](const PropertyList& bundle) { return *withoutProfile(bundle, 3).bundle; });
  request(asking(other, MessageID::ReplaceAllProfiles), [](const PropertyList& bundle) {
    const PropertyList& records = bundle["Profiles"];
    const PropertyList moved = PropertyList::array({records.at(1), records.at(2), records.at(0), records.at(3)});
    return bundle.with("Profiles", moved);
  });
  update(window, setting("ProfileName", "Home"), 2);
  undo();
  undo();
  undo();
  redo();
  goTo(2);
  goTo(0);
  using Places = std::vector<std::vector<std::int64_t>>;
  EXPECT_EQ(told, (Places{{0, 1, 2, 3}, {1, 2, 0, 3}, {0, 1, 2, 4}, {0, 1, 2, -1, 3}, {2, 0, 1, 3}, {1, 2, 0, 4}}));
}

TEST_F(HistoryTest, AMacroWithoutItsPositionComesBackWithoutIt) {
  request(mouse, [](const PropertyList& bundle) {
    const PropertyList& macros = bundle["Macros"];
    return bundle.with("Macros", macros.replacing(1, macros.at(1).without("macroID")));
  });
  const PropertyList before = now();
  deleteMacro(window, 0);
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
}

// --- Gestures

TEST_F(HistoryTest, TheStepsOfADraggedSliderAreOneChange) {
  const PropertyList before = now();
  for (const int dpi : {900, 1000, 1100}) {
    update(window, setting("DPIX", dpi));
    letPass(milliseconds(900));
  }
  EXPECT_EQ(entries(), Kinds{"sensitivity"});
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
}

TEST_F(HistoryTest, ASliderThatIsDraggedBackLeavesNoChange) {
  const PropertyList before = now()["Profiles"].at(0)["DPIX"];
  update(window, setting("DPIX", before.toInt() + 100));
  update(window, setting("DPIX", before));
  EXPECT_EQ(entries(), Kinds());
}

TEST_F(HistoryTest, ASliderThatIsTakenUpLaterOrByAnotherOrInAnotherProfileIsAnotherChange) {
  update(window, setting("DPIX", 900));
  letPass(milliseconds(1100));
  update(window, setting("DPIX", 1000));
  update(other, setting("DPIX", 1100));
  update(other, setting("DPIX", 1200), 2);
  EXPECT_EQ(entries(), (Kinds{"sensitivity", "sensitivity", "sensitivity", "sensitivity"}));
}

TEST_F(HistoryTest, TwoAssignmentsInARowAreTwoChanges) {
  update(window, setting("Keys", setting("43", assignment(3))));
  update(window, setting("Keys", setting("43", assignment(4))));
  EXPECT_EQ(entries(), (Kinds{"assignment", "assignment"}));
}

TEST_F(HistoryTest, ADeletedMacroComesBackWithTheAssignmentsThatTheDeletionTook) {
  const PropertyList before = now();
  deleteMacro(window, 1);
  cleanUp(window);
  EXPECT_EQ(entries(), Kinds{"macroDeleted"});
  EXPECT_EQ(mHistory.entries().all().front().description,
            PropertyList::dictionary({{"kind", "macroDeleted"}, {"macro", "Macro 2"}}));
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
}

TEST_F(HistoryTest, WhatAnotherClientReplacesAfterADeletionIsAChangeOfItsOwn) {
  deleteMacro(window, 1);
  cleanUp(other);
  EXPECT_EQ(entries(), (Kinds{"macroDeleted", "assignment"}));
}

TEST_F(HistoryTest, ADeletedProfileIsOneChangeWithTheSwitchThatFollows) {
  update(window, setting("ProfileName", "kept"), 1);
  const PropertyList before = now();
  deleteProfile(window, 3);
  switchProfile(window, 2);
  EXPECT_EQ(entries(), (Kinds{"profileRenamed", "profileDeleted"}));
  EXPECT_EQ(undo().outcome, Outcome::Done);
  EXPECT_EQ(now(), before);
}

TEST_F(HistoryTest, ANewProfileIsOneChangeWithTheSwitchToIt) {
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

TEST_F(HistoryTest, ASwitchToAnotherProfileOrByAnotherOrLaterIsNoPartOfTheAddition) {
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

TEST_F(HistoryTest, TheProfilesOfOneImportAreOneChange) {
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

TEST_F(HistoryTest, ProfilesThatAreAddedApartAreChangesOfTheirOwn) {
  makeRoom(1);
  addProfile(window, "A");
  addProfile(window, "B");
  addProfile(other, "C", true);
  letPass(milliseconds(5100));
  addProfile(other, "D", true);
  EXPECT_EQ(entries(), (Kinds{"profileAdded", "profileAdded", "profileAdded", "profileAdded"}));
}

TEST_F(HistoryTest, AProfileContinuesNothingThatWasTakenBackOrWasNoAddition) {
  makeRoom(2);
  update(window, setting("PollingRate", 125));
  addProfile(window, "A", true);
  addProfile(window, "B");
  undo();
  addProfile(window, "C", true);
  EXPECT_EQ(entries(), (Kinds{"pollingRate", "profileAdded", "profileAdded"}));
}

TEST_F(HistoryTest, ADeletedProfileIsOneChangeWithNoMoreThanItsCleanUp) {
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

TEST_F(HistoryTest, TheTimeOfACleanUpCountsFromTheDeletion) {
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
