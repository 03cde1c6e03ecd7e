// What a person types into the window while it records or captures.
#include "app/TypedKeys.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>

#include "app/ScriptedLink.h"
#include "support/QtTests.h"
#include "widgets/KeyCaptureField.h"

using namespace skarn;
using skarn::test::ScriptedLink;
using namespace std::chrono_literals;

namespace {

// time: of the event, in milliseconds; 0 for one that has none.
void send(QWidget& to, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers = {}, quint64 time = 0) {
  QKeyEvent event(type, key, modifiers);
  event.setTimestamp(time);
  QApplication::sendEvent(&to, &event);
}
void press(QWidget& to, int key, Qt::KeyboardModifiers modifiers = {}) {
  send(to, QEvent::KeyPress, key, modifiers);
}
void letGo(QWidget& to, int key, Qt::KeyboardModifiers modifiers = {}) {
  send(to, QEvent::KeyRelease, key, modifiers);
}

// A window that records, with a line that would take keys, a button, and an area for clicks; and a sheet with a field.
struct Typing {
  Typing() {
    auto* layout = new QHBoxLayout(&window);
    for (QWidget* widget : std::initializer_list<QWidget*>{&line, &button, &area}) layout->addWidget(widget);
    area.setMinimumSize(40, 40);
    auto* row = new QHBoxLayout(&sheet);
    for (QWidget* widget : std::initializer_list<QWidget*>{&field, &again, &ok}) row->addWidget(widget);
    ok.setDefault(true);
    field.setUp(&ok, KeyCaptureField::Confirms::CaughtKey, &again, {});
    window.show();
    window.activateWindow();
    isShown = QTest::qWaitForWindowActive(&window);
  }
  void openSheet() {
    sheet.open();
    sheet.activateWindow();
    isShown = QTest::qWaitFor([this] { return sheet.isActiveWindow(); });
    field.begin();
  }
  // What the engine was told, as "+4" for a press and "-4" for a release; buttons as "+b1".
  QString told() {
    QStringList all;
    for (const vorn::TypedKey& key : std::exchange(link.typed, {})) {
      all << QLatin1String(key.isPressed ? "+" : "-") + QLatin1String(key.usagePage == 9 ? "b" : "") +
                 QString::number(key.usage);
    }
    return all.join(QLatin1Char(' '));
  }

  ScriptedLink link;
  QWidget window;
  QLineEdit line;
  QPushButton button;
  QLabel area;
  QDialog sheet{&window};
  KeyCaptureField field;
  QPushButton again;
  QPushButton ok;
  bool isShown = false;
  bool isRecording = false;
  int stops = 0;
  int discards = 0;
  TypedKeys typed{link,
                  window,
                  {.isRunning = [this] { return isRecording; },
                   .captureArea = [this] { return &area; },
                   .stop = [this] { ++stops; },
                   .discard = [this] { ++discards; }}};
};

}  // namespace

class TypedKeysTest : public QObject {
  Q_OBJECT

 private slots:
  void while_nothing_listens_keys_are_the_windows();
  void a_recording_takes_every_key_and_works_nothing_with_it_data();
  void a_recording_takes_every_key_and_works_nothing_with_it();
  void a_chord_is_told_in_the_order_of_the_fingers();
  void repetitions_of_a_held_key_are_not_told();
  void repetitions_that_come_as_keys_let_go_and_pressed_at_once_are_not_told();
  void a_key_that_is_typed_twice_is_told_twice();
  void a_key_that_is_let_go_is_told_before_what_comes_next();
  void times_are_those_of_the_events();
  void clicks_are_taken_over_the_capture_area_alone();
  void the_pause_key_stops_a_recording();
  void shift_and_the_pause_key_discard_a_recording();
  void a_menu_or_sheet_over_a_recording_has_its_keys();
  void keys_are_those_of_the_window_that_they_are_given_to_active_or_not();
  void the_release_of_a_key_from_before_is_the_windows();
  void what_is_held_is_released_when_the_recording_ends();
  void a_field_takes_the_first_key_and_leaves_the_next_to_the_sheet_data();
  void a_field_takes_the_first_key_and_leaves_the_next_to_the_sheet();
  void a_field_takes_a_chord_with_what_is_held();
  void a_field_takes_a_modifier_alone_when_it_is_let_go();
  void a_held_key_that_was_caught_does_not_confirm_the_sheet();
  void a_held_key_that_was_caught_confirms_nothing_where_its_repetitions_come_as_keys();
  void modifiers_that_have_no_keys_are_told_with_the_key();
  void a_field_that_listens_anew_takes_another_key();
  void a_key_that_nobody_knows_is_swallowed_and_not_told();
};

