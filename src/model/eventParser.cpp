#include "model/eventParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <mutex>
#include <string_view>

#include "model/HidUsages.h"
#include "model/SettingsKeys.h"

namespace vorn {

namespace {

constexpr std::string_view separator = " + ";
constexpr std::string_view keyPressText = "Key Press ";
constexpr std::string_view keyReleaseText = "Key Release ";
constexpr std::string_view delayText = " seconds delay\n";
constexpr std::string_view buttonPressText = " down\n";
constexpr std::string_view buttonReleaseText = " up\n";

struct HeldKeys {
  std::mutex mutex;
  std::vector<int> usages;  // in the order in which the keys went down
};

HeldKeys& heldKeys() {
  static HeldKeys keys;
  return keys;
}

void forgetHeldKeys() {
  HeldKeys& held = heldKeys();
  const std::lock_guard lock(held.mutex);
  std::vector<int>().swap(held.usages);
}

bool holds(const std::vector<int>& usages, int usage) {
  return std::ranges::find(usages, usage) != usages.end();
}

std::string delayLine(std::int64_t milliseconds) {
  // Unlike the printf family, the conversion writes a decimal point in every locale.
  std::array<char, 32> digits;
  const std::to_chars_result result =
      std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<double>(milliseconds) / 1000.0,
                    std::chars_format::fixed, 3);
  return std::string(digits.data(), result.ptr).append(delayText);
}

std::string buttonName(std::uint64_t button) {
  if (button == hid::primaryButton) return "Left Button";
  if (button == hid::secondaryButton) return "Right Button";
  if (button >= hid::firstFurtherButton && button <= hid::lastFurtherButton) return "Button " + std::to_string(button);
  return {};
}

// Empty when the event has none.
std::string eventLine(const PropertyList& event) {
  const auto command = static_cast<std::uint8_t>(event[keys::Command].toInt64());
  if (command != eventParser::pressCommand && command != eventParser::releaseCommand) return {};
  const bool isPress = command == eventParser::pressCommand;

  const std::uint64_t argument = event[keys::Argument].toUnsigned();
  switch (static_cast<std::uint8_t>(event[keys::Page].toInt64())) {
    case hid::keyboardPage:
      return std::string(isPress ? keyPressText : keyReleaseText) +
             eventParser::getStringWithHID(static_cast<std::int64_t>(argument), 0);
    case hid::buttonPage: {
      std::string name = buttonName(argument);
      if (!name.empty()) name += isPress ? buttonPressText : buttonReleaseText;
      return name;
    }
    default:
      return {};
  }
}

}  // namespace

std::string eventParser::getStringWithHID(std::int64_t hid, std::int64_t withModifier) {
  std::string text;
  const auto modifier = static_cast<std::uint8_t>(withModifier);
  if (modifier == 0) {
    forgetHeldKeys();
  } else {
    std::vector<int> usages;
    getModifierHID(modifier, usages);
    for (const int usage : usages) {
      if (!text.empty()) text += separator;
      text += hid::keyName(usage);
    }
    const bool isModifierAlone = hid >= 0 && hid < hid::firstKey;
    if (!isModifierAlone) text += separator;
  }
  return text += hid::keyName(hid);
}

char eventParser::returnASCII(int hid) {
  const auto usage = static_cast<std::uint8_t>(hid);
  return usage >= hid::firstKey && usage <= hid::lastCharacterKey ? hid::keyName(usage).front() : '\0';
}

void eventParser::getModifierHID(int modifier, std::vector<int>& retVal) {
  for (int bit = 0; bit < 8; ++bit)
    if ((modifier >> bit & 1) != 0) retVal.push_back(hid::firstModifier + bit);
}

PropertyList eventParser::parseSequence(const PropertyList& event) {
  if (!event.isDictionary()) return {};
  std::vector<PropertyList> lines = {delayLine(event[keys::Delay].toInt64())};
  if (const std::string line = eventLine(event); !line.empty()) lines.emplace_back(line);
  return PropertyList::array(std::move(lines));
}

PropertyList eventParser::getMessagesArray(const PropertyList& events) {
  std::vector<PropertyList> messages;
  bool isFirst = true;
  for (const PropertyList& event : events.elements()) {
    const PropertyList lines = parseSequence(event);
    if (lines.isEmpty()) return {};
    const auto shown = lines.elements().subspan(isFirst ? 1 : 0);
    messages.insert(messages.end(), shown.begin(), shown.end());
    isFirst = false;
  }
  return PropertyList::array(std::move(messages));
}

eventParser::LineKind eventParser::kindOfLine(std::string_view line) {
  if (line.starts_with(keyPressText)) return LineKind::KeyPress;
  if (line.starts_with(keyReleaseText)) return LineKind::KeyRelease;
  if (line.ends_with(buttonPressText) || line.ends_with(buttonReleaseText)) return LineKind::Button;
  return LineKind::Other;
}

std::string eventParser::releaseLineOf(std::string_view press) {
  switch (kindOfLine(press)) {
    case LineKind::KeyPress:
      return std::string(keyReleaseText).append(press.substr(keyPressText.size()));
    case LineKind::Button:
      if (!press.ends_with(buttonPressText)) return {};
      return std::string(press.substr(0, press.size() - buttonPressText.size())).append(buttonReleaseText);
    default:
      return {};
  }
}

std::string eventParser::nameInLine(std::string_view line) {
  switch (kindOfLine(line)) {
    case LineKind::KeyPress:
      return std::string(line.substr(keyPressText.size()));
    case LineKind::KeyRelease:
      return std::string(line.substr(keyReleaseText.size()));
    case LineKind::Button: {
      const std::string_view ending = line.ends_with(buttonPressText) ? buttonPressText : buttonReleaseText;
      return std::string(line.substr(0, line.size() - ending.size()));
    }
    case LineKind::Other:
      break;
  }
  return {};
}

std::optional<std::int64_t> eventParser::delayOfLine(std::string_view line) {
  if (!line.ends_with(delayText)) return std::nullopt;
  line.remove_suffix(delayText.size());
  double seconds = 0;
  const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), seconds);
  if (error != std::errc() || end != line.data() + line.size()) return std::nullopt;
  return std::llround(seconds * 1000.0);
}

void eventParser::manageHIDStack(std::vector<int>& argument) {
  HeldKeys& held = heldKeys();
  const std::lock_guard lock(held.mutex);
  std::vector<int>& usages = held.usages;
  if (usages.empty()) {
    usages = argument;
    return;
  }
  std::erase_if(usages, [&argument](int usage) { return !holds(argument, usage); });
  // Every key that the list still has is down, so only new ones are left to add. One reported twice is added once.
  for (const int usage : argument) {
    if (usages.size() >= argument.size()) break;
    if (!holds(usages, usage)) usages.push_back(usage);
  }
  argument = usages;
}

}  // namespace vorn
