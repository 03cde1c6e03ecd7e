// What happens in any order, beside a simple model of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/focus/FocusFixture.h"
#include "core-engine/focus/ProfileFollowing.h"
#include "core-engine/rules/ProfileRules.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;

const std::vector<std::string> applications = {"", "chess", "paint", "mail"};

// Everything by name.
struct Model {
  struct Profile {
    std::string name;
    std::string application;
    bool isOn = false;
  };

  std::vector<Profile> profiles;
  std::string active;
  std::string former{};
  std::optional<std::string> front{};
  std::optional<std::string> chosenIn{};

  bool isUsed() const {
    return std::any_of(profiles.begin(), profiles.end(), [](const Profile& each) { return fits(each); });
  }
  static bool fits(const Profile& profile) { return profile.isOn && !profile.application.empty(); }
  auto find(const std::string& name) {
    return std::find_if(profiles.begin(), profiles.end(), [&](const Profile& each) { return each.name == name; });
  }
  std::string choice() {
    const auto asksFor = [this](const Profile& each) { return fits(each) && each.application == front; };
    if (asksFor(*find(active))) return active;
    const auto found = std::find_if(profiles.begin(), profiles.end(), asksFor);
    return found == profiles.end() ? "" : found->name;
  }

  void choose(const std::string& name) {
    if (name == active) return;
    active = name;
    chosenIn = front;
    if (!isUsed() || former == active) former.clear();
    noteUse();
  }
  // While nothing is used, nobody knows what is in front.
  void noteUse() {
    if (isUsed()) return;
    front.reset();
    if (former.empty()) chosenIn.reset();
  }
  void remove(const std::string& name) {
    const auto gone = find(name);
    const std::string before = gone == profiles.begin() ? std::next(gone)->name : std::prev(gone)->name;
    profiles.erase(gone);
    if (former == name) former.clear();
    if (active == name) active = before;
    if (former == active) former.clear();
    noteUse();
  }
  // What is in front has been so for a while.
  void settle() {
    if (isUsed() && !front) return;
    if (chosenIn && (!isUsed() || chosenIn == front)) {
      if (!isUsed()) former.clear();
    } else {
      chosenIn.reset();
      const std::string chosen = isUsed() ? choice() : "";
      if (!chosen.empty()) {
        if (chosen != active && former.empty()) former = active;
        active = chosen;
      } else if (!former.empty()) {
        active = former;
      }
      if (former == active) former.clear();
    }
    if (!isUsed()) chosenIn.reset();
  }
};

class ProfileFollowingRandomTest : public testing::TestWithParam<unsigned> {
 protected:
  ProfileFollowingRandomTest() {
    parts.store.setChangeHandler([this](const PropertyList& before, const PropertyList& after, const ChangeOrigin&) {
      following->settingsChanged(before, after);
      if (!following->isUsed()) following->setApplication(std::nullopt);
    });
    begin();
  }

  int number(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
  std::string anyProfile() {
    return model.profiles[static_cast<std::size_t>(number(static_cast<int>(model.profiles.size())))].name;
  }

  void begin() {
    following.reset();
    following.emplace(ProfileFollowing::Parts{parts.disk, parts.log, parts.scheduler, parts.store, turns, changer},
                      "/state", [](const std::string&) { return std::nullopt; });
    following->load();
    model.front.reset();
    model.chosenIn.reset();
  }
  const PropertyList& bundle() const { return parts.store.bundle(); }
  std::int64_t positionOf(const std::string& name) { return model.find(name) - model.profiles.begin(); }
  void ask(const ProfileChange& change) {
    ASSERT_TRUE(change.bundle);
    parts.store.put(change.bundle, [](SettingsStore::Outcome) {}, {.kind = ChangeOrigin::Kind::Request});
  }

  void step() {
    switch (number(12)) {
      case 0:
        if (model.profiles.size() > 1) {
          const std::string gone = anyProfile();
          ask(withoutProfile(bundle(), positionOf(gone)));
          model.remove(gone);
        }
        break;
      case 1:
        reorder();
        break;
      case 2:
        toggle();
        break;
      case 3:
        add();
        break;
      case 4:
      case 5: {
        const std::string chosen = anyProfile();
        ask(withActiveProfile(bundle(), positionOf(chosen)));
        model.choose(chosen);
        break;
      }
      case 6:
        settle();
        begin();
        break;
      case 7:
        settle();
        break;
      case 8:
        parts.scheduler.advance(1ms);
        break;
      default:
        show();
    }
  }
  void reorder() {
    ProfileOrder order(model.profiles.size());
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), random);
    ask(withReorderedProfiles(bundle(), orderRecord(order), profileNames(bundle()[keys::Profiles])));
    std::vector<Model::Profile> ordered;
    for (const std::size_t each : order) ordered.push_back(model.profiles[each]);
    model.profiles = std::move(ordered);
  }
  void toggle() {
    auto changed = model.find(anyProfile());
    changed->isOn = !changed->isOn;
    ask(withUpdatedProfile(bundle(), positionOf(changed->name),
                           PropertyList::dictionary({{keys::AutoSwitchOn, changed->isOn}})));
    model.noteUse();
  }
  void add() {
    if (model.profiles.size() >= 5) return;
    const std::string& application = applications[static_cast<std::size_t>(number(4))];
    const std::string name = "Profile " + std::to_string(++names);
    ask(withAddedProfile(bundle(), tiedProfile(name, application), profile("Factory")));
    model.profiles.push_back({name, application, true});
  }
  void show() {
    if (!model.isUsed()) return;
    model.front = applications[static_cast<std::size_t>(number(4))];
    following->setApplication(applicationNamed(*model.front));
  }
  void settle() {
    parts.scheduler.advance(100ms);
    model.settle();
    const std::int64_t active = bundle()[keys::DeviceSettings][keys::ActiveProfile].toInt64();
    ASSERT_EQ(bundle()[keys::Profiles].at(active)[keys::ProfileName].string(), model.active);
    ASSERT_EQ(following->isUsed(), model.isUsed());
    const auto stored = parts.disk.contents("/state/former-profile.plist");
    ASSERT_EQ(stored.has_value(), !model.former.empty()) << model.former;
  }

  std::mt19937 random{GetParam()};
  TestParts parts{bundleOf({profile("Home"), tiedProfile("Game", "chess"), tiedProfile("Draw", "paint", false)})};
  SettingsTurns turns{parts.store};
  ProfileChanger changer{parts.store};
  std::optional<ProfileFollowing> following;
  Model model{{{"Home", "", false}, {"Game", "chess", true}, {"Draw", "paint", false}}, "Home"};
  int names = 0;
};

TEST_P(ProfileFollowingRandomTest, FollowsAsTheModelDoes) {
  for (int each = 0; each < 500 && !HasFatalFailure(); ++each) {
    SCOPED_TRACE("step " + std::to_string(each));
    step();
    if (each % 8 == 7) settle();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ProfileFollowingRandomTest, testing::Range(1U, 9U));

}  // namespace
}  // namespace vorn::engine::test
