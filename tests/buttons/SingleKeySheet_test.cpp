// The sheet for a single key: what it takes for the key, what it leaves to its buttons, and what is written.
#include <QCheckBox>
#include <QLineEdit>

#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"
#include "widgets/KeyCaptureField.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const PropertyList startCapture = call({"startSingleKeyRecording"});
const PropertyList stopCapture = call({"stopSingleKeyRecording"});

PropertyList capturedKey(int key, int modifier) {
  return PropertyList::dictionary({{"singleKey", key}, {"singleKeyModif", modifier}});
}

struct KeyFixture : ButtonsFixture {
  KeyFixture() {
    tab.setMNotificationCenter(&notifications);
    tab.registerNotification();
  }
  ~KeyFixture() { tab.setMNotificationCenter(nullptr); }

  void capture(const PropertyList& key) { notifications.post("SingleKeyEvent273", "", key); }
  QString shownKey() { return find<QLineEdit>("mInputSingleKey")->text(); }
};

}  // namespace

class SingleKeySheetTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void a_captured_key_is_written_after_the_capture_has_ended_data() { addControlRows(); }

  void a_captured_key_is_written_after_the_capture_has_ended() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    KeyFixture fixture;
    fixture.choose(control, AssignmentCategory::SingleKey);
    QVERIFY(fixture.isOpen("mSingleKey"));
    QCOMPARE(fixture.find<QDialog>("mSingleKey")->windowModality(), Qt::WindowModal);
    QCOMPARE(fixture.shownKey(), QString());
    QCOMPARE(fixture.find<QLabel>("mSingleKeyControl")->text(),
             fixture.popUp(control).accessibleName() + QStringLiteral(" · Work, Keymap 3"));
    COMPARE_CALLS(fixture.delegate.calls, startCapture);
    fixture.capture(capturedKey(4, 0));
    fixture.capture(capturedKey(7, 3));
    QCOMPARE(fixture.shownKey(), QStringLiteral("Left Control + Left Shift + D"));
    fixture.press("mSingleKeyOK");
    QVERIFY(!fixture.isOpen("mSingleKey"));
    COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture, fixture.request(control, assignment(16, 7, 3)));
  }

  void a_cancelled_key_writes_nothing_and_shows_the_stored_assignment_data() { addControlRows(); }

  void a_cancelled_key_writes_nothing_and_shows_the_stored_assignment() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    KeyFixture fixture;
    const QString before = fixture.popUp(control).shownTitle();
    for (const bool byKey : {false, true}) {
      fixture.delegate.calls.clear();
      fixture.choose(control, AssignmentCategory::SingleKey);
      QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Single Key  "));
      fixture.capture(capturedKey(4, 0));
      if (byKey) {
        QTest::keyClick(fixture.find<QDialog>("mSingleKey"), Qt::Key_Escape);
      } else {
        fixture.press("mSingleKeyCancel");
      }
      QVERIFY(!fixture.isOpen("mSingleKey"));
      COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture);
      QCOMPARE(fixture.popUp(control).shownTitle(), before);
    }
  }

  void a_key_sheet_that_is_closed_is_cancelled() {
    KeyFixture fixture;
    fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
    fixture.capture(capturedKey(4, 0));
    fixture.find<QDialog>("mSingleKey")->close();
    COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture);
  }

  void ok_waits_for_a_key() {
    KeyFixture fixture;
    fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
    const auto* ok = fixture.find<QPushButton>("mSingleKeyOK");
    QVERIFY(!ok->isEnabled());
    QVERIFY(!ok->toolTip().isEmpty());
    QTest::keyClick(fixture.find<QDialog>("mSingleKey"), Qt::Key_Return);
    QVERIFY(fixture.isOpen("mSingleKey"));
    fixture.capture(capturedKey(0, 2));
    QVERIFY(ok->isEnabled());
    QCOMPARE(ok->toolTip(), QString());
    fixture.press("mSingleKeyOK");
    COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture,
                  fixture.request(fixture.control(1), assignment(16, 0, 2)));
    // The next time the field is empty again.
    fixture.choose(fixture.control(2), AssignmentCategory::SingleKey);
    QCOMPARE(fixture.shownKey(), QString());
    QVERIFY(!ok->isEnabled());
  }

  void any_key_can_be_assigned_and_is_confirmed_by_return_data() {
    QTest::addColumn<int>("usage");
    QTest::addColumn<QString>("name");
    QTest::newRow("A") << 4 << "A";
    QTest::newRow("Return") << 40 << "Return";
    QTest::newRow("Escape") << 41 << "Escape";
    QTest::newRow("Tab") << 43 << "Tab";
    QTest::newRow("Space") << 44 << "Space";
    QTest::newRow("Down") << 81 << "Down Arrow";
    QTest::newRow("a key without a name") << 50 << "";
  }

  void any_key_can_be_assigned_and_is_confirmed_by_return() {
    QFETCH(int, usage);
    QFETCH(QString, name);
    // The engine's report comes before or after the field has taken the key.
    for (const bool isReportedFirst : {true, false}) {
      KeyFixture fixture;
      fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
      auto* field = fixture.find<KeyCaptureField>("mInputSingleKey");
      auto* sheet = fixture.find<QDialog>("mSingleKey");
      QVERIFY(field->isListening());
      if (isReportedFirst) fixture.capture(capturedKey(usage, 0));
      field->noteTyped(false, true);
      if (!isReportedFirst) fixture.capture(capturedKey(usage, 0));
      QVERIFY(fixture.isOpen("mSingleKey") && !field->isListening());
      QCOMPARE(fixture.shownKey(), name);
      QCOMPARE(field->placeholderText(), QStringLiteral("A key without a name"));
      QTest::keyClick(sheet->focusWidget(), Qt::Key_Return);
      QVERIFY(!fixture.isOpen("mSingleKey"));
      COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture,
                    fixture.request(fixture.control(1), assignment(16, usage)));
    }
  }

  void another_key_takes_the_place_of_the_one_shown_listening_or_not() {
    KeyFixture fixture;
    fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
    auto* field = fixture.find<KeyCaptureField>("mInputSingleKey");
    fixture.capture(capturedKey(4, 0));
    field->noteTyped(false, true);
    QCOMPARE(fixture.shownKey(), QStringLiteral("A"));
    fixture.capture(capturedKey(7, 2));
    QCOMPARE(fixture.shownKey(), QStringLiteral("Left Shift + D"));
    fixture.press("mSingleKeyAgain");
    QVERIFY(field->isListening());
    fixture.capture(capturedKey(43, 0));
    QCOMPARE(fixture.shownKey(), QStringLiteral("Tab"));
    fixture.press("mSingleKeyOK");
    COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture,
                  fixture.request(fixture.control(1), assignment(16, 43)));
  }

  void a_key_can_be_chosen_from_the_list_of_all_with_its_modifiers_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("usage");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("a key") << "F24" << 115 << 1;
    // A modifier alone is the bit of a report.
    QTest::newRow("a modifier") << "Right Command" << 0 << 129;
  }
  void a_key_can_be_chosen_from_the_list_of_all_with_its_modifiers() {
    QFETCH(QString, name);
    QFETCH(int, usage);
    QFETCH(int, modifiers);
    KeyFixture fixture;
    fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
    fixture.press("mSingleKeyChoose");
    QVERIFY(!fixture.find<KeyCaptureField>("mInputSingleKey")->isListening());
    fixture.find<QLineEdit>("mKeySearch")->setText(name);
    fixture.find<QDialog>("mKeyChooser")->findChildren<QCheckBox*>().constFirst()->setChecked(true);
    fixture.press("mKeyChooserOK");
    fixture.press("mSingleKeyOK");
    COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture,
                  fixture.request(fixture.control(1), assignment(16, usage, modifiers)));
  }

  void escape_cancels_whatever_was_reported() {
    for (const bool isReported : {false, true}) {
      KeyFixture fixture;
      fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
      if (isReported) fixture.capture(capturedKey(41, 0));
      fixture.find<KeyCaptureField>("mInputSingleKey")->stopListening();
      QTest::keyClick(fixture.find<QDialog>("mSingleKey"), Qt::Key_Escape);
      QVERIFY(!fixture.isOpen("mSingleKey"));
      COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture);
      QCOMPARE(fixture.popUp(1).shownTitle(), QStringLiteral("Tab (Default)"));
    }
  }

  void keys_are_kept_but_not_shown_while_the_sheet_is_closed() {
    KeyFixture fixture;
    fixture.capture(capturedKey(5, 8));
    QCOMPARE(fixture.tab.mSingleKeyHIDCode(), 5);
    QCOMPARE(fixture.tab.mSingleKeyModifier(), 8);
    fixture.capture("no dictionary");
    QCOMPARE(fixture.tab.mSingleKeyHIDCode(), 5);
    QVERIFY(!fixture.isOpen("mSingleKey"));
    QVERIFY(fixture.delegate.calls.empty());
  }

  void the_tab_listens_as_long_as_it_has_the_centre() {
    KeyFixture fixture;
    QVERIFY(fixture.notifications.observed() == std::vector<std::string>{"SingleKeyEvent273"});
    fixture.tab.setMNotificationCenter(nullptr);
    QVERIFY(fixture.notifications.observed().empty());
  }

  void settings_that_change_meanwhile_are_what_the_key_is_written_to() {
    KeyFixture fixture;
    fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
    fixture.capture(capturedKey(4, 0));
    fixture.give(fixture.control(2), assignment(20));
    fixture.press("mSingleKeyOK");
    COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture,
                  fixture.request(fixture.control(1), assignment(16, 4)));
  }
};

SKARN_QTEST(SingleKeySheetTest)
#include "SingleKeySheet_test.moc"
