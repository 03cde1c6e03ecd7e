// The fields for exact values beside the sliders, and the chips of the stages.
#include <QLineEdit>

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

// A tab in the active window, where fields hold the keyboard.
class OpenFields : public PerformanceTab {
 public:
  explicit OpenFields(const PropertyList& active = profile("Work")) : PerformanceTab(active) {
    answerRequests();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) QTest::qFail("the window is active", __FILE__, __LINE__);
  }
  QLineEdit& field(const char* name) const { return *find<QLineEdit>(name); }
  void type(const char* name, const QString& text) const {
    field(name).setFocus();
    field(name).selectAll();
    QTest::keyClicks(&field(name), text);
  }
  void enter(const char* name, const QString& text) const {
    type(name, text);
    QTest::keyClick(&field(name), Qt::Key_Return);
  }
  QString shown(const char* name) const { return field(name).text(); }
};

}  // namespace

class MousePerformanceControllerFieldsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  // --- Fields

  void theFieldsShowWhatTheSlidersDo() {
    OpenFields open(independent(1234, 4321));
    QCOMPARE(open.shown("mXDpiField"), QStringLiteral("1234"));
    QCOMPARE(open.shown("mYDpiField"), QStringLiteral("4321"));
    open.press("mXDpiSlider", 1234);
    open.drag("mXDpiSlider", 2000);
    QCOMPARE(open.shown("mXDpiField"), QStringLiteral("2000"));
    QCOMPARE(open.shown("mYDpiField"), QStringLiteral("4321"));
    open.release("mXDpiSlider", 2000);
    COMPARE_REQUESTS(open, axes(2000, 4321));
    open.tab.updateDPISliders(request({{"DPI Value", 777}, {"DPIY Value", 888}}));
    QCOMPARE(open.shown("mXDpiField"), QStringLiteral("777"));
    QCOMPARE(open.shown("mYDpiField"), QStringLiteral("888"));
    open.hand(profile("Work").without(keys::DPIX).without(keys::DPIY));
    QCOMPARE(open.shown("mXDpiField"), QString());
  }

  void anExactValueIsSentOnce_data() {
    QTest::addColumn<int>("key");  // or 0 for a click elsewhere
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Tab") << int(Qt::Key_Tab);
    QTest::newRow("click elsewhere") << 0;
  }
  void anExactValueIsSentOnce() {
    QFETCH(int, key);
    OpenFields open;
    open.type("mXDpiField", QStringLiteral("1234"));
    COMPARE_REQUESTS(open);
    if (key != 0) {
      QTest::keyClick(&open.field("mXDpiField"), Qt::Key(key));
    } else {
      open.button("mSensitivityStages")->setFocus(Qt::MouseFocusReason);
    }
    COMPARE_REQUESTS(open, axes(1234, 1234));
    QCOMPARE(open.readout(), QStringLiteral("1234 DPI"));
    QCOMPARE(open.value("mXDpiSlider"), 1234);
    QCOMPARE(open.shown("mYDpiField"), QStringLiteral("1234"));
    QVERIFY(!open.isEnabled("mYDpiField"));
    QVERIFY(open.toolTip("mYDpiField").contains(QStringLiteral("locked")));
  }

  void eachAxisHasItsField() {
    OpenFields open(independent(800, 1600));
    open.enter("mYDpiField", QStringLiteral("101"));
    COMPARE_REQUESTS(open, axes(800, 101));
    open.enter("mXDpiField", QStringLiteral("5599"));
    COMPARE_REQUESTS(open, axes(5599, 101));
    QCOMPARE(open.readout(), QStringLiteral("X = 5599, Y = 101 DPI"));
    open.enter("mXDpiField", QStringLiteral("5599"));
    COMPARE_REQUESTS(open);
  }

  void whatIsNoSensitivityChangesNothing_data() {
    QTest::addColumn<QString>("text");
    for (const char* text : {"99", "5601", "0", "-800", "12.5", "8e2", "abc", "", "99999", "1 000"}) {
      QTest::newRow(text) << QString::fromLatin1(text);
    }
  }
  void whatIsNoSensitivityChangesNothing() {
    QFETCH(QString, text);
    OpenFields open;
    open.type("mXDpiField", text);
    if (text.isEmpty()) QTest::keyClick(&open.field("mXDpiField"), Qt::Key_Delete);
    QTest::keyClick(&open.field("mXDpiField"), Qt::Key_Return);
    // It stays to be mended.
    QCOMPARE(open.shown("mXDpiField"), text);
    QVERIFY(open.field("mXDpiField").hasFocus());
    COMPARE_REQUESTS(open);
    QCOMPARE(open.value("mXDpiSlider"), 800);
    QTest::keyClick(&open.field("mXDpiField"), Qt::Key_Tab);
    QCOMPARE(open.shown("mXDpiField"), QStringLiteral("800"));
    COMPARE_REQUESTS(open);
  }

  void escapeGivesUpWhatWasTyped() {
    OpenFields open;
    open.type("mXDpiField", QStringLiteral("1234"));
    QTest::keyClick(&open.field("mXDpiField"), Qt::Key_Escape);
    QCOMPARE(open.shown("mXDpiField"), QStringLiteral("800"));
    open.button("mSensitivityStages")->setFocus();
    COMPARE_REQUESTS(open);
  }

  void whatIsBeingTypedOutlivesNewsOfTheProfileAndNoOther() {
    OpenFields open;
    open.type("mXDpiField", QStringLiteral("12"));
    open.hand(profile("Work").with(keys::DPIX, 1600).with(keys::DPIY, 1600));
    QCOMPARE(open.shown("mXDpiField"), QStringLiteral("12"));
    QTest::keyClicks(&open.field("mXDpiField"), QStringLiteral("34"));
    QTest::keyClick(&open.field("mXDpiField"), Qt::Key_Return);
    COMPARE_REQUESTS(open, axes(1234, 1234));
    open.type("mXDpiField", QStringLiteral("55"));
    open.hand(profile("Other").with(keys::DPIX, 3200).with(keys::DPIY, 3200));
    QCOMPARE(open.shown("mXDpiField"), QStringLiteral("3200"));
    COMPARE_REQUESTS(open);
  }

  void theLossOfTheMouseGivesUpWhatWasTyped() {
    OpenFields open;
    open.type("mXDpiField", QStringLiteral("1234"));
    open.tab.enableControlsState(false);
    COMPARE_REQUESTS(open);
    QVERIFY(!open.isEnabled("mXDpiField") && !open.isEnabled("mYDpiField"));
    QCOMPARE(open.shown("mXDpiField"), QStringLiteral("800"));
  }

  // --- Fields of the sheet

  void theFieldsOfTheSheetSetTheSelectedStage() {
    OpenFields open;
    open.click("mSensitivityStages");
    open.sheet()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(open.sheet()));
    QCOMPARE(open.shown("mStageXDpiField"), QStringLiteral("800"));
    open.enter("mStageXDpiField", QStringLiteral("1234"));
    QVERIFY(open.sheet()->isVisible());
    QCOMPARE(open.value("mStageXDpiSlider"), 1234);
    QCOMPARE(open.shown("mStageYDpiField"), QStringLiteral("1234"));
    QVERIFY(!open.isEnabled("mStageYDpiField"));
    open.click("mStageEnableIndependentXY");
    open.enter("mStageYDpiField", QStringLiteral("4321"));
    QCOMPARE(open.table()->model()->index(1, 1).data().toString(), QStringLiteral("X = 1234, Y = 4321 DPI"));
    // What is none neither closes the sheet nor changes the stage, and Escape gives up the typing first.
    open.enter("mStageYDpiField", QStringLiteral("9"));
    QVERIFY(open.sheet()->isVisible());
    QTest::keyClick(&open.field("mStageYDpiField"), Qt::Key_Escape);
    QVERIFY(open.sheet()->isVisible());
    QCOMPARE(open.shown("mStageYDpiField"), QStringLiteral("4321"));
    COMPARE_REQUESTS(open);
    QTest::keyClick(&open.field("mStageYDpiField"), Qt::Key_Return);
    QVERIFY(!open.sheet()->isVisible());
    const std::vector<PropertyList> sent = open.takeRequests();
    QCOMPARE(sent.size(), std::size_t{1});
    QCOMPARE(sent[0]["DPIX"].toInt(), 1234);
    QCOMPARE(sent[0]["DPIY"].toInt(), 4321);
  }

  void theFieldsOfTheSheetFollowTheSelectedStage() {
    OpenFields open;
    open.click("mSensitivityStages");
    open.table()->selectRow(2);
    QCOMPARE(open.shown("mStageXDpiField"), QStringLiteral("1600"));
    QCOMPARE(open.shown("mStageYDpiField"), QStringLiteral("800"));
    open.table()->clearSelection();
    QCOMPARE(open.shown("mStageXDpiField"), QString());
    QVERIFY(!open.isEnabled("mStageXDpiField"));
  }

  // --- Chips

  void aClickOnAChipMakesItTheStage_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("mouse") << false;
    QTest::newRow("Space") << true;
  }
  void aClickOnAChipMakesItTheStage() {
    QFETCH(bool, byKey);
    OpenFields open;
    const PropertyList stages = open.tab.mPerformanceSettingsDict()[keys::Stages];
    if (byKey) {
      open.button("mStageThree")->setFocus();
      QTest::keyClick(open.button("mStageThree"), Qt::Key_Space);
    } else {
      open.click("mStageThree");
    }
    COMPARE_REQUESTS(
        open, request({{"Stages", stages}, {"StageValue", 2}, {"DPIX", 1600}, {"DPIY", 800}, {"IndependentXYOn", 1}}));
    QVERIFY(!open.sheet()->isVisible());
    QCOMPARE(open.readout(), QStringLiteral("X = 1600, Y = 800 DPI"));
    QVERIFY(open.find<StageChip>("mStageThree")->isCurrent());
    QVERIFY(!open.find<StageChip>("mStageTwo")->isCurrent());
  }

  void aClickOnTheLitChipSendsNothing() {
    OpenFields open;
    open.click("mStageTwo");
    COMPARE_REQUESTS(open);
  }

  void aClickOnTheCurrentStageBringsItsValuesBack() {
    OpenFields open(profile("Work").with(keys::DPIX, 1234).with(keys::DPIY, 1234));
    const PropertyList stages = open.tab.mPerformanceSettingsDict()[keys::Stages];
    QVERIFY(!open.find<StageChip>("mStageTwo")->isCurrent());
    open.click("mStageTwo");
    COMPARE_REQUESTS(
        open, request({{"Stages", stages}, {"StageValue", 1}, {"DPIX", 800}, {"DPIY", 800}, {"IndependentXYOn", 0}}));
    QVERIFY(open.find<StageChip>("mStageTwo")->isCurrent());
  }
};

SKARN_QTEST(MousePerformanceControllerFieldsTest)
#include "MousePerformanceController_fields_test.moc"
