#include "core-engine/news/ScreenMessages.h"

#include <gtest/gtest.h>

#include <cctype>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core-engine/TestBundle.h"
#include "core-engine/device/VirtualDevice.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

inline std::ostream& operator<<(std::ostream& stream, const ScreenMessage& message) {
  return stream << (message.kind == ScreenMessage::Kind::Warning ? "! " : "") << message.title << " / " << message.text;
}

namespace test {
namespace {

using Messages = std::vector<ScreenMessage>;
using Kind = ChangeOrigin::Kind;

class RecordingScreen : public MessageScreen {
 public:
  Messages shown;
  void show(const ScreenMessage& message) override { shown.push_back(message); }
};

ScreenMessage told(const std::string& title, const std::string& text = {}) {
  return {ScreenMessage::Kind::Change, title, text};
}
ScreenMessage batteryAt(int percent) {
  return {ScreenMessage::Kind::Warning, "The battery of the mouse is low", std::to_string(percent) + "% left"};
}

PropertyList stage(int x, int y) {
  return PropertyList::dictionary({{"dpix", x}, {"dpiy", y}, {"independentxy", x == y ? 0 : 1}});
}

PropertyList withSensitivity(const PropertyList& profile, int x, int y, int stage) {
  return profile.with("DPIX", x).with("DPIY", y).with("StageValue", stage);
}

// A profile of three stages, of which the second is in force.
PropertyList staged(std::string_view name) {
  const PropertyList stages = PropertyList::array({stage(400, 400), stage(1800, 1800), stage(3200, 1600)});
  return withSensitivity(profile(name).with("Stages", stages).with("SensitivityOSDOn", 1), 1800, 1800, 1);
}

PropertyList bundleWith(std::vector<PropertyList> profiles, int active, bool isProfileTold = true, int critical = 2) {
  return bundleOf(std::move(profiles))
      .with("DeviceSettings", PropertyList::dictionary({{"ActiveProfile", active},
                                                        {"ProfileOSDOn", isProfileTold ? 1 : 0},
                                                        {"BatteryCriticalLevel", critical}}));
}

PropertyList two(int active, bool isProfileTold = true) {
  return bundleWith({staged("One"), staged("Two")}, active, isProfileTold);
}
PropertyList one(const PropertyList& profile) {
  return bundleWith({profile}, 0);
}

ChangeOrigin requestOf(const std::string& sourceApp) {
  return {Kind::Request, ":1.5", sourceApp, MessageID::SwitchProfile};
}

class ScreenMessagesTest : public testing::Test {
 protected:
  Messages afterChange(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin = {}) {
    messages.settingsChanged(before, after, origin);
    return std::exchange(screen.shown, {});
  }
  Messages afterBattery(const PropertyList& bundle = two(0)) {
    messages.batteryChanged(bundle);
    return std::exchange(screen.shown, {});
  }
  Messages at(int percent) {
    device.setBattery(percent);
    return afterBattery();
  }

