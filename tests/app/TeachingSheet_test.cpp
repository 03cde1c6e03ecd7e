#include "app/TeachingSheet.h"

#include <QLabel>
#include <QListWidget>
#include <QStackedWidget>

#include "app/MiceFixture.h"
#include "buttons/MouseView.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

using Call = MiceFixture::Call;
using Outcome = MiceFixture::Outcome;
using Request = MiceFixture::Request;

const PropertyList acme = inUse(realMouse("usb-1", "Acme"));

// The walk has begun, and the first control is asked for.
struct Walk : MiceFixture {
  Walk() : MiceFixture({acme, virtualMouse()}) {
    openSheet();
    click(button("mMouseTeach"));
    if (!isOpen()) QTest::qFail("the walk begins", __FILE__, __LINE__);
    QApplication::setActiveWindow(sheet("mTeachingSheet"));
    expectAsked("43");
  }
  bool isOpen() { return isShown("mTeachingSheet"); }
  // The engine is asked to teach this control, and does.
  void expectAsked(const std::string& control) {
    if (!willBeAsked({{Call::Teach, control}})) QTest::qFail(("asks for " + control).c_str(), __FILE__, __LINE__);
    link.answerMice({Outcome::Done});
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(sheet("mTeachingSheet"), key, modifiers);
  }
  MouseView& picture() { return *sheet("mTeachingSheet")->findChild<MouseView*>(); }
  bool isAtEnd() {
    return sheet("mTeachingSheet")->findChild<QStackedWidget*>()->currentWidget()->objectName() ==
           QStringLiteral("mTeachingEnd");
  }
  QStringList summary() {
    QStringList lines;
    const auto* list = sheet("mTeachingSheet")->findChild<QListWidget*>();
    for (int row = 0; row < list->count(); ++row) lines << list->item(row)->text();
    return lines;
  }
};

}  // namespace

class TeachingSheetTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }

  void it_asks_for_the_first_control_and_lights_it() {
    Walk one;
    QCOMPARE(one.text("mTeachingTitle"), QStringLiteral("Teach the controls of Acme"));
    QCOMPARE(one.text("mTeachingControl"), QStringLiteral("Button 1, Tab key"));
    QCOMPARE(one.text("mTeachingPrompt"), localized("lkeyTeachingPrompt"));
    QCOMPARE(one.text("mTeachingPlace"), QStringLiteral("1 of 30"));
    QCOMPARE(one.text("mTeachingNow"), localized("lkeyTeachingNowNothing"));
    QCOMPARE(one.picture().highlighted(), &controlTable[0]);
    // It has the wheel alone.
    QCOMPARE(one.picture().missing().size(), 24U);
    QVERIFY(!one.button("mTeachingBack").isEnabled());
    QVERIFY(!one.button("mTeachingAgain").isVisible());
  }

  void a_press_is_asked_for_as_soon_as_the_engine_listens() {
    Walk one;
    const auto* control = one.sheet("mTeachingSheet")->findChild<QWidget*>(QStringLiteral("mTeachingControl"));
    one.click(one.button("mTeachingSkip"));
    QCOMPARE(one.text("mTeachingControl"), QStringLiteral("Button 2, Q key"));
    QCOMPARE(one.text("mTeachingPrompt"), QStringLiteral("One moment…"));
    QCOMPARE(control->accessibleName(), QStringLiteral("Button 2, Q key"));
    one.expectAsked("20");
    QCOMPARE(one.text("mTeachingPrompt"), QStringLiteral("Press this control on your mouse."));
    QCOMPARE(control->accessibleName(), QStringLiteral("Button 2, Q key. Press this control on your mouse."));
  }

  void what_is_taught_is_told_and_the_next_control_follows() {
    Walk one;
    one.teach({"43", true, "BTN_SIDE", ""}, {acme.with("controls", stringArray({"03", "06", "07", "43"}))});
    QCOMPARE(one.text("mTeachingResult"), QStringLiteral("1 (Tab) is now: Side button"));
    QCOMPARE(one.text("mTeachingPrompt"), localized("lkeyTeachingNext"));
    QVERIFY(!one.button("mTeachingAgain").isVisible());
    QCOMPARE(one.picture().missing().size(), 23U);
    one.expectAsked("20");
    QCOMPARE(one.text("mTeachingControl"), QStringLiteral("Button 2, Q key"));
    one.teach({"20", true, "BTN_SIDE", "43"}, {acme});
    QCOMPARE(one.text("mTeachingResult"),
             QStringLiteral("2 (Q) is now: Side button\n1 (Tab) was that before, and has lost it."));
  }

  void one_skips_goes_back_and_points_at_a_control() {
    Walk one;
    one.click(one.button("mTeachingSkip"));
    one.expectAsked("20");
    one.press(Qt::Key_Right, Qt::ControlModifier);
    one.expectAsked("26");
    one.click(one.button("mTeachingBack"));
    one.expectAsked("20");
    one.press(Qt::Key_Left, Qt::ControlModifier);
    one.expectAsked("43");
    emit one.picture().controlClicked(&controlTable[16]);
    one.expectAsked("03");
    QCOMPARE(one.text("mTeachingNow"), localized("lkeyTeachingNowUsual"));
  }

  void keys_that_the_mouse_may_have_sent_do_nothing() {
    Walk one;
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_S,
                              Qt::Key_Right, Qt::Key_Left}) {
      one.press(key);
      QTest::keyClick(QApplication::focusWidget(), key);
    }
    QVERIFY(one.isOpen());
    QVERIFY(!one.isAtEnd());
    QVERIFY(one.isAsked({}));
  }

  void a_teaching_that_has_ended_without_a_press_waits_to_be_asked_again() {
    Walk one;
    one.teach({"43", false}, {acme});
    QCOMPARE(one.text("mTeachingResult"), localized("lkeyTeachingTimeout"));
    QCOMPARE(one.text("mTeachingPrompt"), localized("lkeyTeachingPaused"));
    one.click(one.button("mTeachingAgain"));
    one.expectAsked("43");
    QVERIFY(!one.button("mTeachingAgain").isVisible());
  }

  void only_the_newest_question_ends() {
    Walk one;
    // The engine is slow: it ends the first teaching of the control when that is asked for again already.
    one.click(one.button("mTeachingSkip"));
    one.click(one.button("mTeachingBack"));
    QVERIFY(one.isAsked({{Call::Teach, "20"}, {Call::Teach, "43"}}));
    one.link.miceNews.taught({"43", false});
    one.link.answerMice({Outcome::Done});
    one.link.miceNews.taught({"20", false});
    one.link.answerMice({Outcome::Done});
    QCOMPARE(one.text("mTeachingPrompt"), localized("lkeyTeachingPrompt"));
    QCOMPARE(one.text("mTeachingResult"), QString());
    while (one.link.answerMice({Outcome::Done, PropertyList::array({acme, virtualMouse()})})) {
    }
    one.link.miceRequests.clear();
    one.teach({"43", true, "BTN_SIDE", ""}, {acme, virtualMouse()});
    one.expectAsked("20");
  }

  void a_refusal_is_told() {
    Walk one;
    one.press(Qt::Key_Right, Qt::ControlModifier);
    QVERIFY(one.isAsked({{Call::Teach, "20"}}));
    one.link.answerMice({Outcome::Busy});
    QCOMPARE(one.text("mTeachingResult"), localized("lkeyMiceBusy"));
    QVERIFY(one.button("mTeachingAgain").isVisible());
  }

  void the_end_tells_what_was_taught_and_lost() {
    Walk one;
    one.teach({"43", true, "BTN_SIDE", ""}, {acme});
    one.expectAsked("20");
    one.teach({"20", true, "KEY_F13", "43"}, {acme});
    one.press(Qt::Key_Return, Qt::ControlModifier);
    QVERIFY(one.isAsked({{Call::Teach, ""}}));
    QVERIFY(one.isAtEnd());
    QCOMPARE(one.summary(), (QStringList{"1 (Tab): lost what it was", "2 (Q): F13 key"}));
    // The last key may still be on its way.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(one.isOpen());
    one.click(one.button("mTeachingResume"));
    QVERIFY(one.isAsked({{Call::Teach, "20"}}));
    QVERIFY(!one.isAtEnd());
  }

  void after_the_last_control_comes_the_end() {
    Walk one;
    emit one.picture().controlClicked(&controlTable[26]);
    one.expectAsked("232");
    for (const char* key : {"keymap", "stage-up", "stage-down"}) {
      one.press(Qt::Key_Right, Qt::ControlModifier);
      one.expectAsked(key);
      QCOMPARE(one.picture().highlighted(), nullptr);
    }
    one.press(Qt::Key_Right, Qt::ControlModifier);
    QVERIFY(one.isAtEnd());
    QCOMPARE(one.text("mTeachingSummary"), localized("lkeyTeachingNothing"));
  }

  void leaving_ends_the_teaching() {
    Walk one;
    one.sheet("mTeachingSheet")->close();
    QVERIFY(one.isAsked({{Call::Teach, ""}}));
    QVERIFY(one.isShown("mMouseSheet"));
  }

  void it_closes_when_its_mouse_goes_or_another_is_used() {
    Walk gone;
    gone.tell({absent(acme), virtualMouse()});
    QVERIFY(!gone.isOpen());
    Walk changed;
    changed.tell({realMouse("usb-1", "Acme"), inUse(virtualMouse())});
    QVERIFY(!changed.isOpen());
    QVERIFY(changed.isShown("mMouseSheet"));
  }

  void it_closes_with_the_engine() {
    Walk one;
    one.link.engineChanged(false);
    QVERIFY(!one.isOpen());
  }
};

SKARN_QTEST(TeachingSheetTest)
#include "TeachingSheet_test.moc"
