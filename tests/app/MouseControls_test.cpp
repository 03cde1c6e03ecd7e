#include "app/MouseControls.h"

#include <QComboBox>
#include <QFileInfo>
#include <QSlider>
#include <QTemporaryDir>

#include "app/MiceFixture.h"
#include "buttons/ControlRow.h"
#include "buttons/MouseView.h"
#include "support/QtTests.h"
#include "widgets/PopUpButton.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

using Outcome = MiceFixture::Outcome;

const PropertyList acme = realMouse("usb-1", "Acme");

QString toolTipOf(MiceFixture& one, const char* name) {
  return one.window.findChild<QWidget*>(QLatin1String(name))->toolTip();
}

}  // namespace

class MouseControlsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void the_picture_in_the_header_opens_the_sheet_by_click_and_by_key() {
    MiceFixture one({acme, inUse(virtualMouse())});
    QCOMPARE(one.header().accessibleName(), QStringLiteral("Choose a Mouse…"));
    QVERIFY(one.header().geometry().contains(one.window.ui().mDeviceLogo->geometry().center()));
    // Where the picture is, which lies over the button.
    QTest::mouseClick(one.window.windowHandle(), Qt::LeftButton, {},
                      one.window.ui().mDeviceLogo->mapTo(&one.window, QPoint(20, 20)));
    QVERIFY(one.isShown("mMouseSheet"));
    one.sheet("mMouseSheet")->close();
    QVERIFY(QTest::qWaitFor([&] { return one.sheet("mMouseSheet") == nullptr; }));
    one.header().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&one.header(), Qt::Key_Space);
    QVERIFY(one.isShown("mMouseSheet"));
  }

  void it_is_off_and_says_why_where_nothing_can_be_chosen() {
    HubFixture one;
    one.startConnected(bundleWith({"Work"}));
    QVERIFY(!one.window.ui().mChooseMouse->isEnabled());
    QCOMPARE(one.window.ui().mChooseMouse->toolTip(), localized("lkeyMiceUnknown"));
    QVERIFY(one.link.answerMice({Outcome::NoMice}));
    QVERIFY(!one.window.ui().mChooseMouse->isEnabled());
    QCOMPARE(one.window.ui().mChooseMouse->toolTip(), localized("lkeyMiceNotOffered"));
  }

  void the_mice_are_asked_for_after_the_start_and_not_before() {
    HubFixture one;
    one.create();
    QVERIFY(one.link.miceRequests.empty());
    HubFixture started;
    started.startConnected(bundleWith({"Work"}));
    QCOMPARE(started.link.miceRequests.size(), 1U);
    started.link.engineChanged(false);
    QVERIFY(started.link.miceNews.changed == nullptr);
    started.link.engineChanged(true);
    QCOMPARE(started.link.miceRequests.size(), 2U);
  }

  void the_strip_leads_to_the_sheet_where_no_mouse_is_there() {
    MiceFixture one({absent(inUse(acme)), virtualMouse()});
    QPushButton& strip = one.button("mStateButton");
    QVERIFY(!strip.isVisible());
    one.notifications.post("Device Removed 273", "", {});
    QVERIFY(one.isShown("mDeviceConnectionWindow"));
    one.sheet("mDeviceConnectionWindow")->close();
    QVERIFY(strip.isVisible());
    QCOMPARE(strip.text(), QStringLiteral("Choose a Mouse…"));
    one.click(strip);
    QVERIFY(one.isShown("mMouseSheet"));
    QCOMPARE(one.link.starts, 0);
  }

  void a_mouse_that_may_be_used_is_offered_once_and_for_all() {
    const QTemporaryDir folder;
    const QString memory = folder.filePath("window.ini");
    {
      MiceFixture one({inUse(virtualMouse())}, memory);
      QVERIFY(!one.line().isVisible());
      QVERIFY(!QFileInfo::exists(memory));
      one.tell({forbidden(acme), inUse(virtualMouse())});
      QVERIFY(!one.line().isVisible());
      one.tell({acme, inUse(virtualMouse())});
      QCOMPARE(one.line().text(), QStringLiteral("Use Acme here?"));
      one.click(*one.line().findChild<QPushButton*>());
      QVERIFY(one.isShown("mMouseSheet"));
    }
    MiceFixture again({acme, inUse(virtualMouse())}, memory);
    QVERIFY(!again.line().isVisible());
  }

  void an_offer_ends_with_what_it_offers() {
    const QTemporaryDir folder;
    const auto offered = [&](const char* file) {
      auto one = std::make_unique<MiceFixture>(std::vector{acme, inUse(virtualMouse())}, folder.filePath(file));
      if (!one->line().isVisible()) QTest::qFail("the mouse is offered", __FILE__, __LINE__);
      return one;
    };
    const auto chosen = offered("chosen.ini");
    chosen->tell({inUse(acme), virtualMouse()});
    QVERIFY(!chosen->line().isVisible());
    const auto gone = offered("gone.ini");
    gone->tell({inUse(virtualMouse())});
    QVERIFY(!gone->line().isVisible());
    const auto opened = offered("opened.ini");
    opened->openSheet();
    QVERIFY(!opened->line().isVisible());
    const auto withoutEngine = offered("engine.ini");
    withoutEngine->link.engineChanged(false);
    QVERIFY(withoutEngine->line().text() != QStringLiteral("Use Acme here?"));
    // What the line says of something else stays.
    const auto other = offered("other.ini");
    other->line().say(QStringLiteral("Deleted"));
    other->tell({inUse(acme), virtualMouse()});
    QCOMPARE(other->line().text(), QStringLiteral("Deleted"));
  }

  void the_picture_in_the_header_tells_the_mouse_in_use() {
    MiceFixture one({acme, inUse(virtualMouse())});
    QCOMPARE(one.header().toolTip(), QStringLiteral("Virtual mouse: In use. Choose another mouse…"));
    one.tell({inUse(acme), virtualMouse()});
    QCOMPARE(one.header().toolTip(), QStringLiteral("Acme: In use. Choose another mouse…"));
    one.tell({absent(inUse(acme)), virtualMouse()});
    QCOMPARE(one.header().toolTip(), QStringLiteral("Acme: In use, not plugged in. Choose another mouse…"));
  }

  void nothing_is_offered_where_a_real_mouse_is_in_use_or_nothing_can_be_kept() {
    const QTemporaryDir folder;
    MiceFixture used({inUse(acme), virtualMouse()}, folder.filePath("window.ini"));
    QVERIFY(!used.line().isVisible());
    MiceFixture forgetful({acme, inUse(virtualMouse())}, QStringLiteral("/dev/null/window.ini"));
    QVERIFY(!forgetful.line().isVisible());
  }

  void with_the_virtual_mouse_nothing_is_dimmed_and_nothing_said() {
    MiceFixture one({acme, inUse(virtualMouse())});
    QVERIFY(one.window.findChild<MouseView*>(QStringLiteral("mMainSkarn"))->missing().empty());
    for (const ControlRow* row : one.window.findChildren<ControlRow*>()) {
      QVERIFY(!row->isMissing());
      QCOMPARE(row->toolTip(), QString());
    }
    for (const char* name :
         {"mPollingRate", "mXDpiSlider", "mMainColor", "mLightning", "mLightBrightnessSlider", "mSleepModeSlider"})
      QCOMPARE(toolTipOf(one, name), QString());
  }

  void what_the_mouse_lacks_is_told_and_stays_usable() {
    MiceFixture one({inUse(acme), virtualMouse()});
    const auto* picture = one.window.findChild<MouseView*>(QStringLiteral("mMainSkarn"));
    QCOMPARE(picture->missing().size(), 24U);
    for (const ControlRow* row : one.window.findChildren<ControlRow*>()) {
      const bool isOfTheWheel = row->control().family == ControlFamily::Wheel;
      QCOMPARE(row->isMissing(), !isOfTheWheel);
      QCOMPARE(row->toolTip(), isOfTheWheel ? QString() : localized("lkeyMouseLacksControl"));
      QVERIFY(isOfTheWheel || row->popUp()->isEnabled());
      QCOMPARE(row->popUp()->accessibleDescription().endsWith(localized("lkeyMouseLacksControl")), !isOfTheWheel);
    }
    QCOMPARE(toolTipOf(one, "mPollingRate"), localized("lkeyMouseLacksPollingRate"));
    QCOMPARE(one.text("mPollingRateNoteLabel"), localized("lkeyMouseLacksPollingRate"));
    const auto* rate = one.window.findChild<QComboBox*>(QStringLiteral("mPollingRate"));
    QCOMPARE(rate->accessibleDescription(), localized("lkeyMouseLacksPollingRate"));
    QCOMPARE(toolTipOf(one, "mXDpiSlider"), QString());
    QCOMPARE(toolTipOf(one, "mMainColor"), localized("lkeyMouseLacksLight"));
    QCOMPARE(toolTipOf(one, "mLightBrightnessSlider"), localized("lkeyMouseLacksLight"));
    QCOMPARE(toolTipOf(one, "mSleepModeSlider"), localized("lkeyMouseLacksPower"));
    QCOMPARE(toolTipOf(one, "mFLashScrollWheelSlider"), localized("lkeyMouseLacksPower"));
    QVERIFY(rate->isEnabled());
    one.tell({inUse(acme).with("hasPollingRate", true).with("hasLight", true).with("sensitivity", "missing")});
    QCOMPARE(toolTipOf(one, "mPollingRate"), QString());
    QCOMPARE(one.text("mPollingRateNoteLabel"), localized("lkeyPollingRateNote"));
    QCOMPARE(toolTipOf(one, "mXDpiSlider"), localized("lkeyMouseLacksSensitivity"));
    QCOMPARE(toolTipOf(one, "mMainColor"), QString());
    // Its light is another one on battery, whatever else of its battery can be set.
    QCOMPARE(toolTipOf(one, "mLightBrightnessSlider"), QString());
    QCOMPARE(toolTipOf(one, "mSleepModeSlider"), localized("lkeyMouseLacksPower"));
    one.tell({inUse(acme).with("hasPower", true)});
    QCOMPARE(toolTipOf(one, "mLightBrightnessSlider"), localized("lkeyMouseLacksLight"));
    QCOMPARE(toolTipOf(one, "mSleepModeSlider"), QString());
    QCOMPARE(toolTipOf(one, "mFLashScrollWheelSlider"), QString());
    // Without a mouse the reason is another.
    one.notifications.post("Device Removed 273", "", {});
    QVERIFY(picture->missing().empty());
    QCOMPARE(toolTipOf(one, "mMainColor"), localized("lkeyNoMouseConnected"));
    QCOMPARE(toolTipOf(one, "mLightBrightnessSlider"), localized("lkeyNoMouseConnected"));
    QCOMPARE(toolTipOf(one, "mSleepModeSlider"), localized("lkeyNoMouseConnected"));
  }
};

SKARN_QTEST(MouseControlsTest)
#include "MouseControls_test.moc"
