// Hears what a person presses on a mouse in order to teach it. One for each node. Pure; one thread at a time.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core-engine/device/linux/KernelEvent.h"
#include "core-engine/device/linux/ReportTranslator.h"
#include "core-engine/device/linux/WheelSteps.h"

namespace vorn::engine {

class PressListener {
 public:
  using Heard = std::function<void(const EventSource& source)>;

  // node: its stable name, as in EventSource.
  PressListener(std::string node, HighResolutionWheels highResolution)
      : mNode(std::move(node)), mVertical(highResolution.vertical), mHorizontal(highResolution.horizontal) {}

  // Tells each press of a key, of a button but the left and the right one, with which a person works the window, each
  // direction of a hat and each step of a wheel. Returns what is left of the report without them, and without the
  // releases of what was heard before. With an empty heard nothing more is heard.
  std::vector<KernelEvent> listen(std::span<const KernelEvent> report, const Heard& heard);

  // Nothing that was heard is still down.
  bool isAtRest() const { return mHeld.empty(); }

 private:
  using Code = std::pair<std::uint16_t, std::uint16_t>;  // type and code

  // Whether the event is kept from everybody else.
  bool take(const KernelEvent& event, const Heard& heard);
  bool takeWheel(const KernelEvent& event, const Heard& heard);

  std::string mNode;
  WheelSteps mVertical;
  WheelSteps mHorizontal;
  std::vector<Code> mHeld;
};

}  // namespace vorn::engine
