// Changes of two clients at random, taken back and made again, while the engine is killed again and again.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <tuple>

#include "core-engine/TestMacros.h"
#include "core-engine/history/HistoryEngine.h"
#include "core-engine/history/RandomChanges.h"
#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/SensitivityRules.h"

namespace vorn::engine::test {
namespace {

PropertyList startBundle() {
  const PropertyList record = vorn::test::profile("Home").merging(engine::test::profile("Home"));
  return bundleOf({record, record.with("ProfileName", "Work")})
      .with("Macros", PropertyList::array({macro("Hi", 0, {keyPress(4), keyRelease(4, 50)}), macro("Ho", 1)}));
}

// With a seed, and how many rounds: each is a change, and an undo or a redo.
class HistoryRandomTest : public testing::TestWithParam<std::tuple<unsigned, int>> {
 protected:
  struct States {
    PropertyList before;
    PropertyList after;
  };

  HistoryRandomTest() {
    disk.put("/state/settings.plist", encodeBinaryPropertyList(startBundle()).value());
    engine = std::make_unique<HistoryEngine>(disk);
  }

  // Does the work, in which the engine may be killed: what it wanted is done or not then.
  void perform(const std::function<void()>& work, const PropertyList& wanted) {
    const PropertyList before = engine->now();
    if (random.number(40) == 0) disk.crashAt(random.number(15) + 1);
    try {
      work();
      disk.work();
      EXPECT_EQ(engine->now(), wanted);
    } catch (const MemoryFileSystem::Crash&) {
      disk.work();
      engine = std::make_unique<HistoryEngine>(disk);
      ASSERT_TRUE(engine->now() == before || engine->now() == wanted);
      ASSERT_TRUE(isCompleteBundle(engine->now()));
      ++kills;
    }
    note(before);
  }

  // Which settings are before and after the newest entry.
  void note(const PropertyList& before) {
    const auto& entries = engine->history.entries();
    if (entries.all().empty() || entries.undone() > 0) return;
    const std::uint64_t id = entries.all().back().id;
    if (!states.contains(id)) states[id].before = before;
    states[id].after = engine->now();
  }

  void change() {
    const RandomChange wanted = random.next(engine->now());
    const ChangeOrigin origin{.kind = ChangeOrigin::Kind::Request,
                              .client = random.number(2) == 0 ? ":1.1" : ":1.2",
                              .request = wanted.request,
                              .isContinuation = random.number(2) == 0};
    // Some come so soon after the one before that they are one.
    engine->scheduler.advance(std::chrono::milliseconds(random.number(3) * 5000));
    perform([&] { engine->change(wanted.bundle, origin); }, wanted.bundle);
  }
  void undo() {
    const auto& entries = engine->history.entries();
    if (entries.standing() == 0) return;
    const PropertyList wanted = states.at(entries.all()[entries.standing() - 1].id).before;
    perform([this] { EXPECT_EQ(engine->undoResult().conflicts, 0U); }, wanted);
  }
  void redo() {
    const auto& entries = engine->history.entries();
    if (entries.undone() == 0) return;
    const PropertyList wanted = states.at(entries.all()[entries.standing()].id).after;
    perform([this] { EXPECT_EQ(engine->redoResult().conflicts, 0U); }, wanted);
  }

