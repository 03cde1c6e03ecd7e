// Undo and redo of the real window with the real engine, and the real vornctl as the other client.
#include <QAbstractButton>
#include <QMessageBox>
#include <QToolButton>

#include "app/HistoryLine.h"
#include "e2e/OpenMacros.h"
#include "e2e/OpenProfiles.h"
#include "e2e/Vornctl.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;

namespace {

class OpenHistory : public OpenProfiles {
 public:
  // However long the machine stalls, the line goes for a reason only.
  OpenHistory() { find<HistoryLine>("mHistoryBar")->setLifetime(std::nullopt); }
  QToolButton& undoButton() { return *find<QToolButton>("mUndoButton"); }
  QToolButton& redoButton() { return *find<QToolButton>("mRedoButton"); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
    QTest::keyClick(QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : &window(), key, modifiers);
  }
  QString line() {
    auto* bar = find<HistoryLine>("mHistoryBar");
    return bar->isVisible() ? bar->text() : QString();
  }
  // Of the active profile, by this window; the engine has it then, and no news of it has been read here.
  void change(std::initializer_list<PropertyList::Pair> settings) {
    hub().updateValueForSetting(PropertyList::dictionary(settings));
  }
  QString undoTip() { return undoButton().isEnabled() ? undoButton().toolTip() : QString(); }
};

}  // namespace

class HistoryWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { installTranslations(QStringLiteral("en")); }
  void init() { mEngine.begin(); }
  void cleanup() { mEngine.end(); }

  void a_window_that_opens_changes_nothing_that_could_be_undone() {
    OpenHistory open;
    QTRY_COMPARE_WITH_TIMEOUT(open.undoButton().toolTip(), localized("lkeyNothingToUndo"), deadline);
  }

  void what_another_client_changed_is_undone_and_redone() {
    OpenHistory open;
    open.awaitAnnouncement();
    QVERIFY(runVornctl({"profiles", "add", "Work"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"Default", "Work"}), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Profile “Work” added"), deadline);
    open.press(Qt::Key_Z);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), QStringList{"Default"}, deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), QStringLiteral("Undone: Profile “Work” added"), deadline);
    QTRY_VERIFY_WITH_TIMEOUT(open.redoButton().isEnabled(), deadline);
    open.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"Default", "Work"}), deadline);
  }

  void a_deleted_profile_comes_back_by_the_line() {
    QVERIFY(runVornctl({"profiles", "add", "Work"}));
    QVERIFY(runVornctl({"assign", "4", "profile", "Work"}));
    OpenHistory open;
    open.awaitAnnouncement();
    open.click(1);
    QTRY_COMPARE_WITH_TIMEOUT(open.profileName(), QStringLiteral("Work"), deadline);
    const PropertyList before = OtherClient().bundle();
    QTest::mouseClick(open.find("mDeleteProfile"), Qt::LeftButton);
    open.acceptAlert();
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), QStringList{"Default"}, deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), QStringLiteral("Deleted Work"), deadline);
    QTest::mouseClick(open.find<QPushButton>("mHistoryLineButton"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"Default", "Work"}), deadline);
    QVERIFY(OtherClient().bundle() == before);
  }

  void the_line_goes_when_another_client_changes_something() {
    QVERIFY(runVornctl({"profiles", "add", "Work"}));
    OpenHistory open;
    open.awaitAnnouncement();
    open.deleteRow(1);
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), QStringLiteral("Deleted Work"), deadline);
    QVERIFY(runVornctl({"profiles", "add", "Play"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), QString(), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Profile “Play” added"), deadline);
  }

  void five_quick_presses_undo_five_changes() {
    OpenHistory open;
    open.awaitAnnouncement();
    for (const char* name : {"A", "B", "C", "D"}) QVERIFY(runVornctl({"profiles", "add", name}));
    QVERIFY(runVornctl({"profiles", "rename", "D", "E"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"Default", "A", "B", "C", "E"}), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Profile “D” renamed to “E”"), deadline);
    for (int press = 0; press < 5; ++press) open.press(Qt::Key_Z);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), QStringList{"Default"}, deadline);
  }

  void two_quick_presses_right_after_a_change_of_the_window_undo_it_and_the_one_before() {
    OpenHistory open;
    open.awaitAnnouncement();
    QVERIFY(runVornctl({"profiles", "add", "Work"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Profile “Work” added"), deadline);
    // The engine has the change, and nothing of it has been read here before the keys.
    open.change({{"PollingRate", 125}});
    for (int press = 0; press < 2; ++press) open.press(Qt::Key_Z);
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), QStringLiteral("2 changes undone"), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), QStringList{"Default"}, deadline);
    open.press(Qt::Key_Z);
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), localized("lkeyNothingToUndo"), deadline);
  }

  void two_quick_presses_undo_no_change_of_another_program_that_was_not_seen() {
    OpenHistory open;
    open.awaitAnnouncement();
    QTRY_COMPARE_WITH_TIMEOUT(open.undoButton().toolTip(), localized("lkeyNothingToUndo"), deadline);
    QVERIFY(runVornctl({"profiles", "add", "Work"}));
    open.change({{"PollingRate", 125}});
    for (int press = 0; press < 2; ++press) open.press(Qt::Key_Z);
    QTRY_VERIFY_WITH_TIMEOUT(open.line().endsWith(localized("lkeyUndoOtherBetween")), deadline);
    QCOMPARE(open.names(), (QStringList{"Default", "Work"}));
  }

  void a_change_that_another_program_has_changed_again_unseen_is_not_undone() {
    OpenHistory open;
    open.awaitAnnouncement();
    open.change({{"PollingRate", 125}});
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Polling rate of Default"), deadline);
    QVERIFY(runVornctl({"set", "PollingRate", "500"}));
    const PropertyList before = OtherClient().bundle();
    open.press(Qt::Key_Z);
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), localized("lkeyUndoOtherBetween"), deadline);
    QVERIFY(OtherClient().bundle() == before);
    // Now it is known, and comes first.
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Polling rate of Default"), deadline);
    open.press(Qt::Key_Z);
    QTRY_COMPARE_WITH_TIMEOUT(OtherClient().bundle()["Profiles"].at(0)["PollingRate"], PropertyList(125), deadline);
  }

  // What the mouse switches is no change of its own that could be undone first.
  void a_change_that_the_mouse_has_switched_since_stays_and_is_no_longer_offered() {
    OpenHistory open;
    open.awaitAnnouncement();
    QVERIFY(runVornctl({"assign", "4", "stage", "up"}));
    open.change({{"StageValue", 2}});
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Sensitivity stages of Default"), deadline);
    QVERIFY(runVornctl({"device", "click", "4"}));
    const PropertyList before = OtherClient().bundle();
    QCOMPARE(before["Profiles"].at(0)["StageValue"], PropertyList(3));
    open.press(Qt::Key_Z);
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), localized("lkeyUndoChangedSince"), deadline);
    QVERIFY(OtherClient().bundle() == before);
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Button 4 to Sensitivity Stage Up"), deadline);
  }

  // A keymap to look at is none either.
  void what_another_program_has_changed_since_stays_and_is_counted_and_the_rest_is_undone() {
    OpenHistory open;
    open.awaitAnnouncement();
    const PropertyList first = OtherClient().bundle();
    open.change({{"KeymapID", 3}, {"PollingRate", 125}});
    QTRY_VERIFY_WITH_TIMEOUT(!open.undoTip().isEmpty(), deadline);
    QVERIFY(runVornctl({"set", "KeymapID", "5"}));
    open.press(Qt::Key_Z);
    QTRY_VERIFY_WITH_TIMEOUT(open.line().startsWith(QStringLiteral("Undone: ")), deadline);
    QVERIFY2(open.line().endsWith(localized("lkeyUndoConflict")), qPrintable(open.line()));
    const PropertyList now = OtherClient().bundle();
    QCOMPARE(now["Profiles"].at(0)["KeymapID"], PropertyList(5));
    QCOMPARE(now["Profiles"].at(0)["PollingRate"], first["Profiles"].at(0)["PollingRate"]);
    QVERIFY(now["DeviceSettings"] == first["DeviceSettings"]);
  }

  void what_the_other_client_undoes_is_seen_and_its_conflict_is_told() {
    OpenHistory open;
    open.awaitAnnouncement();
    QVERIFY(runVornctl({"profiles", "add", "Work"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.names().size(), 2, deadline);
    QVERIFY(runVornctl({"undo"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), QStringList{"Default"}, deadline);
    open.press(Qt::Key_Z);
    QTRY_COMPARE_WITH_TIMEOUT(open.line(), localized("lkeyNothingToUndo"), deadline);
  }

  void the_sheet_goes_back_and_forward_again() {
    OpenHistory open;
    open.awaitAnnouncement();
    for (const char* name : {"A", "B", "C"}) QVERIFY(runVornctl({"profiles", "add", name}));
    QTRY_COMPARE_WITH_TIMEOUT(open.names().size(), 4, deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.undoTip(), QStringLiteral("Undo: Profile “C” added"), deadline);
    open.press(Qt::Key_H);
    auto* table = open.find<QTableView>("mHistoryTable");
    QCOMPARE(table->model()->rowCount(), 4);
    table->selectRow(2);
    QTest::keyClick(table, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"Default", "A"}), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(table->model()->index(0, 1).data().toString(),
                              QStringLiteral("Profile “C” added (undone)"), deadline);
    table->selectRow(0);
    QTest::keyClick(table, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"Default", "A", "B", "C"}), deadline);
  }

  void a_deleted_macro_comes_back_by_the_line_with_what_plays_it() {
    OtherClient other;
    addMacro(other, 2);
    addMacro(other, 3);
    other.assign("8", 10, 0);
    other.assign("20", 10, 1);
    OpenMacros open;
    open.window().show();
    open.awaitAnnouncement();
    auto* line = open.find<HistoryLine>("mHistoryBar");
    line->setLifetime(std::nullopt);
    const PropertyList before = other.bundle();
    open.find<QTableView>("mMacroTableView")->selectRow(0);
    open.click("mDeleteMacro");
    confirm(open.find<QMessageBox>("alert"));
    QTRY_COMPARE_WITH_TIMEOUT(line->text(), QStringLiteral("Deleted M2"), deadline);
    QCOMPARE(open.names(), QStringList{"M3"});
    QTest::mouseClick(open.find<QPushButton>("mHistoryLineButton"), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"M2", "M3"}), deadline);
    QVERIFY(other.bundle() == before);
  }

  void deleted_events_come_back_by_the_line() {
    OpenMacros open;
    open.window().show();
    open.awaitAnnouncement();
    OtherClient other;
    addMacro(other, 3);
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), QStringList{"M3"}, deadline);
    open.find<QTableView>("mMacroTableView")->selectRow(0);
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 5, deadline);
    const PropertyList before = other.bundle();
    const QStringList lines = open.lines();
    auto* line = open.find<HistoryLine>("mHistoryBar");
    line->setLifetime(std::nullopt);
    open.clickLine(0);
    QTest::keyClick(open.find("mMacroDetailsTableView"), Qt::Key_Delete);
    QTRY_VERIFY_WITH_TIMEOUT(open.lineCount() < lines.size(), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(line->text(), QStringLiteral("Deleted events of M3"), deadline);
    QVERIFY(other.bundle() != before);
    QTest::mouseClick(open.find<QPushButton>("mHistoryLineButton"), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(other.bundle() == before, deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.lines(), lines, deadline);
  }

 private:
  EngineSession mEngine;
};

SKARN_QTEST(HistoryWithEngineTest)
#include "history_with_engine_test.moc"
