#include "core-engine/device/linux/NodeChoice.h"

#include <string_view>
#include <vector>

#include "model/Controls.h"

namespace vorn::engine {

namespace {

// The controls and the fixed keys that the predicate holds for.
template <typename Predicate>
ControlSet chosen(Predicate predicate) {
  ControlSet result;
  const auto add = [&](std::string_view identifier) {
    if (predicate(identifier)) result.emplace(identifier);
  };
  for (const Control& control : controls) add(control.identifier);
  for (const std::string_view key : fixedKeys) add(key);
  return result;
}

bool sends(const MouseNode& node, const ControlMap& map, std::string_view control) {
  const auto source = map.sourceOf(control);
  return source && canSend(node, *source);
}

}  // namespace

bool canSend(const MouseNode& node, const EventSource& source) {
  return (source.node.empty() || source.node == node.name) && node.codes.has(source.type, source.code);
}

ControlSet controlsOf(const MouseNode& node, const ControlMap& map) {
  return chosen([&](std::string_view control) { return sends(node, map, control); });
}

ControlSet taughtControls(const ControlMap& map) {
  return chosen([&map](std::string_view control) { return map.isTaught(control); });
}

bool isToBeTaken(const MouseNode& node, const ControlMap& map, const ControlSet& controls, const MotionScale& scale) {
  for (const std::string& control : controls) {
    if (sends(node, map, control)) return true;
  }
  return (node.codes.relative[REL_X] && !scale.x.isIdentity()) || (node.codes.relative[REL_Y] && !scale.y.isIdentity());
}

}  // namespace vorn::engine
