// The Maintenance tab: versions, power settings and the way back to the factory settings.
#include "maintenance/MouseMaintenanceController.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <limits>

#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"
#include "support/SampleSettings.h"
#include "support/SliderDrag.h"
#include "widgets/Alert.h"
#include "widgets/BusyIndicator.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// Records what is asked for and answers as an owner with an engine does: the change is stored and redrawn.
struct Owner : MouseMaintenanceDelegate {
  explicit Owner(MouseMaintenanceController& shown) : tab(shown) { tab.setMMouseMaintenanceDelegate(this); }

  void updateValueForSetting(const PropertyList& settings) override {
    updates.push_back(settings);
    tab.setMMaintenanceSettingsDict(tab.mMaintenanceSettingsDict().merging(settings));
    tab.updateUISettings();
  }
  std::vector<PropertyList> take() { return std::exchange(updates, {}); }

  MouseMaintenanceController& tab;
  std::vector<PropertyList> updates;
};

using Updates = std::vector<PropertyList>;

struct SliderCase {
  const char* name;
  keys::Key key;
  QStringList labels;      // by position, from 1
  QStringList labelNames;  // in the order of the labels; two to a position where a unit stands beside a number
};

const std::vector<SliderCase>& sliderCases() {
  static const std::vector<SliderCase> cases{
      {"mLightBrightnessSlider",
       keys::BrightnessBattery,
       {"Off", "Dim", "Normal", "Bright"},
       {"mBrightnessOffLabel", "mBrightnessDimLabel", "mBrightnessNormaLabel", "mBrightnessBrightLabel"}},
      {"mSleepModeSlider",
       keys::PowerSaver,
       {"1 min", "5 min", "10 min", "15 min"},
       {"mSleepModeOneLabel", "mSleepModeOneMinLabel", "mSleepModeFiveLabel", "mSleepModeFiveMinLabel",
        "mSleepModeTenLabel", "mSleepModeTenMinLabel", "mSleepModeFifteenLabel", "mSleepModeFifteenMinLabel"}},
      {"mFLashScrollWheelSlider",
       keys::BatteryCriticalLevel,
       {"5 %", "10 %", "15 %", "20 %", "25 %"},
       {"mFlashScrollLightFivePercentLabel", "mFlashScrollLightTenPercentLabel", "mFlashScrollLightFifteenPercentLabel",
        "mFlashScrollLightTwentyPercentLabel", "mFlashScrollLightTwentyFivePercentLabel"}}};
  return cases;
}

struct Fixture {
  Fixture() {
    window.resize(1024, 476);
    tab.resize(window.size());
    tab.setMMaintenanceWindow(&window);
    tab.setOpenAddress([this](const QUrl& address) {
      opened << address.toString();
      return opensAddresses;
    });
    tab.setMMaintenanceSettingsDict(deviceSettings());
    tab.setMMaintenanceDict(profile("Work"));
    tab.setMDefaultDict(profile("Default").with("Further", "kept"));
    tab.updateUISettings();
    window.show();
    window.activateWindow();
  }
  QSlider& slider(const char* name) { return *tab.findChild<QSlider*>(QLatin1String(name)); }
  QLabel& label(const char* name) { return *tab.findChild<QLabel*>(QLatin1String(name)); }
  QPushButton& button(const char* name) { return *tab.findChild<QPushButton*>(QLatin1String(name)); }
  std::vector<int> positions() {
    std::vector<int> positions;
    for (const SliderCase& row : sliderCases()) positions.push_back(slider(row.name).value());
    return positions;
  }
  QMessageBox* alert() { return window.findChild<QMessageBox*>(QStringLiteral("alert")); }

  QWidget window;
  MouseMaintenanceController tab{&window};
  Owner owner{tab};
  QStringList opened;
  bool opensAddresses = true;
};

void addSliderRows() {
  QTest::addColumn<int>("row");
  int row = 0;
  for (const SliderCase& one : sliderCases()) QTest::newRow(one.name) << row++;
}

}  // namespace

class MouseMaintenanceControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  void everyControlIsFoundByItsName_data() {
    QTest::addColumn<QString>("name");
    for (const char* name :
         {"mProfileNameLabel", "mCurrentProfileLabel", "mDriverVersionLabel", "mFirmwareVersionLabel", "mDriverVersion",
          "mFirmwareVersion", "mCheckUpdates", "mRestoreSettings", "mReduceBrightnessLabel", "mBrightnessNoteLabel",
          "mEnterSleepModeLabel", "mFlashScrollLightLabel", "mFirmwareVersionIndicator"}) {
      QTest::newRow(name) << QString::fromLatin1(name);
    }
    for (const SliderCase& row : sliderCases()) {
      QTest::newRow(row.name) << QString::fromLatin1(row.name);
      for (const QString& name : row.labelNames) QTest::newRow(qPrintable(name)) << name;
    }
  }
  void everyControlIsFoundByItsName() {
    QFETCH(QString, name);
    MouseMaintenanceController tab;
    QCOMPARE(tab.objectName(), QStringLiteral("MouseMaintenanceController"));
    QCOMPARE(tab.findChildren<QWidget*>(name).size(), 1);
  }

  void beforeItIsGivenSettingsItHasEmptyOnes() {
    const MouseMaintenanceController tab;
    for (const PropertyList* settings :
         {&tab.mMaintenanceSettingsDict(), &tab.mMaintenanceDict(), &tab.mDefaultDict(), &tab.mUserSettings()}) {
      QVERIFY(*settings == PropertyList::dictionary());
    }
    QVERIFY(tab.mMouseMaintenanceDelegate() == nullptr && tab.mMaintenanceWindow() == nullptr);
  }

  // --- Sliders

  void thePositionsCountFromOneByTheirLabels_data() { addSliderRows(); }
  void thePositionsCountFromOneByTheirLabels() {
    QFETCH(int, row);
    const SliderCase& one = sliderCases().at(static_cast<std::size_t>(row));
    Fixture fixture;
    QSlider& slider = fixture.slider(one.name);
    QCOMPARE(slider.minimum(), 1);
    QCOMPARE(slider.maximum(), static_cast<int>(one.labels.size()));
    QVERIFY(!slider.accessibleName().isEmpty());
    for (int position = 1; position <= one.labels.size(); ++position) {
      fixture.tab.setMMaintenanceSettingsDict(deviceSettings().with(one.key, position));
      fixture.tab.updateUISettings();
      QCOMPARE(slider.value(), position);
      QCOMPARE(slider.accessibleDescription(), one.labels[position - 1]);
    }
    QStringList texts;
    int last = 0;
    for (const QString& name : one.labelNames) {
      const auto* label = fixture.tab.findChild<QLabel*>(name);
      const int position = label->property("position").toInt();
      if (position == last) {
        texts.last() += QLatin1Char(' ') + label->text();
      } else {
        QCOMPARE(position, last + 1);
        texts << label->text();
      }
      last = position;
    }
    QCOMPARE(texts, one.labels);
    QVERIFY(fixture.owner.take().empty());
  }

  void movingASliderSendsExactlyItsKeyOncePerStep_data() { addSliderRows(); }
  void movingASliderSendsExactlyItsKeyOncePerStep() {
    QFETCH(int, row);
    const SliderCase& one = sliderCases().at(static_cast<std::size_t>(row));
    const auto sends = [&](int position) { return Updates{PropertyList::dictionary({{one.key, position}})}; };
    Fixture fixture;
    QSlider& slider = fixture.slider(one.name);
    QTest::keyClick(&slider, Qt::Key_Home);
    fixture.owner.take();
    QTest::keyClick(&slider, Qt::Key_Home);
    QVERIFY(fixture.owner.take().empty());
    for (int position = 2; position <= slider.maximum(); ++position) {
      QTest::keyClick(&slider, Qt::Key_Right);
      QVERIFY(fixture.owner.take() == sends(position));
      QCOMPARE(slider.accessibleDescription(), one.labels[position - 1]);
    }
    QTest::keyClick(&slider, Qt::Key_Right);
    QVERIFY(fixture.owner.take().empty());
    QTest::keyClick(&slider, Qt::Key_PageDown);
    QVERIFY(fixture.owner.take() == sends(slider.maximum() - 1));
  }

  void aDragSendsEveryValueOnce_data() { addSliderRows(); }
  void aDragSendsEveryValueOnce() {
    QFETCH(int, row);
    const SliderCase& one = sliderCases().at(static_cast<std::size_t>(row));
    Fixture fixture;
    QSlider& slider = fixture.slider(one.name);
    QTest::keyClick(&slider, Qt::Key_Home);
    fixture.owner.take();
    pressSlider(slider, 1);
    for (int position = 1; position <= slider.maximum(); ++position) {
      dragSlider(slider, position);
      dragSlider(slider, position);
    }
    releaseSlider(slider, slider.maximum());
    Updates wanted;
    for (int position = 2; position <= slider.maximum(); ++position) {
      wanted.push_back(PropertyList::dictionary({{one.key, position}}));
    }
    QVERIFY(fixture.owner.take() == wanted);
  }

  void withoutSettingsTheSlidersKeepTheirPositions() {
    Fixture fixture;
    QCOMPARE(fixture.positions(), (std::vector<int>{2, 3, 1}));
    for (const PropertyList& none : {PropertyList(), PropertyList::dictionary()}) {
      fixture.tab.setMMaintenanceSettingsDict(none);
      fixture.tab.updateUISettings();
      QCOMPARE(fixture.positions(), (std::vector<int>{2, 3, 1}));
    }
    fixture.tab.setMMaintenanceSettingsDict(PropertyList());
    fixture.tab.setMMaintenanceDict(profile("Other"));
    fixture.tab.updateUISettings();
    QCOMPARE(fixture.label("mProfileNameLabel").text(), QStringLiteral("Work"));
    QVERIFY(fixture.owner.take().empty());
  }

  void settingsOfAnyShapeAreSurvived() {
    const PropertyList junk = PropertyList::array({1});
    const PropertyList hostile[] = {
        PropertyList("text"), junk, PropertyList(7),
        PropertyList::dictionary({{keys::PowerSaver, junk}, {keys::BrightnessBattery, -2}}),
        PropertyList::dictionary(
            {{keys::PowerSaver, std::numeric_limits<std::int64_t>::max()}, {keys::BatteryCriticalLevel, 1e300}})};
    for (const PropertyList& settings : hostile) {
      Fixture fixture;
      fixture.tab.setMMaintenanceSettingsDict(settings);
      fixture.tab.setMMaintenanceDict(junk);
      fixture.tab.setMDefaultDict(PropertyList("x"));
      fixture.tab.updateUISettings();
      QCOMPARE(fixture.label("mProfileNameLabel").text(), QString());
      fixture.tab.clickRestoreSettings();
      confirm(fixture.alert());
      QVERIFY(fixture.owner.take() == (Updates{PropertyList::dictionary({{keys::ProfileName, ""},
                                                                         {keys::BrightnessNormal, 4},
                                                                         {keys::ProfileOSDOn, true},
                                                                         {keys::PowerSaver, 3},
                                                                         {keys::BatteryCriticalLevel, 1},
                                                                         {keys::BrightnessBattery, 2}})}));
    }
  }

  void theSettingsOfTheLastRedrawAreKept() {
    Fixture fixture;
    QVERIFY(fixture.tab.mUserSettings() == deviceSettings());
    fixture.tab.setMMaintenanceSettingsDict(deviceSettings().with(keys::PowerSaver, 1));
    QVERIFY(fixture.tab.mUserSettings() == deviceSettings());
    fixture.tab.updateUISettings();
    QVERIFY(fixture.tab.mUserSettings() == deviceSettings().with(keys::PowerSaver, 1));
  }

  void everyControlIsReachedByTab() {
    Fixture fixture;
    QVERIFY(QTest::qWaitForWindowActive(&fixture.window));
    fixture.button("mCheckUpdates").setFocus();
    QStringList reached;
    for (int step = 0; step < 5; ++step) {
      reached << QApplication::focusWidget()->objectName();
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, (QStringList{"mCheckUpdates", "mLightBrightnessSlider", "mSleepModeSlider",
                                   "mFLashScrollWheelSlider", "mRestoreSettings"}));
  }

  // --- Restore

  void restoringAsksFirst() {
    Fixture fixture;
    QTest::mouseClick(&fixture.button("mRestoreSettings"), Qt::LeftButton);
    QMessageBox* alert = fixture.alert();
    QVERIFY(alert != nullptr && alert->isVisible());
    QCOMPARE(alert->parentWidget(), &fixture.window);
    QCOMPARE(alert->windowModality(), Qt::WindowModal);
    QCOMPARE(alert->text(), QStringLiteral("Restore Profile “Work” to Its Factory Settings?"));
    QCOMPARE(alert->informativeText(), localized("lkeyRestoreDefaultDesc"));
    QCOMPARE(alert->buttons().size(), 2);
    QCOMPARE(alert->buttons().constFirst()->text(), QStringLiteral("Restore"));
    QCOMPARE(alert->defaultButton()->text(), localized("lkeyCancel"));
    QCOMPARE(alert->escapeButton()->text(), localized("lkeyCancel"));
    QVERIFY(fixture.owner.take().empty());
  }

  void restoringSendsTheDefaultsWithTheNameAndTheFixedValues() {
    Fixture fixture;
    const PropertyList defaults = profile("Default")
                                      .with("Further", "kept")
                                      .with(keys::PowerSaver, 1)
                                      .with(keys::BrightnessNormal, 1)
                                      .with(keys::ProfileOSDOn, false)
                                      .with(keys::BatteryCriticalLevel, 5)
                                      .with(keys::BrightnessBattery, 4);
    fixture.tab.setMDefaultDict(defaults);
    fixture.tab.setMMaintenanceSettingsDict(deviceSettings()
                                                .with(keys::BrightnessBattery, 4)
                                                .with(keys::PowerSaver, 1)
                                                .with(keys::BatteryCriticalLevel, 5));
    fixture.tab.updateUISettings();
    QCOMPARE(fixture.positions(), (std::vector<int>{4, 1, 5}));
    QTest::keyClick(&fixture.button("mRestoreSettings"), Qt::Key_Space);
    confirm(fixture.alert());
    QVERIFY(fixture.owner.take() == (Updates{defaults.with(keys::ProfileName, "Work")
                                                 .with(keys::BrightnessNormal, 4)
                                                 .with(keys::ProfileOSDOn, true)
                                                 .with(keys::PowerSaver, 3)
                                                 .with(keys::BatteryCriticalLevel, 1)
                                                 .with(keys::BrightnessBattery, 2)}));
    QVERIFY(fixture.tab.mDefaultDict() == defaults);
    QCOMPARE(fixture.positions(), (std::vector<int>{2, 3, 1}));
    QTRY_VERIFY(fixture.alert() == nullptr);
  }

  void anyOtherButtonRestoresNothing() {
    Fixture fixture;
    fixture.tab.clickRestoreSettings();
    QTest::keyClick(fixture.alert(), Qt::Key_Escape);
    QTRY_VERIFY(fixture.alert() == nullptr);
    fixture.tab.clickRestoreSettings();
    QTest::mouseClick(fixture.alert()->buttons().last(), Qt::LeftButton);
    QTRY_VERIFY(fixture.alert() == nullptr);
    QVERIFY(fixture.owner.take().empty());
  }

  void aProfileThatIsNoLongerTheCurrentOneIsNotRestored() {
    Fixture fixture;
    fixture.tab.clickRestoreSettings();
    fixture.tab.setMMaintenanceDict(profile("Play"));
    fixture.tab.updateUISettings();
    confirm(fixture.alert());
    QVERIFY(fixture.owner.take().empty());
    QStringList shown;
    for (const QMessageBox* alert : fixture.window.findChildren<QMessageBox*>()) {
      if (alert->isVisible()) shown << alert->text();
    }
    QCOMPARE(shown, QStringList{QStringLiteral("“Work” is no longer the current profile")});
  }

  void anAlertThatOutlivesTheTabRestoresNothing() {
    struct Recorder : MouseMaintenanceDelegate {
      void updateValueForSetting(const PropertyList& settings) override { updates.push_back(settings); }
      Updates updates;
    } recorder;
    QWidget window;
    {
      MouseMaintenanceController tab;
      tab.setMMaintenanceWindow(&window);
      tab.setMMouseMaintenanceDelegate(&recorder);
      tab.clickRestoreSettings();
    }
    auto* alert = window.findChild<QMessageBox*>(QStringLiteral("alert"));
    QVERIFY(alert != nullptr);
    confirm(alert);
    QTRY_VERIFY(window.findChild<QMessageBox*>(QStringLiteral("alert")) == nullptr);
    QVERIFY(recorder.updates.empty());
  }

  void theRestoreNoteSaysWhatIsKept() {
    Fixture fixture;
    QVERIFY(fixture.label("mRestoreNote").text().contains(QStringLiteral("keeps its name")));
  }

  // --- Versions and updates

  void aPageThatCannotBeOpenedIsGivenAsAnAddress() {
    Fixture fixture;
    fixture.opensAddresses = false;
    QTest::mouseClick(&fixture.button("mCheckUpdates"), Qt::LeftButton);
    QVERIFY(fixture.alert() != nullptr);
    QVERIFY(fixture.alert()->informativeText().endsWith(addressOf(WebPage::Support).toString()));
  }

  void lookingForUpdatesOpensTheSupportPage() {
    Fixture fixture;
    QTest::mouseClick(&fixture.button("mCheckUpdates"), Qt::LeftButton);
    QCOMPARE(fixture.opened, QStringList{addressOf(WebPage::Support).toString()});
    QVERIFY(fixture.alert() == nullptr);
    fixture.tab.setOpenAddress({});
    QTest::mouseClick(&fixture.button("mCheckUpdates"), Qt::LeftButton);
    QCOMPARE(fixture.opened.size(), 1);
    QVERIFY(fixture.owner.take().empty());
  }

  void theOwnerFillsTheVersions() {
    Fixture fixture;
    QCOMPARE(fixture.tab.mDriverVersion()->objectName(), QStringLiteral("mDriverVersion"));
    QCOMPARE(fixture.tab.mFirmwareVersion()->objectName(), QStringLiteral("mFirmwareVersion"));
    QCOMPARE(fixture.tab.mFirmwareVersion()->textFormat(), Qt::PlainText);
    fixture.tab.mFirmwareVersion()->setText(QStringLiteral("1.04"));
    fixture.tab.updateUISettings();
    QCOMPARE(fixture.label("mFirmwareVersion").text(), QStringLiteral("1.04"));
  }

  void theFirmwareIndicatorIsSeenOnlyWhileItRuns() {
    Fixture fixture;
    const auto* indicator = fixture.tab.findChild<BusyIndicator*>(QStringLiteral("mFirmwareVersionIndicator"));
    QVERIFY(indicator->isHidden() && !indicator->isRunning());
    fixture.tab.startProgresIndicatorAnimation();
    QVERIFY(indicator->isVisible() && indicator->isRunning());
    fixture.tab.stopProgressIndicatorAnimation();
    QVERIFY(indicator->isHidden() && !indicator->isRunning());
  }

  void longTextsDoNotWidenThePage() {
    Fixture fixture;
    fixture.tab.setMMaintenanceDict(profile(std::string(300, 'W')));
    fixture.tab.mFirmwareVersion()->setText(QString(500, QLatin1Char('9')));
    fixture.tab.updateUISettings();
    const QSize least = fixture.tab.minimumSizeHint();
    QVERIFY2(least.width() <= 1024 && least.height() <= 476,
             qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
  }

  // --- Without a device

  void withoutADeviceSlidersAndRestoreAreDisabledAndSayWhy() {
    Fixture fixture;
    for (const bool enabled : {false, true}) {
      fixture.tab.enableControlsState(enabled);
      const QString why = enabled ? QString() : QStringLiteral("No mouse connected");
      QCOMPARE(fixture.button("mRestoreSettings").isEnabled(), enabled);
      QCOMPARE(fixture.button("mRestoreSettings").toolTip(), why);
      for (const SliderCase& row : sliderCases()) {
        QCOMPARE(fixture.slider(row.name).isEnabled(), enabled);
        QCOMPARE(fixture.slider(row.name).toolTip(), why);
      }
      QVERIFY(fixture.button("mCheckUpdates").isEnabled());
      QVERIFY(!fixture.button("mCheckUpdates").toolTip().isEmpty());
      const auto group = enabled ? QPalette::Active : QPalette::Disabled;
      for (const QLabel* label : fixture.tab.findChildren<QLabel*>()) {
        const bool isMuted = label->property(SkarnStyle::textRoleProperty).toString() == QLatin1String("caption");
        QCOMPARE(label->palette().color(label->foregroundRole()),
                 fixture.tab.palette().color(group, isMuted ? QPalette::PlaceholderText : QPalette::WindowText));
      }
    }
  }
};

SKARN_QTEST(MouseMaintenanceControllerTest)
#include "MouseMaintenanceController_test.moc"
