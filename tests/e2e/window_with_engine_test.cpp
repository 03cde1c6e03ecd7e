// The real window in this process, and the real engine in another one, whose mouse is plugged, pressed and emptied.
#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <algorithm>

#include "buttons/ButtonsFixture.h"
#include "e2e/OpenMacros.h"
#include "e2e/OtherClient.h"
#include "e2e/VirtualMouse.h"
#include "macros/MacroMenus.h"
#include "macros/MouseMacrosController.h"
#include "platform/Localization.h"
#include "profiles/ProfileMenu.h"
#include "support/QtTests.h"
#include "widgets/PopUpButton.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;

using Open = void (*)(OpenWindow&);

namespace {

// The macro is what the first control plays.
void addSecondProfileAndMacro() {
  OtherClient other;
  other.addProfile(PropertyList::dictionary({{keys::ProfileName, "Second"}}));
  addMacro(other, 2);
  other.assign(ButtonsDriver::control(1).identifier, static_cast<int>(vorn::AssignmentCommand::Macro), 0);
}
MouseButtonController& showButtons(OpenWindow& open) {
  open.showTab("MouseButtonController");
  return *open.find<MouseButtonController>("MouseButtonController");
}
template <ProfileItem item>
void openOfProfile(OpenWindow& open) {
  open.showTab("MouseProfilesController");
  open.find<MouseProfilesController>("MouseProfilesController")->selectMenuItem(static_cast<int>(item));
}
template <int tag>
void openOfMacro(OpenWindow& open) {
  open.showTab("MouseMacrosController");
  open.find<QTableView>("mMacroTableView")->selectRow(0);
  open.find<MouseMacrosController>("MouseMacrosController")->clickMacroSettingsMenuItem(tag);
}
template <int line, int tag>
void openOfLine(OpenWindow& open) {
  open.showTab("MouseMacrosController");
  open.find<QTableView>("mMacroTableView")->selectRow(0);
  open.find<QTableView>("mMacroDetailsTableView")->selectRow(line);
  open.find<MouseMacrosController>("MouseMacrosController")->clickMacroDetailsSettingsMenuItem(tag);
}
void typeHalfAName(QWidget& table) {
  auto* editor = table.findChild<QLineEdit*>();
  QVERIFY(editor != nullptr);
  QTest::keyClicks(editor, QStringLiteral("half a na"));
}
bool isSomethingOpen(OpenWindow& open) {
  if (QApplication::activePopupWidget() != nullptr) return true;
  for (const char* table : {"mMacroTableView", "mProfilesTableView"}) {
    if (open.find(table)->findChild<QLineEdit*>() != nullptr) return true;
  }
  return std::ranges::any_of(open.window().findChildren<QDialog*>(), [](const QDialog* dialog) {
    return dialog->isVisible() && dialog->objectName() != QLatin1String("mDeviceConnectionWindow");
  });
}

}  // namespace

class WindowWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase();
  void init();
  void cleanup();

  void the_mouse_is_announced_after_the_start();
  void the_firmware_version_is_shown();
  void the_window_follows_the_mouse_that_goes_and_comes();
  void the_window_follows_the_mouse_between_cable_and_receiver();
  void the_window_shows_the_battery_going_down_charging_and_full();
  void a_profile_switched_by_another_client_is_shown();
  void a_profile_switched_on_the_mouse_is_shown();
  void a_stage_changed_on_the_mouse_is_shown();
  void a_keymap_changed_on_the_mouse_is_shown();
  void a_macro_added_by_another_client_is_shown();
  void changes_of_its_own_are_told_in_its_name_and_not_read_again_data();
  void changes_of_its_own_are_told_in_its_name_and_not_read_again();
  void what_is_open_when_the_mouse_goes_closes_and_writes_nothing_data();
  void what_is_open_when_the_mouse_goes_closes_and_writes_nothing();
  void what_is_open_when_the_engine_goes_closes_and_is_not_written_to_the_next_one_data();
  void what_is_open_when_the_engine_goes_closes_and_is_not_written_to_the_next_one();
  void a_recording_ends_with_the_engine_and_can_begin_again_with_the_next_one();
  void the_keyboard_stays_at_the_tabs_when_the_mouse_goes_under_a_sheet();
  void a_deletion_that_ends_after_the_mouse_went_leaves_the_tab_disabled();
  void an_engine_that_was_killed_and_started_again_is_used_as_if_nothing_had_happened();
  void a_mouse_that_went_while_no_engine_ran_is_noticed();

 private:
  EngineSession mEngine;
};

