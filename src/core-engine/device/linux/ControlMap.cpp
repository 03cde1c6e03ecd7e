#include "core-engine/device/linux/ControlMap.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "model/Controls.h"
#include "model/KernelKeys.h"

namespace vorn::engine {

namespace {

namespace words {
constexpr std::string_view Node = "node";
constexpr std::string_view Type = "type";
constexpr std::string_view Code = "code";
constexpr std::string_view Direction = "direction";
}  // namespace words

// A source without its node.
struct Signal {
  std::uint16_t type = 0;
  std::uint16_t code = 0;
  std::int8_t direction = 0;
  friend bool operator==(const Signal&, const Signal&) = default;
};

Signal signalOf(const EventSource& source) {
  return {source.type, source.code, source.direction};
}

std::optional<Signal> signalOf(const KernelEvent& event) {
  if (event.type == EV_KEY) return Signal{EV_KEY, event.code, 0};
  const std::int8_t direction = directionOf(event.value);
  if (direction == 0 || !(isWheel(event) || isHat(event))) return std::nullopt;
  if (!isHighResolutionWheel(event)) return Signal{event.type, event.code, direction};
  return Signal{EV_REL, event.code == REL_WHEEL_HI_RES ? std::uint16_t{REL_WHEEL} : std::uint16_t{REL_HWHEEL},
                direction};
}

bool isSource(const EventSource& source) {
  if (source.node.size() > ControlMap::maximumNodeLength) return false;
  if (source.type == EV_KEY) return source.code != KEY_RESERVED && source.code <= KEY_MAX && source.direction == 0;
  const KernelEvent event{source.type, source.code, source.direction};
  return (source.direction == 1 || source.direction == -1) &&
         (isHat(event) || (isWheel(event) && !isHighResolutionWheel(event)));
}

bool overlaps(const EventSource& one, const EventSource& other) {
  return signalOf(one) == signalOf(other) && (one.node == other.node || one.node.empty() || other.node.empty());
}

// What the control sends by itself.
std::optional<Signal> ownSignal(const Control& control) {
  if (control.identifier == wheelButton) return Signal{EV_KEY, BTN_MIDDLE, 0};
  if (isWheelTurn(control.identifier))
    return Signal{EV_REL, REL_WHEEL, control.identifier == wheelUp ? std::int8_t{1} : std::int8_t{-1}};
  if (control.isDiagonal()) return std::nullopt;
  const auto key = kernelKeyOfUsage({hid::keyboardPage, static_cast<hid::Usage>(control.code())});
  return key ? std::optional(Signal{EV_KEY, *key, 0}) : std::nullopt;
}

std::optional<Signal> ownSignal(std::string_view identifier) {
  const Control* control = controlOf(identifier);
  return control != nullptr ? ownSignal(*control) : std::nullopt;
}

// By the controls that send something by themselves.
const std::vector<std::pair<Signal, std::string_view>>& ownSignals() {
  static const auto all = [] {
    std::vector<std::pair<Signal, std::string_view>> signals;
    for (const Control& control : controls) {
      if (const auto signal = ownSignal(control)) signals.emplace_back(*signal, control.identifier);
    }
    return signals;
  }();
  return all;
}

// The same identifier, for the whole run; empty for what is no control nor fixed key.
std::string_view lasting(std::string_view identifier) {
  if (const Control* control = controlOf(identifier)) return control->identifier;
  const auto* const key = std::find(fixedKeys.begin(), fixedKeys.end(), identifier);
  return key != fixedKeys.end() ? *key : std::string_view();
}

// The number, when it is one of this type.
template <typename Number>
std::optional<Number> numberOf(const PropertyList& value) {
  if (value.type() != PropertyList::Type::Integer || !std::in_range<Number>(value.toInt64())) return std::nullopt;
  return static_cast<Number>(value.toInt64());
}

}  // namespace

std::optional<EventSource> sourceOfEvent(std::string_view node, const KernelEvent& event) {
  const auto signal = signalOf(event);
  if (!signal) return std::nullopt;
  EventSource source{std::string(node), signal->type, signal->code, signal->direction};
  return isSource(source) ? std::optional(std::move(source)) : std::nullopt;
}

bool ControlMap::teach(std::string_view control, const EventSource& source) {
  const std::string_view known = lasting(control);
  if (known.empty() || !isSource(source)) return false;
  EventSource taught = source;  // it may be one of those that go
  std::erase_if(mTaught, [&taught](const auto& entry) { return overlaps(entry.second, taught); });
  mTaught.insert_or_assign(known, std::move(taught));
  return true;
}

void ControlMap::forget(std::string_view control) {
  mTaught.erase(control);
}

std::string_view ControlMap::controlOf(std::string_view node, const KernelEvent& event) const {
  const auto signal = signalOf(event);
  if (!signal) return {};
  bool isElsewhere = false;
  for (const auto& [control, source] : mTaught) {
    if (signalOf(source) != *signal) continue;
    if (source.node.empty() || source.node == node) return control;
    isElsewhere = true;
  }
  if (isElsewhere) return {};
  const auto& own = ownSignals();
  const auto found = std::find_if(own.begin(), own.end(), [&](const auto& each) { return each.first == *signal; });
  return found == own.end() || mTaught.contains(found->second) ? std::string_view() : found->second;
}

std::optional<EventSource> ControlMap::sourceOf(std::string_view control) const {
  if (const auto found = mTaught.find(control); found != mTaught.end()) return found->second;
  const auto own = ownSignal(control);
  const auto isOwn = [&own](const auto& entry) { return signalOf(entry.second) == *own; };
  if (!own || std::any_of(mTaught.begin(), mTaught.end(), isOwn)) return std::nullopt;
  return EventSource{{}, own->type, own->code, own->direction};
}

bool ControlMap::isTaught(std::string_view control) const {
  const auto found = mTaught.find(control);
  return found != mTaught.end() && ownSignal(control) != signalOf(found->second);
}

PropertyList ControlMap::record() const {
  std::vector<PropertyList::Pair> entries;
  for (const auto& [control, source] : mTaught) {
    entries.emplace_back(control, PropertyList::dictionary({{words::Node, source.node},
                                                            {words::Type, source.type},
                                                            {words::Code, source.code},
                                                            {words::Direction, source.direction}}));
  }
  return PropertyList::dictionary(std::move(entries));
}

ControlMap ControlMap::fromRecord(const PropertyList& record) {
  ControlMap map;
  if (!record.isDictionary()) return map;
  for (std::size_t index = 0; index < record.size(); ++index) {
    const PropertyList& entry = record.valueAt(index);
    const auto type = numberOf<std::uint16_t>(entry[words::Type]);
    const auto code = numberOf<std::uint16_t>(entry[words::Code]);
    const auto direction = numberOf<std::int8_t>(entry[words::Direction]);
    if (!type || !code || !direction || !entry[words::Node].isString()) continue;
    map.teach(record.keyAt(index), {entry[words::Node].toString(), *type, *code, *direction});
  }
  return map;
}

}  // namespace vorn::engine
