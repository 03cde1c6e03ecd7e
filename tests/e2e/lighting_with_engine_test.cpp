// The Lighting tab of the real window, with the real engine and its virtual mouse.
#include <QAbstractButton>
#include <QColorDialog>
#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>

#include "e2e/OpenWindow.h"
#include "e2e/VirtualMouse.h"
#include "e2e/Vornctl.h"
#include "lighting/ColorWell.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

namespace {

class OpenLighting : public OpenWindow {
 public:
  OpenLighting() {
    showTab("MouseLightingController");
    awaitAnnouncement();
  }

  QWidget* page() { return find<QWidget>("MouseLightingController"); }
  QSlider& brightness() { return *find<QSlider>("mBrightnessValue"); }
  QRadioButton& cell(const char* name) { return *find<QRadioButton>(name); }
  void click(QAbstractButton& button) {
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
  }
  QColorDialog* openPanel() {
    click(*find<ColorWell>("mMainColor"));
    return window().findChild<QColorDialog*>();
  }
  bool isClosed() { return window().findChild<QColorDialog*>() == nullptr; }
};

}  // namespace

class LightingWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }
  void init() { mEngine.begin(); }
  void cleanup() { mEngine.end(); }

  void the_start_sends_effect_and_brightness_back_once() {
    OpenLighting open;
    QCOMPARE(open.startUpdates(), 2);
    QCOMPARE(open.profileUpdates(), 0);
    QCOMPARE(open.setting(keys::BrightnessNormal).toInt(), open.brightness().value());
    QCOMPARE(open.setting(keys::ScrollLED).toInt(), 1);
  }

  void a_start_without_a_mouse_leaves_the_stored_light_alone() {
    {
      OpenLighting open;
      open.click(open.cell("mSpectrumCyclingCell"));
      QCOMPARE(open.setting(keys::LEDEffects).toInt(), 4);
    }
    QVERIFY(VirtualMouse::unplug());
    OpenWindow open;
    QVERIFY(open.asksForTheMouse());
    // What is shown are the default settings: nothing of them is sent.
    QCOMPARE(open.startUpdates(), 0);
    QCOMPARE(open.setting(keys::LEDEffects).toInt(), 0);
    QVERIFY(VirtualMouse::plug("wired"));
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    QCOMPARE(open.setting(keys::LEDEffects).toInt(), 4);
    // The mouse's own effect and brightness, once.
    QCOMPARE(open.profileUpdates(), 2);
  }

  void every_step_of_the_brightness_is_kept() {
    {
      OpenLighting open;
      QTest::keyClick(&open.brightness(), Qt::Key_Home);
      QCOMPARE(open.setting(keys::BrightnessKBNormal).toInt(), 1);
      for (int position = 2; position <= 4; ++position) {
        QTest::keyClick(&open.brightness(), Qt::Key_Right);
        QCOMPARE(open.setting(keys::BrightnessKBNormal).toInt(), position);
        QCOMPARE(open.brightness().value(), position);
      }
      QTest::keyClick(&open.brightness(), Qt::Key_Left);
      QCOMPARE(open.profileUpdates(), 5);
    }
    OpenLighting again;
    QCOMPARE(again.brightness().value(), 3);
    QCOMPARE(again.setting(keys::BrightnessNormal).toInt(), 3);
  }

  void a_colour_survives_the_round_trip_exactly() {
    PropertyList colors;
    {
      OpenLighting open;
      const PropertyList before = open.setting(keys::LEDColors);
      QVERIFY(before.size() > 1);
      QColorDialog* panel = open.openPanel();
      panel->setCurrentColor(QColor(51, 85, 1));
      QCOMPARE(open.profileUpdates(), 0);
      panel->accept();
      QCOMPARE(open.profileUpdates(), 1);
      colors = before.replacing(
          0, before.at(0).with(keys::Red, 51 / 255.0).with(keys::Green, 85 / 255.0).with(keys::Blue, 1 / 255.0));
      QVERIFY(open.setting(keys::LEDColors) == colors);
      QTRY_VERIFY(open.isClosed());
    }
    OpenLighting again;
    QCOMPARE(again.text("mMainColorHex"), QStringLiteral("#335501"));
    again.openPanel()->accept();
    QCOMPARE(again.profileUpdates(), 1);
    QVERIFY(again.setting(keys::LEDColors) == colors);
  }

  void a_cancelled_colour_reaches_no_engine() {
    OpenLighting open;
    const PropertyList before = open.setting(keys::LEDColors);
    QColorDialog* panel = open.openPanel();
    panel->setCurrentColor(QColor(1, 2, 3));
    QTest::keyClick(panel, Qt::Key_Escape);
    QCOMPARE(open.profileUpdates(), 0);
    QVERIFY(open.setting(keys::LEDColors) == before);
  }

  void the_spectrum_cycles_and_stops_again() {
    {
      OpenLighting open;
      open.click(open.cell("mSpectrumCyclingCell"));
      QCOMPARE(open.setting(keys::LEDEffects).toInt(), 4);
    }
    OpenLighting again;
    QVERIFY(again.cell("mSpectrumCyclingCell").isChecked());
    again.click(again.cell("mFixedColorCell"));
    QCOMPARE(again.setting(keys::LEDEffects).toInt(), 0);
    QCOMPARE(again.setting(keys::ScrollLED).toInt(), 1);
    QCOMPARE(again.profileUpdates(), 1);
  }

  void the_light_goes_out_with_apply_only() {
    OpenLighting open;
    auto& light = *open.find<QAbstractButton>("mMain");
    open.click(light);
    QCOMPARE(open.profileUpdates(), 0);
    QCOMPARE(open.setting(keys::ScrollLED).toInt(), 1);
    open.find<QAbstractButton>("mAppySettings")->click();
    QCOMPARE(open.profileUpdates(), 1);
    QCOMPARE(open.setting(keys::ScrollLED).toInt(), 0);
    QVERIFY(!light.isChecked());
  }

  void the_box_says_which_profile_it_writes_and_where_this_one_goes_out() {
    OpenLighting open;
    QVERIFY(runVornctl({"profiles", "add", "Travel"}));
    QCOMPARE(open.text("mMainNote"), localized("lkeyLightAppliedNote"));
    QVERIFY(runVornctl({"profiles", "switch", "Travel"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.profileName(), QStringLiteral("Travel"), deadline);
    QCOMPARE(open.text("mMainNote"), localized("lkeyLightAppliedElsewhereNote"));
    const PropertyList before = open.hub().mProfilesArray();
    open.click(*open.find<QAbstractButton>("mMain"));
    open.find<QAbstractButton>("mAppySettings")->click();
    QVERIFY(open.hub().mProfilesArray() == before.replacing(0, before.at(0).with(keys::ScrollLED, 0)));
    QVERIFY(runVornctl({"profiles", "switch", "1"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.text("mMainNote"), localized("lkeyLightAppliedNote"), deadline);
  }

  void the_profile_list_switches_profiles() {
    OpenLighting open;
    open.hub().addNewProfileWithSettings(open.hub().mDefaultProfileDict().with(keys::ProfileName, "Travel"));
    auto& list = *open.find<QComboBox>("mProfileListPopUp");
    QCOMPARE(list.count(), 2);
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(open.profileName(), QStringLiteral("Travel"));
    QTest::keyClick(&open.brightness(), Qt::Key_Home);
    QCOMPARE(open.hub().mProfilesArray().at(1)[keys::BrightnessKBNormal].toInt(), 1);
    QCOMPARE(open.hub().mProfilesArray().at(0)[keys::BrightnessKBNormal].toInt(), 4);
  }

  void the_tab_rests_while_the_mouse_is_away() {
    OpenLighting open;
    QTest::keyClick(&open.brightness(), Qt::Key_Home);
    QColorDialog* panel = open.openPanel();
    QVERIFY(panel->isVisible());
    QVERIFY(VirtualMouse::unplug());
    QTRY_VERIFY_WITH_TIMEOUT(!open.brightness().isEnabled(), deadline);
    QTRY_VERIFY(open.isClosed());
    QTest::keyClick(&open.brightness(), Qt::Key_End);
    open.click(open.cell("mSpectrumCyclingCell"));
    QCOMPARE(open.profileUpdates(), 1);
    QVERIFY(VirtualMouse::plug("wireless"));
    QTRY_VERIFY_WITH_TIMEOUT(open.brightness().isEnabled(), deadline);
    QCOMPARE(open.brightness().value(), 1);
    QCOMPARE(open.profileUpdates(), 1);
    QTest::keyClick(&open.brightness(), Qt::Key_End);
    open.click(open.cell("mSpectrumCyclingCell"));
    QCOMPARE(open.setting(keys::BrightnessKBNormal).toInt(), 4);
    QCOMPARE(open.setting(keys::LEDEffects).toInt(), 4);
    QCOMPARE(open.profileUpdates(), 3);
  }

 private:
  EngineSession mEngine;
};

SKARN_QTEST(LightingWithEngineTest)
#include "lighting_with_engine_test.moc"
