#include "core-engine/device/linux/ReportTranslator.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace vorn::engine {

class ReportTranslator::Output {
 public:
  // Waits for what follows.
  void hold(const KernelEvent& scanCode) {
    passHeld();
    mScanCode = scanCode;
  }
  void dropHeld() { mScanCode.reset(); }
  void passHeld() {
    if (const auto scanCode = std::exchange(mScanCode, std::nullopt)) pass(*scanCode);
  }

  void pass(const KernelEvent& event) {
    passHeld();
    mEvents.emplace_back(event);
    mIsOpen = true;
  }
  void tell(std::string_view control, bool isPressed) {
    close();
    mEvents.emplace_back(ControlChanged{std::string(control), isPressed});
  }
  TranslatedEvents finish() {
    passHeld();
    close();
    return std::move(mEvents);
  }

 private:
  void close() {
    if (std::exchange(mIsOpen, false)) mEvents.emplace_back(KernelEvent{EV_SYN, SYN_REPORT, 0});
  }

  TranslatedEvents mEvents;
  std::optional<KernelEvent> mScanCode;
  bool mIsOpen = false;
};

ReportTranslator::ReportTranslator(std::string node, HighResolutionWheels highResolution)
    : mNode(std::move(node)), mVertical(highResolution.vertical), mHorizontal(highResolution.horizontal) {}

TranslatedEvents ReportTranslator::translate(std::span<const KernelEvent> report, const TranslationRules& rules) {
  mScaler.setScale(rules.scale);
  Output output;
  for (const KernelEvent& event : report) translate(event, rules, output);
  return output.finish();
}

TranslatedEvents ReportTranslator::releaseAll() {
  Output output;
  while (!mHeld.empty()) release(std::prev(mHeld.end()), output);
  mVertical.drop();
  mHorizontal.drop();
  return output.finish();
}

void ReportTranslator::translate(const KernelEvent& event, const TranslationRules& rules, Output& output) {
  if (event.type == EV_KEY) return translateKey(event, rules, output);
  if (event.type == EV_MSC && event.code == MSC_SCAN) return output.hold(event);
  output.passHeld();
  if (isWheel(event)) return translateWheel(event, rules, output);
  if (isHat(event)) return translateHat(event, rules, output);
  if (event.type == EV_REL && (event.code == REL_X || event.code == REL_Y)) return translateMotion(event, output);
  const bool isEnd = event.type == EV_SYN && (event.code == SYN_REPORT || event.code == SYN_DROPPED);
  if (!isEnd) output.pass(event);
}

void ReportTranslator::translateKey(const KernelEvent& event, const TranslationRules& rules, Output& output) {
  constexpr std::int32_t repeat = 2;
  const auto held = heldOf(event);
  const bool wasDown = held != mHeld.end();
  const bool isDown = event.value != 0;
  if (event.value == repeat || isDown == wasDown) return output.dropHeld();
  if (isDown) return press(event, rules, output);
  if (!held->control.empty()) output.dropHeld();
  release(held, output);
}

void ReportTranslator::translateHat(const KernelEvent& event, const TranslationRules& rules, Output& output) {
  const auto held = heldOf(event);
  const std::int8_t direction = directionOf(event.value);
  if (held == mHeld.end()) {
    if (direction != 0) press(event, rules, output);
    return;
  }
  if (held->direction == direction) return;
  const bool staysOnDesktop = held->control.empty() && direction != 0 && takenControl(event, rules).empty();
  if (staysOnDesktop)
    mHeld.erase(held);
  else
    release(held, output);
  if (direction != 0) press(event, rules, output);
}

void ReportTranslator::translateWheel(const KernelEvent& event, const TranslationRules& rules, Output& output) {
  const bool isVertical = event.code == REL_WHEEL || event.code == REL_WHEEL_HI_RES;
  WheelSteps& steps = isVertical ? mVertical : mHorizontal;
  const std::string_view control = takenControl(event, rules);
  if (control.empty()) {
    steps.drop();
    return output.pass(event);
  }
  const std::int32_t count = steps.take(event);
  if (isHeld(control)) return;
  for (std::int32_t step = 0; step < count; ++step) {
    output.tell(control, true);
    output.tell(control, false);
  }
}

void ReportTranslator::translateMotion(const KernelEvent& event, Output& output) {
  const std::int32_t counts = event.code == REL_X ? mScaler.scaledX(event.value) : mScaler.scaledY(event.value);
  if (counts != 0) output.pass({event.type, event.code, counts});
}

std::string_view ReportTranslator::takenControl(const KernelEvent& event, const TranslationRules& rules) const {
  const std::string_view control = rules.map.controlOf(mNode, event);
  return rules.taken.contains(control) ? control : std::string_view();
}

std::vector<ReportTranslator::Held>::iterator ReportTranslator::heldOf(const KernelEvent& event) {
  return std::find_if(mHeld.begin(), mHeld.end(),
                      [&event](const Held& held) { return held.type == event.type && held.code == event.code; });
}

bool ReportTranslator::isHeld(std::string_view control) const {
  return std::any_of(mHeld.begin(), mHeld.end(), [control](const Held& held) { return held.control == control; });
}

void ReportTranslator::press(const KernelEvent& event, const TranslationRules& rules, Output& output) {
  const std::string_view control = takenControl(event, rules);
  const bool isNew = !isHeld(control);
  mHeld.push_back({event.type, event.code, event.type == EV_ABS ? directionOf(event.value) : std::int8_t{0}, control});
  if (control.empty()) return output.pass(event);
  output.dropHeld();
  if (isNew) output.tell(control, true);
}

void ReportTranslator::release(std::vector<Held>::iterator held, Output& output) {
  const Held released = *held;
  mHeld.erase(held);
  if (released.control.empty()) return output.pass({released.type, released.code, 0});
  if (!isHeld(released.control)) output.tell(released.control, false);
}

}  // namespace vorn::engine
