// Which control of the mouse (model/Controls.h) an event of the kernel is. It begins as what the identifiers of the
// controls say: a key control is the kernel's key of its HID usage, in whichever node; the wheel's three are the middle
// button and the plain wheel; the diagonals and the fixed keys are nothing that a mouse sends by itself. Teaching puts
// others in their place. What a control sends is told from what every other sends, always. Pure; any thread.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string_view>

#include "core-engine/device/linux/KernelEvent.h"
#include "model/PropertyList.h"

namespace vorn::engine {

// What a control sends whose event this is: of a key its press and its release alike, of a wheel a turn of either kind,
// of a hat its leaving the middle. Nothing for any other event, which no control is.
std::optional<EventSource> sourceOfEvent(std::string_view node, const KernelEvent& event);

class ControlMap {
 public:
  static constexpr std::size_t maximumNodeLength = 256;  // bytes

  // From now on the control sends this and nothing else. A control that was taught the same, or that in another node,
  // when one of the two is whichever node, is as if it had never been taught; one that sends it by itself sends nothing
  // until this one is taught another or forgotten. False, and nothing changed, for what is no control nor fixed key, or
  // no source (a key from 1 to KEY_MAX, a wheel's or a hat's direction; a node's name up to maximumNodeLength).
  bool teach(std::string_view control, const EventSource& source);
  // The control sends again what it did before it was taught. One that was not taught stays as it is.
  void forget(std::string_view control);
  void forgetAll() { mTaught.clear(); }

  // The identifier of the control that sends this; empty when none does. Valid for the whole run.
  std::string_view controlOf(std::string_view node, const KernelEvent& event) const;
  // Nothing for a control that sends nothing, and for what is no control.
  std::optional<EventSource> sourceOf(std::string_view control) const;
  // By another source than the one that it has by itself, in whichever node.
  bool isTaught(std::string_view control) const;

  // What was taught, as it is stored: by the controls, dictionaries with "node", "type", "code" and "direction". What
  // cannot be one reads as nothing taught.
  PropertyList record() const;
  static ControlMap fromRecord(const PropertyList& record);

  friend bool operator==(const ControlMap&, const ControlMap&) = default;

 private:
  std::map<std::string_view, EventSource> mTaught;  // by identifiers that last for the whole run
};

}  // namespace vorn::engine
