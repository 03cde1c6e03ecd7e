// What the desktop prefers, from the settings portal (XDG desktop portal, interface org.freedesktop.portal.Settings):
// light or dark, and more or less motion. The keys are color-scheme and reduced-motion of org.freedesktop.appearance
// and, for desktops without the latter, enable-animations of org.gnome.desktop.interface.
#pragma once

#include <functional>
#include <memory>

namespace vorn {

class DesktopSettings {
 public:
  enum class ColorScheme { NoPreference, Dark, Light };
  struct Preferences {
    ColorScheme colorScheme = ColorScheme::NoPreference;
    bool wantsLessMotion = false;
    friend bool operator==(const Preferences&, const Preferences&) = default;
  };
  using ChangeHandler = std::function<void(const Preferences&)>;

  // Asks on this thread's connection, if a portal runs, and calls the handler from its process() when the desktop
  // changes its mind. Without a bus or a portal there is no preference.
  explicit DesktopSettings(ChangeHandler handler);
  ~DesktopSettings();
  DesktopSettings(const DesktopSettings&) = delete;
  DesktopSettings& operator=(const DesktopSettings&) = delete;

  Preferences preferences() const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