  VirtualDevice device{Device::Connection::Wireless};
  RecordingScreen screen;
  ScreenMessages messages{device, screen, screenTextsFor("en")};
};

TEST_F(ScreenMessagesTest, TellTheProfileThatTheMouseSwitchesTo) {
  EXPECT_EQ(afterChange(two(0), two(1)), Messages{told("Profile: Two")});
}

TEST_F(ScreenMessagesTest, TellTheProfileThatAnotherProgramSwitchesTo) {
  EXPECT_EQ(afterChange(two(1), two(0), requestOf("org.example.Macros")), Messages{told("Profile: One")});
  EXPECT_EQ(afterChange(two(1), two(0), requestOf("")), Messages{told("Profile: One")});
}

TEST_F(ScreenMessagesTest, TellNothingThatThePersonAtTheWindowHasDone) {
  const ChangeOrigin window = requestOf("org.vorn.SkarnConfigurator");
  EXPECT_EQ(afterChange(two(0), two(1), window), Messages{});
  EXPECT_EQ(afterChange(one(staged("One")), one(withSensitivity(staged("One"), 400, 400, 0)), window), Messages{});
}

TEST_F(ScreenMessagesTest, TellNothingThatIsTakenBack) {
  EXPECT_EQ(afterChange(two(0), two(1), {Kind::History}), Messages{});
}

// Profiles go on following applications; who has left the mouse at home need not read of each.
TEST_F(ScreenMessagesTest, TellNothingOfAMouseThatIsNotThere) {
  device.setConnection(Device::Connection::Absent);
  EXPECT_EQ(afterChange(two(0), two(1)), Messages{});
  EXPECT_EQ(afterChange(one(staged("One")), one(withSensitivity(staged("One"), 400, 400, 0))), Messages{});
  device.setConnection(Device::Connection::Wireless);
  EXPECT_EQ(afterChange(two(1), two(0)), Messages{told("Profile: One")});
}

TEST_F(ScreenMessagesTest, TellNoProfileWhereThatIsOff) {
  EXPECT_EQ(afterChange(two(0, false), two(1, false)), Messages{});
}

TEST_F(ScreenMessagesTest, TellAProfileOfTheSameName) {
  const auto same = [](int active) { return bundleWith({staged("One"), staged("One")}, active); };
  EXPECT_EQ(afterChange(same(0), same(1)), Messages{told("Profile: One")});
}

TEST_F(ScreenMessagesTest, TellNoProfileThatOnlyMoves) {
  const PropertyList moved = bundleWith({staged("Two"), staged("One")}, 1);
  EXPECT_EQ(afterChange(two(0), moved, requestOf("org.example.Macros")), Messages{});
  EXPECT_EQ(afterChange(two(1), bundleWith({staged("Two")}, 0), requestOf("org.example.Macros")), Messages{});
}

TEST_F(ScreenMessagesTest, TellTheSwitchAloneWhereTheSensitivityChangesWithIt) {
  const auto both = [](int active) {
    return bundleWith({staged("One"), withSensitivity(staged("Two"), 400, 400, 0)}, active);
  };
  EXPECT_EQ(afterChange(both(0), both(1)), Messages{told("Profile: Two")});
}

TEST_F(ScreenMessagesTest, TellANameInOneShortLine) {
  const auto named = [](const std::string& name) {
    const auto with = [&](int active) { return bundleWith({staged("One"), staged(name)}, active); };
    return std::pair(with(0), with(1));
  };
  const auto [before, after] = named("<b>Work</b>\n& \tplay %1\x7f\xff\u202e");
  EXPECT_EQ(afterChange(before, after), Messages{told("Profile: <b>Work</b> &  play %1   ")});
  const auto [beforeLong, afterLong] = named(std::string(79, 'x') + "é" + std::string(1000, 'x'));
  EXPECT_EQ(afterChange(beforeLong, afterLong), Messages{told("Profile: " + std::string(79, 'x') + "…")});
  const auto [beforeFitting, afterFitting] = named(std::string(78, 'x') + "é");
  EXPECT_EQ(afterChange(beforeFitting, afterFitting), Messages{told("Profile: " + std::string(78, 'x') + "é")});
}

TEST_F(ScreenMessagesTest, TellTheSensitivityAndItsStage) {
  const PropertyList before = staged("One");
  EXPECT_EQ(afterChange(one(before), one(withSensitivity(before, 400, 400, 0))),
            Messages{told("Sensitivity: 400 DPI", "Stage 1 of 3")});
  EXPECT_EQ(afterChange(one(before), one(withSensitivity(before, 3200, 1600, 2))),
            Messages{told("Sensitivity: 3200 × 1600 DPI", "Stage 3 of 3")});
}

TEST_F(ScreenMessagesTest, TellTheSensitivityAloneWhereItIsNoStages) {
  const PropertyList before = staged("One");
  EXPECT_EQ(afterChange(one(before), one(withSensitivity(before, 1900, 1900, 1))),
            Messages{told("Sensitivity: 1900 DPI")});
  EXPECT_EQ(afterChange(one(before), one(withSensitivity(before, 400, 400, 7))),
            Messages{told("Sensitivity: 400 DPI")});
}

TEST_F(ScreenMessagesTest, TellNoSensitivityWhereThatIsOff) {
  const PropertyList before = staged("One").with("SensitivityOSDOn", 0);
  EXPECT_EQ(afterChange(one(before), one(withSensitivity(before, 400, 400, 0))), Messages{});
}

TEST_F(ScreenMessagesTest, TellNothingOfOtherChanges) {
  const PropertyList before = staged("One");
  EXPECT_EQ(afterChange(one(before), one(before.with("KeymapID", 3))), Messages{});
  EXPECT_EQ(afterChange(one(before), one(before.with("ProfileName", "Other")), requestOf("org.example.Macros")),
            Messages{});
  // The sensitivity of a profile that is not in force.
  const PropertyList after = bundleWith({staged("One"), withSensitivity(staged("Two"), 400, 400, 0)}, 0);
  EXPECT_EQ(afterChange(two(0), after, requestOf("org.example.Macros")), Messages{});
}

TEST_F(ScreenMessagesTest, TellTheBatteryOnceWhenItFallsToItsLevel) {
  EXPECT_EQ(at(11), Messages{});
  EXPECT_EQ(at(10), Messages{batteryAt(10)});
  EXPECT_EQ(at(9), Messages{});
  EXPECT_EQ(at(3), Messages{});
}

TEST_F(ScreenMessagesTest, TellTheBatteryAgainAfterItWasAbove) {
  EXPECT_EQ(at(8), Messages{batteryAt(8)});
  EXPECT_EQ(at(11), Messages{});
  EXPECT_EQ(at(10), Messages{batteryAt(10)});
}

TEST_F(ScreenMessagesTest, TellTheBatteryAgainAfterItWasCharging) {
  EXPECT_EQ(at(8), Messages{batteryAt(8)});
  device.setConnection(Device::Connection::Wired);
  EXPECT_EQ(afterBattery(), Messages{});
  EXPECT_EQ(at(9), Messages{});
  device.setConnection(Device::Connection::Wireless);
  EXPECT_EQ(afterBattery(), Messages{batteryAt(9)});
}

TEST_F(ScreenMessagesTest, TellTheBatteryOnceThoughTheMouseComesAndGoes) {
  EXPECT_EQ(at(8), Messages{batteryAt(8)});
  device.setConnection(Device::Connection::Absent);
  EXPECT_EQ(afterBattery(), Messages{});
  device.setConnection(Device::Connection::Wireless);
  EXPECT_EQ(afterBattery(), Messages{});
  device.setChargingStatus(ChargingStatus::NoBatteryDisplay);
  EXPECT_EQ(afterBattery(), Messages{});
  device.setChargingStatus(ChargingStatus::OnBattery);
  EXPECT_EQ(afterBattery(), Messages{});
}

TEST_F(ScreenMessagesTest, TellTheBatteryOfAnotherMouse) {
  EXPECT_EQ(at(8), Messages{batteryAt(8)});
  messages.mouseLeaves();
  EXPECT_EQ(afterBattery(), Messages{batteryAt(8)});
}

TEST_F(ScreenMessagesTest, TellNoBatteryWhereNoneIsDisplayed) {
  device.setChargingStatus(ChargingStatus::NoBatteryDisplay);
  EXPECT_EQ(at(1), Messages{});
}

TEST_F(ScreenMessagesTest, TellTheBatteryAtTheLevelOfEachPosition) {
  const std::vector<std::pair<int, int>> levels = {{1, 5}, {2, 10}, {3, 15}, {4, 20}, {5, 25}, {200, 25}};
  for (const auto& level : levels) {
    const PropertyList bundle = bundleWith({staged("One")}, 0, true, level.first);
    device.setBattery(level.second + 1);
    EXPECT_EQ(afterBattery(bundle), Messages{}) << level.first;
    device.setBattery(level.second);
    EXPECT_EQ(afterBattery(bundle), Messages{batteryAt(level.second)}) << level.first;
  }
}

TEST_F(ScreenMessagesTest, TellNoBatteryWithoutALevel) {
  device.setBattery(0);
  EXPECT_EQ(afterBattery(bundleWith({staged("One")}, 0, true, 0)), Messages{});
  EXPECT_EQ(afterBattery(bundleOf({staged("One")})), Messages{});
  EXPECT_EQ(afterBattery({}), Messages{});
}

}  // namespace
}  // namespace test
}  // namespace vorn::engine
