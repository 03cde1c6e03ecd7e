// The look of the application: its style, the light or dark palette that the desktop asks for, and whether it moves.
#pragma once

#include <memory>

#include "app/CommandLine.h"
#include "ports/DesktopSettings.h"

namespace skarn {

class SkarnStyle;

class DesktopAppearance {
 public:
  // Sets style and palette of the application and follows the desktop from then on, unless a fixed appearance was
  // asked for. A desktop that states no preference is followed by the palette that it gives to programs.
  explicit DesktopAppearance(CommandLine::Appearance appearance);

 private:
  void apply(bool isDark);
  void follow(const vorn::DesktopSettings::Preferences& preferences);

  const bool mProgramsAreDark;
  SkarnStyle* mStyle;  // the application's
  std::unique_ptr<vorn::DesktopSettings> mSettings;
};

}  // namespace skarn
