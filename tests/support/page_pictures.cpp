// Paints the pages of the six tabs with sample settings and writes them as PNG files, to be looked at:
//   page_pictures FOLDER light|dark [WIDTH HEIGHT] [disabled]
// Run it under xvfb-run with QT_SCALE_FACTOR=2 for the pictures of a high-resolution display.
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QTabWidget>
#include <QTableView>
#include <QTextStream>

#include "buttons/MouseButtonController.h"
#include "lighting/MouseLightingController.h"
#include "macros/MouseMacrosController.h"
#include "maintenance/MouseMaintenanceController.h"
#include "performance/MousePerformanceController.h"
#include "platform/Localization.h"
#include "profiles/MouseProfilesController.h"
#include "support/SampleSettings.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

namespace skarn::test {
namespace {

// Hands the tabs what their owner would.
struct Pages {
  MouseButtonController buttons;
  MouseProfilesController profilesPage;
  MouseMacrosController macrosPage;
  MouseMacrosController noMacros;
  MousePerformanceController performance;
  MouseLightingController lighting;
  MouseMaintenanceController maintenance;

  Pages() {
    const PropertyList active = profiles().at(1);
    buttons.setMButtonsSettingsDict(
        active.with(keys::Keys, active[keys::Keys].with("20", assignment(16, 4)).with("57", assignment(10, 0, 1))));
    buttons.setMAllProfiles(profiles());
    buttons.setMDeviceSettingsDict(deviceSettings());
    buttons.setMDefaultDict(defaultSettings());
    buttons.populateUISettings();
    buttons.updateUISettings();
    profilesPage.setMProfilesArray(profiles());
    profilesPage.setMDeviceSettingsDict(deviceSettings());
    profilesPage.updateUISettings();
    macrosPage.setMMacrosSettingsArray(macros());
    macrosPage.refreshTableDisplay();
    macrosPage.mMacroTableView()->selectRow(0);
    macrosPage.updateSelectedMacroWithMacroDetails(macroLines());
    performance.populateUISettings();
    performance.setMPerformanceSettingsDict(active);
    performance.setMDeviceSettingsDict(deviceSettings());
    performance.updateUISettings();
    lighting.setMAllProfiles(profiles());
    lighting.setMLightingDict(active);
    lighting.updateUISettings();
    maintenance.setMMaintenanceSettingsDict(deviceSettings());
    maintenance.setMMaintenanceDict(active);
    maintenance.mDriverVersion()->setText(QStringLiteral("0.1.0"));
    maintenance.mFirmwareVersion()->setText(QStringLiteral("1.04"));
    maintenance.updateUISettings();
    maintenance.startProgresIndicatorAnimation();
  }

  void disable() {
    buttons.enableControlsState(false);
    profilesPage.enableControlsState(false);
    macrosPage.enableControlsState(false);
    noMacros.enableControlsState(false);
    performance.enableControlsState(false);
    lighting.enableControlsState(false);
    maintenance.enableControlsState(false);
  }
};

int paintPages(const QStringList& arguments) {
  const bool isDarkWanted = arguments.value(2) == QLatin1String("dark");
  QApplication::setPalette(isDarkWanted ? darkPalette() : lightPalette());
  const QSize size(arguments.value(3, QStringLiteral("1180")).toInt(),
                   arguments.value(4, QStringLiteral("610")).toInt());
  if (!installTranslations(QStringLiteral("en"))) return 1;
  Pages pages;
  if (arguments.contains(QLatin1String("disabled"))) pages.disable();
  QTabWidget tabs;
  tabs.setDocumentMode(true);
  tabs.addTab(&pages.buttons, QStringLiteral("Buttons"));
  tabs.addTab(&pages.profilesPage, QStringLiteral("Profiles"));
  tabs.addTab(&pages.macrosPage, QStringLiteral("Macros"));
  tabs.addTab(&pages.performance, QStringLiteral("Performance"));
  tabs.addTab(&pages.lighting, QStringLiteral("Lighting"));
  tabs.addTab(&pages.maintenance, QStringLiteral("Maintenance"));
  tabs.addTab(&pages.noMacros, QStringLiteral("No macros"));
  tabs.resize(size);
  tabs.show();
  for (int index = 0; index < tabs.count(); ++index) {
    tabs.setCurrentIndex(index);
    QApplication::processEvents();
    const QString file = QDir(arguments[1]).filePath(QStringLiteral("%1-%2.png").arg(index).arg(arguments[2]));
    if (!tabs.grab().save(file)) return 1;
    QTextStream(stdout) << file << ' ' << tabs.width() << 'x' << tabs.height() << Qt::endl;
  }
  while (tabs.count() > 0) {
    QWidget* page = tabs.widget(0);
    tabs.removeTab(0);
    page->setParent(nullptr);
  }
  return 0;
}

}  // namespace
}  // namespace skarn::test

int main(int argc, char** argv) {
  QApplication::setStyle(new skarn::SkarnStyle);
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 3) {
    QTextStream(stderr) << "usage: page_pictures FOLDER light|dark [WIDTH HEIGHT] [disabled]" << Qt::endl;
    return 64;
  }
  return skarn::test::paintPages(arguments);
}
