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
constexpr const char* colorSchemeKey = "color-scheme";
// A window must not wait long for a portal that hangs.
constexpr std::chrono::milliseconds portalTimeout{200};

ColorScheme schemeOf(std::uint32_t value) {
  if (value == 1) return ColorScheme::Dark;
  if (value == 2) return ColorScheme::Light;
  return ColorScheme::NoPreference;
}

// The number inside the given count of variants.
ColorScheme readScheme(sd_bus_message* message, int variants) {
  for (int i = 1; i <= variants; ++i) {
    if (sd_bus_message_enter_container(message, 'v', i == variants ? "u" : "v") <= 0) return ColorScheme::NoPreference;
  }
  std::uint32_t value = 0;
  return sd_bus_message_read(message, "u", &value) > 0 ? schemeOf(value) : ColorScheme::NoPreference;
}

}  // namespace

struct DesktopSettings::State {
  ChangeHandler handler;
  ColorScheme scheme = ColorScheme::NoPreference;
  bus::SlotReference changes;

  static int settingChanged(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& state = *static_cast<State*>(self);
    const char* group = nullptr;
    const char* key = nullptr;
    if (sd_bus_message_read(message, "ss", &group, &key) <= 0) return 0;
    if (std::string_view(group) != appearance || std::string_view(key) != colorSchemeKey) return 0;
    const ColorScheme scheme = readScheme(message, 1);
    if (scheme == state.scheme) return 0;
    state.scheme = scheme;
    if (state.handler) state.handler(scheme);
    return 0;
  }
};

DesktopSettings::DesktopSettings(ChangeHandler handler) : mState(std::make_unique<State>()) {
  mState->handler = std::move(handler);
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen() || !bus::hasOwner(connection, portalName)) return;

  const bus::MessageReference request = bus::newCall(connection, portalName, portalPath, settingsInterface, "Read");
  if (!request || sd_bus_message_append(request.get(), "ss", appearance, colorSchemeKey) < 0) return;
  bus::Error error;
  const bus::MessageReference answer = bus::call(connection, request.get(), portalTimeout, error);
  if (!answer) return;
  // This method wraps its value in one variant more than the signal does.
  mState->scheme = readScheme(answer.get(), 2);

  sd_bus_slot* slot = nullptr;
  sd_bus_match_signal_async(connection.handle(), &slot, portalName, portalPath, settingsInterface, "SettingChanged",
                            &State::settingChanged, nullptr, mState.get());
  mState->changes.reset(slot);
}

DesktopSettings::~DesktopSettings() = default;

DesktopSettings::ColorScheme DesktopSettings::colorScheme() const {
  return mState->scheme;
}

}  // namespace vorn
