// Reports and changes of the rules at random, beside a model that knows of each key only where its press went.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core-engine/device/linux/KernelEvents.h"
#include "core-engine/device/linux/ReportTranslator.h"

namespace vorn::engine::test {
namespace {

constexpr std::array<std::uint16_t, 6> keyCodes = {KEY_A, KEY_Q, KEY_TAB, KEY_1, BTN_LEFT, BTN_MIDDLE};
constexpr std::array<std::string_view, 5> keyControls = {"4", "20", "43", "03", "stage-up"};
constexpr std::array<std::string_view, 4> wheelControls = {"06", "07", "keymap", "235"};
constexpr std::array<std::string_view, 2> hatControls = {"232", "234"};
constexpr std::int32_t ownResolution = 800;

// What is on the other side: it takes what a desktop and an engine would take, and fails for what they must not get.
class Receiver {
 public:
  // hasScanCodes: each key stands behind its own, which is its number.
  void take(const TranslatedEvents& events, bool hasScanCodes) {
    for (const TranslatedEvent& event : events) {
      if (const auto* passed = std::get_if<KernelEvent>(&event))
        take(*passed, hasScanCodes);
      else
        take(std::get<ControlChanged>(event));
    }
    EXPECT_FALSE(isOpen) << "what passed has no end";
  }

  std::set<std::uint16_t> keys;               // that are down on the desktop
  int hatPosition = 0;                        // there
  std::map<std::uint16_t, std::int64_t> far;  // by the codes of EV_REL
  std::set<std::string> controls;             // that the engine was told of as pressed
  std::map<std::string, int> presses;         // of these
  int keyPresses = 0;

 private:
  void take(const KernelEvent& event, bool hasScanCodes) {
    if (event == endOfReport) {
      EXPECT_TRUE(isOpen) << "an end of nothing";
      isOpen = false;
      return;
    }
    isOpen = true;
    if (event.type == EV_KEY) {
      EXPECT_TRUE(event.value == 1 ? keys.insert(event.code).second : event.value == 0 && keys.erase(event.code) == 1)
          << testing::PrintToString(event);
      if (event.value == 1) ++keyPresses;
      const std::int32_t scanCode = std::exchange(scanned, 0);
      EXPECT_EQ(scanCode, hasScanCodes ? event.code : 0);
      return;
    }
    EXPECT_EQ(scanned, 0) << "the scan code of a key that does not follow";
    if (event.type == EV_MSC) scanned = event.value;
    if (event.type == EV_ABS) {
      EXPECT_NE(std::exchange(hatPosition, event.value), event.value);
    }
    if (event.type == EV_REL) far[event.code] += event.value;
  }
  void take(const ControlChanged& change) {
    EXPECT_FALSE(isOpen) << "a control in the middle of what passes";
    EXPECT_TRUE(change.isPressed ? controls.insert(change.control).second : controls.erase(change.control) == 1)
        << testing::PrintToString(change);
    if (change.isPressed) ++presses[change.control];
  }

  bool isOpen = false;
  std::int32_t scanned = 0;
};

// A wheel of the kernel, which tells of its turns in steps what its 120ths make, and what has to become of them.
class ModelWheel {
 public:
  ModelWheel(std::uint16_t plain, std::uint16_t fine) : passed{{plain, 0}, {fine, 0}}, mPlain(plain), mFine(fine) {}

  void turn(std::int32_t part, const std::string& control, std::vector<KernelEvent>& report) {
    mTurned += part;
    const std::int32_t steps = mTurned / highResolutionStep;
    mTurned %= highResolutionStep;
    if (steps != 0) report.push_back(motion(mPlain, steps));
    report.push_back(motion(mFine, part));
    if (control.empty()) {
      mRest = 0;
      passed[mPlain] += steps;
      passed[mFine] += part;
      return;
    }
    if ((mRest < 0) != (part < 0)) mRest = 0;
    mRest += part;
    presses[control] += std::abs(mRest / highResolutionStep);
    mRest %= highResolutionStep;
  }
  void drop() { mRest = 0; }

  std::map<std::uint16_t, std::int64_t> passed;
  std::map<std::string, int> presses;