void WindowWithEngineTest::initTestCase() {
  installTranslations(QStringLiteral("en"));
}

void WindowWithEngineTest::init() {
  mEngine.begin();
}

void WindowWithEngineTest::cleanup() {
  mEngine.end();
}

void WindowWithEngineTest::the_mouse_is_announced_after_the_start() {
  OpenWindow open;
  QVERIFY(open.isEnabled());
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  QCOMPARE(open.battery(), QString());
}

void WindowWithEngineTest::the_firmware_version_is_shown() {
  OpenWindow open;
  QTRY_COMPARE_WITH_TIMEOUT(open.text("mFirmwareVersion"), QStringLiteral("1.00"), deadline);
}

void WindowWithEngineTest::the_window_follows_the_mouse_that_goes_and_comes() {
  OpenWindow open;
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  QVERIFY(VirtualMouse::unplug());
  QTRY_VERIFY_WITH_TIMEOUT(open.asksForTheMouse(), deadline);
  QVERIFY(!open.isEnabled());
  QCOMPARE(open.connectivity(), QString());
  QCOMPARE(open.text("mFirmwareVersion"), QStringLiteral("-"));
  QVERIFY(VirtualMouse::plug("wired"));
  QTRY_VERIFY_WITH_TIMEOUT(!open.asksForTheMouse(), deadline);
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  QVERIFY(open.isEnabled());
  QTRY_COMPARE_WITH_TIMEOUT(open.text("mFirmwareVersion"), QStringLiteral("1.00"), deadline);
}

void WindowWithEngineTest::the_window_follows_the_mouse_between_cable_and_receiver() {
  OpenWindow open;
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  QVERIFY(VirtualMouse::plug("wireless"));
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("wireless"), deadline);
  QTRY_COMPARE_WITH_TIMEOUT(open.battery(), QStringLiteral("battery3"), deadline);
  QVERIFY(open.isEnabled());
  QVERIFY(!open.asksForTheMouse());
  QVERIFY(VirtualMouse::plug("wired"));
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  QTRY_COMPARE_WITH_TIMEOUT(open.battery(), QString(), deadline);
}

void WindowWithEngineTest::the_window_shows_the_battery_going_down_charging_and_full() {
  QVERIFY(VirtualMouse::plug("wireless"));
  OpenWindow open;
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("wireless"), deadline);
  QTRY_COMPARE_WITH_TIMEOUT(open.battery(), QStringLiteral("battery3"), deadline);
  QVERIFY(VirtualMouse::setBattery(50));
  QTRY_COMPARE_WITH_TIMEOUT(open.battery(), QStringLiteral("battery2"), deadline);
  QVERIFY(VirtualMouse::setBattery(20));
  QTRY_COMPARE_WITH_TIMEOUT(open.battery(), QStringLiteral("battery1"), deadline);
  QVERIFY(VirtualMouse::plug("wired"));
  // Charging runs through the pictures.
  QTRY_COMPARE_WITH_TIMEOUT(open.battery(), QStringLiteral("battery3"), deadline);
  QTRY_COMPARE_WITH_TIMEOUT(open.battery(), QStringLiteral("battery"), deadline);
  QVERIFY(VirtualMouse::setBattery(100));
  QTRY_COMPARE_WITH_TIMEOUT(open.battery(), QString(), deadline);
}

void WindowWithEngineTest::a_profile_switched_by_another_client_is_shown() {
  OpenWindow open;
  OtherClient other;
  const PropertyList added = other.addProfile(open.hub().mDefaultProfileDict().with(keys::ProfileName, "Travel"));
  QTRY_VERIFY_WITH_TIMEOUT(open.hub().mProfilesArray() == added[keys::Profiles], deadline);
  other.switchProfile(1);
  QTRY_COMPARE_WITH_TIMEOUT(open.profileName(), QStringLiteral("Travel"), deadline);
}

void WindowWithEngineTest::a_profile_switched_on_the_mouse_is_shown() {
  OpenWindow open;
  OtherClient other;
  other.addProfile(open.hub().mDefaultProfileDict().with(keys::ProfileName, "Travel"));
  other.assign("43", 17, 1);
  QVERIFY(VirtualMouse::click("43"));
  QTRY_COMPARE_WITH_TIMEOUT(open.profileName(), QStringLiteral("Travel"), deadline);
}

