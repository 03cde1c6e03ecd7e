// The profile that follows the application in front, on settings in memory.
#include "core-engine/focus/ProfileFollowing.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/focus/FocusFixture.h"
#include "core-engine/rules/ProfileRules.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class ProfileFollowingTest : public testing::Test {
 protected:
  ProfileFollowingTest() {
    parts.store.setChangeHandler(
        [this](const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
          following->settingsChanged(before, after);
          changes.push_back(nameOf(after, after) + (origin.kind == ChangeOrigin::Kind::Mouse ? "" : " (asked for)"));
        });
    begin();
  }

  // As after a start of the engine.
  void begin() {
    following.reset();
    following.emplace(ProfileFollowing::Parts{parts.disk, parts.log, parts.scheduler, parts.store, turns, changer},
                      "/state", [](const std::string&) { return std::nullopt; });
    following->load();
  }
  void show(const std::string& identifier) { following->setApplication(applicationNamed(identifier)); }
  void wait() { parts.scheduler.advance(100ms); }
  std::string activeAfter(const std::string& identifier) {
    show(identifier);
    wait();
    return active();
  }
  std::string active() const { return nameOf(parts.store.bundle(), parts.store.bundle()); }
  static std::string nameOf(const PropertyList& bundle, const PropertyList& at) {
    const std::int64_t position = at[keys::DeviceSettings][keys::ActiveProfile].toInt64();
    return bundle[keys::Profiles].at(position)[keys::ProfileName].toString();
  }
  // A change that a client asks for.
  void ask(const ProfileChange& change) {
    parts.store.put(change.bundle, [](SettingsStore::Outcome) {}, {.kind = ChangeOrigin::Kind::Request});
  }
  const PropertyList& bundle() const { return parts.store.bundle(); }
  std::int64_t positionOf(const std::string& name) const {
    const PropertyList& profiles = bundle()[keys::Profiles];
    for (std::int64_t each = 0; each < static_cast<std::int64_t>(profiles.size()); ++each) {
      if (profiles.at(each)[keys::ProfileName].string() == name) return each;
    }
    return -1;
  }
  void choose(const std::string& name) { ask(withActiveProfile(bundle(), positionOf(name))); }
  void remove(const std::string& name) { ask(withoutProfile(bundle(), positionOf(name))); }
  void update(const std::string& name, const PropertyList& settings) {
    ask(withUpdatedProfile(bundle(), positionOf(name), settings));
  }
  bool isRemembered() const { return parts.disk.contents("/state/former-profile.plist").has_value(); }

  TestParts parts{bundleOf({profile("Home"), tiedProfile("Game", "chess"), tiedProfile("Again", "chess"),
                            tiedProfile("Draw", "paint"), tiedProfile("Off", "mail", false)})};
  SettingsTurns turns{parts.store};
  ProfileChanger changer{parts.store};
  std::optional<ProfileFollowing> following;
  Texts changes;
};

TEST_F(ProfileFollowingTest, GoesToTheFirstProfileOfTheApplicationAndBack) {
  EXPECT_EQ(activeAfter("chess"), "Game");
  EXPECT_EQ(following->chosenName(), "Game");
  EXPECT_EQ(activeAfter("paint"), "Draw");
  EXPECT_EQ(activeAfter("editor"), "Home");
  EXPECT_EQ(following->chosenName(), "");
  EXPECT_EQ(activeAfter("chess"), "Game");
  EXPECT_EQ(activeAfter(""), "Home");
  EXPECT_EQ(changes, (Texts{"Game", "Draw", "Home", "Game", "Home"}));
}

TEST_F(ProfileFollowingTest, StaysInTheActiveProfileWhereItFitsItself) {
  choose("Again");
  changes.clear();
  EXPECT_EQ(activeAfter("chess"), "Again");
  EXPECT_EQ(activeAfter("editor"), "Again");
  EXPECT_EQ(changes, Texts{});
}