 private:
  std::uint16_t mPlain, mFine;
  std::int32_t mTurned = 0;
  std::int32_t mRest = 0;
};

// With a seed, and whether the wheels stop between steps.
class ReportTranslatorRandomTest : public testing::TestWithParam<std::tuple<unsigned, bool>> {
 protected:
  void changeRules() {
    rules.taken.clear();
    for (const auto& control : keyControls) takeAtRandom(control);
    for (const auto& control : wheelControls) takeAtRandom(control);
    for (const auto& control : hatControls) takeAtRandom(control);
    teach(keyControls, keySource(random.of(keyCodes)));
    const std::int8_t direction = random.oneIn(2) ? 1 : -1;
    teach(wheelControls, wheelSource(random.oneIn(2) ? REL_WHEEL : REL_HWHEEL, direction));
    teach(hatControls, {{}, EV_ABS, ABS_HAT0X, direction});
    rules.scale = {{random.number(1, 799), ownResolution}, {random.number(801, 20'000), ownResolution}};
  }
  void takeAtRandom(std::string_view control) {
    if (random.oneIn(2)) rules.taken.emplace(control);
  }
  template <typename Controls>
  void teach(const Controls& controls, EventSource source) {
    if (random.oneIn(2)) source.node = random.oneIn(4) ? keyboardNode : pointerNode;
    const std::string_view control = random.of(controls);
    if (random.oneIn(3)) return rules.map.forget(control);
    EXPECT_TRUE(rules.map.teach(control, source));
  }
  // Empty for what passes.
  std::string takenBy(const KernelEvent& event) const {
    const std::string control(rules.map.controlOf(pointerNode, event));
    return rules.taken.contains(control) ? control : "";
  }

  void addKey(std::vector<KernelEvent>& report) {
    const KernelEvent event = key(random.of(keyCodes), random.number(0, 2));
    if (event.value != 2) report.push_back(scanCode(event.code));
    report.push_back(event);
    if (event.value == 0) keys.erase(event.code);
    if (event.value != 1 || keys.contains(event.code)) return;
    keys[event.code] = takenBy(event);
    if (keys[event.code].empty()) ++keyPresses;
  }
  void addHat(std::vector<KernelEvent>& report) {
    const KernelEvent event = hat(ABS_HAT0X, random.number(-1, 1));
    report.push_back(event);
    if (std::exchange(hatPosition, event.value) != event.value) hatControl = takenBy(event);
  }
  void addWheel(ModelWheel& wheel, std::uint16_t code, std::vector<KernelEvent>& report) {
    const int most = areFine ? 300 : 3;
    std::int32_t part = random.number(1, most) * (random.oneIn(2) ? 1 : -1);
    if (!areFine) part *= highResolutionStep;
    wheel.turn(part, takenBy(motion(code, part)), report);
  }
  void addMotion(std::vector<KernelEvent>& report) {
    report.push_back(motion(REL_X, random.number(-127, 127)));
    movedX += std::int64_t{report.back().value} * rules.scale.x.wanted;
    report.push_back(motion(REL_Y, random.number(-127, 127)));
    movedY += std::int64_t{report.back().value} * rules.scale.y.wanted;
  }

  void report() {
    std::vector<KernelEvent> events;
    while (random.oneIn(2)) addKey(events);
    if (random.oneIn(4)) addHat(events);
    if (random.oneIn(2)) addMotion(events);
    if (random.oneIn(3)) addWheel(vertical, REL_WHEEL, events);
    if (random.oneIn(3)) addWheel(horizontal, REL_HWHEEL, events);
    events.push_back(endOfReport);
    receiver.take(translator.translate(events, rules), true);
  }
  void releaseAll() {
    receiver.take(translator.releaseAll(), false);
    keys.clear();
    hatPosition = 0;
    hatControl.clear();
    vertical.drop();
    horizontal.drop();
    EXPECT_TRUE(translator.isAtRest());
  }

  void compare() {
    std::set<std::uint16_t> passed;
    std::set<std::string> controls;
    for (const auto& [code, control] : keys)
      control.empty() ? void(passed.insert(code)) : void(controls.insert(control));
    if (!hatControl.empty()) controls.insert(hatControl);
    EXPECT_EQ(receiver.keys, passed);
    EXPECT_EQ(receiver.keyPresses, keyPresses);
    EXPECT_EQ(receiver.controls, controls);
    EXPECT_EQ(receiver.hatPosition, hatControl.empty() ? hatPosition : 0);
    EXPECT_EQ(receiver.far[REL_X], movedX / ownResolution);
    EXPECT_EQ(receiver.far[REL_Y], movedY / ownResolution);
    for (const ModelWheel& wheel : {vertical, horizontal}) {
      for (const auto& [code, far] : wheel.passed) EXPECT_EQ(receiver.far[code], far) << code;
    }
    for (const auto& each : wheelControls) {
      const std::string control(each);
      EXPECT_EQ(receiver.presses[control], vertical.presses[control] + horizontal.presses[control]) << control;
    }
    if (areFine) return;
    EXPECT_EQ(receiver.far[REL_WHEEL_HI_RES], receiver.far[REL_WHEEL] * highResolutionStep);
    EXPECT_EQ(receiver.far[REL_HWHEEL_HI_RES], receiver.far[REL_HWHEEL] * highResolutionStep);
  }

  bool areFine = std::get<1>(GetParam());
  Random random{std::get<0>(GetParam())};
  TranslationRules rules;
  ReportTranslator translator{std::string(pointerNode), {.vertical = true, .horizontal = true}};
  Receiver receiver;

  std::map<std::uint16_t, std::string> keys;  // that are down, and the control of each; empty where it passed
  int keyPresses = 0;                         // that passed
  int hatPosition = 0;
  std::string hatControl;
  std::int64_t movedX = 0, movedY = 0;  // times ownResolution
  ModelWheel vertical{REL_WHEEL, REL_WHEEL_HI_RES};
  ModelWheel horizontal{REL_HWHEEL, REL_HWHEEL_HI_RES};
};

TEST_P(ReportTranslatorRandomTest, LosesNothingAndInventsNothing) {
  changeRules();
  for (int round = 0; round < 10'000; ++round) {
    report();
    if (random.oneIn(5)) changeRules();
    if (random.oneIn(100)) releaseAll();
    compare();
    if (HasFailure()) FAIL() << "round " << round;
  }
  releaseAll();
  compare();
  EXPECT_EQ(receiver.keys, std::set<std::uint16_t>());
  EXPECT_EQ(receiver.controls, std::set<std::string>());
  for (const auto& control : keyControls) EXPECT_GT(receiver.presses[std::string(control)], 20) << control;
  for (const auto& control : wheelControls) EXPECT_GT(receiver.presses[std::string(control)], 100) << control;
  for (const auto& control : hatControls) EXPECT_GT(receiver.presses[std::string(control)], 20) << control;
  EXPECT_GT(receiver.keyPresses, 1'000);
}

INSTANTIATE_TEST_SUITE_P(OfTheSeed, ReportTranslatorRandomTest,
                         testing::Combine(testing::Values(1U, 2U, 3U), testing::Bool()));

}  // namespace
}  // namespace vorn::engine::test