void WindowWithEngineTest::a_stage_changed_on_the_mouse_is_shown() {
  OpenWindow open;
  OtherClient other;
  const auto stage = [](int dpi) {
    return PropertyList::dictionary({{keys::StageDpiX, dpi}, {keys::StageDpiY, dpi}, {keys::StageIndependentXY, 0}});
  };
  other.updateProfile(0, PropertyList::dictionary({{keys::Stages, PropertyList::array({stage(400), stage(1600)})},
                                                   {keys::StageValue, 0},
                                                   {keys::DPIX, 400},
                                                   {keys::DPIY, 400}}));
  QTRY_COMPARE_WITH_TIMEOUT(open.setting(keys::DPIX).toInt(), 400, deadline);
  QVERIFY(VirtualMouse::click("stage-up"));
  QTRY_COMPARE_WITH_TIMEOUT(open.setting(keys::DPIX).toInt(), 1600, deadline);
}

void WindowWithEngineTest::a_keymap_changed_on_the_mouse_is_shown() {
  OpenWindow open;
  const int before = open.setting(keys::KeymapID).toInt();
  QVERIFY(VirtualMouse::click("keymap"));
  QTRY_COMPARE_WITH_TIMEOUT(open.setting(keys::KeymapID).toInt(), (before + 1) % static_cast<int>(keys::keymapCount),
                            deadline);
}

void WindowWithEngineTest::a_macro_added_by_another_client_is_shown() {
  OpenWindow open;
  OtherClient other;
  other.change(MessageID::AddMacro,
               PropertyList::dictionary(
                   {{requestKeys::MacroContents, PropertyList::dictionary({{keys::MacroName, "Greeting"}})}}));
  QTRY_COMPARE_WITH_TIMEOUT(open.hub().mMacrosArray().size(), std::size_t{1}, deadline);
  QVERIFY(open.hub().mMacrosArray().at(0)[keys::MacroName] == PropertyList("Greeting"));
}

void WindowWithEngineTest::changes_of_its_own_are_told_in_its_name_and_not_read_again_data() {
  QTest::addColumn<QString>("key");
  QTest::addColumn<int>("value");
  QTest::addColumn<QString>("notification");
  QTest::newRow("polling rate") << "PollingRate" << 500 << "Profile Updated 273";
  QTest::newRow("sensitivity") << "DPIX" << 1200 << "DPI Updated 273";
  QTest::newRow("keymap") << "KeymapID" << 3 << "Keymap Updated 273";
}

void WindowWithEngineTest::changes_of_its_own_are_told_in_its_name_and_not_read_again() {
  QFETCH(QString, key);
  QFETCH(int, value);
  QFETCH(QString, notification);
  OpenWindow open;
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  auto& center = vorn::DistributedNotificationCenter::defaultCenter();
  std::vector<PropertyList> sources;
  // The window observes the name too and is told before this test.
  center.addObserver(this, notification.toStdString(), [&](const vorn::Notification& news) {
    sources.push_back(news.userInfo[vorn::newsKeys::SourceApp]);
  });
  const int before = open.requests(MessageID::GetAllSettings);
  open.hub().updateProfileWithID(0, PropertyList::dictionary({{key.toStdString(), value}}));
  QTRY_COMPARE_WITH_TIMEOUT(sources.size(), std::size_t{1}, deadline);
  center.removeObserver(this);
  QVERIFY(sources[0] == PropertyList(vorn::configuratorIdentifier));
  QCOMPARE(open.requests(MessageID::GetAllSettings), before);
  QCOMPARE(open.setting(key.toStdString()).toInt(), value);
}

