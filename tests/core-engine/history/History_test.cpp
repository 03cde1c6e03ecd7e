#include "core-engine/history/HistoryFixture.h"

namespace vorn::engine::test {
namespace {

class HistoryTest : public HistoryFixture {};

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

}  // namespace
}  // namespace vorn::engine::test
