// The page of the Performance tab: what each act of the user sends, and what sends nothing.
#include <QWheelEvent>
#include <set>

#include "performance/PerformanceTab.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

PropertyList axes(int x, int y) {
  return request({{"DPIX", x}, {"DPIY", y}});
}

// angle: 120 is a notch.
void turnWheel(QSlider* slider, int angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  const QPointF at = slider->rect().center();
  QWheelEvent event(at, slider->mapToGlobal(at), {}, QPoint(0, angle), Qt::NoButton, modifiers, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(slider, &event);
}

}  // namespace

class MousePerformanceControllerChangesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  // --- Sensitivity

  void aDragOfXSendsOneRequestWhenTheSliderIsLetGo() {
    PerformanceTab open;
    open.window.resize(1600, 560);
    std::set<int> seen;
    open.press("mXDpiSlider", 800);
    for (int position = 800; position < 5000; position += 8) {
      open.drag("mXDpiSlider", position);
      const int value = open.value("mXDpiSlider");
      seen.insert(value);
      QCOMPARE(open.readout(), QStringLiteral("%1 DPI").arg(value));
      QCOMPARE(open.value("mYDpiSlider"), value);
      COMPARE_REQUESTS(open);
    }
    QVERIFY2(seen.size() >= 80, qPrintable(QString::number(seen.size())));
    open.release("mXDpiSlider", 5000);
    const int last = open.value("mXDpiSlider");
    QVERIFY(std::abs(last - 5000) < 16);
    COMPARE_REQUESTS(open, axes(last, last));
    COMPARE_REQUESTS(open);
  }

  void aDragOfAnIndependentAxisSendsBothAxesOnce_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("X") << "mXDpiSlider";
    QTest::newRow("Y") << "mYDpiSlider";
  }
  void aDragOfAnIndependentAxisSendsBothAxesOnce() {
    QFETCH(QString, name);
    PerformanceTab open(independent(800, 1600));
    const QByteArray slider = name.toLatin1();
    const bool isX = slider == "mXDpiSlider";
    open.press(slider, isX ? 800 : 1600);
    for (int position = 2000; position <= 3000; position += 50) {
      open.drag(slider, position);
      const int value = open.value(slider);
      QCOMPARE(open.readout(), QStringLiteral("X = %1, Y = %2 DPI").arg(isX ? value : 800).arg(isX ? 1600 : value));
      COMPARE_REQUESTS(open);
    }
    const int last = open.value(slider);
    open.release(slider, last);
    COMPARE_REQUESTS(open, axes(isX ? last : 800, isX ? 1600 : last));
  }

  void eachStepOfAKeyOrOfTheWheelIsSentOnce_data() {
    QTest::addColumn<int>("key");  // or 0 for the wheel
    QTest::addColumn<int>("notches");
    QTest::addColumn<int>("expected");
    QTest::newRow("right") << int(Qt::Key_Right) << 0 << 1050;
    QTest::newRow("up") << int(Qt::Key_Up) << 0 << 1050;
    QTest::newRow("left") << int(Qt::Key_Left) << 0 << 950;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << 0 << 1100;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << 0 << 900;
    QTest::newRow("home") << int(Qt::Key_Home) << 0 << 100;
    QTest::newRow("end") << int(Qt::Key_End) << 0 << 5600;
    QTest::newRow("wheel up") << 0 << 1 << 1050;
    QTest::newRow("wheel down") << 0 << -1 << 950;
  }
  void eachStepOfAKeyOrOfTheWheelIsSentOnce() {
    QFETCH(int, key);
    QFETCH(int, notches);
    QFETCH(int, expected);
    for (const char* name : {"mXDpiSlider", "mYDpiSlider"}) {
      PerformanceTab open(independent(1000, 1000));
      if (key != 0) {
        QTest::keyClick(open.slider(name), Qt::Key(key));
      } else {
        turnWheel(open.slider(name), 120 * notches);
      }
      const bool isX = QByteArrayView(name) == "mXDpiSlider";
      COMPARE_REQUESTS(open, axes(isX ? expected : 1000, isX ? 1000 : expected));
    }
  }

  void aFineWheelStepsOnceANotch() {
    PerformanceTab open;
    for (const int angle : {30, 30, 30}) turnWheel(open.slider("mXDpiSlider"), angle);
    COMPARE_REQUESTS(open);
    turnWheel(open.slider("mXDpiSlider"), 30);
    COMPARE_REQUESTS(open, axes(850, 850));
    turnWheel(open.slider("mXDpiSlider"), 90);
    turnWheel(open.slider("mXDpiSlider"), -90);
    COMPARE_REQUESTS(open);
    turnWheel(open.slider("mXDpiSlider"), -30);
    COMPARE_REQUESTS(open, axes(800, 800));
    turnWheel(open.slider("mXDpiSlider"), 120, Qt::ControlModifier);
    COMPARE_REQUESTS(open, axes(900, 900));
  }

  void severalStepsAreSentOneByOne() {
    PerformanceTab open;
    open.answerRequests();
    for (const int expected : {850, 900, 950}) {
      QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key_Right);
      COMPARE_REQUESTS(open, axes(expected, expected));
    }
  }

  void aClickOnTheGrooveBringsTheHandleThereAndIsSentOnRelease() {
    PerformanceTab open;
    open.press("mXDpiSlider", 4000);
    const int value = open.value("mXDpiSlider");
    QCOMPARE(value, 4000);
    COMPARE_REQUESTS(open);
    open.release("mXDpiSlider", 4000);
    COMPARE_REQUESTS(open, axes(value, value));
  }

  void theMouseComesToFullFifties() {
    PerformanceTab open(profile("Work").with(keys::DPIX, 1234).with(keys::DPIY, 1234));
    open.press("mXDpiSlider", 1234);
    for (int position = 1240; position < 5600; position += 7) {
      open.drag("mXDpiSlider", position);
      QCOMPARE(open.value("mXDpiSlider") % 50, 0);
      QVERIFY(std::abs(open.value("mXDpiSlider") - position) <= 33);  // half a step and a pixel
    }
    for (const int end : {100, 5600}) {
      open.drag("mXDpiSlider", end);
      QCOMPARE(open.value("mXDpiSlider"), end);
    }
    open.release("mXDpiSlider", 5600);
    COMPARE_REQUESTS(open, axes(5600, 5600));
    for (const int pressed : {2511, 2489, 130}) {
      open.press("mXDpiSlider", pressed);
      QCOMPARE(open.value("mXDpiSlider") % 50, 0);
      open.release("mXDpiSlider", pressed);
    }
    COMPARE_REQUESTS(open, axes(150, 150));
  }

  void keysAndWheelComeToFullFiftiesFromAnyValue_data() {
    QTest::addColumn<int>("key");  // or 0 for the wheel
    QTest::addColumn<int>("notches");
    QTest::addColumn<int>("expected");
    QTest::newRow("right") << int(Qt::Key_Right) << 0 << 1250;
    QTest::newRow("left") << int(Qt::Key_Left) << 0 << 1200;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << 0 << 1300;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << 0 << 1150;
    QTest::newRow("wheel up") << 0 << 1 << 1250;
    QTest::newRow("wheel down") << 0 << -1 << 1200;
  }
  void keysAndWheelComeToFullFiftiesFromAnyValue() {
    QFETCH(int, key);
    QFETCH(int, notches);
    QFETCH(int, expected);
    PerformanceTab open(profile("Work").with(keys::DPIX, 1234).with(keys::DPIY, 1234));
    if (key != 0) {
      QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key(key));
    } else {
      turnWheel(open.slider("mXDpiSlider"), 120 * notches);
    }
    COMPARE_REQUESTS(open, axes(expected, expected));
  }

  void aPressOnTheHandleWithoutAMoveLeavesTheExactValue_data() {
    QTest::addColumn<int>("value");
    for (const int value : {100, 101, 799, 800, 803, 5599, 5600}) QTest::addRow("%d", value) << value;
  }
  void aPressOnTheHandleWithoutAMoveLeavesTheExactValue() {
    QFETCH(int, value);
    PerformanceTab open(profile("Work").with(keys::DPIX, value).with(keys::DPIY, value));
    for (const int offCentre : {-20, 0, 20}) {
      open.press("mXDpiSlider", value + offCentre);
      QVERIFY(open.slider("mXDpiSlider")->isSliderDown());
      open.release("mXDpiSlider", value + offCentre);
      COMPARE_REQUESTS(open);
      QCOMPARE(open.value("mXDpiSlider"), value);
    }
  }

  void beforeSettingsWereLoadedTheSlidersSendNothing() {
    PerformanceTab open{PropertyList()};
    for (const char* name : {"mXDpiSlider", "mYDpiSlider"}) {
      open.slider(name)->setEnabled(true);
      QTest::keyClick(open.slider(name), Qt::Key_PageUp);
    }
    COMPARE_REQUESTS(open);
    QCOMPARE(open.readout(), QString());
  }

  void aNewTabForgetsTheValuesOfTheOneBefore() {
    PerformanceTab before(profile("Work"));
    PerformanceTab after{PropertyList()};
    QTest::keyClick(before.slider("mXDpiSlider"), Qt::Key_Right);
    COMPARE_REQUESTS(before);
  }

  void aDragOfXBackToItsStartIsSent() {
    PerformanceTab open;
    open.slider("mXDpiSlider")->setValue(1200);
    COMPARE_REQUESTS(open, axes(1200, 1200));
    open.slider("mXDpiSlider")->setValue(800);
    COMPARE_REQUESTS(open, axes(800, 800));
  }

  // Only a reload, or X while the axes are locked, moves the value that Y is compared with.
  void withoutAReloadAReturnOfYToTheLoadedValueIsNoChange() {
    PerformanceTab open(independent(800, 800));
    open.slider("mYDpiSlider")->setValue(1200);
    COMPARE_REQUESTS(open, axes(800, 1200));
    open.slider("mYDpiSlider")->setValue(800);
    COMPARE_REQUESTS(open);
    QCOMPARE(open.readout(), QStringLiteral("X = 800, Y = 1200 DPI"));
    open.hand(independent(800, 1200));
    open.slider("mYDpiSlider")->setValue(800);
    COMPARE_REQUESTS(open, axes(800, 800));
  }

  void settingsThatComeDuringADragAreShownAndTheDragIsSentOnce() {
    PerformanceTab open;
    open.press("mXDpiSlider", 800);
    open.drag("mXDpiSlider", 2000);
    open.hand(independent(3000, 4000));
    QCOMPARE(open.readout(), QStringLiteral("X = 3000, Y = 4000 DPI"));
    open.drag("mXDpiSlider", 2200);
    const int x = open.value("mXDpiSlider");
    QCOMPARE(open.readout(), QStringLiteral("X = %1, Y = 4000 DPI").arg(x));
    open.release("mXDpiSlider", 2200);
    COMPARE_REQUESTS(open, axes(x, 4000));
  }

  void aDragThatSettingsReplacedSendsNothing_data() {
    QTest::addColumn<bool>("isReload");
    QTest::newRow("reload") << true;
    QTest::newRow("report of the device") << false;
  }
  void aDragThatSettingsReplacedSendsNothing() {
    QFETCH(bool, isReload);
    PerformanceTab open;
    open.press("mXDpiSlider", 800);
    open.drag("mXDpiSlider", 2000);
    if (isReload) {
      open.hand(profile("Work").with(keys::DPIX, 1600).with(keys::DPIY, 1600));
    } else {
      open.tab.updateDPISliders(request({{"DPI Value", 1600}, {"DPIY Value", 1600}}));
    }
    open.release("mXDpiSlider", 2000);
    COMPARE_REQUESTS(open);
    QCOMPARE(open.value("mXDpiSlider"), 1600);
    QCOMPARE(open.readout(), QStringLiteral("1600 DPI"));
  }

  void aValueThatWasLetGoOutlivesWhatComesBeforeItIsSent_data() {
    QTest::addColumn<PropertyList>("settings");  // none: a report of the device comes instead
    QTest::addColumn<QString>("readout");        // %1: the value that was let go
    QTest::addColumn<int>("y");                  // or 0 for that of X
    const auto both = [](int dpi) { return profile("Work").with(keys::DPIX, dpi).with(keys::DPIY, dpi); };
    QTest::newRow("reload") << both(1600) << "%1 DPI" << 0;
    QTest::newRow("reload as before") << both(800) << "%1 DPI" << 0;
    QTest::newRow("independent by now") << independent(1600, 4000) << "X = %1, Y = 4000 DPI" << 4000;
    QTest::newRow("report of the device") << PropertyList() << "%1 DPI" << 0;
  }
  void aValueThatWasLetGoOutlivesWhatComesBeforeItIsSent() {
    QFETCH(PropertyList, settings);
    QFETCH(QString, readout);
    QFETCH(int, y);
    PerformanceTab open;
    open.press("mXDpiSlider", 800);
    open.drag("mXDpiSlider", 3000);
    open.release("mXDpiSlider", 3000);
    const int x = open.value("mXDpiSlider");
    if (settings.isNone()) {
      open.tab.updateDPISliders(request({{"DPI Value", 1600}, {"DPIY Value", 1600}}));
    } else {
      open.hand(settings);
    }
    QCOMPARE(open.recorder.requests.size(), std::size_t{0});
    QCOMPARE(open.readout(), readout.arg(x));
    COMPARE_REQUESTS(open, axes(x, y == 0 ? x : y));
    COMPARE_REQUESTS(open);
  }

  void aStepOfYOutlivesAReloadUnlessTheAxesAreLockedByNow() {
    PerformanceTab open(independent(800, 1600));
    QTest::keyClick(open.slider("mYDpiSlider"), Qt::Key_PageUp);
    open.hand(independent(900, 2000));
    COMPARE_REQUESTS(open, axes(900, 1700));
    QTest::keyClick(open.slider("mYDpiSlider"), Qt::Key_PageUp);
    open.hand(profile("Work").with(keys::DPIX, 900).with(keys::DPIY, 900));
    COMPARE_REQUESTS(open);
    QCOMPARE(open.readout(), QStringLiteral("900 DPI"));
    QCOMPARE(open.value("mYDpiSlider"), 900);
  }

  void aValueThatWasLetGoIsNotSentToAnotherProfile() {
    PerformanceTab open;
    QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key_Right);
    open.hand(profile("Other").with(keys::DPIX, 1600).with(keys::DPIY, 1600));
    COMPARE_REQUESTS(open);
    QCOMPARE(open.readout(), QStringLiteral("1600 DPI"));
    QCOMPARE(open.value("mXDpiSlider"), 1600);
  }

  void aValueThatTheSettingsHoldByNowIsNotSentAgain() {
    PerformanceTab open;
    QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key_Right);
    open.hand(profile("Work").with(keys::DPIX, 850).with(keys::DPIY, 850));
    COMPARE_REQUESTS(open);
  }

  // Both axes travel with either.
  void theAnswerToOneAxisLeavesNothingOfTheOtherToSend() {
    PerformanceTab open(independent(800, 1600));
    open.answerRequests();
    QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key_Right);
    QTest::keyClick(open.slider("mYDpiSlider"), Qt::Key_Right);
    COMPARE_REQUESTS(open, axes(850, 1650));
  }

  void settingsWithoutASensitivityDropAValueThatWasLetGo() {
    PerformanceTab open;
    QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key_Right);
    open.hand(profile("Work").without(keys::DPIX).without(keys::DPIY));
    COMPARE_REQUESTS(open);
    QCOMPARE(open.readout(), QString());
  }

  void aValueThatWasLetGoIsNotSentOnceTheMouseIsGone() {
    PerformanceTab open;
    QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key_Right);
    open.tab.enableControlsState(false);
    COMPARE_REQUESTS(open);
  }

  void aDragThatTheLossOfTheMouseEndsSendsNothing() {
    PerformanceTab open;
    open.press("mXDpiSlider", 800);
    open.drag("mXDpiSlider", 2000);
    open.tab.enableControlsState(false);
    open.release("mXDpiSlider", 2000);
    COMPARE_REQUESTS(open);
  }

  void aSheetThatOpensDuringADragEndsIt() {
    PerformanceTab open;
    open.press("mXDpiSlider", 800);
    open.drag("mXDpiSlider", 2000);
    const int x = open.value("mXDpiSlider");
    QDialog sheet(&open.window);
    sheet.setWindowModality(Qt::WindowModal);
    sheet.open();
    QVERIFY(!open.slider("mXDpiSlider")->isSliderDown());
    COMPARE_REQUESTS(open, axes(x, x));
    sheet.reject();
    QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key_End);
    COMPARE_REQUESTS(open, axes(5600, 5600));
  }

  void tickingIndependentAxesRepeatsXUntilTheReload() {
    PerformanceTab open;
    open.click("mEnableIndependentXY");
    QCOMPARE(open.readout(), QStringLiteral("X=800 X=800 DPI"));
    COMPARE_REQUESTS(open, request({{"DPIX", 800}, {"DPIY", 800}, {"IndependentXYOn", 1}}));
    open.hand(independent(800, 1600));
    QCOMPARE(open.readout(), QStringLiteral("X = 800, Y = 1600 DPI"));
  }

  void untickingIndependentAxesGivesYTheValueOfX() {
    PerformanceTab open(independent(800, 1600));
    QTest::keyClick(open.button("mEnableIndependentXY"), Qt::Key_Space);
    QCOMPARE(open.value("mYDpiSlider"), 800);
    QCOMPARE(open.readout(), QStringLiteral("X=800 X=800 DPI"));
    COMPARE_REQUESTS(open, request({{"DPIX", 800}, {"DPIY", 800}, {"IndependentXYOn", 0}}));
  }

  void aReportOfTheDeviceIsShownAndNotSent_data() {
    QTest::addColumn<PropertyList>("report");
    QTest::addColumn<QString>("readout");
    QTest::addColumn<bool>("isIndependent");
    QTest::newRow("both alike") << request({{"DPI Value", 1200}, {"DPIY Value", 1200}, {"IndependentXYOn", 0}})
                                << "1200 DPI" << false;
    QTest::newRow("both alike, independent")
        << request({{"DPI Value", 1200}, {"DPIY Value", 1200}, {"IndependentXYOn", 1}}) << "X = 1200, Y = 1200 DPI"
        << true;
    QTest::newRow("flag other than 1") << request({{"DPI Value", 1200}, {"DPIY Value", 1200}, {"IndependentXYOn", 2}})
                                       << "1200 DPI" << false;
    QTest::newRow("without a flag") << request({{"DPI Value", 1200}, {"DPIY Value", 1200}}) << "1200 DPI" << false;
    QTest::newRow("apart") << request({{"DPI Value", 800}, {"DPIY Value", 1600}, {"IndependentXYOn", 0}})
                           << "X = 800, Y = 1600 DPI" << true;
    QTest::newRow("X alone") << request({{"DPI Value", 1200}}) << "X = 1200, Y = 800 DPI" << true;
    QTest::newRow("Y alone") << request({{"DPIY Value", 1200}}) << "X = 800, Y = 1200 DPI" << true;
    QTest::newRow("beyond the range") << request({{"DPI Value", 6000}, {"DPIY Value", 6000}}) << "6000 DPI" << false;
    QTest::newRow("empty") << request({}) << "800 DPI" << false;
    QTest::newRow("none") << PropertyList() << "800 DPI" << false;
  }
  void aReportOfTheDeviceIsShownAndNotSent() {
    QFETCH(PropertyList, report);
    QFETCH(QString, readout);
    QFETCH(bool, isIndependent);
    PerformanceTab open;
    open.tab.updateDPISliders(report);
    QCOMPARE(open.readout(), readout);
    QCOMPARE(open.isTicked("mEnableIndependentXY"), isIndependent);
    QCOMPARE(open.isEnabled("mYDpiSlider"), isIndependent);
    QCOMPARE(open.find<QLabel>("mDpiXLabel")->isVisible(), isIndependent);
    QCOMPARE(open.find<QLabel>("mDpiYLabel")->isVisible(), isIndependent);
    COMPARE_REQUESTS(open);
  }

  // --- Polling rate, acceleration, on-the-fly sensitivity

  void aChosenPollingRateIsSent_data() {
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("rate");
    QTest::newRow("125 Hz") << 500 << int(Qt::Key_Up) << 125;
    QTest::newRow("500 Hz") << 125 << int(Qt::Key_Down) << 500;
    QTest::newRow("1000 Hz") << 500 << int(Qt::Key_Down) << 1000;
  }
  void aChosenPollingRateIsSent() {
    QFETCH(int, before);
    QFETCH(int, key);
    QFETCH(int, rate);
    PerformanceTab open(profile("Work"), deviceSettings().with(keys::PollingRate, before));
    QTest::keyClick(open.find<QComboBox>("mPollingRate"), Qt::Key(key));
    COMPARE_REQUESTS(open, request({{"PollingRate", rate}}));
  }

  void acceleratingIsTurnedOffWithItsLevel() {
    PerformanceTab open;
    open.click("mEnableAcceleration");
    COMPARE_REQUESTS(open, request({{"AccelerationOn", false}, {"Acceleration", 0}}));
    open.click("mEnableAcceleration");
    COMPARE_REQUESTS(open, request({{"AccelerationOn", true}, {"Acceleration", 7}}));
  }

  void anAccelerationDragSendsEachNewLevelOnce() {
    PerformanceTab open;
    open.answerRequests();
    open.press("mAccelerationSlider", 7);
    for (const int position : {7, 8, 8, 9, 9}) open.drag("mAccelerationSlider", position);
    open.release("mAccelerationSlider", 9);
    COMPARE_REQUESTS(open, request({{"Acceleration", 8}}), request({{"Acceleration", 9}}));
    QTest::keyClick(open.slider("mAccelerationSlider"), Qt::Key_Left);
    COMPARE_REQUESTS(open, request({{"Acceleration", 8}}));
    turnWheel(open.slider("mAccelerationSlider"), 120);
    COMPARE_REQUESTS(open, request({{"Acceleration", 9}}));
  }

  void onTheFlySensitivityIsSentAsItsFlag() {
    PerformanceTab open;
    open.click("mEnableOnTheFly");
    COMPARE_REQUESTS(open, request({{"SensitivityOSDOn", 0}}));
    QTest::keyClick(open.button("mEnableOnTheFly"), Qt::Key_Space);
    COMPARE_REQUESTS(open, request({{"SensitivityOSDOn", 1}}));
  }

  void withoutADelegateTheControlsMoveAndTheSettingsStay() {
    PerformanceTab open;
    const int before = open.value("mXDpiSlider");
    open.tab.setMMousePerformanceDelegate(nullptr);
    open.click("mEnableOnTheFly");
    QTest::keyClick(open.slider("mXDpiSlider"), Qt::Key_Right);
    QVERIFY(!open.isTicked("mEnableOnTheFly"));
    QVERIFY(open.value("mXDpiSlider") > before);
    // A key's value is sent when all keys that wait are worked off.
    QCoreApplication::processEvents();
    QVERIFY(open.tab.mPerformanceSettingsDict() == profile("Work"));
    QVERIFY(open.tab.mDeviceSettingsDict() == deviceSettings());
    // The next redraw shows what is stored, and nothing is sent late.
    open.tab.setMMousePerformanceDelegate(&open.recorder);
    open.tab.updateUISettings();
    QVERIFY(open.isTicked("mEnableOnTheFly"));
    QCOMPARE(open.value("mXDpiSlider"), before);
    COMPARE_REQUESTS(open);
  }
};

SKARN_QTEST(MousePerformanceControllerChangesTest)
#include "MousePerformanceController_changes_test.moc"
