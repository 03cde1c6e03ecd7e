// The page of the Performance tab: what it shows, and what can be reached.
#include <limits>

#include "performance/PerformanceTab.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"
#include "widgets/SliderScale.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// The stages that are shown, the current one in brackets.
QStringList stagesOf(const PerformanceTab& open) {
  QStringList shown;
  for (const char* name : {"mStageOne", "mStageTwo", "mStageThree", "mStageFour", "mStageFive"}) {
    const auto* chip = open.find<StageChip>(name);
    if (chip->isHidden()) continue;
    shown << (chip->isCurrent() ? QStringLiteral("[%1]").arg(chip->text()) : chip->text());
  }
  return shown;
}

constexpr std::initializer_list<const char*> controlNames = {"mSensitivityStages",  "mXDpiSlider",
                                                             "mYDpiSlider",         "mEnableIndependentXY",
                                                             "mEnableOnTheFly",     "mEnableAcceleration",
                                                             "mAccelerationSlider", "mPollingRate",
                                                             "mDpiValue",           "mStageOne"};

}  // namespace

class MousePerformanceControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  // --- What it shows

  void everyControlShowsItsSetting() {
    PerformanceTab open(profile("Work"), deviceSettings().with(keys::PollingRate, 1000));
    QCOMPARE(open.tab.objectName(), QStringLiteral("MousePerformanceController"));
    QCOMPARE(open.find<QLabel>("mProfileNameLabel")->text(), QStringLiteral("Work"));
    QCOMPARE(open.readout(), QStringLiteral("800 DPI"));
    QCOMPARE(open.value("mXDpiSlider"), 800);
    QCOMPARE(open.value("mYDpiSlider"), 800);
    QVERIFY(!open.isTicked("mEnableIndependentXY"));
    QVERIFY(open.isTicked("mEnableOnTheFly"));
    QVERIFY(open.isTicked("mEnableAcceleration"));
    QCOMPARE(open.value("mAccelerationSlider"), 7);
    QCOMPARE(open.find<QComboBox>("mPollingRate")->currentText(), QStringLiteral("1000 Hz"));
    open.hand(profile("Other")
                  .with(keys::SensitivityOSDOn, 0)
                  .with(keys::AccelerationOn, 0)
                  .with(keys::Acceleration, 3)
                  .with(keys::DPIX, 5600));
    QCOMPARE(open.find<QLabel>("mProfileNameLabel")->text(), QStringLiteral("Other"));
    QCOMPARE(open.readout(), QStringLiteral("5600 DPI"));
    QVERIFY(!open.isTicked("mEnableOnTheFly"));
    QVERIFY(!open.isTicked("mEnableAcceleration"));
    QCOMPARE(open.value("mAccelerationSlider"), 3);
    COMPARE_REQUESTS(open);
  }

  void theSlidersHaveTheirRangesAndMarks_data() {
    QTest::addColumn<QString>("scaleName");
    QTest::addColumn<QString>("sliderName");
    QTest::addColumn<QString>("labelName");
    QTest::addColumn<QList<int>>("marks");
    const QList<int> sensitivities = {100, 1000, 2000, 3000, 4000, 5000, 5600};
    QTest::newRow("page") << "mDpiScale"
                          << "mYDpiSlider"
                          << "mDpi%1Label" << sensitivities;
    QTest::newRow("sheet") << "mStageDpiScale"
                           << "mStageYDpiSlider"
                           << "mStageDpi%1Label" << sensitivities;
    QTest::newRow("acceleration") << "mAccelerationScale"
                                  << "mAccelerationSlider"
                                  << "mAcceleration%1Label" << QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  }
  void theSlidersHaveTheirRangesAndMarks() {
    QFETCH(QString, scaleName);
    QFETCH(QString, sliderName);
    QFETCH(QString, labelName);
    QFETCH(QList<int>, marks);
    PerformanceTab open;
    const auto* scale = open.find<SliderScale>(qPrintable(scaleName));
    const auto* slider = open.slider(qPrintable(sliderName));
    QCOMPARE(slider->parentWidget(), scale);
    QCOMPARE((QList<int>{slider->minimum(), slider->maximum()}), (QList<int>{marks.first(), marks.last()}));
    QCOMPARE(scale->findChildren<QLabel*>().size(), marks.size());
    for (const int mark : marks) {
      const auto* label = open.find<QLabel>(qPrintable(labelName.arg(mark)));
      QCOMPARE(label->text(), QString::number(mark));
      QCOMPARE(label->property(SliderScale::positionProperty).toInt(), mark);
    }
  }

  void theSensitivitySlidersStandOnOneScale() {
    PerformanceTab open;
    const auto inPage = [&](const char* name) {
      const QSlider* slider = open.slider(name);
      return QRect(slider->mapTo(&open.tab, QPoint()), slider->size());
    };
    QCOMPARE(inPage("mXDpiSlider").left(), inPage("mYDpiSlider").left());
    QCOMPARE(inPage("mXDpiSlider").width(), inPage("mYDpiSlider").width());
    QVERIFY(inPage("mXDpiSlider").bottom() < inPage("mYDpiSlider").top());
    QCOMPARE((QList<int>{open.slider("mXDpiSlider")->minimum(), open.slider("mXDpiSlider")->maximum()}),
             (QList<int>{100, 5600}));
  }

  void lockedAxesHideTheirCaptionsAndTheSliderOfY() {
    PerformanceTab open;
    QVERIFY(open.find<QLabel>("mDpiXLabel")->isHidden());
    QVERIFY(open.find<QLabel>("mDpiYLabel")->isHidden());
    QVERIFY(!open.isEnabled("mYDpiSlider"));
    QVERIFY(open.toolTip("mYDpiSlider").contains(QStringLiteral("locked")));
    open.hand(independent(800, 1600));
    QCOMPARE(open.readout(), QStringLiteral("X = 800, Y = 1600 DPI"));
    QVERIFY(open.isTicked("mEnableIndependentXY"));
    QVERIFY(open.find<QLabel>("mDpiXLabel")->isVisible());
    QVERIFY(open.find<QLabel>("mDpiYLabel")->isVisible());
    QVERIFY(open.isEnabled("mYDpiSlider"));
    QCOMPARE(open.toolTip("mYDpiSlider"), QString());
  }

  void theAccelerationSliderIsOffWithAcceleration() {
    PerformanceTab open;
    QVERIFY(open.isEnabled("mAccelerationSlider"));
    open.hand(profile("Work").with(keys::AccelerationOn, 0));
    QVERIFY(!open.isEnabled("mAccelerationSlider"));
    QCOMPARE(open.toolTip("mAccelerationSlider"), QStringLiteral("Acceleration is off."));
  }

  void valuesOutsideTheRangeAreClampedInTheSliders() {
    PerformanceTab open(profile("Work").with(keys::DPIX, 9000).with(keys::DPIY, 5));
    QCOMPARE(open.value("mXDpiSlider"), 5600);
    QCOMPARE(open.value("mYDpiSlider"), 100);
    QCOMPARE(open.readout(), QStringLiteral("9000 DPI"));
    open.hand(independent(9000, 5));
    QCOMPARE(open.readout(), QStringLiteral("X = 5600, Y = 100 DPI"));
    COMPARE_REQUESTS(open);
  }

  void thePollingRateComesFromTheDevice() {
    PerformanceTab open;
    QStringList shown;
    for (const int rate : {125, 1000, 250, 500, 0, 125}) {
      open.hand(profile("Work").with(keys::PollingRate, 1000), deviceSettings().with(keys::PollingRate, rate));
      shown << open.find<QComboBox>("mPollingRate")->currentText();
    }
    // A rate that is not in the list leaves the selection as it is.
    QCOMPARE(shown, (QStringList{"125 Hz", "1000 Hz", "1000 Hz", "500 Hz", "500 Hz", "125 Hz"}));
    COMPARE_REQUESTS(open);
  }

  void thePollingRatesAreInTheListOnce() {
    PerformanceTab open;
    open.tab.populateUISettings();
    const auto* list = open.find<QComboBox>("mPollingRate");
    QStringList titles;
    for (int index = 0; index < list->count(); ++index) {
      titles << list->itemText(index);
      QCOMPARE(MousePerformanceController::indexForPollingRateValue(list->itemData(index).toInt()), index);
    }
    QCOMPARE(titles, (QStringList{"125 Hz", "500 Hz", "1000 Hz"}));
    QVERIFY(!MousePerformanceController::indexForPollingRateValue(250));
  }

  void onlyTheStagesThatThereAreAreShown() {
    PerformanceTab open;
    QCOMPARE(stagesOf(open), (QStringList{"400", "[800]", "1600 × 800", "3200", "5600"}));
    const PropertyList two = PropertyList::array({stage(100, 100, false), stage(5600, 5600, false)});
    open.hand(profile("Work").with(keys::Stages, two).with(keys::StageValue, 5));
    QCOMPARE(stagesOf(open), (QStringList{"100", "5600"}));
    PropertyList seven = two;
    for (int extra = 0; extra < 5; ++extra) seven = seven.appending(stage(700, 700, false));
    open.hand(profile("Work").with(keys::Stages, seven).with(keys::StageValue, 0).with(keys::DPIX, 100));
    QCOMPARE(stagesOf(open), (QStringList{"[100]", "5600", "700", "700", "700"}));
  }

  void aStageIsLitAsLongAsItsValuesAreInForce_data() {
    QTest::addColumn<PropertyList>("settings");
    QTest::addColumn<QStringList>("stages");
    const PropertyList work = profile("Work").with(
        keys::Stages, PropertyList::array({stage(800, 800, false), stage(1600, 800, true), stage(1600, 1600, true)}));
    const auto at = [&](int index, int x, int y, int isIndependent) {
      return work.with(keys::StageValue, index)
          .with(keys::DPIX, x)
          .with(keys::DPIY, y)
          .with(keys::IndependentXYOn, isIndependent);
    };
    const QString apart = QStringLiteral("1600 × 800");
    QTest::newRow("locked") << at(0, 800, 800, 0) << QStringList{"[800]", apart, "1600"};
    QTest::newRow("locked, another value") << at(0, 850, 850, 0) << QStringList{"800", apart, "1600"};
    QTest::newRow("apart") << at(1, 1600, 800, 1) << QStringList{"800", "[" + apart + "]", "1600"};
    QTest::newRow("another Y") << at(1, 1600, 850, 1) << QStringList{"800", apart, "1600"};
    QTest::newRow("locked where the stage is apart") << at(1, 1600, 1600, 0) << QStringList{"800", apart, "1600"};
    QTest::newRow("apart and equal") << at(2, 1600, 1600, 1) << QStringList{"800", apart, "[1600]"};
    QTest::newRow("the value of another stage") << at(2, 800, 800, 0) << QStringList{"800", apart, "1600"};
  }
  void aStageIsLitAsLongAsItsValuesAreInForce() {
    QFETCH(PropertyList, settings);
    QFETCH(QStringList, stages);
    PerformanceTab open(settings);
    QCOMPARE(stagesOf(open), stages);
  }

  void aStageGoesOutWhileTheSliderMoves() {
    PerformanceTab open;
    QVERIFY(open.find<StageChip>("mStageTwo")->isCurrent());
    open.press("mXDpiSlider", 800);
    open.drag("mXDpiSlider", 1200);
    QVERIFY(!open.find<StageChip>("mStageTwo")->isCurrent());
    open.drag("mXDpiSlider", 800);
    QVERIFY(open.find<StageChip>("mStageTwo")->isCurrent());
    open.release("mXDpiSlider", 800);
  }

  void theCurrentStageKeepsItsOutlineWithTheKeyboard() {
    PerformanceTab open;
    auto* chip = open.find<StageChip>("mStageTwo");
    const QRgb outline = chip->grab().toImage().pixel(chip->width() / 2, 1);
    QVERIFY(QTest::qWaitForWindowActive(chip));
    chip->setFocus();
    QVERIFY(chip->hasFocus());
    QCOMPARE(chip->grab().toImage().pixel(chip->width() / 2, 0), outline);
    QCOMPARE(chip->grab().toImage().pixel(chip->width() / 2, 1), outline);
  }

  void aStageIsReadOutWithItsUnit() {
    PerformanceTab open;
    QCOMPARE(open.find<StageChip>("mStageTwo")->accessibleName(), QStringLiteral("800 DPI"));
    QCOMPARE(open.find<StageChip>("mStageTwo")->accessibleDescription(), QStringLiteral("Current stage"));
    QCOMPARE(open.find<StageChip>("mStageThree")->accessibleName(), QStringLiteral("X = 1600, Y = 800 DPI"));
    QCOMPARE(open.find<StageChip>("mStageThree")->accessibleDescription(), QString());
  }

  void everythingIsWholeInTheSmallestWindow() {
    PropertyList wide = PropertyList::array();
    for (int index = 0; index < 5; ++index) wide = wide.appending(stage(5600, 5500, true));
    PerformanceTab open(independent(5600, 5600).with(keys::Stages, wide));
    open.window.resize(1024, 476);
    QCOMPARE(open.tab.size(), QSize(1024, 476));
    for (const QWidget* child : open.tab.findChildren<QWidget*>()) {
      if (child->window() != &open.window || !child->isVisible()) continue;
      const QRect place(child->mapTo(&open.tab, QPoint()), child->size());
      QVERIFY2(open.tab.rect().contains(place), qPrintable(child->objectName()));
    }
    for (const StageChip* chip : open.tab.findChildren<StageChip*>()) {
      QCOMPARE(chip->width(), chip->sizeHint().width());
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
    PropertyList stages = PropertyList::array();
    for (int index = 0; index < 5; ++index) stages = stages.appending(stage(huge, huge, true));
    PerformanceTab open(independent(huge, huge)
                            .with(keys::ProfileName, std::string(300, 'W'))
                            .with(keys::Stages, stages)
                            .with(keys::Acceleration, huge));
    const QSize least = open.tab.minimumSizeHint();
    QVERIFY2(least.width() <= 1024 && least.height() <= 476, qPrintable(QString::number(least.width())));
  }

  void hostileSettingsShowNothing_data() {
    QTest::addColumn<PropertyList>("settings");
    QTest::newRow("text") << PropertyList("text");
    QTest::newRow("array") << PropertyList::array({1});
    QTest::newRow("wrong types") << request({{keys::ProfileName, 1},
                                             {keys::DPIX, "many"},
                                             {keys::IndependentXYOn, 1},
                                             {keys::Stages, PropertyList::array({1, "x", PropertyList::dictionary()})},
                                             {keys::StageValue, "1"},
                                             {keys::AccelerationOn, "yes"},
                                             {keys::Acceleration, PropertyList::array()},
                                             {keys::SensitivityOSDOn, PropertyList::array()}});
  }
  void hostileSettingsShowNothing() {
    QFETCH(PropertyList, settings);
    PerformanceTab open;
    open.hand(settings, PropertyList::array());
    QCOMPARE(open.find<QLabel>("mProfileNameLabel")->text(), QString());
    QCOMPARE(open.readout(), QString());
    QCOMPARE(stagesOf(open), QStringList());
    QVERIFY(!open.isTicked("mEnableOnTheFly"));
    QVERIFY(!open.isTicked("mEnableAcceleration"));
    COMPARE_REQUESTS(open);
  }

  void withoutAProfileRecordNothingChanges() {
    PerformanceTab open;
    open.hand(PropertyList(), deviceSettings().with(keys::PollingRate, 1000));
    QCOMPARE(open.find<QLabel>("mProfileNameLabel")->text(), QStringLiteral("Work"));
    QCOMPARE(open.readout(), QStringLiteral("800 DPI"));
    QCOMPARE(open.find<QComboBox>("mPollingRate")->currentText(), QStringLiteral("500 Hz"));
    QCOMPARE(stagesOf(open), (QStringList{"400", "[800]", "1600 × 800", "3200", "5600"}));
  }

  // --- Enabling, keyboard, accessibility

  void withoutADeviceEverythingIsGreyAndSaysWhy() {
    PerformanceTab open(independent(800, 1600));
    for (const bool enabled : {false, true}) {
      open.tab.enableControlsState(enabled);
      for (const char* name : controlNames) QVERIFY2(open.isEnabled(name) == enabled, name);
      const QList<QLabel*> labels = open.tab.findChildren<QLabel*>();
      QVERIFY(labels.size() >= 25);
      for (const QLabel* label : labels) {
        QCOMPARE(label->palette().color(QPalette::WindowText),
                 open.tab.palette().color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
      }
      QCOMPARE(open.tab.toolTip(), enabled ? QString() : QStringLiteral("No mouse connected"));
    }
  }

  void aRedrawOfADisabledTabEnablesNothing() {
    PerformanceTab open;
    open.tab.enableControlsState(false);
    open.hand(independent(800, 1600));
    for (const char* name : controlNames) QVERIFY2(!open.isEnabled(name), name);
    for (const char* name : {"mYDpiSlider", "mAccelerationSlider"}) QCOMPARE(open.toolTip(name), QString());
    open.hand(profile("Work").with(keys::AccelerationOn, 0));
    for (const char* name : {"mYDpiSlider", "mAccelerationSlider"}) QCOMPARE(open.toolTip(name), QString());
    // As the owner does when the mouse is back.
    open.tab.enableControlsState(true);
    open.hand(profile("Work"));
    QVERIFY(open.isEnabled("mXDpiSlider") && !open.isEnabled("mYDpiSlider"));
    QVERIFY(!open.toolTip("mYDpiSlider").isEmpty());
  }

  void everyControlIsReachedByTab() {
    PerformanceTab open(independent(800, 1600));
    open.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&open.window));
    open.button("mEnableIndependentXY")->setFocus();
    QStringList reached;
    for (int step = 0; step < 15; ++step) {
      QWidget* at = QApplication::focusWidget();
      QVERIFY(at != nullptr);
      QVERIFY2(!at->accessibleName().isEmpty() || qobject_cast<QAbstractButton*>(at), qPrintable(at->objectName()));
      reached << at->objectName();
      QTest::keyClick(at, Qt::Key_Tab);
    }
    QCOMPARE(reached,
             (QStringList{"mEnableIndependentXY", "mXDpiSlider", "mXDpiField", "mYDpiSlider", "mYDpiField", "mStageOne",
                          "mStageTwo", "mStageThree", "mStageFour", "mStageFive", "mSensitivityStages",
                          "mEnableOnTheFly", "mPollingRate", "mEnableAcceleration", "mAccelerationSlider"}));
    COMPARE_REQUESTS(open);
  }
};

SKARN_QTEST(MousePerformanceControllerTest)
#include "MousePerformanceController_test.moc"
