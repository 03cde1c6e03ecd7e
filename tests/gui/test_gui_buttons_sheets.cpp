// The sheets for a single key and for the repeat mode of a macro, and the chooser of applications.
#include <QLineEdit>
#include <QTemporaryDir>

#include "ButtonsFixture.h"
#include "platform/PanelTest.h"

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

// A desktop with two applications.
class Applications {
 public:
  Applications() {
    qputenv("XDG_DATA_HOME", QFile::encodeName(mFolder.filePath(QStringLiteral("data"))));
    qputenv("XDG_DATA_DIRS", "/none");
    add(QStringLiteral("org.example.Paint"), "Paint");
    add(QStringLiteral("org.example.Notes"), "Notes");
  }
  QString path(const QString& name) const {
    return mFolder.filePath(QStringLiteral("data/applications/%1.desktop").arg(name));
  }

 private:
  void add(const QString& name, const QByteArray& title) {
    writeTestFile(path(name), "[Desktop Entry]\nType=Application\nName=" + title + "\nExec=/bin/sh\n");
  }
  QTemporaryDir mFolder;
};

}  // namespace

class ButtonsSheetsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  // --- Single key

  void a_captured_key_is_written_after_the_capture_has_ended_data() { addControlRows(); }

  void a_captured_key_is_written_after_the_capture_has_ended() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    KeyFixture fixture;
    fixture.choose(control, AssignmentCategory::SingleKey);
    QVERIFY(fixture.isOpen("mSingleKey"));
    QCOMPARE(fixture.find<QDialog>("mSingleKey")->windowModality(), Qt::WindowModal);
    QCOMPARE(fixture.shownKey(), QString());
    QCOMPARE(fixture.find<QLabel>("mSingleKeyControl")->text(), fixture.popUp(control).accessibleName());
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

  void any_key_but_escape_can_be_assigned_and_is_confirmed_by_return_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("usage");
    QTest::addColumn<QString>("name");
    QTest::newRow("A") << int(Qt::Key_A) << 4 << "A";
    QTest::newRow("Return") << int(Qt::Key_Return) << 40 << "Return";
    QTest::newRow("Enter") << int(Qt::Key_Enter) << 88 << "Numpad Enter";
    QTest::newRow("Tab") << int(Qt::Key_Tab) << 43 << "Tab";
    QTest::newRow("Space") << int(Qt::Key_Space) << 44 << "Space";
    QTest::newRow("Down") << int(Qt::Key_Down) << 81 << "Down Arrow";
    QTest::newRow("F1") << int(Qt::Key_F1) << 58 << "F1";
    QTest::newRow("a key without a name") << int(Qt::Key_Less) << 50 << "";
  }

  void any_key_but_escape_can_be_assigned_and_is_confirmed_by_return() {
    QFETCH(int, key);
    QFETCH(int, usage);
    QFETCH(QString, name);
    // The engine's report comes before the window's event, while the key is down, or after it was let go.
    for (int moment = 0; moment < 3; ++moment) {
      KeyFixture fixture;
      fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
      auto* field = fixture.find<QLineEdit>("mInputSingleKey");
      auto* ok = fixture.find<QPushButton>("mSingleKeyOK");
      auto* sheet = fixture.find<QDialog>("mSingleKey");
      // The Return that chose the item is let go here; it is none of the sheet's.
      QTest::keyRelease(field, Qt::Key_Return);
      if (moment == 0) fixture.capture(capturedKey(usage, 0));
      QCOMPARE(sheet->focusWidget(), field);
      QTest::keyPress(field, static_cast<Qt::Key>(key));
      QVERIFY(fixture.isOpen("mSingleKey"));
      if (moment == 1) fixture.capture(capturedKey(usage, 0));
      QCOMPARE(sheet->focusWidget(), field);
      QTest::keyRelease(field, static_cast<Qt::Key>(key));
      if (moment == 2) fixture.capture(capturedKey(usage, 0));
      QVERIFY(fixture.isOpen("mSingleKey"));
      QCOMPARE(fixture.shownKey(), name);
      QCOMPARE(field->placeholderText(), QStringLiteral("A key without a name"));
      // Now Return confirms, and is not taken for the key although it is reported too.
      QCOMPARE(sheet->focusWidget(), ok);
      fixture.capture(capturedKey(40, 0));
      QTest::keyClick(ok, Qt::Key_Return);
      QVERIFY(!fixture.isOpen("mSingleKey"));
      COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture,
                    fixture.request(fixture.control(1), assignment(16, usage)));
    }
  }

  void another_key_takes_the_place_of_the_one_shown() {
    KeyFixture fixture;
    fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
    auto* field = fixture.find<QLineEdit>("mInputSingleKey");
    auto* sheet = fixture.find<QDialog>("mSingleKey");
    fixture.capture(capturedKey(4, 0));
    QTest::keyClick(field, Qt::Key_A);
    for (const int usage : {40, 41, 43, 44, 79, 80, 81, 82, 88}) {
      fixture.capture(capturedKey(0, 2));
      fixture.capture(capturedKey(usage, 2));
      QCOMPARE(fixture.shownKey(), QStringLiteral("A"));
    }
    fixture.capture(capturedKey(7, 2));
    QCOMPARE(fixture.shownKey(), QStringLiteral("Left Shift + D"));
    // Back in the field every key counts again.
    field->setFocus();
    fixture.capture(capturedKey(43, 0));
    QCOMPARE(fixture.shownKey(), QStringLiteral("Tab"));
    QTest::keyClick(field, Qt::Key_Tab);
    QCOMPARE(sheet->focusWidget(), fixture.find<QPushButton>("mSingleKeyOK"));
    QTest::keyClick(sheet->focusWidget(), Qt::Key_Return);
    COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture,
                  fixture.request(fixture.control(1), assignment(16, 43)));
  }

  void escape_in_the_key_field_cancels_whether_reported_or_not() {
    for (const bool isReported : {false, true}) {
      KeyFixture fixture;
      fixture.choose(fixture.control(1), AssignmentCategory::SingleKey);
      if (isReported) fixture.capture(capturedKey(41, 0));
      QTest::keyClick(fixture.find<QLineEdit>("mInputSingleKey"), Qt::Key_Escape);
      QVERIFY(!fixture.isOpen("mSingleKey"));
      COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture);
      QCOMPARE(fixture.popUp(1).shownTitle(), QStringLiteral("Tab (Default)"));
    }
  }

  void buttons_of_sheets_that_are_closed_do_nothing() {
    KeyFixture fixture;
    const auto press = [&fixture] {
      fixture.tab.clickSingleKeyOK();
      fixture.tab.clickSingleKeyCancel();
      fixture.tab.clickKeymapOK();
      fixture.tab.clickKeymapCancel();
      fixture.tab.clickMacroRepeatOK();
      fixture.tab.clickMacroRepeatCancel();
    };
    press();
    fixture.tab.checkSelectedValue(16, "43", 2);
    fixture.press("mSingleKeyCancel");
    fixture.tab.checkSelectedValue(50, "43", 2);
    fixture.press("mKeymapCancel");
    fixture.tab.clickMacroRepeatButton(fixture.control(1));
    fixture.press("mMacroRepeatCancel");
    press();
    COMPARE_CALLS(fixture.delegate.calls, startCapture, stopCapture);
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

  // --- Repeat mode

  void the_repeat_button_of_a_macro_opens_its_mode_data() { addControlRows(); }

  void the_repeat_button_of_a_macro_opens_its_mode() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    for (const ControlDescriptor& other : controlTable) QVERIFY(!fixture.row(other).repeatButton()->isVisible());
    fixture.give(control, assignment(10, 2, 4));
    for (const ControlDescriptor& other : controlTable)
      QCOMPARE(fixture.row(other).repeatButton()->isVisible(), &other == &control);
    QTest::mouseClick(fixture.row(control).repeatButton(), Qt::LeftButton);
    QVERIFY(fixture.isOpen("mMacroRepeatWindow"));
    QCOMPARE(fixture.find<QLabel>("mMacroRepeatMacroName")->text(), QStringLiteral("Greeting"));
    QCOMPARE(fixture.find<QLabel>("mCurrentMacroRepeatLabel")->text(), QStringLiteral("Repeat 4 Times"));
    QCOMPARE(fixture.find<QComboBox>("mMacroPlaybackPopUp")->currentText(), QStringLiteral("Repeat 4 Times"));
    QTest::keyClick(fixture.find<QDialog>("mMacroRepeatWindow"), Qt::Key_Escape);
    QVERIFY(!fixture.isOpen("mMacroRepeatWindow"));
    QVERIFY(fixture.delegate.calls.empty());
  }

  void every_mode_of_the_list_is_written_data() {
    QTest::addColumn<int>("ordinal");
    QTest::addColumn<bool>("isScrollVariant");
    for (const ControlDescriptor& control : controlTable)
      QTest::newRow(control.fieldName) << control.ordinal << (control.ordinal == 18 || control.ordinal == 19);
  }

  void every_mode_of_the_list_is_written() {
    QFETCH(int, ordinal);
    QFETCH(bool, isScrollVariant);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    const QList<int> modes = isScrollVariant ? QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}
                                             : QList<int>{1, 255, 254, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    ButtonsFixture fixture;
    fixture.give(control, assignment(10, 1, 1).with("note", "mine"));
    for (int index = 0; index < modes.size(); ++index) {
      fixture.delegate.calls.clear();
      QTest::mouseClick(fixture.row(control).repeatButton(), Qt::LeftButton);
      auto* list = fixture.find<QComboBox>("mMacroPlaybackPopUp");
      QCOMPARE(list->count(), modes.size());
      list->setFocus();
      for (int step = 0; step < index; ++step) QTest::keyClick(list, Qt::Key_Down);
      QCOMPARE(list->currentText(), AssignmentText::getMacroRepeatOptionUsingValue(modes[index]));
      QCOMPARE(fixture.find<QLabel>("mCurrentMacroRepeatLabel")->text(), list->currentText());
      fixture.press("mMacroRepeatOK");
      QVERIFY(!fixture.isOpen("mMacroRepeatWindow"));
      COMPARE_CALLS(fixture.delegate.calls,
                    fixture.request(control, assignment(10, 1, modes[index]).with("note", "mine")));
      // Whatever came back, the list is the ordinary one again.
      QCOMPARE(list->count(), 12);
      QVERIFY(!fixture.tab.mIsScrollWheelMacroRepeatOption());
    }
  }

  void places_of_the_list_map_to_modes() {
    ButtonsFixture fixture;
    const auto modes = [&fixture] {
      QList<int> all;
      for (int index = -1; index <= 12; ++index) all << fixture.tab.getIntValueOfMacroRepeatOptionUsingValue(index);
      return all;
    };
    QCOMPARE(modes(), QList<int>({1, 1, 255, 254, 2, 3, 4, 5, 6, 7, 8, 9, 10, 1}));
    fixture.give(fixture.control(18), assignment(10, 0, 1));
    QTest::mouseClick(fixture.row(fixture.control(18)).repeatButton(), Qt::LeftButton);
    QVERIFY(fixture.tab.mIsScrollWheelMacroRepeatOption());
    QCOMPARE(modes(), QList<int>({1, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 1, 1, 1}));
    fixture.press("mMacroRepeatCancel");
    QVERIFY(!fixture.tab.mIsScrollWheelMacroRepeatOption());
    QCOMPARE(modes(), QList<int>({1, 1, 255, 254, 2, 3, 4, 5, 6, 7, 8, 9, 10, 1}));
    QVERIFY(fixture.delegate.calls.empty());
  }

  void a_mode_that_the_list_lacks_selects_none() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(19), assignment(10, 0, 255));
    QTest::mouseClick(fixture.row(fixture.control(19)).repeatButton(), Qt::LeftButton);
    QCOMPARE(fixture.find<QComboBox>("mMacroPlaybackPopUp")->currentIndex(), -1);
    QCOMPARE(fixture.find<QLabel>("mCurrentMacroRepeatLabel")->text(), QStringLiteral("Repeat Until Released"));
    fixture.press("mMacroRepeatOK");
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(fixture.control(19), assignment(10, 0, 1)));
  }

  void news_leave_an_open_list_of_modes_as_it_is() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(18), assignment(10, 0, 1));
    QTest::mouseClick(fixture.row(fixture.control(18)).repeatButton(), Qt::LeftButton);
    auto* list = fixture.find<QComboBox>("mMacroPlaybackPopUp");
    list->setCurrentIndex(3);
    fixture.tab.updateUISettings();
    QCOMPARE(list->currentIndex(), 3);
    fixture.press("mMacroRepeatOK");
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(fixture.control(18), assignment(10, 0, 4)));
  }

  void return_in_the_list_presses_ok() {
    ButtonsFixture fixture;
    fixture.give(fixture.control(9), assignment(10, 2, 1));
    fixture.row(fixture.control(9)).repeatButton()->setFocus();
    QTest::keyClick(fixture.row(fixture.control(9)).repeatButton(), Qt::Key_Space);
    auto* list = fixture.find<QComboBox>("mMacroPlaybackPopUp");
    QTest::keyClick(list, Qt::Key_End);
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(!fixture.isOpen("mMacroRepeatWindow"));
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(fixture.control(9), assignment(10, 2, 10)));
  }

  void both_lists_have_the_fixed_titles() {
    ButtonsFixture fixture;
    for (const bool isScrollVariant : {true, false}) {
      fixture.tab.populateMacroRepeatOptions(isScrollVariant);
      QStringList expected{"Play Macro Once"};
      if (!isScrollVariant)
        expected << "Repeat Until Released"
                 << "Repeat Until Pressed Again";
      for (int count = 2; count <= 10; ++count) expected << QStringLiteral("Repeat %1 Times").arg(count);
      const auto* list = fixture.find<QComboBox>("mMacroPlaybackPopUp");
      QStringList titles;
      for (int index = 0; index < list->count(); ++index) titles << list->itemText(index);
      QCOMPARE(titles, expected);
    }
  }

  void codes_name_repeat_buttons() {
    ButtonsFixture fixture;
    for (const char* junk : {"", "03", "699", "703", "0", "x"}) {
      fixture.tab.updateMacroRepeatButton(junk);
      for (const ControlDescriptor& control : controlTable) QVERIFY(!fixture.row(control).repeatButton()->isVisible());
    }
    for (const ControlDescriptor& control : controlTable) {
      const std::string code = control.groupType == 1 ? control.identifier : std::to_string(700 + control.ordinal - 17);
      fixture.tab.updateMacroRepeatButton(code);
      QVERIFY(fixture.row(control).repeatButton()->isVisible());
    }
    fixture.tab.hideAllMacroConfigButtons();
    for (const ControlDescriptor& control : controlTable) QVERIFY(!fixture.row(control).repeatButton()->isVisible());
  }

  // --- Application

  void a_chosen_application_is_written_with_its_path_data() { addControlRows(); }

  void a_chosen_application_is_written_with_its_path() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    const Applications applications;
    ButtonsFixture fixture;
    fixture.choose(control, AssignmentCategory::LaunchProgram);
    QVERIFY(fixture.isOpen("applicationPanel"));
    QTest::keyClicks(fixture.find<QLineEdit>("mApplicationSearch"), QStringLiteral("Paint"));
    QVERIFY(fixture.delegate.calls.empty());
    QTest::keyClick(fixture.find<QLineEdit>("mApplicationSearch"), Qt::Key_Return);
    QTRY_VERIFY(!fixture.isOpen("applicationPanel"));
    const PropertyList record =
        PropertyList::dictionary({{keys::Command, 46},
                                  {keys::Param1, applications.path(QStringLiteral("org.example.Paint")).toStdString()},
                                  {keys::Param2, ""}});
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(control, record));
  }

  void a_cancelled_application_writes_nothing_and_shows_the_stored_assignment_data() { addControlRows(); }

  void a_cancelled_application_writes_nothing_and_shows_the_stored_assignment() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    const Applications applications;
    ButtonsFixture fixture;
    const QString before = fixture.popUp(control).shownTitle();
    fixture.choose(control, AssignmentCategory::LaunchProgram);
    QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Launch Program"));
    QTest::keyClick(fixture.find<QDialog>("applicationPanel"), Qt::Key_Escape);
    QTRY_VERIFY(!fixture.isOpen("applicationPanel"));
    QCOMPARE(fixture.popUp(control).shownTitle(), before);
    QVERIFY(fixture.delegate.calls.empty());
  }

  void something_that_is_gone_is_not_written_and_the_user_is_told() {
    const Applications applications;
    ButtonsFixture fixture;
    fixture.choose(fixture.control(1), AssignmentCategory::LaunchProgram);
    QTest::keyClicks(fixture.find<QLineEdit>("mApplicationSearch"), QStringLiteral("Notes"));
    QVERIFY(QFile::remove(applications.path(QStringLiteral("org.example.Notes"))));
    QTest::keyClick(fixture.find<QLineEdit>("mApplicationSearch"), Qt::Key_Return);
    QTRY_COMPARE(alertTexts(fixture.tab),
                 QStringList({localized("lkeyNoApplicationTitle"), localized("lkeyNoApplicationDesc")}));
    QVERIFY(fixture.delegate.calls.empty());
    QCOMPARE(fixture.popUp(1).shownTitle(), QStringLiteral("Tab (Default)"));
  }

  void a_new_chooser_takes_the_place_of_an_earlier_one() {
    const Applications applications;
    ButtonsFixture fixture;
    fixture.tab.checkSelectedValue(46, "43", 2);
    fixture.tab.checkSelectedValue(46, "03", 1);
    QCOMPARE(fixture.tab.findChildren<QDialog*>(QStringLiteral("applicationPanel")).size(), 1);
    QTest::keyClicks(fixture.find<QLineEdit>("mApplicationSearch"), QStringLiteral("Paint"));
    QTest::keyClick(fixture.find<QLineEdit>("mApplicationSearch"), Qt::Key_Return);
    QTRY_COMPARE(fixture.delegate.calls.size(), std::size_t(1));
    QVERIFY(fixture.delegate.calls[0].at(1).contains("Buttons"));
  }

  void an_application_for_an_unknown_group_is_not_written() {
    const Applications applications;
    ButtonsFixture fixture;
    fixture.tab.checkSelectedValue(46, "43", 3);
    QTest::keyClicks(fixture.find<QLineEdit>("mApplicationSearch"), QStringLiteral("Paint"));
    QTest::keyClick(fixture.find<QLineEdit>("mApplicationSearch"), Qt::Key_Return);
    QTRY_VERIFY(!fixture.isOpen("applicationPanel"));
    QVERIFY(fixture.delegate.calls.empty());
    QVERIFY(alertOf(fixture.tab) == nullptr);
  }

  void sheets_are_shown_on_the_window() {
    const Applications applications;
    QWidget window;
    window.show();
    ButtonsFixture fixture;
    fixture.tab.setMButtonWindow(&window);
    fixture.tab.checkSelectedValue(16, "43", 2);
    fixture.tab.checkSelectedValue(46, "43", 2);
    fixture.tab.checkSelectedValue(50, "43", 2);
    fixture.tab.clickMacroRepeatButton(fixture.control(1));
    for (const char* name : {"mSingleKey", "applicationPanel", "mKeymapWindow", "mMacroRepeatWindow"}) {
      const auto* sheet = window.findChild<QDialog*>(QLatin1String(name));
      QVERIFY2(sheet != nullptr && sheet->isVisible(), name);
      QCOMPARE(sheet->windowModality(), Qt::WindowModal);
    }
  }
};

QTEST_MAIN(ButtonsSheetsTest)
#include "test_gui_buttons_sheets.moc"
