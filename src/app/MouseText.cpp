#include "app/MouseText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "model/Controls.h"
#include "platform/AssignmentWords.h"
#include "platform/Localization.h"

namespace skarn {

namespace {

using Outcome = vorn::MiceAnswer::Outcome;
using Sensitivity = MouseDescription::Sensitivity;
using Word = std::pair<std::string_view, const char*>;

// The names of linux/input-event-codes.h.
constexpr Word sourceWords[] = {
    {"BTN_LEFT", "lkeySourceLeft"},           {"BTN_RIGHT", "lkeySourceRight"},
    {"BTN_MIDDLE", "lkeySourceMiddle"},       {"BTN_SIDE", "lkeySourceSide"},
    {"BTN_EXTRA", "lkeySourceExtra"},         {"BTN_FORWARD", "lkeySourceForward"},
    {"BTN_BACK", "lkeySourceBack"},           {"BTN_TASK", "lkeySourceTask"},
    {"REL_WHEEL +", "lkeySourceWheelUp"},     {"REL_WHEEL -", "lkeySourceWheelDown"},
    {"REL_HWHEEL +", "lkeySourceWheelRight"}, {"REL_HWHEEL -", "lkeySourceWheelLeft"},
};

// Names of keys that are not told by putting their letters in order.
constexpr std::pair<std::string_view, std::string_view> keyNames[] = {
    {"ESC", "Escape"},
    {"MINUS", "-"},
    {"EQUAL", "="},
    {"LEFTBRACE", "["},
    {"RIGHTBRACE", "]"},
    {"SEMICOLON", ";"},
    {"APOSTROPHE", "'"},
    {"GRAVE", "`"},
    {"BACKSLASH", "\\"},
    {"COMMA", ","},
    {"DOT", "."},
    {"SLASH", "/"},
    {"ENTER", "Return"},
    {"CAPSLOCK", "Caps Lock"},
    {"NUMLOCK", "Num Lock"},
    {"SCROLLLOCK", "Scroll Lock"},
    {"LEFTSHIFT", "Left Shift"},
    {"RIGHTSHIFT", "Right Shift"},
    {"LEFTCTRL", "Left Control"},
    {"RIGHTCTRL", "Right Control"},
    {"LEFTALT", "Left Alt"},
    {"RIGHTALT", "Right Alt"},
    {"LEFTMETA", "Left Super"},
    {"RIGHTMETA", "Right Super"},
    {"PAGEUP", "Page Up"},
    {"PAGEDOWN", "Page Down"},
    {"SYSRQ", "Print Screen"},
    {"COMPOSE", "Menu"},
    {"UP", "Up Arrow"},
    {"DOWN", "Down Arrow"},
    {"LEFT", "Left Arrow"},
    {"RIGHT", "Right Arrow"},
    {"KPPLUS", "Keypad +"},
    {"KPMINUS", "Keypad -"},
    {"KPASTERISK", "Keypad *"},
    {"KPSLASH", "Keypad /"},
    {"KPDOT", "Keypad ."},
    {"KPENTER", "Keypad Enter"},
    {"VOLUMEUP", "Volume Up"},
    {"VOLUMEDOWN", "Volume Down"},
    {"PLAYPAUSE", "Play/Pause"},
    {"PLAYCD", "Play"},
    {"STOPCD", "Stop"},
    {"NEXTSONG", "Next Track"},
    {"PREVIOUSSONG", "Previous Track"},
    {"HOMEPAGE", "Home Page"},
    {"CALC", "Calculator"},
    {"BRIGHTNESSUP", "Brightness Up"},
    {"BRIGHTNESSDOWN", "Brightness Down"},
};

QString text(std::string_view latin) {
  return QString::fromUtf8(latin.data(), static_cast<qsizetype>(latin.size()));
}

template <typename Table>
auto wordOf(const Table& table, std::string_view name) -> std::optional<decltype(table[0].second)> {
  const auto* found = std::ranges::find_if(table, [name](const auto& row) { return row.first == name; });
  return found == std::end(table) ? std::nullopt : std::optional(found->second);
}

// "KP7" to "Keypad 7", "F5" and "Z" as they are, "PLAY_PAUSE" to "Play Pause".
QString keyName(std::string_view name) {
  if (const auto known = wordOf(keyNames, name)) return text(*known);
  constexpr std::string_view keypad = "KP";
  if (name.size() == keypad.size() + 1 && name.starts_with(keypad))
    return localized("lkeySourceKeypad").arg(text(name.substr(keypad.size())));
  QStringList words = text(name).split(QLatin1Char('_'), Qt::SkipEmptyParts);
  for (QString& word : words) word = word.left(1) + word.mid(1).toLower();
  return words.join(QLatin1Char(' '));
}

QString countText(const MouseDescription& mouse) {
  const auto isOfTheMouse = [&](const vorn::Control& control) { return mouse.controls.contains(control.identifier); };
  const auto count = std::ranges::count_if(vorn::controls, isOfTheMouse);
  const auto all = static_cast<qsizetype>(vorn::controls.size());
  if (mouse.taught.empty()) return localized("lkeyMouseControls").arg(count).arg(all);
  return localized("lkeyMouseControlsTaught").arg(count).arg(all).arg(mouse.taught.size());
}

QString sensitivityText(const MouseDescription& mouse) {
  switch (mouse.sensitivity) {
    case Sensitivity::Hardware:
      return localized("lkeyMouseSensitivityHardware");
    case Sensitivity::Scaled:
      return localized("lkeyMouseSensitivityScaled").arg(mouse.resolution);
    case Sensitivity::Missing:
      break;
  }
  return localized("lkeyMouseSensitivityMissing");
}

// "polling rate, light": of what the mouse itself can do, or cannot.
QString listOfAbilities(const MouseDescription& mouse, bool isOffered) {
  QStringList list;
  if (mouse.hasPollingRate == isOffered) list << localized("lkeyMousePollingRate");
  if (mouse.hasLight == isOffered) list << localized("lkeyMouseLight");
  if (mouse.hasPower == isOffered) list << localized("lkeyMousePower");
  return list.join(localized("lkeyListSeparator"));
}

}  // namespace

QString sourceText(std::string_view source) {
  if (const auto key = wordOf(sourceWords, source)) return localized(*key);
  constexpr std::string_view key = "KEY_";
  constexpr std::string_view button = "BTN_";
  if (source.starts_with(key)) return localized("lkeySourceKey").arg(keyName(source.substr(key.size())));
  if (source.starts_with(button)) return localized("lkeySourceButton").arg(keyName(source.substr(button.size())));
  return text(source);
}

QString controlText(std::string_view identifier) {
  if (identifier == vorn::keymapKey) return localized("lkeyFixedKeymap");
  if (identifier == vorn::stageUpKey) return localized("lkeyFixedStageUp");
  if (identifier == vorn::stageDownKey) return localized("lkeyFixedStageDown");
  const vorn::Control* control = vorn::controlOf(identifier);
  return control == nullptr ? QString() : controlWords(*control);
}

QString connectionText(const MouseDescription& mouse) {
  switch (mouse.connection) {
    case MouseDescription::Connection::Wired:
      return localized("lkeyMouseWired");
    case MouseDescription::Connection::Wireless:
      return localized("lkeyMouseWireless");
    case MouseDescription::Connection::Virtual:
      return localized("lkeyMouseVirtual");
    case MouseDescription::Connection::Unknown:
      break;
  }
  return {};
}

QString stateText(const MouseDescription& mouse) {
  if (!mouse.isPresent && !mouse.isVirtual())
    return localized(mouse.isInUse ? "lkeyMouseInUseAbsent" : "lkeyMouseAbsent");
  if (!mouse.isAllowed && !mouse.isVirtual())
    return localized(mouse.isInUse ? "lkeyMouseInUseForbidden" : "lkeyMouseForbidden");
  return mouse.isInUse ? localized("lkeyMouseInUse") : QString();
}

QStringList abilityTexts(const MouseDescription& mouse) {
  if (mouse.isVirtual()) return {localized("lkeyMouseVirtualAbout")};
  QStringList texts{countText(mouse)};
  if (!mouse.isInUse) return texts << localized("lkeyMouseMoreInUse");
  if (!mouse.isPresent) return texts;
  const auto tellUnused = [&texts](const char* key, const QStringList& files) {
    if (!files.isEmpty()) texts.prepend(localized(key).arg(files.join(localized("lkeyListSeparator"))));
  };
  tellUnused("lkeyMouseBusy", mouse.busy);
  tellUnused("lkeyMouseHeld", mouse.held);
  texts << sensitivityText(mouse);
  if (const QString offered = listOfAbilities(mouse, true); !offered.isEmpty())
    texts << localized("lkeyMouseOffers").arg(offered);
  if (const QString missing = listOfAbilities(mouse, false); !missing.isEmpty())
    texts << localized("lkeyMouseOffersNot").arg(missing);
  if (mouse.hasBattery) texts << localized("lkeyMouseTellsBattery");
  return texts;
}

QString forbiddenText(const MouseDescription& mouse) {
  return localized("lkeyMouseForbiddenWhy").arg(mouse.forbidden.join(localized("lkeyListSeparator")));
}

QString permissionCommand() {
  return QStringLiteral("sudo udevadm control --reload && sudo udevadm trigger");
}

QString failureText(Outcome outcome) {
  switch (outcome) {
    case Outcome::Done:
      return {};
    case Outcome::NotFound:
      return localized("lkeyMiceNotFound");
    case Outcome::NotAllowed:
      return localized("lkeyMiceNotAllowed");
    case Outcome::NotTeachable:
      return localized("lkeyMiceNotTeachable");
    case Outcome::Busy:
      return localized("lkeyMiceBusy");
    case Outcome::NotSaved:
      return localized("lkeyMiceNotSaved");
    case Outcome::NoMice:
      return localized("lkeyMiceNotOffered");
    case Outcome::BadArgument:
    case Outcome::NoAnswer:
    case Outcome::NoEngine:
      break;
  }
  return localized("lkeyMiceNoAnswer");
}

}  // namespace skarn
