#include "core-engine/history/HistoryFixture.h"

namespace vorn::engine::test {
namespace {

class HistoryConflictsTest : public HistoryFixture {};

TEST_F(HistoryConflictsTest, WhatAllHaveChangedSinceIsNotTakenBackAndNoLongerOffered) {
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

TEST_F(HistoryConflictsTest, WhatStandsIsTakenBackAndTheRestIsTold) {
  update(window, PropertyList::dictionary({{"KeymapID", 3}, {"PollingRate", 125}}));
  update(mouse, setting("KeymapID", 5));

  const History::Result result = undo();
  EXPECT_EQ(result.outcome, Outcome::Done);
  EXPECT_EQ(result.conflicts, 1U);
  EXPECT_EQ(now()["Profiles"].at(0)["KeymapID"], PropertyList(5));
}

TEST_F(HistoryConflictsTest, WhatWouldBeNoSettingsAnyMoreGoesAndTheNextChangeCanBeUndone) {
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

TEST_F(HistoryConflictsTest, WhatWouldBeTooLargeGoesAndTheNextChangeCanBeUndone) {
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

TEST_F(HistoryConflictsTest, AnAdditionThatNoLongerStandsIsNotToldAsTakenBack) {
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

TEST_F(HistoryConflictsTest, AnUndoThatTheDiskDoesNotTakeChangesNothingAndCanBeTriedAgain) {
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

TEST_F(HistoryConflictsTest, WhatNoLongerStandsIsLeftOutOfTheWayBack) {
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

}  // namespace
}  // namespace vorn::engine::test