void TypedKeysTest::while_nothing_listens_keys_are_the_windows() {
  Typing it;
  QVERIFY(it.isShown);
  it.line.setFocus();
  QTest::keyClicks(&it.line, QStringLiteral("abc"));
  QCOMPARE(it.line.text(), QStringLiteral("abc"));
  QCOMPARE(it.told(), QString());
}

void TypedKeysTest::a_recording_takes_every_key_and_works_nothing_with_it_data() {
  QTest::addColumn<int>("key");
  QTest::addColumn<QString>("told");
  QTest::newRow("a letter") << int(Qt::Key_A) << "+4 -4";
  QTest::newRow("Return") << int(Qt::Key_Return) << "+40 -40";
  QTest::newRow("Escape") << int(Qt::Key_Escape) << "+41 -41";
  QTest::newRow("Tab") << int(Qt::Key_Tab) << "+43 -43";
  QTest::newRow("Space") << int(Qt::Key_Space) << "+44 -44";
  QTest::newRow("F1") << int(Qt::Key_F1) << "+58 -58";
  QTest::newRow("Down") << int(Qt::Key_Down) << "+81 -81";
  QTest::newRow("a modifier") << int(Qt::Key_Shift) << "+225 -225";
}

void TypedKeysTest::a_recording_takes_every_key_and_works_nothing_with_it() {
  QFETCH(int, key);
  QFETCH(QString, told);
  Typing it;
  QVERIFY(it.isShown);
  QShortcut shortcut(QKeySequence(key), &it.window);
  const QSignalSpy worked(&shortcut, &QShortcut::activated);
  const QSignalSpy clicked(&it.button, &QPushButton::clicked);
  it.isRecording = true;
  for (QWidget* focused : std::initializer_list<QWidget*>{&it.button, &it.line}) {
    focused->setFocus();
    QTest::keyClick(focused, static_cast<Qt::Key>(key));
    QCOMPARE(it.told(), told);
    QVERIFY(focused->hasFocus());
  }
  QCOMPARE(it.line.text(), QString());
  QVERIFY(worked.isEmpty() && clicked.isEmpty());
}

void TypedKeysTest::a_chord_is_told_in_the_order_of_the_fingers() {
  Typing it;
  it.isRecording = true;
  press(it.line, Qt::Key_Control);
  press(it.line, Qt::Key_Shift, Qt::ControlModifier);
  press(it.line, Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
  letGo(it.line, Qt::Key_Control, Qt::ShiftModifier);
  letGo(it.line, Qt::Key_K, Qt::ShiftModifier);
  letGo(it.line, Qt::Key_Shift);
  QCOMPARE(it.told(), QStringLiteral("+224 +225 +14 -224 -14 -225"));
}

void TypedKeysTest::repetitions_of_a_held_key_are_not_told() {
  Typing it;
  it.isRecording = true;
  press(it.line, Qt::Key_A);
  for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress, QEvent::KeyRelease, QEvent::KeyPress}) {
    QKeyEvent repeated(type, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"), true);
    QApplication::sendEvent(&it.line, &repeated);
  }
  letGo(it.line, Qt::Key_A);
  QCOMPARE(it.told(), QStringLiteral("+4 -4"));
  QCOMPARE(it.line.text(), QString());
}

// As X11 tells them, where Qt reads the release before the press has come.
void TypedKeysTest::repetitions_that_come_as_keys_let_go_and_pressed_at_once_are_not_told() {
  Typing it;
  it.isRecording = true;
  send(it.line, QEvent::KeyPress, Qt::Key_A, {}, 1000);
  for (const quint64 time : {1660U, 1700U, 1740U}) {
    send(it.line, QEvent::KeyRelease, Qt::Key_A, {}, time);
    send(it.line, QEvent::KeyPress, Qt::Key_A, {}, time);
  }
  send(it.line, QEvent::KeyRelease, Qt::Key_A, {}, 1750);
  QTRY_COMPARE(it.link.typed, (std::vector<vorn::TypedKey>{{7, 4, true, 1000ms}, {7, 4, false, 1750ms}}));
  QCOMPARE(it.line.text(), QString());
}

