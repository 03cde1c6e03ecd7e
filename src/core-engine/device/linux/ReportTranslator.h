// What becomes of the reports of one event node that the engine has to itself: controls that the engine plays are told,
// and all else passes to the desktop as it came. One for each node of the mouse, since what is held down, the rests of
// motion and the parts of wheel steps are the node's own. Pure, no system calls; one thread at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core-engine/device/Device.h"
#include "core-engine/device/linux/ControlMap.h"
#include "core-engine/device/linux/KernelEvent.h"
#include "core-engine/device/linux/MotionScaler.h"
#include "core-engine/device/linux/WheelSteps.h"

namespace vorn::engine {

struct TranslationRules {
  ControlMap map;
  // The controls that the engine plays: those whose assignment is not what the mouse does by itself, and those that are
  // taught.
  ControlSet taken;
  MotionScale scale;
  friend bool operator==(const TranslationRules&, const TranslationRules&) = default;
};

// Which wheels the node tells of in high resolution, too: REL_WHEEL_HI_RES and REL_HWHEEL_HI_RES.
struct HighResolutionWheels {
  bool vertical = false;
  bool horizontal = false;
};

// To be written to the desktop's copy of the node, or to be handled by the engine.
using TranslatedEvent = std::variant<KernelEvent, ControlChanged>;
using TranslatedEvents = std::vector<TranslatedEvent>;

class ReportTranslator {
 public:
  // node: its stable name, as in EventSource.
  ReportTranslator(std::string node, HighResolutionWheels highResolution);

  // report: the events up to SYN_REPORT, with or without it. What becomes of it, in its order; behind what passes
  // stands a SYN_REPORT, before the next control and at the end, and none where nothing passes.
  //
  // The rules of a press hold until its release, whatever changes in between. A press of what is down and a release of
  // what is up become nothing. A control is told as pressed and as released once, also where two keys hold it in turn.
  //
  // The kernel's own repeats of a held key (value 2) never pass: the desktop repeats by itself. A scan code (MSC_SCAN)
  // shares the fate of the key behind it, which is its key.
  //
  // A step of a wheel in a taken direction is a press and a release; what the wheel tells of the other direction passes
  // in both kinds. A hat that goes straight from a direction that passed to one that is taken is let go of on the
  // desktop.
  //
  // REL_X and REL_Y are scaled; a motion of less than one count waits for the next.
  TranslatedEvents translate(std::span<const KernelEvent> report, const TranslationRules& rules);

  // The releases of all that is down, the last press first, for a node that goes or is given back to the desktop; parts
  // of wheel steps are dropped. What comes up later becomes nothing.
  TranslatedEvents releaseAll();

  // Nothing is down as far as the reports tell: the node can be taken from the desktop, or given back to it, and
  // nothing stays pressed there.
  bool isAtRest() const { return mHeld.empty(); }

 private:
  // A key that is down or a hat that is out of its middle.
  struct Held {
    std::uint16_t type = 0;
    std::uint16_t code = 0;
    std::int8_t direction = 0;  // of a hat
    std::string_view control;   // that was told of; empty: it passed
  };
  class Output;

  void translate(const KernelEvent& event, const TranslationRules& rules, Output& output);
  void translateKey(const KernelEvent& event, const TranslationRules& rules, Output& output);
  void translateHat(const KernelEvent& event, const TranslationRules& rules, Output& output);
  void translateWheel(const KernelEvent& event, const TranslationRules& rules, Output& output);
  void translateMotion(const KernelEvent& event, Output& output);

  std::string_view takenControl(const KernelEvent& event, const TranslationRules& rules) const;
  std::vector<Held>::iterator heldOf(const KernelEvent& event);
  bool isHeld(std::string_view control) const;
  void press(const KernelEvent& event, const TranslationRules& rules, Output& output);
  void release(std::vector<Held>::iterator held, Output& output);

  std::string mNode;
  WheelSteps mVertical;
  WheelSteps mHorizontal;
  MotionScaler mScaler;
  std::vector<Held> mHeld;  // in the order of the presses
};

}  // namespace vorn::engine
