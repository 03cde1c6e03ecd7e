// The Performance tab.
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <limits>

#include "SampleSettings.h"
#include "performance/MousePerformanceController.h"
#include "performance/StageChip.h"
#include "platform/Localization.h"

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

// The stages that are shown, the current one in brackets.
QStringList stagesOf(const QWidget& page) {
  QStringList texts;
  for (const char* name : {"mStageOne", "mStageTwo", "mStageThree", "mStageFour", "mStageFive"}) {
    const auto* chip = page.findChild<StageChip*>(QLatin1String(name));
    if (chip == nullptr || chip->isHidden()) continue;
    texts << (chip->isCurrent() ? QStringLiteral("[%1]").arg(chip->text()) : chip->text());
  }
  return texts;
}

QStringList performanceTexts(const QWidget& page) {
  return textsOf(page, {"mProfileNameLabel", "mDpiValue", "mOnTheFlyValue", "mPollingRateValue", "mAccelerationValue"});
}

QStringList blank(int count) {
  return QStringList(count, QString());
}

void hand(MousePerformanceController& tab, const PropertyList& active, const PropertyList& device) {
  tab.setMPerformanceSettingsDict(active);
  tab.setMDeviceSettingsDict(device);
  tab.populateUISettings();
  tab.updateUISettings();
}

}  // namespace

class SettingsPagesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void theSensitivityIsOneNumberWhileTheAxesAreLocked() {
    MousePerformanceController tab;
    QCOMPARE(tab.objectName(), QStringLiteral("MousePerformanceController"));
    hand(tab, profile("Work"), deviceSettings());
    QCOMPARE(performanceTexts(tab), (QStringList{"Work", "800 DPI", "On", "500 Hz", "Level 7"}));
    QCOMPARE(stagesOf(tab), (QStringList{"400", "[800]", "1600 × 800", "3200", "5600"}));
    QCOMPARE(textOfLabel(tab, "mCurrentProfileLabel"), QStringLiteral("Profile"));
  }

  void theSensitivityNamesBothAxesWhileTheyAreIndependent() {
    MousePerformanceController tab;
    hand(tab, profile("Work").with(keys::IndependentXYOn, 1).with(keys::DPIY, 1600), deviceSettings());
    QCOMPARE(textOfLabel(tab, "mDpiValue"), QStringLiteral("X = 800, Y = 1600 DPI"));
  }

  void thePollingRateComesFromTheDevice() {
    MousePerformanceController tab;
    QStringList texts;
    for (const int rate : {125, 500, 1000, 250, 0}) {
      hand(tab, profile("Work").with(keys::PollingRate, 1000), deviceSettings().with(keys::PollingRate, rate));
      texts << textOfLabel(tab, "mPollingRateValue");
    }
    QCOMPARE(texts, (QStringList{"125 Hz", "500 Hz", "1000 Hz", "", ""}));
  }

  void accelerationShowsItsLevelWhileItIsOn() {
    MousePerformanceController tab;
    hand(tab, profile("Work").with(keys::AccelerationOn, 0).with(keys::SensitivityOSDOn, 0), deviceSettings());
    QCOMPARE(textOfLabel(tab, "mAccelerationValue"), QStringLiteral("Off"));
    QCOMPARE(textOfLabel(tab, "mOnTheFlyValue"), QStringLiteral("Off"));
    hand(tab, profile("Work").with(keys::AccelerationOn, true).without(keys::Acceleration), deviceSettings());
    QCOMPARE(textOfLabel(tab, "mAccelerationValue"), QStringLiteral("On"));
  }

  void onlyTheStagesThatThereAreAreShown() {
    MousePerformanceController tab;
    QCOMPARE(stagesOf(tab), QStringList());
    const PropertyList two = PropertyList::array({stage(100, 100, false), stage(5600, 5600, false)});
    hand(tab, profile("Work").with(keys::Stages, two).with(keys::StageValue, 5), deviceSettings());
    QCOMPARE(stagesOf(tab), (QStringList{"100", "5600"}));
    PropertyList seven = two;
    for (int extra = 0; extra < 5; ++extra) seven = seven.appending(stage(700, 700, false));
    hand(tab, profile("Work").with(keys::Stages, seven).with(keys::StageValue, 0), deviceSettings());
    QCOMPARE(stagesOf(tab), (QStringList{"[100]", "5600", "700", "700", "700"}));
  }

  void aStageIsReadOutWithItsUnit() {
    MousePerformanceController tab;
    hand(tab, profile("Work"), deviceSettings());
    const auto* current = tab.findChild<StageChip*>(QStringLiteral("mStageTwo"));
    const auto* independent = tab.findChild<StageChip*>(QStringLiteral("mStageThree"));
    QCOMPARE(current->accessibleName(), QStringLiteral("800 DPI"));
    QCOMPARE(current->accessibleDescription(), QStringLiteral("Current stage"));
    QCOMPARE(independent->accessibleName(), QStringLiteral("X = 1600, Y = 800 DPI"));
    QCOMPARE(independent->accessibleDescription(), QString());
  }

  void fiveIndependentStagesAreWholeInTheSmallestWindow() {
    MousePerformanceController tab;
    PropertyList wide = PropertyList::array();
    for (int index = 0; index < 5; ++index) wide = wide.appending(stage(5600, 5500, true));
    hand(tab, profile("Work").with(keys::Stages, wide), deviceSettings());
    tab.resize(1024, 476);
    tab.show();
    for (const StageChip* chip : tab.findChildren<StageChip*>()) {
      QCOMPARE(chip->width(), chip->sizeHint().width());
      QVERIFY(tab.rect().contains(QRect(chip->mapTo(&tab, QPoint()), chip->size())));
    }
  }

  void aStageInItsNaturalWidthIsNotCut() {
    for (const bool isCurrent : {false, true}) {
      StageChip chip;
      chip.setText(QStringLiteral("800"));
      chip.setCurrent(isCurrent);
      chip.resize(chip.sizeHint());
      const QImage seen = chip.grab().toImage();
      // Ink of the text, well inside the outline.
      const QRect inner = seen.rect().adjusted(6, 4, -6, -4);
      const QRgb ground = seen.pixel(inner.topLeft());
      QRect ink;
      for (int y = inner.top(); y <= inner.bottom(); ++y) {
        for (int x = inner.left(); x <= inner.right(); ++x) {
          if (seen.pixel(x, y) != ground) ink |= QRect(x, y, 1, 1);
        }
      }
      QVERIFY(ink.width() > chip.fontMetrics().horizontalAdvance(chip.text()) * 2 / 3);
      QVERIFY(ink.height() > chip.fontMetrics().height() / 3);
    }
  }

  void hugeValuesDoNotWidenTheWindow() {
    constexpr int huge = std::numeric_limits<int>::min();
    const std::string name(300, 'W');
    MousePerformanceController performance;
    PropertyList stages = PropertyList::array();
    for (int index = 0; index < 5; ++index) stages = stages.appending(stage(huge, huge, true));
    hand(performance,
         profile(name)
             .with(keys::Stages, stages)
             .with(keys::DPIX, huge)
             .with(keys::DPIY, huge)
             .with(keys::IndependentXYOn, 1),
         deviceSettings());
    const QSize least = performance.minimumSizeHint();
    QVERIFY2(least.width() <= 1024 && least.height() <= 476, qPrintable(QString::number(least.width())));
  }

  void hostilePerformanceSettingsShowNothing() {
    const PropertyList hostile[] = {
        PropertyList("text"), PropertyList::array({1}),
        PropertyList::dictionary({{keys::ProfileName, 1},
                                  {keys::DPIX, "many"},
                                  {keys::IndependentXYOn, 1},
                                  {keys::Stages, PropertyList::array({1, "x", PropertyList::dictionary()})},
                                  {keys::StageValue, "1"},
                                  {keys::AccelerationOn, "yes"},
                                  {keys::SensitivityOSDOn, PropertyList::array()}})};
    for (const PropertyList& settings : hostile) {
      MousePerformanceController tab;
      hand(tab, profile("Work"), deviceSettings());
      hand(tab, settings, PropertyList::array());
      QCOMPARE(performanceTexts(tab), blank(5));
      QCOMPARE(stagesOf(tab), QStringList());
    }
  }

  void withoutAProfileRecordNothingChanges() {
    MousePerformanceController performance;
    hand(performance, profile("Work"), deviceSettings());
    hand(performance, PropertyList(), deviceSettings());
    QCOMPARE(performanceTexts(performance), (QStringList{"Work", "800 DPI", "On", "500 Hz", "Level 7"}));
  }

  void withoutADeviceEveryLabelIsGreyAndSaysWhy() {
    MousePerformanceController performance;
    for (const bool enabled : {false, true}) {
      performance.enableControlsState(enabled);
      const QList<QLabel*> labels = performance.findChildren<QLabel*>();
      QVERIFY(labels.size() >= 7);
      for (const QLabel* label : labels) {
        QCOMPARE(label->palette().color(QPalette::WindowText),
                 performance.palette().color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
      }
      QCOMPARE(performance.toolTip(), enabled ? QString() : QStringLiteral("No mouse connected"));
    }
  }
};

QTEST_MAIN(SettingsPagesTest)
#include "test_gui_settings_pages.moc"
