#include "core-engine/device/linux/PressListener.h"

#include <algorithm>

#include "core-engine/device/linux/ControlMap.h"

namespace vorn::engine {

namespace {

bool isForTheWindow(const KernelEvent& event) {
  return event.type == EV_KEY && (event.code == BTN_LEFT || event.code == BTN_RIGHT);
}

}  // namespace

std::vector<KernelEvent> PressListener::listen(std::span<const KernelEvent> report, const Heard& heard) {
  std::vector<KernelEvent> rest;
  for (const KernelEvent& event : report) {
    if (!take(event, heard)) {
      rest.push_back(event);
    } else if (!rest.empty() && rest.back().type == EV_MSC && rest.back().code == MSC_SCAN) {
      rest.pop_back();
    }
  }
  return rest;
}

bool PressListener::take(const KernelEvent& event, const Heard& heard) {
  if (isWheel(event)) return takeWheel(event, heard);
  if ((event.type != EV_KEY && !isHat(event)) || isForTheWindow(event)) return false;
  const Code code{event.type, event.code};
  const auto held = std::find(mHeld.begin(), mHeld.end(), code);
  constexpr std::int32_t repeat = 2;
  const bool isHeld = held != mHeld.end();
  if (event.value == 0) {
    if (isHeld) mHeld.erase(held);
    return isHeld;
  }
  if ((event.type == EV_KEY && event.value == repeat) || !heard) return isHeld;
  const auto source = sourceOfEvent(mNode, event);
  if (!source) return isHeld;
  if (!isHeld) mHeld.push_back(code);
  heard(*source);
  return true;
}

bool PressListener::takeWheel(const KernelEvent& event, const Heard& heard) {
  const bool isVertical = event.code == REL_WHEEL || event.code == REL_WHEEL_HI_RES;
  WheelSteps& steps = isVertical ? mVertical : mHorizontal;
  if (!heard) {
    steps.drop();
    return false;
  }
  const std::int32_t count = steps.take(event);
  const auto source = sourceOfEvent(mNode, event);
  for (std::int32_t step = 0; source && step < count; ++step) heard(*source);
  return true;
}

}  // namespace vorn::engine