TEST_F(ProfileFollowingTest, MindsNoProfileThatIsSwitchedOff) {
  EXPECT_EQ(activeAfter("mail"), "Home");
  update("Off", PropertyList::dictionary({{keys::AutoSwitchOn, true}}));
  wait();
  EXPECT_EQ(active(), "Off");
  update("Off", PropertyList::dictionary({{keys::AutoSwitchOn, false}}));
  wait();
  EXPECT_EQ(active(), "Home");
}

TEST_F(ProfileFollowingTest, LeavesAPersonsOwnChoiceUntilAnotherApplicationIsInFront) {
  show("chess");
  wait();
  choose("Off");
  EXPECT_EQ(activeAfter("chess"), "Off");
  // Another title is no other application.
  following->setApplication(Application{"chess", "/usr/games/chess", "Move 2"});
  wait();
  EXPECT_EQ(active(), "Off");
  update("Game", PropertyList::dictionary({{keys::ProfileName, "Play"}}));
  wait();
  EXPECT_EQ(active(), "Off");
  EXPECT_EQ(activeAfter("editor"), "Home");
  EXPECT_EQ(activeAfter("chess"), "Play");
}

TEST_F(ProfileFollowingTest, LeavesAChoiceThatIsMadeRightAfterTheApplicationHasChanged) {
  show("chess");
  parts.scheduler.advance(5ms);
  choose("Off");
  wait();
  EXPECT_EQ(active(), "Off");
}

TEST_F(ProfileFollowingTest, LeavesAChoiceWhileAnotherWindowPasses) {
  show("chess");
  wait();
  choose("Off");
  show("");
  parts.scheduler.advance(5ms);
  EXPECT_EQ(activeAfter("chess"), "Off");
}

TEST_F(ProfileFollowingTest, GoesBackToAProfileThatWasChosenWhileNothingWasFollowed) {
  show("editor");
  wait();
  choose("Off");
  EXPECT_EQ(activeAfter("chess"), "Game");
  EXPECT_EQ(activeAfter("editor"), "Off");
}

TEST_F(ProfileFollowingTest, SwitchesOnceForWhatIsInFrontInTheEnd) {
  for (int each = 0; each < 1000; ++each) {
    show(each % 2 == 0 ? "chess" : "paint");
    parts.scheduler.advance(1ms);
  }
  EXPECT_EQ(changes, Texts{});
  wait();
  EXPECT_EQ(changes, Texts{"Draw"});
  EXPECT_EQ(parts.scheduler.pending(), 0U);
}

TEST_F(ProfileFollowingTest, SwitchesWithinAFractionOfItsTime) {
  show("chess");
  parts.scheduler.advance(30ms);
  EXPECT_EQ(active(), "Game");
}

TEST_F(ProfileFollowingTest, WaitsForNothingWhileNothingChanges) {
  show("chess");
  wait();
  show("chess");
  EXPECT_EQ(parts.scheduler.pending(), 0U);
}

TEST_F(ProfileFollowingTest, GoesBackToTheSameProfileWhereverItStands) {
  show("chess");
  wait();
  ask(withReorderedProfiles(bundle(), orderRecord({4, 3, 2, 1, 0}), profileNames(bundle()[keys::Profiles])));
  wait();
  EXPECT_EQ(active(), "Game");
  remove("Off");
  remove("Draw");
  wait();
  EXPECT_EQ(activeAfter("editor"), "Home");
}

TEST_F(ProfileFollowingTest, StaysWhereTheFormerProfileIsGone) {
  show("chess");
  wait();
  remove("Home");
  EXPECT_EQ(activeAfter("editor"), "Game");
  EXPECT_FALSE(isRemembered());
}

TEST_F(ProfileFollowingTest, GoesBackWhereTheProfileOfTheApplicationIsDeleted) {
  show("paint");
  wait();
  remove("Draw");
  wait();
  EXPECT_EQ(active(), "Home");
}

TEST_F(ProfileFollowingTest, GoesBackToAProfileThatWasReplacedByAnotherOfItsName) {
  show("chess");
  wait();
  ask(withReplacedProfiles(
      bundle(), PropertyList::array({profile("Home").with(keys::DPIX, 900), tiedProfile("Game", "chess")}), {}));
  wait();
  EXPECT_EQ(activeAfter("editor"), "Home");
}

