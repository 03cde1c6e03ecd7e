// The Lighting and Maintenance tabs.
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <cmath>

#include "SampleSettings.h"
#include "lighting/ColorSwatch.h"
#include "lighting/MouseLightingController.h"
#include "maintenance/MouseMaintenanceController.h"
#include "platform/Localization.h"
#include "widgets/BusyIndicator.h"

using namespace skarn;
using namespace skarn::test;

namespace {

QString textOfLabel(const QWidget& page, const char* name) {
  const auto* label = page.findChild<QLabel*>(QLatin1String(name));
  return label ? label->text() : QStringLiteral("(no label %1)").arg(QLatin1String(name));
}

QStringList textsOf(const QWidget& page, std::initializer_list<const char*> names) {
  QStringList texts;
  for (const char* name : names) texts << textOfLabel(page, name);
  return texts;
}

QStringList lightingTexts(const QWidget& page) {
  return textsOf(page, {"mProfileNameLabel", "mMainValue", "mLightningValue", "mMainColorHex", "mBrightnessText"});
}

QStringList maintenanceTexts(const QWidget& page) {
  return textsOf(page, {"mProfileNameLabel", "mLightBrightnessValue", "mSleepModeValue", "mFlashScrollWheelValue"});
}

QStringList blank(int count) {
  return QStringList(count, QString());
}

}  // namespace

class SettingsPagesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void hugeValuesDoNotWidenTheWindow() {
    MouseMaintenanceController maintenance;
    maintenance.setMMaintenanceSettingsDict(deviceSettings());
    maintenance.setMMaintenanceDict(profile(std::string(300, 'W')));
    maintenance.mFirmwareVersion()->setText(QString(500, QLatin1Char('9')));
    maintenance.updateUISettings();
    const QSize least = maintenance.minimumSizeHint();
    QVERIFY2(least.width() <= 1024 && least.height() <= 476, qPrintable(QString::number(least.width())));
  }

  void withoutAProfileRecordNothingChanges() {
    MouseLightingController lighting;
    lighting.setMLightingDict(profile("Work"));
    lighting.updateUISettings();
    lighting.setMLightingDict(PropertyList());
    lighting.updateUISettings();
    QCOMPARE(textOfLabel(lighting, "mProfileNameLabel"), QStringLiteral("Work"));
    MouseMaintenanceController maintenance;
    maintenance.setMMaintenanceSettingsDict(deviceSettings());
    maintenance.setMMaintenanceDict(profile("Work"));
    maintenance.updateUISettings();
    maintenance.setMMaintenanceSettingsDict(PropertyList());
    maintenance.setMMaintenanceDict(profile("Other"));
    maintenance.updateUISettings();
    QCOMPARE(maintenanceTexts(maintenance), (QStringList{"Work", "Dim", "10 minutes", "5 % battery"}));
  }

  void theLightIsShownWithItsColour() {
    MouseLightingController tab;
    QCOMPARE(tab.objectName(), QStringLiteral("MouseLightingController"));
    tab.setMLightingDict(profile("Work"));
    tab.setMAllProfiles(profiles());
    tab.updateUISettings();
    QCOMPARE(lightingTexts(tab), (QStringList{"Work", "On", "Fixed colour", "#FF8000", "Normal"}));
    auto* swatch = tab.findChild<ColorSwatch*>(QStringLiteral("mMainColor"));
    QCOMPARE(swatch->color().name(), QStringLiteral("#ff8000"));
    const QImage seen = swatch->grab().toImage();
    QCOMPARE(QColor(seen.pixel(seen.rect().center())), QColor(0xff, 0x80, 0x00));
    QVERIFY(tab.mUserSettingsDict() == PropertyList::dictionary());
  }

  void everyEffectAndBrightnessHasItsWord() {
    MouseLightingController tab;
    tab.setMLightingDict(
        profile("Work").with(keys::LEDEffects, 4).with(keys::ScrollLED, 0).with(keys::BrightnessKBNormal, 1));
    tab.updateUISettings();
    QCOMPARE(lightingTexts(tab), (QStringList{"Work", "Off", "Spectrum cycling", "#FF8000", "Off"}));
    tab.setMLightingDict(profile("Work").with(keys::LEDEffects, 2).with(keys::BrightnessKBNormal, 5));
    tab.updateUISettings();
    QCOMPARE(lightingTexts(tab), (QStringList{"Work", "On", "", "#FF8000", ""}));
  }

  void hostileColoursAreBroughtIntoTheRangeOrLeftOut() {
    MouseLightingController tab;
    const auto hexOf = [&tab](const PropertyList& colors) {
      tab.setMLightingDict(PropertyList::dictionary({{keys::LEDColors, colors}}));
      tab.updateUISettings();
      return textOfLabel(tab, "mMainColorHex");
    };
    QCOMPARE(hexOf(PropertyList::array({color(-3, 7, 1e300)})), QStringLiteral("#00FFFF"));
    QCOMPARE(
        hexOf(PropertyList::array({PropertyList::dictionary({{keys::Red, 1}, {keys::Green, 0}, {keys::Blue, 1}})})),
        QStringLiteral("#FF00FF"));
    QCOMPARE(hexOf(PropertyList::array({color(std::nan(""), 0, 0)})), QString());
    QCOMPARE(hexOf(PropertyList::array({color(1, 1, 1).without(keys::Blue)})), QString());
    QCOMPARE(hexOf(PropertyList::array({color(1, 1, 1).with(keys::Blue, "1")})), QString());
    QCOMPARE(hexOf(PropertyList::array()), QString());
    QCOMPARE(hexOf(PropertyList("red")), QString());
    QVERIFY(!tab.findChild<ColorSwatch*>(QStringLiteral("mMainColor"))->color().isValid());
  }

  void hostileLightingSettingsShowNothing() {
    MouseLightingController tab;
    tab.setMLightingDict(profile("Work"));
    tab.updateUISettings();
    tab.setMLightingDict(PropertyList::dictionary({{keys::ProfileName, PropertyList::dictionary()},
                                                   {keys::ScrollLED, "on"},
                                                   {keys::LEDEffects, "0"},
                                                   {keys::LEDColors, 1},
                                                   {keys::BrightnessKBNormal, PropertyList()}}));
    tab.updateUISettings();
    QCOMPARE(lightingTexts(tab), blank(5));
  }

  void powerSettingsAreShownByTheirLabels() {
    MouseMaintenanceController tab;
    QCOMPARE(tab.objectName(), QStringLiteral("MouseMaintenanceController"));
    tab.setMMaintenanceDict(profile("Work"));
    QStringList texts;
    for (int position = 0; position <= 6; ++position) {
      tab.setMMaintenanceSettingsDict(PropertyList::dictionary(
          {{keys::BrightnessBattery, position}, {keys::PowerSaver, position}, {keys::BatteryCriticalLevel, position}}));
      tab.updateUISettings();
      texts << maintenanceTexts(tab).join(QLatin1String(", "));
    }
    QCOMPARE(texts, (QStringList{"Work, , , ", "Work, Off, 1 minute, 5 % battery", "Work, Dim, 5 minutes, 10 % battery",
                                 "Work, Normal, 10 minutes, 15 % battery", "Work, Bright, 15 minutes, 20 % battery",
                                 "Work, , , 25 % battery", "Work, , , "}));
  }

  void hostileMaintenanceSettingsShowNothing() {
    MouseMaintenanceController tab;
    tab.setMMaintenanceSettingsDict(deviceSettings());
    tab.setMMaintenanceDict(profile("Work"));
    tab.updateUISettings();
    tab.setMMaintenanceSettingsDict(PropertyList::dictionary({{keys::PowerSaver, "3"}, {keys::BrightnessBattery, -2}}));
    tab.setMMaintenanceDict(PropertyList::array());
    tab.setMDefaultDict(PropertyList("x"));
    tab.updateUISettings();
    QCOMPARE(maintenanceTexts(tab), blank(4));
  }

  void theOwnerFillsTheVersions() {
    MouseMaintenanceController tab;
    QCOMPARE(tab.mDriverVersion()->objectName(), QStringLiteral("mDriverVersion"));
    QCOMPARE(tab.mFirmwareVersion()->objectName(), QStringLiteral("mFirmwareVersion"));
    QCOMPARE(tab.mFirmwareVersion()->textFormat(), Qt::PlainText);
    tab.mFirmwareVersion()->setText(QStringLiteral("1.04"));
    tab.updateUISettings();
    QCOMPARE(textOfLabel(tab, "mFirmwareVersion"), QStringLiteral("1.04"));
  }

  void theFirmwareIndicatorIsSeenOnlyWhileItRuns() {
    MouseMaintenanceController tab;
    const auto* indicator = tab.findChild<BusyIndicator*>(QStringLiteral("mFirmwareVersionIndicator"));
    QVERIFY(indicator->isHidden() && !indicator->isRunning());
    tab.startProgresIndicatorAnimation();
    QVERIFY(!indicator->isHidden() && indicator->isRunning());
    tab.stopProgressIndicatorAnimation();
    QVERIFY(indicator->isHidden() && !indicator->isRunning());
  }

  void withoutADeviceEveryLabelIsGreyAndSaysWhy() {
    MouseLightingController lighting;
    MouseMaintenanceController maintenance;
    for (const bool enabled : {false, true}) {
      lighting.enableControlsState(enabled);
      maintenance.enableControlsState(enabled);
      for (const QWidget* page : std::initializer_list<QWidget*>{&lighting, &maintenance}) {
        const QList<QLabel*> labels = page->findChildren<QLabel*>();
        QVERIFY(labels.size() >= 7);
        for (const QLabel* label : labels) {
          QCOMPARE(label->palette().color(QPalette::WindowText),
                   page->palette().color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
        }
        QCOMPARE(page->toolTip(), enabled ? QString() : QStringLiteral("No mouse connected"));
      }
    }
  }
};

QTEST_MAIN(SettingsPagesTest)
#include "test_gui_settings_pages.moc"
