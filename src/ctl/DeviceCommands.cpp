#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "ctl/Commands.h"
#include "ctl/Controls.h"
#include "ctl/EngineObject.h"
#include "ctl/Keys.h"
#include "ctl/MiceWords.h"
#include "ctl/Numbers.h"
#include "ctl/Values.h"
#include "protocol/DeviceStatus.h"
#include "protocol/VirtualMouse.h"

namespace vorn::ctl {

namespace {

namespace methods = virtualMouse::methods;

Result<std::vector<PropertyList>> call(const Context& context, const std::string& method,
                                       const std::vector<BusInput>& inputs = {}) {
  static const BusTarget mouse{virtualMouse::busName, virtualMouse::objectPath, virtualMouse::interface};
  return callEngineObject(context, mouse, "the virtual mouse", method, inputs);
}

Outcome perform(const Context& context, const std::string& method, const std::vector<BusInput>& inputs = {}) {
  const auto values = call(context, method, inputs);
  return values ? std::nullopt : Outcome(values.failure());
}

Outcome performOnControl(const Context& context, const std::string& word, const std::vector<std::string>& methods) {
  const auto control = controlArgument(word);
  if (!control) return control.failure();
  for (const std::string& method : methods) {
    if (auto failure = perform(context, method, {{"s", *control}})) return failure;
  }
  return std::nullopt;
}

struct KeyOrButton {
  hid::UsagePage page = 0;
  hid::Usage usage = 0;
};

// The keys of a chord in the order in which they go down, or one button.
Result<std::vector<KeyOrButton>> keysOrButton(const std::string& word) {
  constexpr std::string_view prefix = "button:";
  if (word.starts_with(prefix)) {
    const auto number =
        numberOf(std::string_view(word).substr(prefix.size()), hid::primaryButton, hid::lastFurtherButton);
    if (!number)
      return Failure{ExitStatus::Usage, "there is no button \"" + word + "\"; the buttons are button:1 to button:9"};
    return std::vector{KeyOrButton{hid::buttonPage, static_cast<hid::Usage>(*number)}};
  }
  const auto chord = chordNamed(word);
  if (!chord) return chord.failure();
  std::vector<KeyOrButton> keys;
  for (hid::Usage modifier = hid::firstModifier; modifier <= hid::lastModifier; ++modifier) {
    if ((chord->modifiers & modifierBit(modifier)) != 0) keys.push_back({hid::keyboardPage, modifier});
  }
  if (chord->usage != 0) keys.push_back({hid::keyboardPage, chord->usage});
  return keys;
}

// One event of the output: time, usage page, usage, value.
std::string textOfOutput(const PropertyList& event) {
  const std::int64_t page = event.at(1).toInt64();
  const std::int64_t usage = event.at(2).toInt64();
  const std::int64_t value = event.at(3).toInt64();
  const std::string time = std::to_string(event.at(0).toInt64()) + "  ";
  if (page == hid::genericDesktopPage && usage == hid::wheel) return time + "wheel " + std::to_string(value);
  const std::string action = value != 0 ? "press " : "release ";
  if (page == hid::buttonPage) return time + action + "button " + std::to_string(usage);
  const std::string_view name = page == hid::keyboardPage ? hid::keyName(usage) : "";
  if (!name.empty()) return time + action + std::string(name);
  return time + action + "usage " + std::to_string(usage) + " of page " + std::to_string(page);
}

}  // namespace

Outcome plugDevice(Context& context, const Arguments& arguments) {
  if (arguments[0] != virtualMouse::wired && arguments[0] != virtualMouse::wireless) {
    return Failure{ExitStatus::Usage, "device plug takes wired or wireless"};
  }
  return perform(context, methods::Plug, {{"s", arguments[0]}});
}

Outcome unplugDevice(Context& context, const Arguments&) {
  return perform(context, methods::Unplug);
}

Outcome pressControl(Context& context, const Arguments& arguments) {
  return performOnControl(context, arguments[0], {methods::Press});
}

Outcome releaseControl(Context& context, const Arguments& arguments) {
  return performOnControl(context, arguments[0], {methods::Release});
}

Outcome clickControl(Context& context, const Arguments& arguments) {
  return performOnControl(context, arguments[0], {methods::Press, methods::Release});
}

Outcome typeKey(Context& context, const Arguments& arguments) {
  const auto keys = keysOrButton(arguments[0]);
  if (!keys) return keys.failure();
  std::vector<KeyOrButton> order = *keys;
  const bool isBoth = context.line.isPressOnly == context.line.isReleaseOnly;
  for (const bool isPressed : {true, false}) {
    // What went down last comes up first.
    if (!isPressed) std::reverse(order.begin(), order.end());
    if (!isBoth && isPressed != context.line.isPressOnly) continue;
    for (const KeyOrButton& key : order) {
      if (auto failure = perform(context, methods::Type, {{"u", key.page}, {"u", key.usage}, {"b", isPressed}})) {
        return failure;
      }
    }
  }
  return std::nullopt;
}

Outcome setBattery(Context& context, const Arguments& arguments) {
  const auto percent = numberOf(arguments[0], 0, 100);
  if (!percent) return Failure{ExitStatus::Usage, "device battery takes a percentage from 0 to 100"};
  return perform(context, methods::SetBattery, {{"i", *percent}});
}

Outcome setCharging(Context& context, const Arguments& arguments) {
  const bool isStatus = std::any_of(std::begin(chargingStatuses), std::end(chargingStatuses),
                                    [&](ChargingStatus status) { return arguments[0] == chargingWord(status); });
  if (!isStatus && arguments[0] != virtualMouse::usualCharging) {
    return Failure{ExitStatus::Usage, "device charging takes battery, charging, none or usual"};
  }
  return perform(context, methods::SetCharging, {{"s", arguments[0]}});
}

Outcome setFirmware(Context& context, const Arguments& arguments) {
  return perform(context, methods::SetFirmware, {{"s", arguments[0]}, {"b", context.line.isFailing}});
}

Outcome deviceState(Context& context, const Arguments&) {
  const auto values = call(context, methods::State);
  if (!values) return values.failure();
  const PropertyList state = values->empty() ? PropertyList::dictionary() : values->front();
  if (context.output.isJson()) {
    context.output.json(state);
    return std::nullopt;
  }
  for (std::size_t index = 0; index < state.size(); ++index) {
    context.output.line(std::string(state.keyAt(index)) + ": " + textOf(state.valueAt(index)));
  }
  return std::nullopt;
}

Outcome deviceOutput(Context& context, const Arguments&) {
  const auto values = call(context, methods::TakeOutput);
  if (!values) return values.failure();
  const PropertyList events = values->empty() ? PropertyList::array() : values->front();
  PropertyList list = PropertyList::array();
  for (const PropertyList& event : events.elements()) {
    if (!context.output.isJson()) {
      context.output.line(textOfOutput(event));
      continue;
    }
    list = list.appending(PropertyList::dictionary(
        {{"time", event.at(0)}, {"usagePage", event.at(1)}, {"usage", event.at(2)}, {"value", event.at(3)}}));
  }
  if (context.output.isJson()) context.output.json(list);
  return std::nullopt;
}

}  // namespace vorn::ctl