TEST_F(ProfileFollowingTest, GoesBackWhenNoProfileFollowsAnyMore) {
  show("paint");
  wait();
  for (const char* name : {"Game", "Again", "Draw"}) {
    update(name, PropertyList::dictionary({{keys::AutoSwitchOn, 0}}));
  }
  EXPECT_FALSE(following->isUsed());
  following->setApplication(std::nullopt);
  wait();
  EXPECT_EQ(active(), "Home");
  EXPECT_FALSE(isRemembered());
}

TEST_F(ProfileFollowingTest, DoesNothingWhileItIsNotKnownWhatIsInFront) {
  show("chess");
  wait();
  following->setApplication(std::nullopt);
  wait();
  EXPECT_EQ(active(), "Game");
}

TEST_F(ProfileFollowingTest, GoesBackAfterTheEngineWasStartedAgain) {
  show("chess");
  wait();
  EXPECT_TRUE(isRemembered());
  begin();
  wait();
  EXPECT_EQ(active(), "Game");
  EXPECT_EQ(activeAfter("chess"), "Game");
  begin();
  EXPECT_EQ(activeAfter("editor"), "Home");
  wait();
  EXPECT_FALSE(isRemembered());
  begin();
  EXPECT_EQ(activeAfter("editor"), "Home");
}

// An engine whose disk is what a crash has left.
std::string activeAfterRestart(const MemoryFileSystem& disk, const std::string& identifier) {
  TestParts parts;
  parts.disk = disk;
  parts.store.load([] { return PropertyList(); });
  SettingsTurns turns{parts.store};
  ProfileChanger changer{parts.store};
  ProfileFollowing following({parts.disk, parts.log, parts.scheduler, parts.store, turns, changer}, "/state",
                             [](const std::string&) { return std::nullopt; });
  following.load();
  following.setApplication(applicationNamed(identifier));
  parts.scheduler.advance(100ms);
  const PropertyList& bundle = parts.store.bundle();
  const std::int64_t active = bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64();
  return bundle[keys::Profiles].at(active)[keys::ProfileName].toString();
}

TEST_F(ProfileFollowingTest, GoesBackWhereverTheEngineIsKilled) {
  int crashes = 0;
  for (bool isCrashed = true; isCrashed; ++crashes) {
    ASSERT_EQ(activeAfter("editor"), "Home");
    const MemoryFileSystem disk = parts.disk;
    show("chess");
    parts.disk.crashAt(crashes + 1);
    isCrashed = false;
    try {
      wait();
    } catch (const MemoryFileSystem::Crash&) {
      isCrashed = true;
      for (const MemoryFileSystem& each : parts.disk.afterCrash()) {
        EXPECT_EQ(activeAfterRestart(each, "editor"), "Home") << "killed at step " << crashes;
        EXPECT_EQ(activeAfterRestart(each, "chess"), "Game") << "killed at step " << crashes;
      }
    }
    parts.disk = disk;
    parts.disk.work();
    parts.scheduler.advance(100ms);
    begin();
  }
  EXPECT_GT(crashes, 8);
}

TEST_F(ProfileFollowingTest, StaysWhereTheDiskTakesNothing) {
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(activeAfter("chess"), "Home");
  parts.disk.work();
  EXPECT_EQ(activeAfter("editor"), "Home");
  EXPECT_EQ(activeAfter("chess"), "Game");
}

TEST_F(ProfileFollowingTest, MindsNoFileThatIsNone) {
  for (const Bytes& contents : {Bytes{}, Bytes{1, 2, 3}, Bytes(100'000, 7)}) {
    parts.disk.put("/state/former-profile.plist", contents);
    begin();
    EXPECT_EQ(activeAfter("editor"), "Home");
    EXPECT_EQ(activeAfter("chess"), "Game");
    EXPECT_EQ(activeAfter(""), "Home");
  }
}

}  // namespace
}  // namespace vorn::engine::test
