// The Maintenance tab of the real window, with the real engine and its virtual mouse.
#include <QAbstractButton>
#include <QMessageBox>
#include <QSlider>
#include <QTabWidget>

#include "e2e/OpenWindow.h"
#include "e2e/VirtualMouse.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

namespace {

class OpenMaintenance : public OpenWindow {
 public:
  OpenMaintenance() {
    showTab("MouseMaintenanceController");
    awaitAnnouncement();
  }

  QSlider& slider(const QByteArray& name) { return *find<QSlider>(name.constData()); }
  PropertyList deviceSetting(std::string_view key) { return hub().mDeviceSettingsDict()[key]; }
  QMessageBox* alert() { return window().findChild<QMessageBox*>(QStringLiteral("alert")); }
};

}  // namespace

class MaintenanceWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }
  void init() { mEngine.begin(); }
  void cleanup() { mEngine.end(); }

  void every_step_of_a_slider_is_kept_for_the_device_data() {
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("brightness") << QByteArray("mLightBrightnessSlider") << QByteArray("BrightnessBattery");
    QTest::newRow("sleep") << QByteArray("mSleepModeSlider") << QByteArray("PowerSaver");
    QTest::newRow("flash") << QByteArray("mFLashScrollWheelSlider") << QByteArray("BatteryCriticalLevel");
  }
  void every_step_of_a_slider_is_kept_for_the_device() {
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, key);
    int maximum = 0;
    {
      OpenMaintenance open;
      QSlider& slider = open.slider(name);
      maximum = slider.maximum();
      slider.setFocus();
      QTest::keyClick(&slider, Qt::Key_Home);
      const int before = open.profileUpdates();
      for (int position = 2; position <= maximum; ++position) {
        QTest::keyClick(&slider, Qt::Key_Right);
        QCOMPARE(open.deviceSetting(key.constData()).toInt(), position);
        QCOMPARE(open.setting(key.constData()).toInt(), position);
        QCOMPARE(slider.value(), position);
      }
      QCOMPARE(open.profileUpdates() - before, maximum - 1);
    }
    OpenMaintenance again;
    QCOMPARE(again.slider(name).value(), maximum);
    QCOMPARE(again.profileUpdates(), 0);
  }

  void restoring_keeps_the_name_and_the_other_profiles() {
    OpenMaintenance open;
    MouseMainController& hub = open.hub();
    const PropertyList factory = hub.mDefaultProfileDict();
    hub.addNewProfileWithSettings(factory.with(keys::ProfileName, "Travel").with(keys::DPIX, 1200));
    hub.updateProfileWithID(0, PropertyList::dictionary({{keys::ProfileName, "Mine"}}));
    hub.updateProfileWithID(0, PropertyList::dictionary({{keys::DPIX, 400}, {keys::LEDEffects, 4}}));
    for (const char* name : {"mLightBrightnessSlider", "mSleepModeSlider", "mFLashScrollWheelSlider"}) {
      QTest::keyClick(&open.slider(name), Qt::Key_End);
    }
    const PropertyList changed = hub.mProfilesArray();
    const int before = open.profileUpdates();
    open.find<QAbstractButton>("mRestoreSettings")->click();
    QTest::keyClick(open.alert(), Qt::Key_Escape);
    QVERIFY(hub.mProfilesArray() == changed);
    QCOMPARE(open.profileUpdates(), before);
    QTRY_VERIFY(open.alert() == nullptr);
    open.find<QAbstractButton>("mRestoreSettings")->click();
    confirm(open.alert());
    QCOMPARE(open.profileUpdates(), before + 1);
    QCOMPARE(open.profileName(), QStringLiteral("Mine"));
    QVERIFY(hub.mDefaultProfileDict()[keys::DPIX] == factory[keys::DPIX]);
    QVERIFY(hub.mDefaultProfileDict()[keys::LEDEffects] == factory[keys::LEDEffects]);
    QVERIFY(hub.mProfilesArray().at(1) == changed.at(1));
    QCOMPARE(open.slider("mLightBrightnessSlider").value(), 2);
    QCOMPARE(open.slider("mSleepModeSlider").value(), 3);
    QCOMPARE(open.slider("mFLashScrollWheelSlider").value(), 1);
    QCOMPARE(open.deviceSetting(keys::BrightnessNormal).toInt(), 4);
    QVERIFY(open.deviceSetting(keys::ProfileOSDOn).toBool());
  }

  void the_tab_rests_while_the_mouse_is_away() {
    OpenMaintenance open;
    QSlider& slider = open.slider("mSleepModeSlider");
    QTest::keyClick(&slider, Qt::Key_Home);
    QVERIFY(VirtualMouse::unplug());
    QTRY_VERIFY_WITH_TIMEOUT(!slider.isEnabled(), deadline);
    QVERIFY(!open.find<QAbstractButton>("mRestoreSettings")->isEnabled());
    QVERIFY(open.find<QAbstractButton>("mCheckUpdates")->isEnabled());
    QTest::keyClick(&slider, Qt::Key_End);
    QCOMPARE(open.profileUpdates(), 1);
    QVERIFY(VirtualMouse::plug("wired"));
    QTRY_VERIFY_WITH_TIMEOUT(slider.isEnabled(), deadline);
    QTest::keyClick(&slider, Qt::Key_End);
    QCOMPARE(open.deviceSetting(keys::PowerSaver).toInt(), 4);
    QCOMPARE(open.profileUpdates(), 2);
  }

 private:
  EngineSession mEngine;
};

SKARN_QTEST(MaintenanceWithEngineTest)
#include "maintenance_with_engine_test.moc"