void WindowWithEngineTest::what_is_open_when_the_mouse_goes_closes_and_writes_nothing_data() {
  QTest::addColumn<Open>("openIt");
  QTest::addRow("the sheet of a key") << Open{[](OpenWindow& open) {
    ButtonsDriver driver(showButtons(open));
    driver.choose(ButtonsDriver::control(1), AssignmentCategory::SingleKey);
  }};
  QTest::addRow("the sheet of a keymap") << Open{[](OpenWindow& open) {
    ButtonsDriver driver(showButtons(open));
    driver.openKeymapSheet(ButtonsDriver::control(1));
  }};
  QTest::addRow("the sheet of a macro's repetitions") << Open{[](OpenWindow& open) {
    ButtonsDriver driver(showButtons(open));
    QTest::mouseClick(driver.row(ButtonsDriver::control(1)).repeatButton(), Qt::LeftButton);
  }};
  QTest::addRow("the menu of a control") << Open{[](OpenWindow& open) {
    showButtons(open);
    open.find<PopUpButton>("mButtonFour")->openMenu();
  }};
  QTest::addRow("the alert of a profile's deletion") << Open{openOfProfile<ProfileItem::Delete>};
  QTest::addRow("the alert of a profile's restore") << Open{openOfProfile<ProfileItem::RestoreDefault>};
  QTest::addRow("the panel of a profile's export") << Open{openOfProfile<ProfileItem::Export>};
  QTest::addRow("the panel of a profile's import") << Open{openOfProfile<ProfileItem::Import>};
  QTest::addRow("the chooser of an application") << Open{openOfProfile<ProfileItem::AssignApplication>};
  QTest::addRow("a profile's typed name") << Open{[](OpenWindow& open) {
    openOfProfile<ProfileItem::Rename>(open);
    typeHalfAName(*open.find("mProfilesTableView"));
  }};
  QTest::addRow("the menu of a profile") << Open{[](OpenWindow& open) {
    open.showTab("MouseProfilesController");
    QTest::mouseClick(open.find<QTableView>("mProfilesTableView")->viewport(), Qt::RightButton, {}, QPoint(20, 10));
  }};
  QTest::addRow("the panel of a macro's import") << Open{openOfMacro<macroMenuTags::Import>};
  QTest::addRow("the panel of a macro's export") << Open{openOfMacro<macroMenuTags::Export>};
  QTest::addRow("the alert of a macro's deletion") << Open{openOfMacro<macroMenuTags::Delete>};
  QTest::addRow("a macro's typed name") << Open{[](OpenWindow& open) {
    openOfMacro<macroMenuTags::Rename>(open);
    typeHalfAName(*open.find("mMacroTableView"));
  }};
  QTest::addRow("the sheet of an event") << Open{openOfLine<0, macroDetailsMenuTags::Edit>};
  QTest::addRow("the sheet of a delay") << Open{openOfLine<1, macroDetailsMenuTags::Edit>};
  QTest::addRow("the alert of all events' deletion") << Open{openOfLine<1, macroDetailsMenuTags::DeleteAllEvents>};
  QTest::addRow("the sheet of the stages") << Open{[](OpenWindow& open) {
    open.showTab("MousePerformanceController");
    open.find<QAbstractButton>("mSensitivityStages")->click();
    open.find<QAbstractButton>("mStageAddButton")->click();
  }};
  QTest::addRow("the panel of the colour") << Open{[](OpenWindow& open) {
    open.showTab("MouseLightingController");
    open.find<QAbstractButton>("mMainColor")->click();
  }};
  QTest::addRow("the alert of a restore") << Open{[](OpenWindow& open) {
    open.showTab("MouseMaintenanceController");
    open.find<QAbstractButton>("mRestoreSettings")->click();
  }};
}

void WindowWithEngineTest::what_is_open_when_the_mouse_goes_closes_and_writes_nothing() {
  QFETCH(Open, openIt);
  addSecondProfileAndMacro();
  OtherClient other;
  OpenWindow open;
  open.awaitAnnouncement();
  const PropertyList before = other.bundle();
  openIt(open);
  QVERIFY(isSomethingOpen(open));
  QVERIFY(VirtualMouse::unplug());
  QTRY_VERIFY_WITH_TIMEOUT(open.asksForTheMouse(), deadline);
  QTRY_VERIFY_WITH_TIMEOUT(!isSomethingOpen(open), deadline);
  QVERIFY(!open.isEnabled());
  QVERIFY(other.bundle() == before);
}

void WindowWithEngineTest::what_is_open_when_the_engine_goes_closes_and_is_not_written_to_the_next_one_data() {
  what_is_open_when_the_mouse_goes_closes_and_writes_nothing_data();
}

