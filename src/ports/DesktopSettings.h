// The desktop's preference for light or dark, from the settings portal (XDG desktop portal, interface
// org.freedesktop.portal.Settings, key color-scheme of org.freedesktop.appearance).
#pragma once

#include <functional>
#include <memory>

namespace vorn {

class DesktopSettings {
 public:
  enum class ColorScheme { NoPreference, Dark, Light };
  using ChangeHandler = std::function<void(ColorScheme)>;

  // Asks on this thread's connection, if a portal runs, and calls the handler from its process() when the desktop
  // changes its mind. Without a bus or a portal there is no preference.
  explicit DesktopSettings(ChangeHandler handler);
  ~DesktopSettings();
  DesktopSettings(const DesktopSettings&) = delete;
  DesktopSettings& operator=(const DesktopSettings&) = delete;

  ColorScheme colorScheme() const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
