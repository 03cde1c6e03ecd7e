// The sheet for the repeat mode of a macro, and the chooser of applications.
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

#include "buttons/ButtonsFixture.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

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

class MouseButtonControllerSheetsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void the_answer_to_ok_may_rebuild_the_tab_data() { addControlRows(); }

  void the_answer_to_ok_may_rebuild_the_tab() {
    QFETCH(int, ordinal);
    const ControlDescriptor& control = ButtonsFixture::control(ordinal);
    ButtonsFixture fixture;
    // As the owner does with the engine's answer.
    fixture.delegate.onUpdate = [&fixture](const PropertyList& settings) {
      fixture.show(fixture.current.merging(settings));
    };
    fixture.choose(control, AssignmentCategory::SingleKey);
    fixture.tab.singleKeyEvents({"", "", PropertyList::dictionary({{"singleKey", 5}, {"singleKeyModif", 0}})});
    fixture.press("mSingleKeyOK");
    QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Single Key : B"));
    fixture.openKeymapSheet(control);
    fixture.press("mKeymapOK");
    QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Keymap: Cycle Keymaps"));
    fixture.give(control, assignment(10, 0, 1));
    QTest::mouseClick(fixture.row(control).repeatButton(), Qt::LeftButton);
    fixture.find<QComboBox>("mMacroPlaybackPopUp")->setCurrentIndex(1);
    fixture.press("mMacroRepeatOK");
    QCOMPARE(fixture.popUp(control).shownTitle(), QStringLiteral("Macro : Fireball"));
    QVERIFY(fixture.row(control).repeatButton()->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // The capture's start and its end, and a request for each sheet.
    QCOMPARE(fixture.delegate.calls.size(), std::size_t(5));
    for (const char* sheet : {"mSingleKey", "mKeymapWindow", "mMacroRepeatWindow"}) QVERIFY(!fixture.isOpen(sheet));
  }

  void buttons_of_sheets_that_are_closed_do_nothing() {
    ButtonsFixture fixture;
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
    COMPARE_CALLS(fixture.delegate.calls, call({"startSingleKeyRecording"}), call({"stopSingleKeyRecording"}));
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
      QTest::newRow(control.fieldName) << control.number << (control.number == 18 || control.number == 19);
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
      const std::string code = std::to_string(control.groupType() == 1 ? control.code() : 700 + control.number - 17);
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

  void another_application_can_be_browsed_for() {
    const Applications applications;
    ButtonsFixture fixture;
    fixture.choose(fixture.control(1), AssignmentCategory::LaunchProgram);
    fixture.press("mApplicationBrowse");
    const auto* panel = fixture.find<QFileDialog>("mOpenPanel");
    QVERIFY(panel != nullptr && panel->isVisible());
    QCOMPARE(panel->acceptMode(), QFileDialog::AcceptOpen);
    QVERIFY(panel->fileMode() != QFileDialog::ExistingFiles);
    QCOMPARE(panel->nameFilters(), QStringList{QStringLiteral("Applications (*.app *.desktop)")});
    QVERIFY(fixture.delegate.calls.empty());
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

SKARN_QTEST(MouseButtonControllerSheetsTest)
#include "MouseButtonController_sheets_test.moc"
