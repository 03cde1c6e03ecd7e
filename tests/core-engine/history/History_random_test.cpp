// Changes of two clients at random, taken back and made again, while the engine is killed again and again.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "core-engine/TestMacros.h"
#include "core-engine/history/HistoryEngine.h"
#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/MacroRules.h"

namespace vorn::engine::test {
namespace {

PropertyList words(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

PropertyList startBundle() {
  const PropertyList record = vorn::test::profile("Home").merging(engine::test::profile("Home"));
  return bundleOf({record, record.with("ProfileName", "Work")})
      .with("Macros", PropertyList::array({macro("Hi", 0, {keyPress(4), keyRelease(4, 50)}), macro("Ho", 1)}));
}

struct Wish {
  PropertyList bundle;
  MessageID request;
};

// What clients ask for.
class Wishes {
 public:
  explicit Wishes(unsigned seed) : mRandom(seed) {}

  int number(int count) { return std::uniform_int_distribution(0, count - 1)(mRandom); }

  Wish next(const PropertyList& bundle) {
    const int profileCount = static_cast<int>(bundle["Profiles"].size());
    const int macroCount = static_cast<int>(bundle["Macros"].size());
    const int profileID = number(profileCount);
    const auto kept = [&](const ProfileChange& change) { return change.bundle.value_or(bundle); };
    const auto keptMacro = [&](const MacroResult& result) {
      return result.status == ReturnStatus::Done ? result.value : bundle;
    };
    const int macroID = macroCount > 0 ? number(macroCount) : 0;
    switch (number(12)) {
      case 0:
        if (profileCount == 5) return {kept(withoutProfile(bundle, profileID)), MessageID::DeleteProfile};
        return {kept(withAddedProfile(bundle, bundle["Profiles"].at(profileID).with("ProfileName", name()), {})),
                MessageID::AddProfile};
      case 1:
        return {kept(withoutProfile(bundle, profileID)), MessageID::DeleteProfile};
      case 2:
        return {kept(withActiveProfile(bundle, profileID)), MessageID::SwitchProfile};
      case 3:
        return {kept(withReplacedProfiles(bundle, reordered(bundle["Profiles"]), {})), MessageID::ReplaceAllProfiles};
      case 4:
        if (macroCount > 8) return {keptMacro(withoutMacro(bundle, macroID)), MessageID::DeleteMacro};
        return {keptMacro(withAddedMacro(bundle, words({{"MacroName", name()}}))), MessageID::AddMacro};
      case 5:
        return {keptMacro(withoutMacro(bundle, macroID)), MessageID::DeleteMacro};
      case 6:
        return {keptMacro(withRenamedMacro(bundle, macroID, name())), MessageID::RenameMacro};
      case 7:
        return {keptMacro(withRecordedEvents(bundle, macroID, events(), number(2) == 0)),
                MessageID::SaveRecordedEvents};
      case 8:
        return {keptMacro(withoutRow(bundle, macroID, number(4))), MessageID::RemoveMacroEvent};
      default:
        return {kept(withUpdatedProfile(bundle, profileID, settings())), MessageID::UpdateProfile};
    }
  }

 private:
  std::string name() { return "Name " + std::to_string(number(6)); }
  PropertyList events() {
    std::vector<PropertyList> result;
    for (int left = number(4) + 1; left > 0; --left) result.push_back(keyPress(4 + number(20), number(100)));
    return PropertyList::array(std::move(result));
  }
  PropertyList reordered(const PropertyList& records) {
    std::vector<PropertyList> result(records.elements().begin(), records.elements().end());
    std::shuffle(result.begin(), result.end(), mRandom);
    return PropertyList::array(std::move(result));
  }
  PropertyList settings() {
    const PropertyList group =
        words({{std::to_string(number(2) == 0 ? 20 : 43), assignment(number(2) == 0 ? 10 : 17, number(4), 1)}});
    switch (number(8)) {
      case 0:
        return words({{"ProfileName", name()}});
      case 1:
        return words({{"DPIX", 100 * (number(50) + 1)}});
      case 2:
        return words({{"KeymapID", number(8)}});
      case 3:
        return words({{"ScrollLED", number(2)}, {"LEDEffects", number(3)}});
      case 4:
        return words({{"PowerSaver", number(6)}});
      default:
        return words({{"Keys", group}});
    }
  }

  std::mt19937 mRandom;
};

class HistoryRandomTest : public testing::TestWithParam<unsigned> {
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
    if (wishes.number(40) == 0) disk.crashAt(wishes.number(15) + 1);
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
    const Wish wish = wishes.next(engine->now());
    const ChangeOrigin origin{ChangeOrigin::Kind::Request, wishes.number(2) == 0 ? ":1.1" : ":1.2", "", wish.request};
    // Some come so soon after the one before that they are one.
    engine->scheduler.advance(std::chrono::milliseconds(wishes.number(3) * 5000));
    perform([&] { engine->change(wish.bundle, origin); }, wish.bundle);
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
  Wishes wishes{GetParam()};
  std::map<std::uint64_t, States> states;  // of the entries, by their IDs
  int kills = 0;
};

TEST_P(HistoryRandomTest, TakesAllBackExactlyThroughEveryKill) {
  constexpr int rounds = 1250;
  for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
    change();
    wishes.number(2) == 0 ? undo() : redo();
    if (HasFailure()) FAIL() << "round " << round;
  }
  EXPECT_GT(kills, 10);
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

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryRandomTest, testing::Range(1U, 9U));

}  // namespace
}  // namespace vorn::engine::test
