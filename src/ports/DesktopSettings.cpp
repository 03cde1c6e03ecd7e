#include "ports/DesktopSettings.h"

#include <chrono>
#include <string_view>

#include "ports/BusCall.h"

namespace vorn {

namespace {

using ColorScheme = DesktopSettings::ColorScheme;

constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* settingsInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* gnomeInterface = "org.gnome.desktop.interface";
// A window must not wait long for a portal that hangs.
constexpr std::chrono::milliseconds portalTimeout{200};

ColorScheme schemeOf(std::uint32_t value) {
  if (value == 1) return ColorScheme::Dark;
  if (value == 2) return ColorScheme::Light;
  return ColorScheme::NoPreference;
}

// The settings as the portal has them.
struct Values {
  std::uint32_t colorScheme = 0;
  std::uint32_t reducedMotion = 0;
  std::uint32_t enableAnimations = 1;

  DesktopSettings::Preferences preferences() const {
    return {schemeOf(colorScheme), reducedMotion == 1 || enableAnimations == 0};
  }
};

struct Setting {
  std::string_view group;
  std::string_view key;
  const char* type;  // of the value
  std::uint32_t Values::*value;
};
constexpr Setting settings[] = {
    {appearance, "color-scheme", "u", &Values::colorScheme},
    {appearance, "reduced-motion", "u", &Values::reducedMotion},
    {gnomeInterface, "enable-animations", "b", &Values::enableAnimations},
};

// Takes the variant that follows. False when the message is no good any more.
bool takeValue(sd_bus_message* message, std::string_view group, std::string_view key, Values& values) {
  char type = 0;
  const char* contents = nullptr;
  if (sd_bus_message_peek_type(message, &type, &contents) <= 0 || type != 'v') return false;
  for (const Setting& setting : settings) {
    if (setting.group != group || setting.key != key || std::string_view(setting.type) != contents) continue;
    return sd_bus_message_read(message, "v", setting.type, &(values.*setting.value)) > 0;
  }
  return sd_bus_message_skip(message, "v") >= 0;
}

// The answer to ReadAll: dictionaries of variants by key, by group.
void takeAll(sd_bus_message* message, Values& values) {
  if (sd_bus_message_enter_container(message, 'a', "{sa{sv}}") <= 0) return;
  while (sd_bus_message_enter_container(message, 'e', "sa{sv}") > 0) {
    const char* group = nullptr;
    if (sd_bus_message_read(message, "s", &group) <= 0) return;
    if (sd_bus_message_enter_container(message, 'a', "{sv}") < 0) return;
    while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
      const char* key = nullptr;
      if (sd_bus_message_read(message, "s", &key) <= 0 || !takeValue(message, group, key, values)) return;
      sd_bus_message_exit_container(message);
    }
    sd_bus_message_exit_container(message);
    sd_bus_message_exit_container(message);
  }
}

}  // namespace

struct DesktopSettings::State {
  ChangeHandler handler;
  Values values;
  bus::SlotReference changes;

  static int settingChanged(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& state = *static_cast<State*>(self);
    const char* group = nullptr;
    const char* key = nullptr;
    if (sd_bus_message_read(message, "ss", &group, &key) <= 0) return 0;
    const Preferences before = state.values.preferences();
    takeValue(message, group, key, state.values);
    const Preferences now = state.values.preferences();
    if (now != before && state.handler) state.handler(now);
    return 0;
  }
};

DesktopSettings::DesktopSettings(ChangeHandler handler) : mState(std::make_unique<State>()) {
  mState->handler = std::move(handler);
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen() || !bus::hasOwner(connection, portalName)) return;

  const bus::MessageReference request = bus::newCall(connection, portalName, portalPath, settingsInterface, "ReadAll");
  if (!request || sd_bus_message_append(request.get(), "as", 2, appearance, gnomeInterface) < 0) return;
  bus::Error error;
  const bus::MessageReference answer = bus::call(connection, request.get(), portalTimeout, error);
  if (!answer) return;
  takeAll(answer.get(), mState->values);

  sd_bus_slot* slot = nullptr;
  sd_bus_match_signal_async(connection.handle(), &slot, portalName, portalPath, settingsInterface, "SettingChanged",
                            &State::settingChanged, nullptr, mState.get());
  mState->changes.reset(slot);
}

DesktopSettings::~DesktopSettings() = default;

DesktopSettings::Preferences DesktopSettings::preferences() const {
  return mState->values.preferences();
}

}  // namespace vorn