void TypedKeysTest::a_key_that_is_typed_twice_is_told_twice() {
  Typing it;
  it.isRecording = true;
  for (const quint64 time : {1000U, 1011U}) {
    send(it.line, QEvent::KeyPress, Qt::Key_A, {}, time);
    send(it.line, QEvent::KeyRelease, Qt::Key_A, {}, time + 10);
  }
  it.typed.releaseAll();
  QCOMPARE(it.told(), QStringLiteral("+4 -4 +4 -4"));
}

void TypedKeysTest::a_key_that_is_let_go_is_told_before_what_comes_next() {
  Typing it;
  QVERIFY(it.isShown);
  it.isRecording = true;
  send(it.line, QEvent::KeyPress, Qt::Key_A, {}, 1000);
  send(it.line, QEvent::KeyPress, Qt::Key_B, {}, 1010);
  send(it.line, QEvent::KeyRelease, Qt::Key_A, {}, 1020);
  send(it.line, QEvent::KeyRelease, Qt::Key_B, {}, 1020);
  QTest::mousePress(&it.area, Qt::LeftButton);
  QCOMPARE(it.told(), QStringLiteral("+4 +5 -4 -5 +b1"));
}

void TypedKeysTest::times_are_those_of_the_events() {
  Typing it;
  it.isRecording = true;
  send(it.line, QEvent::KeyPress, Qt::Key_A, {}, 5000);
  send(it.line, QEvent::KeyRelease, Qt::Key_A, {}, 5123);
  QTRY_COMPARE(it.link.typed, (std::vector<vorn::TypedKey>{{7, 4, true, 5000ms}, {7, 4, false, 5123ms}}));
}

void TypedKeysTest::clicks_are_taken_over_the_capture_area_alone() {
  Typing it;
  QTest::mouseClick(&it.area, Qt::LeftButton);
  QCOMPARE(it.told(), QString());
  it.isRecording = true;
  QTest::mouseClick(&it.area, Qt::LeftButton);
  QTest::mouseClick(&it.area, Qt::RightButton);
  // The second press of a double click.
  QTest::mouseDClick(&it.area, Qt::ForwardButton);
  QTest::mouseRelease(&it.area, Qt::ForwardButton);
  QCOMPARE(it.told(), QStringLiteral("+b1 -b1 +b2 -b2 +b5 -b5"));
  const QSignalSpy clicked(&it.button, &QPushButton::clicked);
  QTest::mouseClick(&it.button, Qt::LeftButton);
  QCOMPARE(clicked.size(), 1);
  QCOMPARE(it.told(), QString());
}

void TypedKeysTest::the_pause_key_stops_a_recording() {
  Typing it;
  it.isRecording = true;
  QTest::keyClick(&it.line, Qt::Key_Pause);
  QCOMPARE(it.stops, 1);
  QCOMPARE(it.discards, 0);
  QCOMPARE(it.told(), QString());
}

void TypedKeysTest::shift_and_the_pause_key_discard_a_recording() {
  Typing it;
  it.isRecording = true;
  press(it.line, Qt::Key_Shift, Qt::ShiftModifier);
  press(it.line, Qt::Key_Pause, Qt::ShiftModifier);
  QCOMPARE(it.discards, 1);
  QCOMPARE(it.stops, 0);
  QCOMPARE(it.told(), QStringLiteral("+225"));
}

void TypedKeysTest::a_menu_or_sheet_over_a_recording_has_its_keys() {
  Typing it;
  it.isRecording = true;
  QMenu menu(&it.window);
  menu.addAction(QStringLiteral("An entry"));
  menu.popup(it.window.pos());
  QVERIFY(QTest::qWaitForWindowExposed(&menu));
  QTest::keyClick(&menu, Qt::Key_Escape);
  QVERIFY(!menu.isVisible());
  it.sheet.open();
  QVERIFY(QTest::qWaitForWindowExposed(&it.sheet));
  QTest::keyClick(&it.sheet, Qt::Key_Escape);
  QVERIFY(!it.sheet.isVisible());
  QCOMPARE(it.told(), QString());
}

