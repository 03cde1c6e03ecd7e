#include "app/KeyUsages.h"

#include <linux/input-event-codes.h>

#include <QTest>

#include "support/QtTests.h"

using namespace skarn;
using vorn::HidUsage;

Q_DECLARE_METATYPE(std::optional<HidUsage>)

namespace {

// As X11 and Wayland tell a key: kernel number plus 8.
QKeyEvent keyEvent(int key, quint32 kernelKey, Qt::KeyboardModifiers modifiers = {}, quint32 symbol = 0) {
  return {QEvent::KeyPress, key, modifiers, kernelKey + 8, symbol, 0};
}
std::optional<HidUsage> keyboard(int usage) {
  return HidUsage{7, static_cast<std::uint16_t>(usage)};
}

}  // namespace

class KeyUsagesTest : public QObject {
  Q_OBJECT

 private slots:
  void the_place_on_the_keyboard_counts_and_not_the_letter_there();
  void a_key_whose_scan_code_cannot_be_meant_is_taken_by_its_name();
  void a_key_that_only_its_scan_code_knows_is_taken_by_it();
  void without_scan_codes_names_count_data();
  void without_scan_codes_names_count();
  void left_and_right_modifiers_are_told_apart();
  void the_number_pad_is_told_from_the_rest_with_and_without_its_digits();
  void the_number_pad_is_known_by_its_symbols_where_qt_says_nothing_of_it();
  void what_nobody_knows_is_no_key();
  void buttons_of_the_mouse_have_their_numbers();
};

void KeyUsagesTest::the_place_on_the_keyboard_counts_and_not_the_letter_there() {
  QCOMPARE(usageOf(keyEvent(Qt::Key_A, KEY_A), true), keyboard(4));
  // On a German keyboard Y and Z, on a French one A and Q.
  QCOMPARE(usageOf(keyEvent(Qt::Key_Z, KEY_Y), true), keyboard(28));
  QCOMPARE(usageOf(keyEvent(Qt::Key_A, KEY_Q), true), keyboard(20));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Ampersand, KEY_1), true), keyboard(30));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Eacute, KEY_2), true), keyboard(31));
  // A Cyrillic letter.
  QCOMPARE(usageOf(keyEvent(0x0424, KEY_A), true), keyboard(4));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Less, KEY_102ND), true), keyboard(100));
}

void KeyUsagesTest::a_key_whose_scan_code_cannot_be_meant_is_taken_by_its_name() {
  // Keyboards on the screen number their keys from 1 on.
  QCOMPARE(usageOf(keyEvent(Qt::Key_A, KEY_ESC), true), keyboard(4));
  QCOMPARE(usageOf(keyEvent(Qt::Key_B, KEY_1), true), keyboard(5));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Return, KEY_ESC), true), keyboard(40));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Escape, KEY_2), true), keyboard(41));
  // Caps Lock that the user has made another Control.
  QCOMPARE(usageOf(keyEvent(Qt::Key_Control, KEY_CAPSLOCK, {}, 0xffe3), true), keyboard(224));
}

void KeyUsagesTest::a_key_that_only_its_scan_code_knows_is_taken_by_it() {
  QCOMPARE(usageOf(keyEvent(Qt::Key_unknown, KEY_MUHENKAN), true), keyboard(139));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Multi_key, KEY_COMPOSE), true), keyboard(101));
}

void KeyUsagesTest::without_scan_codes_names_count_data() {
  QTest::addColumn<int>("key");
  QTest::addColumn<int>("usage");
  QTest::newRow("A") << int(Qt::Key_A) << 4;
  QTest::newRow("Z") << int(Qt::Key_Z) << 29;
  QTest::newRow("1") << int(Qt::Key_1) << 30;
  QTest::newRow("9") << int(Qt::Key_9) << 38;
  QTest::newRow("0") << int(Qt::Key_0) << 39;
  QTest::newRow("Shift and 1") << int(Qt::Key_Exclam) << 30;
  QTest::newRow("Return") << int(Qt::Key_Return) << 40;
  QTest::newRow("Escape") << int(Qt::Key_Escape) << 41;
  QTest::newRow("Backspace") << int(Qt::Key_Backspace) << 42;
  QTest::newRow("Tab") << int(Qt::Key_Tab) << 43;
  QTest::newRow("Shift and Tab") << int(Qt::Key_Backtab) << 43;
  QTest::newRow("Space") << int(Qt::Key_Space) << 44;
  QTest::newRow("F1") << int(Qt::Key_F1) << 58;
  QTest::newRow("F12") << int(Qt::Key_F12) << 69;
  QTest::newRow("F13") << int(Qt::Key_F13) << 104;
  QTest::newRow("F24") << int(Qt::Key_F24) << 115;
  QTest::newRow("Delete") << int(Qt::Key_Delete) << 76;
  QTest::newRow("Up") << int(Qt::Key_Up) << 82;
  QTest::newRow("Enter") << int(Qt::Key_Enter) << 88;
  QTest::newRow("volume") << int(Qt::Key_VolumeUp) << 128;
  QTest::newRow("AltGr") << int(Qt::Key_AltGr) << 230;
}