  MemoryFileSystem disk;
  std::unique_ptr<HistoryEngine> engine;
  RandomChanges random{std::get<0>(GetParam())};
  std::map<std::uint64_t, States> states;  // of the entries, by their IDs
  int kills = 0;
};

TEST_P(HistoryRandomTest, TakesAllBackExactlyThroughEveryKill) {
  const int rounds = std::get<1>(GetParam());
  for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
    change();
    random.number(2) == 0 ? undo() : redo();
    if (HasFailure()) FAIL() << "round " << round;
  }
  EXPECT_GT(kills, rounds / 125);
  const auto& entries = engine->history.entries();
  ASSERT_GT(entries.all().size(), 10U);
  const PropertyList first = states.at(entries.all().front().id).before;
  EXPECT_EQ(engine->goTo(0), History::Outcome::Done);
  EXPECT_EQ(engine->now(), first);
  const std::uint64_t last = entries.all().back().id;
  EXPECT_EQ(engine->goTo(last), History::Outcome::Done);
  EXPECT_EQ(engine->now(), states.at(last).after);
  engine->undoAll();
  EXPECT_EQ(engine->now(), first);
}

// What the mouse itself does in play.
PropertyList played(const PropertyList& bundle, RandomChanges& random) {
  const PropertyList& activeID = bundle["DeviceSettings"]["ActiveProfile"];
  const PropertyList& active = bundle["Profiles"].at(activeID.toInt64());
  const auto with = [&](const PropertyList& settings) {
    return *withUpdatedProfile(bundle, activeID, settings).bundle;
  };
  switch (random.number(5)) {
    case 0:
      return *withActiveProfile(bundle, random.number(static_cast<int>(bundle["Profiles"].size()))).bundle;
    case 1:
      return with(PropertyList::dictionary({{"KeymapID", random.number(8)}}));
    case 2:
      return with(stageStep(active, random.number(2) == 0 ? 1 : -1));
    case 3:
      return with(dpiStep(active, 100));
    default:
      return with(slowestSensitivity(active));
  }
}

// Without what the mouse itself switches.
PropertyList withoutPlay(const PropertyList& bundle) {
  std::vector<PropertyList> profiles;
  for (PropertyList profile : bundle["Profiles"].elements()) {
    for (const char* key : {"KeymapID", "Keys", "Buttons", "StageValue", "DPIX", "DPIY", "IndependentXYOn"}) {
      profile = profile.without(key);
    }
    profiles.push_back(std::move(profile));
  }
  return bundle.with("Profiles", PropertyList::array(std::move(profiles)))
      .with("DeviceSettings", bundle["DeviceSettings"].without("ActiveProfile"));
}

TEST_P(HistoryRandomTest, TakesAllBackButWhatTheMouseHasSwitchedSince) {
  const PropertyList stages = PropertyList::array({stage(800, 800), stage(400, 900, true), stage(1600, 1600)});
  for (const int profileID : {0, 1}) {
    const PropertyList settings = PropertyList::dictionary({{"Stages", stages}});
    engine->change(*withUpdatedProfile(engine->now(), profileID, settings).bundle, mouse);
  }
  const auto& entries = engine->history.entries();
  std::map<std::uint64_t, PropertyList> befores;
  const auto play = [&] { engine->change(played(engine->now(), random), mouse); };
  const auto undoOne = [&] {
    const PropertyList wanted = befores.at(entries.all()[entries.standing() - 1].id);
    engine->undo();
    ASSERT_EQ(withoutPlay(engine->now()), wanted);
    ASSERT_TRUE(isCompleteBundle(engine->now()));
    play();
  };
  for (int round = 0; round < 100 && !HasFatalFailure(); ++round) {
    const PropertyList before = withoutPlay(engine->now());
    const RandomChange wanted = random.next(engine->now());
    engine->scheduler.advance(std::chrono::seconds(6));
    befores[entries.lastID() + 1] = before;
    engine->change(wanted.bundle, {.kind = ChangeOrigin::Kind::Request, .client = ":1.1", .request = wanted.request});
    play();
    if (random.number(2) == 0 && entries.standing() > 0) undoOne();
  }
  while (entries.standing() > 0 && !HasFatalFailure()) undoOne();
}

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryRandomTest, testing::Combine(testing::Range(1U, 5U), testing::Values(250)));
// Takes a minute.
INSTANTIATE_TEST_SUITE_P(DISABLED_TenThousandRounds, HistoryRandomTest,
                         testing::Combine(testing::Range(1U, 9U), testing::Values(1250)));

}  // namespace
}  // namespace vorn::engine::test