void TypedKeysTest::keys_are_those_of_the_window_that_they_are_given_to_active_or_not() {
  Typing it;
  QVERIFY(it.isShown);
  it.isRecording = true;
  QLineEdit other;
  other.show();
  QApplication::setActiveWindow(&other);
  QTest::keyClick(&other, Qt::Key_A);
  QCOMPARE(other.text(), QStringLiteral("a"));
  QCOMPARE(it.told(), QString());
  // Displays bring the first keys of a window before Qt counts it as active, while none is or still another.
  for (QWidget* const active : std::initializer_list<QWidget*>{nullptr, &other}) {
    QApplication::setActiveWindow(active);
    QTest::keyClick(it.window.windowHandle(), Qt::Key_B);
    QTRY_COMPARE(it.link.typed.size(), 2U);
    QCOMPARE(it.told(), QStringLiteral("+5 -5"));
  }
  QCOMPARE(other.text(), QStringLiteral("a"));
  it.isRecording = false;
  it.openSheet();
  for (QWidget* const active : std::initializer_list<QWidget*>{nullptr, &it.window}) {
    QApplication::setActiveWindow(active);
    QTest::keyClick(it.sheet.windowHandle(), Qt::Key_Escape, Qt::ControlModifier);
    QCOMPARE(it.told(), QStringLiteral("+224 +41 -41 -224"));
    QVERIFY(it.sheet.isVisible() && !it.field.isListening());
    it.field.listen();
  }
}

void TypedKeysTest::the_release_of_a_key_from_before_is_the_windows() {
  Typing it;
  it.button.setFocus();
  const QSignalSpy clicked(&it.button, &QPushButton::clicked);
  press(it.button, Qt::Key_Space);
  it.isRecording = true;
  letGo(it.button, Qt::Key_Space);
  QCOMPARE(clicked.size(), 1);
  QCOMPARE(it.told(), QString());
}

void TypedKeysTest::what_is_held_is_released_when_the_recording_ends() {
  Typing it;
  it.isRecording = true;
  press(it.line, Qt::Key_Control);
  press(it.line, Qt::Key_A, Qt::ControlModifier);
  QTest::mousePress(&it.area, Qt::LeftButton);
  it.typed.releaseAll();
  it.isRecording = false;
  QCOMPARE(it.told(), QStringLiteral("+224 +4 +b1 -b1 -4 -224"));
  letGo(it.line, Qt::Key_A, Qt::ControlModifier);
  it.typed.releaseAll();
  QCOMPARE(it.told(), QString());
}

void TypedKeysTest::a_field_takes_the_first_key_and_leaves_the_next_to_the_sheet_data() {
  a_recording_takes_every_key_and_works_nothing_with_it_data();
}

void TypedKeysTest::a_field_takes_the_first_key_and_leaves_the_next_to_the_sheet() {
  QFETCH(int, key);
  QFETCH(QString, told);
  Typing it;
  it.openSheet();
  QVERIFY(it.isShown && it.field.isListening());
  const QSignalSpy confirmed(&it.ok, &QPushButton::clicked);
  QTest::keyClick(&it.field, static_cast<Qt::Key>(key));
  QCOMPARE(it.told(), told);
  QVERIFY(!it.field.isListening());
  QVERIFY(it.sheet.isVisible() && confirmed.isEmpty());
  it.field.showKey(QStringLiteral("caught"));
  QVERIFY(it.sheet.focusWidget() != nullptr);
  QTest::keyClick(it.sheet.focusWidget(), Qt::Key_Return);
  QCOMPARE(confirmed.size(), 1);
  QTest::keyClick(&it.sheet, Qt::Key_Escape);
  QVERIFY(!it.sheet.isVisible());
  QCOMPARE(it.told(), QString());
}

