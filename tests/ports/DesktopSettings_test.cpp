// The desktop's preferences, over a portal of the test's own.
#include "ports/DesktopSettings.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <cstdint>
#include <vector>

#include "ports/BusConnection.h"
#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using ColorScheme = DesktopSettings::ColorScheme;
using Preferences = DesktopSettings::Preferences;

constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalInterface = "org.freedesktop.portal.Settings";

// A portal on a connection of its own. Its settings: a number and a flag that the program reads, among others.
class Portal {
 public:
  Portal(std::uint32_t colorScheme, std::uint32_t reducedMotion, bool enablesAnimations)
      : mColorScheme(colorScheme), mReducedMotion(reducedMotion), mEnablesAnimations(enablesAnimations) {
    mThread.run([this] {
      static const sd_bus_vtable methods[] = {
          SD_BUS_VTABLE_START(0), SD_BUS_METHOD("ReadAll", "as", "a{sa{sv}}", readAll, SD_BUS_VTABLE_UNPRIVILEGED),
          SD_BUS_SIGNAL("SettingChanged", "ssv", 0), SD_BUS_VTABLE_END};
      sd_bus_add_object_vtable(handle(), nullptr, portalPath, portalInterface, methods, this);
      sd_bus_request_name(handle(), "org.freedesktop.portal.Desktop", 0);
    });
  }

  template <typename Value>
  void change(const char* group, const char* key, const char* type, Value value) {
    mThread.run([&] {
      sd_bus_emit_signal(handle(), portalPath, portalInterface, "SettingChanged", "ssv", group, key, type, value);
      sd_bus_flush(handle());
    });
  }

 private:
  static sd_bus* handle() { return BusConnection::forThisThread().handle(); }

  static int readAll(sd_bus_message* call, void* self, sd_bus_error*) {
    const auto& portal = *static_cast<Portal*>(self);
    return sd_bus_reply_method_return(call, "a{sa{sv}}", 2,                          //
                                      "org.freedesktop.appearance", 3,               //
                                      "accent-color", "(ddd)", 0.1, 0.2, 0.3,        //
                                      "color-scheme", "u", portal.mColorScheme,      //
                                      "reduced-motion", "u", portal.mReducedMotion,  //
                                      "org.gnome.desktop.interface", 2,              //
                                      "color-scheme", "s", "not this one",           //
                                      "enable-animations", "b", portal.mEnablesAnimations ? 1 : 0);
  }

  const std::uint32_t mColorScheme;
  const std::uint32_t mReducedMotion;
  const bool mEnablesAnimations;
  test::LoopThread mThread;
};

TEST(DesktopSettingsTest, HasNoPreferenceWithoutAPortal) {
  const test::PrivateBus bus;
  const DesktopSettings settings({});
  EXPECT_EQ(settings.preferences(), Preferences());
}

TEST(DesktopSettingsTest, ReadsWhatThePortalPrefers) {
  const test::PrivateBus bus;
  struct Case {
    std::uint32_t colorScheme;
    std::uint32_t reducedMotion;
    bool enablesAnimations;
    Preferences expected;
  };
  for (const Case& one :
       {Case{0, 0, true, {ColorScheme::NoPreference, false}}, Case{1, 0, true, {ColorScheme::Dark, false}},
        Case{2, 1, true, {ColorScheme::Light, true}}, Case{7, 0, false, {ColorScheme::NoPreference, true}}}) {
    const Portal portal(one.colorScheme, one.reducedMotion, one.enablesAnimations);
    const DesktopSettings settings({});
    EXPECT_EQ(settings.preferences(), one.expected);
  }
}

TEST(DesktopSettingsTest, TellsEveryChangeOfMindOnce) {
  const test::PrivateBus bus;
  Portal portal(0, 0, true);
  std::vector<Preferences> told;
  const DesktopSettings settings([&](const Preferences& now) { told.push_back(now); });
  RemoteMessagePort::lookUp("BehindTheSubscription");
  portal.change("org.freedesktop.appearance", "color-scheme", "u", 1U);
  portal.change("org.freedesktop.appearance", "color-scheme", "u", 1U);
  portal.change("org.freedesktop.appearance", "color-scheme", "s", "dark");
  portal.change("org.gnome.desktop.interface", "cursor-size", "i", 24);
  portal.change("org.gnome.desktop.interface", "enable-animations", "b", 0);
  portal.change("org.freedesktop.appearance", "reduced-motion", "u", 1U);
  portal.change("org.gnome.desktop.interface", "enable-animations", "b", 1);
  portal.change("org.freedesktop.appearance", "reduced-motion", "u", 0U);
  ASSERT_TRUE(test::serveBusUntil([&] { return told.size() >= 3; }));
  EXPECT_EQ(told, (std::vector<Preferences>{
                      {ColorScheme::Dark, false}, {ColorScheme::Dark, true}, {ColorScheme::Dark, false}}));
  EXPECT_EQ(settings.preferences(), told.back());
}

}  // namespace
}  // namespace vorn
