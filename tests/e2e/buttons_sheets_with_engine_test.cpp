// What the real window's Buttons tab shows and does while another program and the mouse change what the real engine
// holds.
#include <QLineEdit>

#include "buttons/ButtonsFixture.h"
#include "e2e/OpenWindow.h"
#include "e2e/OtherClient.h"
#include "e2e/VirtualMouse.h"
#include "model/Assignments.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::AssignmentCommand;
using vorn::MessageID;
using vorn::test::VirtualMouse;

namespace {

constexpr int keyboardPage = 7;

// The window on its Buttons tab beside another program; there is a second profile, "Travel".
struct SharedWindow {
  SharedWindow() : driver(*window.window().findChild<MouseButtonController*>()) {
    window.awaitAnnouncement();
    other.addProfile(PropertyList::dictionary({{keys::ProfileName, "Travel"}}));
    awaitProfiles(2);
  }
  void awaitProfiles(int count) {
    if (!QTest::qWaitFor([&] { return driver.find<QComboBox>("mProfileListPopUp")->count() == count; }, deadline))
      QTest::qFail("the window knows the profiles", __FILE__, __LINE__);
  }
  void awaitProfile(const QString& name) {
    if (!QTest::qWaitFor([&] { return window.profileName() == name; }, deadline))
      QTest::qFail("the window shows the profile", __FILE__, __LINE__);
  }
  PropertyList storedProfile(int index) { return other.bundle()[keys::Profiles].at(index); }

  OpenWindow window;
  ButtonsDriver driver;
  OtherClient other;
};

}  // namespace

class ButtonsSheetsWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QVERIFY(installTranslations(QStringLiteral("en")));
    mSession = std::make_unique<EngineSession>();
  }
  void init() { mSession->begin(); }
  void cleanup() { mSession->end(); }

  void looking_into_every_menu_sends_nothing() {
    SharedWindow shared;
    const PropertyList before = shared.other.bundle();
    for (const ControlDescriptor& control : controlTable) {
      for (const auto category : {AssignmentCategory::Macro, AssignmentCategory::Keymap,
                                  AssignmentCategory::MouseButton, AssignmentCategory::Profile}) {
        shared.driver.choose(control, category);
        QMenu* submenu = shared.driver.item(control, category)->menu();
        QTRY_VERIFY(submenu->isVisible());
        QTest::keyClick(submenu, Qt::Key_Escape);
        QTest::keyClick(shared.driver.popUp(control).menu(), Qt::Key_Escape);
        QVERIFY(QApplication::activePopupWidget() == nullptr);
      }
    }
    QCOMPARE(shared.window.profileUpdates(), 0);
    COMPARE_LISTS(shared.other.bundle(), before);
  }

  void a_key_goes_to_the_profile_that_its_sheet_was_opened_for() {
    SharedWindow shared;
    const ControlDescriptor& control = ButtonsDriver::control(1);
    const PropertyList travel = shared.storedProfile(1);
    shared.driver.choose(control, AssignmentCategory::SingleKey);
    shared.other.switchProfile(1);
    shared.awaitProfile(QStringLiteral("Travel"));
    QVERIFY(VirtualMouse::type(keyboardPage, 4));
    const auto* field = shared.driver.find<QLineEdit>("mInputSingleKey");
    QTRY_COMPARE_WITH_TIMEOUT(field->text(), QStringLiteral("A"), deadline);
    shared.driver.press("mSingleKeyOK");
    COMPARE_LISTS(shared.storedProfile(0)[keys::Keys][control.identifier],
                  vorn::assignmentRecord(AssignmentCommand::SingleKey, 4));
    COMPARE_LISTS(shared.storedProfile(1), travel);
    QCOMPARE(shared.window.profileName(), QStringLiteral("Travel"));
    QCOMPARE(shared.driver.popUp(control).shownTitle(), QStringLiteral("Tab (Default)"));
  }

  void a_keymap_assignment_goes_to_the_keymap_that_its_sheet_was_opened_for() {
    SharedWindow shared;
    const ControlDescriptor& control = ButtonsDriver::control(1);
    shared.other.assign("21", static_cast<int>(AssignmentCommand::Keymap), 3);
    QTRY_COMPARE_WITH_TIMEOUT(shared.driver.popUp(5).shownTitle(), QStringLiteral("Keymap: Keymap 4"), deadline);
    shared.driver.openKeymapSheet(control);
    QTest::keyClick(shared.driver.find<QComboBox>("mKeymapValuePopUp"), Qt::Key_End);
    const PropertyList before = shared.storedProfile(0);
    QVERIFY(VirtualMouse::click("21"));
    const auto* segments = shared.driver.find<SegmentedControl>("mKeymapSegment");
    QTRY_COMPARE_WITH_TIMEOUT(segments->selectedSegment(), 3, deadline);
    QVERIFY(shared.driver.isOpen("mKeymapWindow"));
    shared.driver.press("mKeymapOK");
    const PropertyList after = shared.storedProfile(0);
    QCOMPARE(after[keys::KeymapID].toInt(), 3);
    COMPARE_LISTS(after[keys::Keymap].at(0)[keys::Keys][control.identifier],
                  vorn::assignmentRecord(AssignmentCommand::Keymap, 7));
    COMPARE_LISTS(after[keys::Keymap].at(3), before[keys::Keymap].at(3));
    COMPARE_LISTS(after[keys::Keys], before[keys::Keymap].at(3)[keys::Keys]);
    QCOMPARE(shared.driver.popUp(control).shownTitle(), QStringLiteral("Tab (Default)"));
  }

  void a_sheet_whose_profile_was_deleted_says_so_and_changes_nothing() {
    SharedWindow shared;
    shared.other.switchProfile(1);
    shared.awaitProfile(QStringLiteral("Travel"));
    shared.driver.openKeymapSheet(ButtonsDriver::control(1));
    shared.other.change(MessageID::DeleteProfile, PropertyList::dictionary({{vorn::requestKeys::ProfileID, 1}}));
    shared.awaitProfiles(1);
    const PropertyList before = shared.other.bundle();
    shared.driver.press("mKeymapOK");
    QVERIFY(!shared.driver.isOpen("mKeymapWindow"));
    QTRY_COMPARE(alertTexts(shared.window.window()).value(0), QStringLiteral("“Travel” is no longer there"));
    COMPARE_LISTS(shared.other.bundle(), before);
  }

  void what_another_program_assigns_stands_out() {
    SharedWindow shared;
    const auto* segments = shared.driver.find<SegmentedControl>("mKeymapSegment");
    const auto* count = shared.driver.find<QLabel>("mThumbGridChanges");
    QVERIFY(!segments->isMarked(0));
    QCOMPARE(count->text(), QString());
    shared.other.assign("20", static_cast<int>(AssignmentCommand::SingleKey), 4);
    QTRY_COMPARE_WITH_TIMEOUT(count->text(), QStringLiteral("1 changed"), deadline);
    for (const ControlDescriptor& control : controlTable)
      QCOMPARE(shared.driver.popUp(control).isMuted(), control.number != 2);
    for (int keymap = 0; keymap < 8; ++keymap) QCOMPARE(segments->isMarked(keymap), keymap == 0);
    shared.other.assign("20", static_cast<int>(AssignmentCommand::DefaultKey), 20);
    QTRY_COMPARE_WITH_TIMEOUT(count->text(), QString(), deadline);
    QVERIFY(!segments->isMarked(0));
  }

  void the_last_left_click_is_locked_until_another_program_assigns_one_more() {
    SharedWindow shared;
    shared.other.assign("43", static_cast<int>(AssignmentCommand::LeftClick), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!shared.driver.popUp(1).lockReason().isEmpty(), deadline);
    QVERIFY(!shared.driver.popUp(1).isEnabled());
    shared.other.assign("20", static_cast<int>(AssignmentCommand::LeftClick), 0);
    QTRY_VERIFY_WITH_TIMEOUT(shared.driver.popUp(1).isEnabled(), deadline);
    QVERIFY(shared.driver.popUp(1).lockReason().isEmpty());
  }

  void a_menu_that_is_open_while_the_profile_is_switched_closes_and_assigns_nothing() {
    SharedWindow shared;
    const ControlDescriptor& control = ButtonsDriver::control(3);
    const QMenu* submenu = shared.driver.openSubmenu(control, AssignmentCategory::MouseButton);
    QTRY_VERIFY(submenu->isVisible());
    shared.other.switchProfile(1);
    shared.awaitProfile(QStringLiteral("Travel"));
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    QCOMPARE(shared.window.profileUpdates(), 0);
    QCOMPARE(shared.driver.popUp(control).shownTitle(), QStringLiteral("W (Default)"));
  }

 private:
  std::unique_ptr<EngineSession> mSession;
};

SKARN_QTEST(ButtonsSheetsWithEngineTest)
#include "buttons_sheets_with_engine_test.moc"