void KeyUsagesTest::without_scan_codes_names_count() {
  QFETCH(int, key);
  QFETCH(int, usage);
  QCOMPARE(usageOf(QKeyEvent(QEvent::KeyPress, key, {}), true), keyboard(usage));
  // Where scan codes are something else, they do not count.
  QCOMPARE(usageOf(keyEvent(key, KEY_Q), false), keyboard(usage));
}

void KeyUsagesTest::left_and_right_modifiers_are_told_apart() {
  QCOMPARE(usageOf(keyEvent(Qt::Key_Control, KEY_LEFTCTRL, {}, 0xffe3), true), keyboard(224));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Control, KEY_RIGHTCTRL, {}, 0xffe4), true), keyboard(228));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Shift, KEY_RIGHTSHIFT, {}, 0xffe2), true), keyboard(229));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Alt, KEY_RIGHTALT, {}, 0xffea), true), keyboard(230));
  QCOMPARE(usageOf(keyEvent(Qt::Key_AltGr, KEY_RIGHTALT, {}, 0xfe03), true), keyboard(230));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Meta, KEY_RIGHTMETA, {}, 0xffec), true), keyboard(231));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Super_R, KEY_RIGHTMETA, {}, 0xffec), true), keyboard(231));
}

void KeyUsagesTest::the_number_pad_is_told_from_the_rest_with_and_without_its_digits() {
  QCOMPARE(usageOf(keyEvent(Qt::Key_7, KEY_KP7, Qt::KeypadModifier), true), keyboard(95));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Home, KEY_KP7, Qt::KeypadModifier), true), keyboard(95));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Enter, KEY_KPENTER, Qt::KeypadModifier), true), keyboard(88));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Slash, KEY_KPSLASH, Qt::KeypadModifier), true), keyboard(84));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Home, KEY_HOME), true), keyboard(74));
  QCOMPARE(usageOf(QKeyEvent(QEvent::KeyPress, Qt::Key_5, Qt::KeypadModifier), true), keyboard(93));
}

// On Wayland.
void KeyUsagesTest::the_number_pad_is_known_by_its_symbols_where_qt_says_nothing_of_it() {
  QCOMPARE(usageOf(keyEvent(Qt::Key_Delete, KEY_KPDOT, {}, 0xff9f), true), keyboard(99));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Slash, KEY_KPSLASH, {}, 0xffaf), true), keyboard(84));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Up, KEY_KP8, {}, 0xff97), true), keyboard(96));
  QCOMPARE(usageOf(keyEvent(Qt::Key_8, KEY_KP8, {}, 0xffb8), true), keyboard(96));
  QCOMPARE(usageOf(keyEvent(Qt::Key_Equal, KEY_KPEQUAL, {}, 0xffbd), true), keyboard(103));
  // Their neighbours in the table of symbols.
  QCOMPARE(usageOf(keyEvent(Qt::Key_Delete, KEY_DELETE, {}, 0xffff), true), keyboard(76));
  QCOMPARE(usageOf(keyEvent(Qt::Key_F1, KEY_F1, {}, 0xffbe), true), keyboard(58));
}

void KeyUsagesTest::what_nobody_knows_is_no_key() {
  QCOMPARE(usageOf(QKeyEvent(QEvent::KeyPress, Qt::Key_unknown, {}), true), std::nullopt);
  QCOMPARE(usageOf(keyEvent(Qt::Key_MediaPlay, KEY_PLAYPAUSE), true), std::nullopt);
  QCOMPARE(usageOf(keyEvent(Qt::Key_unknown, BTN_LEFT), true), std::nullopt);
}

void KeyUsagesTest::buttons_of_the_mouse_have_their_numbers() {
  QCOMPARE(usageOf(Qt::LeftButton), (std::optional(HidUsage{9, 1})));
  QCOMPARE(usageOf(Qt::RightButton), (std::optional(HidUsage{9, 2})));
  QCOMPARE(usageOf(Qt::MiddleButton), (std::optional(HidUsage{9, 3})));
  QCOMPARE(usageOf(Qt::BackButton), (std::optional(HidUsage{9, 4})));
  QCOMPARE(usageOf(Qt::ForwardButton), (std::optional(HidUsage{9, 5})));
  QCOMPARE(usageOf(Qt::NoButton), std::nullopt);
  QCOMPARE(usageOf(Qt::ExtraButton24), std::nullopt);
}

SKARN_QTEST(KeyUsagesTest)
#include "KeyUsages_test.moc"