void WindowWithEngineTest::what_is_open_when_the_engine_goes_closes_and_is_not_written_to_the_next_one() {
  QFETCH(Open, openIt);
  addSecondProfileAndMacro();
  const PropertyList before = OtherClient().bundle();
  OpenWindow open;
  open.awaitAnnouncement();
  openIt(open);
  QVERIFY(isSomethingOpen(open));
  mEngine.kill();
  QTRY_VERIFY_WITH_TIMEOUT(!open.isEnabled(), deadline);
  QVERIFY(!isSomethingOpen(open));
  QVERIFY(!open.asksForTheMouse());
  QCOMPARE(open.text("mStateStrip"), localized("lkeyStateEngineGone"));
  mEngine.start();
  QTRY_VERIFY_WITH_TIMEOUT(open.isEnabled(), deadline);
  QVERIFY(OtherClient().bundle() == before);
}

void WindowWithEngineTest::a_recording_ends_with_the_engine_and_can_begin_again_with_the_next_one() {
  addSecondProfileAndMacro();
  OpenWindow open;
  open.awaitAnnouncement();
  open.showTab("MouseMacrosController");
  open.find<QTableView>("mMacroTableView")->selectRow(0);
  auto* record = open.find<QAbstractButton>("mRecordMacroDetails");
  record->click();
  QCOMPARE(record->text(), QStringLiteral("Stop"));
  mEngine.kill();
  QTRY_VERIFY_WITH_TIMEOUT(!open.isEnabled(), deadline);
  QCOMPARE(record->text(), QStringLiteral("Record"));
  mEngine.start();
  QTRY_VERIFY_WITH_TIMEOUT(open.isEnabled(), deadline);
  open.awaitAnnouncement();
  open.find<QTableView>("mMacroTableView")->selectRow(0);
  QVERIFY(record->isEnabled());
}

void WindowWithEngineTest::the_keyboard_stays_at_the_tabs_when_the_mouse_goes_under_a_sheet() {
  OtherClient().addProfile(PropertyList::dictionary({{keys::ProfileName, "Second"}}));
  OpenWindow open;
  open.awaitAnnouncement();
  open.showTab("MouseProfilesController");
  open.find("mProfilesTableView")->setFocus();
  open.find<QAbstractButton>("mDeleteProfile")->click();
  QVERIFY(VirtualMouse::unplug());
  QTRY_VERIFY_WITH_TIMEOUT(open.asksForTheMouse(), deadline);
  open.find<QAbstractButton>("mDeviceConnectionOK")->click();
  QVERIFY(!open.asksForTheMouse());
  QCOMPARE(open.window().focusWidget(), static_cast<QWidget*>(open.find<QTabWidget>("mMouseTabView")->tabBar()));
}

void WindowWithEngineTest::a_deletion_that_ends_after_the_mouse_went_leaves_the_tab_disabled() {
  OtherClient().addProfile(PropertyList::dictionary({{keys::ProfileName, "Second"}}));
  OpenWindow open;
  open.awaitAnnouncement();
  QVERIFY(VirtualMouse::unplug());
  QTRY_VERIFY_WITH_TIMEOUT(open.asksForTheMouse(), deadline);
  // Confirmed in the last moment: the news was still on its way.
  open.hub().deleteProfileWithProfileID(1);
  QCOMPARE(open.hub().mProfilesArray().size(), std::size_t{1});
  QVERIFY(!open.isEnabled());
}

void WindowWithEngineTest::an_engine_that_was_killed_and_started_again_is_used_as_if_nothing_had_happened() {
  OpenWindow open;
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  open.hub().updateProfileWithID(0, open.hub().mDefaultProfileDict().with(keys::ProfileName, "Before"));
  QCOMPARE(open.profileName(), QStringLiteral("Before"));
  mEngine.kill();
  mEngine.start({"--device", "wireless"});
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("wireless"), deadline);
  QCOMPARE(open.profileName(), QStringLiteral("Before"));
  QVERIFY(open.isEnabled());
  open.hub().updateProfileWithID(0, open.hub().mDefaultProfileDict().with(keys::ProfileName, "After"));
  QCOMPARE(open.profileName(), QStringLiteral("After"));
}

void WindowWithEngineTest::a_mouse_that_went_while_no_engine_ran_is_noticed() {
  OpenWindow open;
  QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
  mEngine.kill();
  mEngine.start({"--device", "absent"});
  QTRY_VERIFY_WITH_TIMEOUT(open.asksForTheMouse(), deadline);
  QVERIFY(!open.isEnabled());
}

SKARN_QTEST(WindowWithEngineTest)
#include "window_with_engine_test.moc"