void TypedKeysTest::a_field_takes_a_chord_with_what_is_held() {
  Typing it;
  it.openSheet();
  press(it.field, Qt::Key_Control);
  press(it.field, Qt::Key_Alt, Qt::ControlModifier);
  QVERIFY(it.field.isListening());
  press(it.field, Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
  QVERIFY(!it.field.isListening());
  // The engine takes what is still down for held otherwise.
  QCOMPARE(it.told(), QStringLiteral("+224 +226 +6 -6 -226 -224"));
  letGo(it.field, Qt::Key_C);
  letGo(it.field, Qt::Key_Alt);
  letGo(it.field, Qt::Key_Control);
  QCOMPARE(it.told(), QString());
}

void TypedKeysTest::a_field_takes_a_modifier_alone_when_it_is_let_go() {
  Typing it;
  it.openSheet();
  press(it.field, Qt::Key_Shift);
  QVERIFY(it.field.isListening());
  letGo(it.field, Qt::Key_Shift);
  QVERIFY(!it.field.isListening());
  QCOMPARE(it.told(), QStringLiteral("+225 -225"));
}

void TypedKeysTest::a_held_key_that_was_caught_does_not_confirm_the_sheet() {
  Typing it;
  it.openSheet();
  const QSignalSpy confirmed(&it.ok, &QPushButton::clicked);
  press(it.field, Qt::Key_Return);
  it.field.showKey(QStringLiteral("Return"));
  for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
    QKeyEvent repeated(type, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(it.sheet.focusWidget(), &repeated);
  }
  QVERIFY(confirmed.isEmpty());
  letGo(*it.sheet.focusWidget(), Qt::Key_Return);
  QVERIFY(confirmed.isEmpty());
  QTest::keyClick(it.sheet.focusWidget(), Qt::Key_Return);
  QCOMPARE(confirmed.size(), 1);
}

void TypedKeysTest::a_held_key_that_was_caught_confirms_nothing_where_its_repetitions_come_as_keys() {
  Typing it;
  it.openSheet();
  const QSignalSpy confirmed(&it.ok, &QPushButton::clicked);
  send(it.field, QEvent::KeyPress, Qt::Key_Return, {}, 1000);
  it.field.showKey(QStringLiteral("Return"));
  for (const quint64 time : {1660U, 1700U}) {
    send(*it.sheet.focusWidget(), QEvent::KeyRelease, Qt::Key_Return, {}, time);
    send(*it.sheet.focusWidget(), QEvent::KeyPress, Qt::Key_Return, {}, time);
  }
  send(*it.sheet.focusWidget(), QEvent::KeyRelease, Qt::Key_Return, {}, 1710);
  QVERIFY(confirmed.isEmpty());
  QTest::keyClick(it.sheet.focusWidget(), Qt::Key_Return);
  QCOMPARE(confirmed.size(), 1);
  QCOMPARE(it.told(), QStringLiteral("+40 -40"));
}

void TypedKeysTest::modifiers_that_have_no_keys_are_told_with_the_key() {
  Typing it;
  it.openSheet();
  QKeyEvent press(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier | Qt::MetaModifier);
  QApplication::sendEvent(&it.field, &press);
  QCOMPARE(it.told(), QStringLiteral("+224 +227 +6 -6 -227 -224"));
}

void TypedKeysTest::a_field_that_listens_anew_takes_another_key() {
  Typing it;
  it.openSheet();
  QTest::keyClick(&it.field, Qt::Key_A);
  QVERIFY(it.again.isEnabled());
  it.again.click();
  QVERIFY(it.field.isListening() && !it.again.isEnabled());
  QTest::keyClick(&it.field, Qt::Key_B);
  QCOMPARE(it.told(), QStringLiteral("+4 -4 +5 -5"));
  QTest::mouseClick(&it.field, Qt::LeftButton);
  QVERIFY(it.field.isListening());
  it.sheet.reject();
  QVERIFY(!it.field.isListening());
}

void TypedKeysTest::a_key_that_nobody_knows_is_swallowed_and_not_told() {
  Typing it;
  it.isRecording = true;
  it.line.setFocus();
  QKeyEvent press(QEvent::KeyPress, 0x0424, Qt::NoModifier, QString(QChar(0x0424)));
  QApplication::sendEvent(&it.line, &press);
  QCOMPARE(it.line.text(), QString());
  QCOMPARE(it.told(), QString());
}

SKARN_QTEST(TypedKeysTest)
#include "TypedKeys_test.moc"
