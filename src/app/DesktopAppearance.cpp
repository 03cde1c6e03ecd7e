#include "app/DesktopAppearance.h"

#include <QApplication>

#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

namespace skarn {

using ColorScheme = vorn::DesktopSettings::ColorScheme;

DesktopAppearance::DesktopAppearance(CommandLine::Appearance appearance) {
  const bool programsAreDark = isDark(QApplication::palette());
  QApplication::setStyle(new SkarnStyle);
  if (appearance != CommandLine::Appearance::Desktop) {
    apply(appearance == CommandLine::Appearance::Dark);
    return;
  }
  const auto wantsDark = [programsAreDark](ColorScheme scheme) {
    return scheme == ColorScheme::NoPreference ? programsAreDark : scheme == ColorScheme::Dark;
  };
  mSettings =
      std::make_unique<vorn::DesktopSettings>([this, wantsDark](ColorScheme scheme) { apply(wantsDark(scheme)); });
  apply(wantsDark(mSettings->colorScheme()));
}

void DesktopAppearance::apply(bool isDark) {
  QApplication::setPalette(isDark ? darkPalette() : lightPalette());
}

}  // namespace skarn
