// The Performance tab of the real window, with the real engine and its virtual mouse.
#include <QAbstractButton>
#include <QComboBox>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QSlider>

#include "e2e/OpenWindow.h"
#include "e2e/VirtualMouse.h"
#include "e2e/Vornctl.h"
#include "performance/StageChip.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "support/SliderDrag.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

namespace {

class OpenPerformance : public OpenWindow {
 public:
  OpenPerformance() { showTab("MousePerformanceController"); }

  QSlider& slider(const char* name) { return *find<QSlider>(name); }
  bool isEnabled(const char* name) { return find<QWidget>(name)->isEnabled(); }
  void click(const char* name) { QTest::mouseClick(find<QAbstractButton>(name), Qt::LeftButton); }
  int selectedStage() { return find<QTableView>("mStagesTable")->selectionModel()->selectedRows().value(0).row(); }
  int stageRows() { return find<QTableView>("mStagesTable")->model()->rowCount(); }
  // What the engine answered or was asked for last.
  int number(keys::Key key) { return setting(key).toInt(); }
};

PropertyList stage(int x, int y, int isIndependent) {
  return PropertyList::dictionary(
      {{keys::StageDpiX, x}, {keys::StageDpiY, y}, {keys::StageIndependentXY, isIndependent}});
}

}  // namespace

class PerformanceWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }
  void init() { mEngine.begin(); }
  void cleanup() { mEngine.end(); }

  void a_drag_is_one_request_and_is_kept() {
    int x = 0;
    {
      OpenPerformance open;
      QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
      QCOMPARE(open.text("mDpiValue"), QStringLiteral("800 DPI"));
      QSlider& slider = open.slider("mXDpiSlider");
      pressSlider(slider, 800);
      for (int position = 900; position <= 3000; position += 20) {
        dragSlider(slider, position);
        QCoreApplication::processEvents();
      }
      QCOMPARE(open.profileUpdates(), 0);
      releaseSlider(slider, 3000);
      x = slider.value();
      QTRY_COMPARE_WITH_TIMEOUT(open.number(keys::DPIX), x, deadline);
      QCOMPARE(open.number(keys::DPIY), x);
      QCOMPARE(open.text("mDpiValue"), QStringLiteral("%1 DPI").arg(x));
      QCoreApplication::processEvents();
      QCOMPARE(open.profileUpdates(), 1);
    }
    mEngine.kill();
    mEngine.start();
    OpenPerformance again;
    QCOMPARE(again.text("mDpiValue"), QStringLiteral("%1 DPI").arg(x));
  }

  void an_exact_value_is_kept_and_a_chip_brings_a_stage() {
    OpenPerformance open;
    open.window().show();
    open.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&open.window()));
    auto* field = open.find<QLineEdit>("mXDpiField");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("1234"));
    QTest::keyClick(field, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(open.number(keys::DPIX), 1234, deadline);
    QCOMPARE(open.text("mDpiValue"), QStringLiteral("1234 DPI"));
    QVERIFY(!open.find<StageChip>("mStageTwo")->isCurrent());
    QCOMPARE(vornctl({"get", "DPIX"}), std::string("1234"));
    QCOMPARE(vornctl({"get", "DPIY"}), std::string("1234"));
    open.click("mStageThree");
    QCOMPARE(open.text("mDpiValue"), QStringLiteral("1600 DPI"));
    QVERIFY(open.find<StageChip>("mStageThree")->isCurrent());
    QCOMPARE(vornctl({"get", "DPIX"}), std::string("1600"));
    QCOMPARE(vornctl({"get", "StageValue"}), std::string("2"));
    vornctl({"set", "DPIX", "1650"});
    QTRY_VERIFY_WITH_TIMEOUT(!open.find<StageChip>("mStageThree")->isCurrent(), deadline);
    QCOMPARE(field->text(), QStringLiteral("1650"));
    QCOMPARE(open.profileUpdates(), 2);
  }

  void the_axes_are_set_apart_and_locked_again() {
    OpenPerformance open;
    QVERIFY(!open.isEnabled("mYDpiSlider"));
    open.click("mEnableIndependentXY");
    QCOMPARE(open.number(keys::IndependentXYOn), 1);
    QCOMPARE(open.text("mDpiValue"), QStringLiteral("X = 800, Y = 800 DPI"));
    QVERIFY(open.isEnabled("mYDpiSlider"));
    QTest::keyClick(&open.slider("mYDpiSlider"), Qt::Key_PageUp);
    QTRY_COMPARE_WITH_TIMEOUT(open.number(keys::DPIY), 900, deadline);
    QCOMPARE(open.number(keys::DPIX), 800);
    QCOMPARE(open.text("mDpiValue"), QStringLiteral("X = 800, Y = 900 DPI"));
    open.click("mEnableIndependentXY");
    QCOMPARE(open.number(keys::DPIY), 800);
    QCOMPARE(open.text("mDpiValue"), QStringLiteral("800 DPI"));
    QVERIFY(!open.isEnabled("mYDpiSlider"));
  }

  void ok_makes_the_selected_stage_the_current_one() {
    OpenPerformance open;
    open.click("mSensitivityStages");
    open.click("mStageDeleteButton");  // 800 DPI goes, the last stage is selected
    open.click("mStageEnableIndependentXY");
    QTest::keyClick(&open.slider("mStageYDpiSlider"), Qt::Key_PageDown);
    QCOMPARE(open.profileUpdates(), 0);
    open.click("mStageOkButton");
    QCOMPARE(open.profileUpdates(), 1);
    QVERIFY(open.setting(keys::Stages) == PropertyList::array({stage(400, 400, 0), stage(1600, 1600, 0),
                                                               stage(3200, 3200, 0), stage(5600, 5500, 1)}));
    QCOMPARE(open.number(keys::StageValue), 3);
    QCOMPARE(open.text("mDpiValue"), QStringLiteral("X = 5600, Y = 5500 DPI"));
    QVERIFY(open.find<StageChip>("mStageFour")->isCurrent());
    QVERIFY(open.find<StageChip>("mStageFive")->isHidden());
  }

  void a_stage_switched_on_the_mouse_is_shown() {
    OpenPerformance open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    QVERIFY(VirtualMouse::click("stage-up"));
    QTRY_COMPARE_WITH_TIMEOUT(open.text("mDpiValue"), QStringLiteral("1600 DPI"), deadline);
    QCOMPARE(open.slider("mXDpiSlider").value(), 1600);
    QVERIFY(open.find<StageChip>("mStageThree")->isCurrent());
    QCOMPARE(open.profileUpdates(), 0);
  }

  void a_stage_switched_on_the_mouse_is_shown_in_the_open_sheet() {
    OpenPerformance open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    open.click("mSensitivityStages");
    QCOMPARE(open.selectedStage(), 1);
    open.click("mStageDeleteButton");
    QCOMPARE(open.stageRows(), 4);
    QVERIFY(VirtualMouse::click("stage-down"));
    QTRY_COMPARE_WITH_TIMEOUT(open.selectedStage(), 0, deadline);
    QCOMPARE(open.stageRows(), 5);
    QCOMPARE(open.slider("mStageXDpiSlider").value(), 400);
    open.click("mStageCancelButton");
    QCOMPARE(open.profileUpdates(), 0);
    QCOMPARE(open.text("mDpiValue"), QStringLiteral("400 DPI"));
  }

  void a_stage_switched_on_the_mouse_replaces_a_drag() {
    OpenPerformance open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    QSlider& slider = open.slider("mXDpiSlider");
    pressSlider(slider, 800);
    dragSlider(slider, 5000);
    QVERIFY(VirtualMouse::click("stage-up"));
    QTRY_COMPARE_WITH_TIMEOUT(open.text("mDpiValue"), QStringLiteral("1600 DPI"), deadline);
    releaseSlider(slider, 5000);
    QCoreApplication::processEvents();
    QCOMPARE(slider.value(), 1600);
    QCOMPARE(open.profileUpdates(), 0);
  }

  void polling_rate_acceleration_and_on_the_fly_sensitivity_are_kept() {
    OpenPerformance open;
    auto* rates = open.find<QComboBox>("mPollingRate");
    QCOMPARE(rates->currentText(), QStringLiteral("1000 Hz"));
    QTest::keyClick(rates, Qt::Key_Up);
    QCOMPARE(open.hub().mDeviceSettingsDict()[keys::PollingRate].toInt(), 500);
    QCOMPARE(rates->currentText(), QStringLiteral("500 Hz"));

    QVERIFY(!open.isEnabled("mAccelerationSlider"));
    open.click("mEnableAcceleration");
    QCOMPARE(open.number(keys::AccelerationOn), 1);
    QVERIFY(open.isEnabled("mAccelerationSlider"));
    QTest::keyClick(&open.slider("mAccelerationSlider"), Qt::Key_End);
    QCOMPARE(open.number(keys::Acceleration), 10);
    QCOMPARE(open.slider("mAccelerationSlider").value(), 10);
    open.click("mEnableAcceleration");
    QCOMPARE(open.number(keys::Acceleration), 0);
    QCOMPARE(open.number(keys::AccelerationOn), 0);
    QVERIFY(!open.isEnabled("mAccelerationSlider"));

    open.click("mEnableOnTheFly");
    QCOMPARE(open.number(keys::SensitivityOSDOn), 0);
    QCOMPARE(open.profileUpdates(), 5);
  }

  void without_the_mouse_nothing_can_be_changed() {
    OpenPerformance open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    open.click("mSensitivityStages");
    open.click("mStageDeleteButton");
    QVERIFY(VirtualMouse::unplug());
    QTRY_VERIFY_WITH_TIMEOUT(!open.isEnabled("mXDpiSlider"), deadline);
    QVERIFY(!open.isEnabled("mPollingRate"));
    // The sheet of the stages makes way for the one that asks for the mouse.
    QVERIFY(open.find<QDialog>("mSensitivityStagesView")->isHidden());
    QVERIFY(open.asksForTheMouse());
    QCOMPARE(open.stageRows(), 5);
    QCOMPARE(open.profileUpdates(), 0);
    QVERIFY(VirtualMouse::plug("wired"));
    QTRY_VERIFY_WITH_TIMEOUT(open.isEnabled("mXDpiSlider"), deadline);
    QTRY_VERIFY_WITH_TIMEOUT(!open.isEnabled("mYDpiSlider"), deadline);
    QVERIFY(!open.isEnabled("mAccelerationSlider"));
  }

 private:
  EngineSession mEngine;
};

SKARN_QTEST(PerformanceWithEngineTest)
#include "performance_with_engine_test.moc"
