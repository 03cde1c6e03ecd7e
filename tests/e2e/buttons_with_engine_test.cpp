// Assignments made on the real window's Buttons tab, and what the real engine's mouse then does.
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>

#include "buttons/ButtonsFixture.h"
#include "e2e/OpenWindow.h"
#include "ports/BusMethodCall.h"
#include "protocol/VirtualMouse.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using namespace std::chrono_literals;

namespace {

// The engine's virtual mouse, from this process.
class Mouse {
 public:
  static bool press(std::string_view control) { return call(vorn::virtualMouse::methods::Press, {{"s", control}}); }
  static bool release(std::string_view control) { return call(vorn::virtualMouse::methods::Release, {{"s", control}}); }
  static bool click(std::string_view control) { return press(control) && release(control); }
  // A key of the desktop's keyboard.
  static bool type(int usage, bool isPressed) {
    return call(vorn::virtualMouse::methods::Type, {{"u", keyboardPage}, {"u", usage}, {"b", isPressed}});
  }
  // What it has sent to the desktop since the last time: a line "page usage value" each.
  static QStringList takeOutput() {
    const vorn::BusAnswer answer = vorn::callBusMethod(target, vorn::virtualMouse::methods::TakeOutput, {}, 20s);
    QStringList lines;
    if (answer.values.empty()) return lines;
    for (const PropertyList& event : answer.values[0].elements()) {
      lines << QStringLiteral("%1 %2 %3").arg(event.at(1).toInt()).arg(event.at(2).toInt()).arg(event.at(3).toInt());
    }
    return lines;
  }

 private:
  static bool call(const char* method, const std::vector<vorn::BusInput>& inputs) {
    return vorn::callBusMethod(target, method, inputs, 20s).status == vorn::BusAnswer::Status::Success;
  }

  static constexpr int keyboardPage = 7;
  static inline const vorn::BusTarget target{vorn::virtualMouse::busName, vorn::virtualMouse::objectPath,
                                             vorn::virtualMouse::interface};
};

// Collects output until there are at least so many lines.
QStringList outputOf(qsizetype count) {
  QStringList lines;
  if (!QTest::qWaitFor(
          [&] {
            lines += Mouse::takeOutput();
            return lines.size() >= count;
          },
          deadline)) {
    lines << QStringLiteral("(no more output)");
  }
  return lines;
}

const QStringList greeting = {"7 4 1", "7 4 0"};

// The window on its Buttons tab, with the mouse there.
struct ButtonsWindow {
  ButtonsWindow() : driver(*open.window().findChild<MouseButtonController*>()) { open.awaitAnnouncement(); }
  QString shown(const ControlDescriptor& control) { return driver.popUp(control).shownTitle(); }

  OpenWindow open;
  ButtonsDriver driver;
};

}  // namespace

class ButtonsWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QVERIFY(installTranslations(QStringLiteral("en")));
    mSession = std::make_unique<EngineSession>();
  }
  void init() { mSession->begin(); }
  void cleanup() { mSession->end(); }

  void a_key_with_modifiers_is_captured_assigned_and_sent() {
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(1);
    window.driver.choose(control, AssignmentCategory::SingleKey);
    QVERIFY(window.driver.isOpen("mSingleKey"));
    for (const int key : {225, 4}) QVERIFY(Mouse::type(key, true));
    for (const int key : {4, 225}) QVERIFY(Mouse::type(key, false));
    const auto* field = window.driver.find<QLineEdit>("mInputSingleKey");
    QTRY_COMPARE_WITH_TIMEOUT(field->text(), QStringLiteral("Left Shift + A"), deadline);
    window.driver.press("mSingleKeyOK");
    QCOMPARE(window.shown(control), QStringLiteral("Single Key : Left Shift + A"));
    Mouse::takeOutput();
    QVERIFY(Mouse::click(control.identifier));
    QCOMPARE(outputOf(4), QStringList({"7 225 1", "7 4 1", "7 4 0", "7 225 0"}));
  }

  void a_cancelled_capture_changes_nothing() {
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(2);
    window.driver.choose(control, AssignmentCategory::SingleKey);
    QVERIFY(Mouse::type(4, true));
    QVERIFY(Mouse::type(4, false));
    const auto* field = window.driver.find<QLineEdit>("mInputSingleKey");
    QTRY_COMPARE_WITH_TIMEOUT(field->text(), QStringLiteral("A"), deadline);
    window.driver.press("mSingleKeyCancel");
    QCOMPARE(window.shown(control), QStringLiteral("Q (Default)"));
    // The capture is over: a further key is not reported.
    QVERIFY(Mouse::type(5, true));
    QVERIFY(Mouse::type(5, false));
    Mouse::takeOutput();
    QVERIFY(Mouse::click(control.identifier));
    QCOMPARE(outputOf(2), QStringList({"7 20 1", "7 20 0"}));
    QCOMPARE(window.driver.tab.mSingleKeyHIDCode(), 4);
  }

  void a_macro_is_played_as_often_as_chosen_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("runs");
    QTest::newRow("once") << 0 << 1;
    for (int count = 2; count <= 10; ++count) QTest::addRow("%d times", count) << count + 1 << count;
  }

  void a_macro_is_played_as_often_as_chosen() {
    QFETCH(int, index);
    QFETCH(int, runs);
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(3);
    assignMacro(window, control, index);
    QVERIFY(Mouse::click(control.identifier));
    QStringList expected;
    for (int run = 0; run < runs; ++run) expected += greeting;
    QCOMPARE(outputOf(expected.size()), expected);
    // What comes next is another control's: the macro has ended.
    QVERIFY(Mouse::click("20"));
    QCOMPARE(outputOf(2), QStringList({"7 20 1", "7 20 0"}));
  }

  void a_macro_is_played_until_it_is_let_go_or_pressed_again_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("isHeld");
    QTest::newRow("until released") << 1 << true;
    QTest::newRow("until pressed again") << 2 << false;
  }

  void a_macro_is_played_until_it_is_let_go_or_pressed_again() {
    QFETCH(int, index);
    QFETCH(bool, isHeld);
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(14);
    assignMacro(window, control, index);
    QVERIFY(Mouse::press(control.identifier));
    if (!isHeld) QVERIFY(Mouse::release(control.identifier));
    // More often than any number of times that can be chosen.
    const QStringList played = outputOf(2 * 11);
    QCOMPARE(played.mid(0, 2), greeting);
    QCOMPARE(played.at(21), greeting.at(1));
    QVERIFY(isHeld ? Mouse::release(control.identifier) : Mouse::click(control.identifier));
    // It ends: after what was on its way, another control's keys stand alone.
    const auto alone = [] {
      Mouse::click("20");
      return Mouse::takeOutput() == QStringList({"7 20 1", "7 20 0"});
    };
    QVERIFY(QTest::qWaitFor([&] { return alone() && alone() && alone(); }, deadline));
  }

  void a_keymap_is_switched_to_and_back() {
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(5);
    window.driver.openKeymapSheet(control);
    auto* list = window.driver.find<QComboBox>("mKeymapValuePopUp");
    list->setFocus();
    for (int step = 0; step < 4; ++step) QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(window.driver.find<QCheckBox>("mKeymapSwitchBack"), Qt::Key_Space);
    window.driver.press("mKeymapOK");
    QCOMPARE(window.shown(control), QStringLiteral("Keymap: Keymap 4"));
    const auto* segments = window.driver.find<SegmentedControl>("mKeymapSegment");
    QCOMPARE(segments->selectedSegment(), 0);
    QVERIFY(Mouse::press(control.identifier));
    QTRY_COMPARE_WITH_TIMEOUT(segments->selectedSegment(), 3, deadline);
    QCOMPARE(window.shown(control), QStringLiteral("R (Default)"));
    QVERIFY(Mouse::release(control.identifier));
    QTRY_COMPARE_WITH_TIMEOUT(segments->selectedSegment(), 0, deadline);
    QCOMPARE(window.shown(control), QStringLiteral("Keymap: Keymap 4"));
  }

  void a_cycle_is_there_in_every_keymap() {
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(17);
    window.driver.openKeymapSheet(control);
    window.driver.press("mKeymapOK");
    const auto* segments = window.driver.find<SegmentedControl>("mKeymapSegment");
    for (int keymap = 0; keymap <= 8; ++keymap) {
      QTRY_COMPARE_WITH_TIMEOUT(segments->selectedSegment(), keymap % 8, deadline);
      QCOMPARE(window.shown(control), QStringLiteral("Keymap: Cycle Keymaps"));
      QVERIFY(Mouse::click(control.identifier));
    }
  }

  void a_segment_brings_its_keymap_with_it() {
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(12);
    auto* segments = window.driver.find<SegmentedControl>("mKeymapSegment");
    const auto choose = [segments](int segment) {
      QTest::mouseClick(segments, Qt::LeftButton, {}, segments->segmentRect(segment).center());
    };
    choose(6);
    QCOMPARE(segments->selectedSegment(), 6);
    window.driver.chooseInSubmenu(control, AssignmentCategory::MouseButton, 1);
    QCOMPARE(window.shown(control), QStringLiteral("Mouse Button: Right Click"));
    choose(0);
    QCOMPARE(window.shown(control), QStringLiteral("Z (Default)"));
    choose(6);
    QCOMPARE(window.shown(control), QStringLiteral("Mouse Button: Right Click"));
    Mouse::takeOutput();
    QVERIFY(Mouse::click(control.identifier));
    QCOMPARE(outputOf(2), QStringList({"9 2 1", "9 2 0"}));
  }

  void a_control_switches_to_another_profile() {
    ButtonsWindow window;
    MouseMainController& hub = window.open.hub();
    hub.addNewProfileWithSettings(hub.mDefaultProfileDict().with(keys::ProfileName, "Travel"));
    const QString before = window.open.profileName();
    const ControlDescriptor& control = ButtonsDriver::control(22);
    window.driver.chooseInSubmenu(control, AssignmentCategory::Profile, 2);
    QCOMPARE(window.shown(control), QStringLiteral("Profile : Travel"));
    QVERIFY(Mouse::click(control.identifier));
    QTRY_COMPARE_WITH_TIMEOUT(window.open.profileName(), QStringLiteral("Travel"), deadline);
    // And the list of the tab back again.
    auto* list = window.driver.find<QComboBox>("mProfileListPopUp");
    QCOMPARE(list->currentText(), QStringLiteral("Travel"));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Up);
    QCOMPARE(window.open.profileName(), before);
  }

  void a_program_is_launched() {
    QTemporaryDir folder;
    const QString launched = folder.filePath(QStringLiteral("launched"));
    QDir().mkpath(folder.filePath(QStringLiteral("data/applications")));
    QFile entry(folder.filePath(QStringLiteral("data/applications/org.example.Touch.desktop")));
    QVERIFY(entry.open(QIODevice::WriteOnly));
    entry.write("[Desktop Entry]\nType=Application\nName=Touch\nExec=touch " + QFile::encodeName(launched) + "\n");
    entry.close();
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder.filePath(QStringLiteral("data"))));
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(19);
    window.driver.choose(control, AssignmentCategory::LaunchProgram);
    auto* search = window.driver.find<QLineEdit>("mApplicationSearch");
    QTest::keyClicks(search, QStringLiteral("Touch"));
    QTest::keyClick(search, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(window.shown(control), QStringLiteral("Launch Program: org.example.Touch"), deadline);
    QVERIFY(!QFile::exists(launched));
    QVERIFY(Mouse::click(control.identifier));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(launched), deadline);
  }

  void a_disabled_control_does_nothing() {
    ButtonsWindow window;
    const ControlDescriptor& control = ButtonsDriver::control(15);
    window.driver.choose(control, AssignmentCategory::Disable);
    QCOMPARE(window.shown(control), QStringLiteral("Disable"));
    Mouse::takeOutput();
    QVERIFY(Mouse::click(control.identifier));
    QVERIFY(Mouse::click("20"));
    QCOMPARE(outputOf(2), QStringList({"7 20 1", "7 20 0"}));
    // Until it has its default again.
    window.driver.choose(control, AssignmentCategory::DefaultKey);
    QCOMPARE(window.shown(control), QStringLiteral("Space (Default)"));
    QVERIFY(Mouse::click(control.identifier));
    QCOMPARE(outputOf(2), QStringList({"7 44 1", "7 44 0"}));
  }

 private:
  static PropertyList keyEvent(int command) {
    return PropertyList::dictionary({{keys::Command, command}, {keys::Delay, 1}, {keys::Page, 7}, {keys::Argument, 4}});
  }

  // A new macro, assigned in the submenu, with the mode at this place of the list.
  static void assignMacro(ButtonsWindow& window, const ControlDescriptor& control, int index) {
    window.open.hub().addMacroWithSettings(macro("Greeting", {keyEvent(1), keyEvent(0)}));
    window.driver.chooseInSubmenu(control, AssignmentCategory::Macro, 1);
    QCOMPARE(window.shown(control), QStringLiteral("Macro : Greeting"));
    QTest::mouseClick(window.driver.row(control).repeatButton(), Qt::LeftButton);
    auto* list = window.driver.find<QComboBox>("mMacroPlaybackPopUp");
    list->setFocus();
    for (int step = 0; step < index; ++step) QTest::keyClick(list, Qt::Key_Down);
    window.driver.press("mMacroRepeatOK");
    QCOMPARE(window.shown(control), QStringLiteral("Macro : Greeting"));
    Mouse::takeOutput();
  }

  std::unique_ptr<EngineSession> mSession;
};

SKARN_QTEST(ButtonsWithEngineTest)
#include "buttons_with_engine_test.moc"
