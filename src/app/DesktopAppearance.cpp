#include "app/DesktopAppearance.h"

#include <QApplication>

#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

namespace skarn {

using vorn::DesktopSettings;

DesktopAppearance::DesktopAppearance(CommandLine::Appearance appearance)
    : mProgramsAreDark(isDark(QApplication::palette())), mStyle(new SkarnStyle) {
  QApplication::setStyle(mStyle);
  if (appearance != CommandLine::Appearance::Desktop) {
    apply(appearance == CommandLine::Appearance::Dark);
    return;
  }
  mSettings = std::make_unique<DesktopSettings>(
      [this](const DesktopSettings::Preferences& preferences) { follow(preferences); });
  follow(mSettings->preferences());
}

void DesktopAppearance::follow(const DesktopSettings::Preferences& preferences) {
  using ColorScheme = DesktopSettings::ColorScheme;
  mStyle->setAnimated(!preferences.wantsLessMotion);
  apply(preferences.colorScheme == ColorScheme::NoPreference ? mProgramsAreDark
                                                             : preferences.colorScheme == ColorScheme::Dark);
}

void DesktopAppearance::apply(bool isDark) {
  QApplication::setPalette(isDark ? darkPalette() : lightPalette());
}

}  // namespace skarn
