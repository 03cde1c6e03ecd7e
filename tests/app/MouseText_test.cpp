#include "app/MouseText.h"

#include "app/MiceFixture.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class MouseTextTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }

  void what_a_mouse_sends_is_told_in_words_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("words");
    const std::pair<const char*, const char*> rows[] = {{"BTN_SIDE", "Side button"},
                                                        {"BTN_MIDDLE", "Middle button"},
                                                        {"BTN_4", "Button 4"},
                                                        {"KEY_Z", "Z key"},
                                                        {"KEY_5", "5 key"},
                                                        {"KEY_F13", "F13 key"},
                                                        {"KEY_LEFTSHIFT", "Left Shift key"},
                                                        {"KEY_KP7", "Keypad 7 key"},
                                                        {"KEY_KPPLUS", "Keypad + key"},
                                                        {"KEY_NEXTSONG", "Next Track key"},
                                                        {"KEY_PLAYPAUSE", "Play/Pause key"},
                                                        {"KEY_FN_ESC", "Fn Esc key"},
                                                        {"REL_HWHEEL +", "Wheel to the right"},
                                                        {"REL_WHEEL -", "Wheel down"},
                                                        {"ABS_HAT0X -", "ABS_HAT0X -"},
                                                        {"", ""}};
    for (const auto& [source, words] : rows) QTest::newRow(source) << source << words;
  }
  void what_a_mouse_sends_is_told_in_words() {
    QFETCH(QString, source);
    QTEST(sourceText(source.toStdString()), "words");
  }

  void controls_have_their_numbers_and_fixed_keys_their_names() {
    QCOMPARE(controlText("29"), QStringLiteral("12 (Z)"));
    QCOMPARE(controlText("keymap"), QStringLiteral("Keymap key"));
    QCOMPARE(controlText("stage-up"), QStringLiteral("Key for the next sensitivity stage"));
    QCOMPARE(controlText("stage-down"), QStringLiteral("Key for the stage before"));
    QCOMPARE(controlText("999"), QString());
  }

  void only_the_mouse_in_use_tells_all_that_it_can_do() {
    const auto textsOf = [](const vorn::PropertyList& mouse) { return abilityTexts(mouseDescription(mouse)); };
    const vorn::PropertyList acme = realMouse("usb-1", "Acme").with("taught", stringArray({"03"}));
    QCOMPARE(textsOf(acme).size(), 2);
    QCOMPARE(textsOf(inUse(acme).with("hasLight", true).with("hasBattery", true)),
             (QStringList{"3 of 27 controls are found on it, counting those that it was taught; 1 taught in all.",
                          "Its sensitivity is made by scaling its motion, from 1600 DPI.", "Set in the mouse: light.",
                          "Not offered by it: polling rate, power settings. Those settings are kept for a mouse that "
                          "does.",
                          "It tells its battery."}));
    QCOMPARE(textsOf(inUse(virtualMouse())), textsOf(virtualMouse()));
  }

  void what_of_the_mouse_in_use_cannot_be_used_is_told_first() {
    const vorn::PropertyList acme = inUse(realMouse("usb-1", "Acme"));
    const QStringList usual = abilityTexts(mouseDescription(acme));
    const vorn::PropertyList stuck = acme.with("held", stringArray({"/dev/input/event5", "/dev/input/event6"}))
                                         .with("busy", stringArray({"/dev/input/event4"}));
    QCOMPARE(abilityTexts(mouseDescription(stuck)),
             (QStringList{"Something on it is held down, and what is assigned there does nothing until it is let go "
                          "(/dev/input/event5, /dev/input/event6). Press it once more, or plug the mouse in again.",
                          "Another program keeps a part of it for itself (/dev/input/event4). What is assigned there "
                          "does nothing until it is let go."} +
              usual));
  }

  void every_refusal_has_its_words() {
    using Outcome = vorn::MiceAnswer::Outcome;
    QCOMPARE(failureText(Outcome::Done), QString());
    for (const Outcome outcome :
         {Outcome::NotFound, Outcome::NotAllowed, Outcome::NotTeachable, Outcome::BadArgument, Outcome::Busy,
          Outcome::NotSaved, Outcome::NoMice, Outcome::NoAnswer, Outcome::NoEngine}) {
      QVERIFY(!failureText(outcome).isEmpty());
      QVERIFY(failureText(outcome) != QStringLiteral("No Translation"));
    }
  }
};

SKARN_QTEST(MouseTextTest)
#include "MouseText_test.moc"
