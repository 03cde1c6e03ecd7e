// Which nodes of a mouse the engine has to take from the desktop. Pure; any thread.
#pragma once

#include "core-engine/device/DeviceValues.h"
#include "core-engine/device/linux/ControlMap.h"
#include "core-engine/device/linux/MotionScaler.h"
#include "mice/MouseFinder.h"

namespace vorn::engine {

// The node has the key, button, wheel or hat.
bool canSend(const MouseNode& node, const EventSource& source);
// Of the controls and the fixed keys those that the node sends by this map.
ControlSet controlsOf(const MouseNode& node, const ControlMap& map);
// The controls and fixed keys that were taught something.
ControlSet taughtControls(const ControlMap& map);

// Whether the node tells of a control of these, or moves the pointer in another scale than it should.
bool isToBeTaken(const MouseNode& node, const ControlMap& map, const ControlSet& controls, const MotionScale& scale);

}  // namespace vorn::engine
