// The life of a macro in the real window, with the real engine and keys typed on its virtual mouse.
#include <QFileDialog>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>

#include "e2e/OpenMacros.h"
#include "e2e/Vornctl.h"
#include "macros/MacroMenus.h"
#include "macros/MouseMacrosController.h"
#include "model/PropertyListCodec.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;

namespace {

QStringList eventLines(const QStringList& lines) {
  QStringList events;
  for (int row = 0; row < lines.size(); row += 2) events << lines[row];
  return events;
}

QStringList delayLines(const QStringList& lines) {
  QStringList delays;
  for (int row = 1; row < lines.size(); row += 2) delays << lines[row];
  return delays;
}

}  // namespace

class MacrosWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }
  void init() { mEngine.begin(); }
  void cleanup() { mEngine.end(); }

  void a_macro_is_recorded_as_it_is_typed() {
    OpenMacros open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    open.recordMacro(QStringLiteral("Combo"));
    QCOMPARE(eventLines(open.lines()), (QStringList{"Key Press A", "Key Release A", "Key Press B", "Key Release B",
                                                    "Right Button down\n", "Right Button up\n"}));
    QCOMPARE(open.macro()[keys::Sequence][keys::Events].size(), std::size_t{6});
  }

  void a_stop_keeps_the_events_whose_lines_are_still_under_way() {
    OpenMacros open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    open.addMacro(QStringLiteral("Combo"));
    open.typeMacro();
    QCOMPARE(open.lineCount(), 0);
    open.click("mRecordMacroDetails");
    QCOMPARE(open.recordTitle(), QStringLiteral("Record"));
    const QStringList events{"Key Press A",   "Key Release A",       "Key Press B",
                             "Key Release B", "Right Button down\n", "Right Button up\n"};
    QCOMPARE(eventLines(open.lines()), events);
    QCOMPARE(open.macro()[keys::Sequence][keys::Events].size(), std::size_t{6});
    // News come in their order: the batches are in when this has come.
    const QString battery = open.battery();
    QVERIFY(VirtualMouse::setBattery(5));
    QTRY_VERIFY_WITH_TIMEOUT(open.battery() != battery, deadline);
    QCOMPARE(eventLines(open.lines()), events);
    QCOMPARE(open.macro()[keys::Sequence][keys::Events].size(), std::size_t{6});
    open.find<QTableView>("mMacroTableView")->clearSelection();
    open.find<QTableView>("mMacroTableView")->selectRow(0);
    QCOMPARE(eventLines(open.lines()), events);
  }

  void another_tab_ends_a_recording_and_keeps_it() {
    OpenMacros open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    open.recordMacro(QStringLiteral("Combo"));
    open.click("mRecordMacroDetails");
    QVERIFY(VirtualMouse::type(keyboardPage, keyC));
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 3, deadline);
    open.showTab("MouseProfilesController");
    QCOMPARE(open.macro()[keys::Sequence][keys::Events].size(), std::size_t{2});
    open.showTab("MouseMacrosController");
    QCOMPARE(open.recordTitle(), QStringLiteral("Record"));
    QCOMPARE(eventLines(open.lines()), (QStringList{"Key Press C", "Key Release C"}));
  }

  void a_recorded_macro_is_edited() {
    OpenMacros open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    open.recordMacro(QStringLiteral("Combo"));
    editMacro(open);
  }

  void the_lines_and_what_is_edited_are_the_macros_in_the_row_when_another_program_deletes_one() {
    OtherClient other;
    for (int events = 1; events <= 3; ++events) addMacro(other, events);
    OpenMacros open;
    open.find<QTableView>("mMacroTableView")->selectRow(1);
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 3, deadline);
    QVERIFY(runVornctl({"macros", "delete", "M1"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"M2", "M3"}), deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 5, deadline);
    open.clickLine(4);
    open.click("mDeleteMacroDetails");
    QCOMPARE(open.lineCount(), 3);
    const PropertyList macros = other.bundle()[keys::Macros];
    QCOMPARE(macros.at(0)[keys::Sequence][keys::Events].size(), std::size_t{2});
    QCOMPARE(macros.at(1)[keys::Sequence][keys::Events].size(), std::size_t{2});
  }

  void a_recording_follows_its_macro_that_moves_up_and_is_saved() {
    OtherClient other;
    for (int events = 1; events <= 3; ++events) addMacro(other, events);
    OpenMacros open;
    open.find<QTableView>("mMacroTableView")->selectRow(2);
    open.click("mRecordMacroDetails");
    QVERIFY(VirtualMouse::type(keyboardPage, keyA));
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 3, deadline);
    QVERIFY(runVornctl({"macros", "delete", "M1"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), (QStringList{"M2", "M3"}), deadline);
    QVERIFY(VirtualMouse::type(keyboardPage, keyB));
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 7, deadline);
    open.click("mRecordMacroDetails");
    QCOMPARE(open.recordTitle(), QStringLiteral("Record"));
    QCOMPARE(open.lineCount(), 7);
    const PropertyList macros = other.bundle()[keys::Macros];
    QCOMPARE(macros.at(0)[keys::Sequence][keys::Events].size(), std::size_t{2});
    QCOMPARE(macros.at(1)[keys::Sequence][keys::Events].size(), std::size_t{4});
  }

  void a_recording_whose_macro_is_deleted_by_another_program_ends() {
    OtherClient other;
    for (int events = 1; events <= 2; ++events) addMacro(other, events);
    OpenMacros open;
    open.find<QTableView>("mMacroTableView")->selectRow(1);
    open.click("mRecordMacroDetails");
    QCOMPARE(open.recordTitle(), QStringLiteral("Stop"));
    QVERIFY(runVornctl({"macros", "delete", "M2"}));
    QTRY_COMPARE_WITH_TIMEOUT(open.recordTitle(), QStringLiteral("Record"), deadline);
    QVERIFY(open.find("mMacroTableView")->isEnabled());
    QVERIFY(open.window().findChild<QMessageBox*>(QStringLiteral("alert")) != nullptr);
    QCOMPARE(open.names(), QStringList("M1"));
  }

  void an_exported_macro_comes_back_as_it_was() {
    OpenMacros open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    open.recordMacro(QStringLiteral("Combo"));
    editMacro(open);
    const QStringList lines = open.lines();

    const vorn::engine::test::TemporaryFolder folder;
    const QString path = QString::fromStdString(folder.path("combo"));
    open.chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    open.choosePath("mMacrosSaveAsPanel", path);
    QTRY_VERIFY_WITH_TIMEOUT(!open.hasSheet("mMacrosSaveAsPanel"), deadline);
    const auto file = vorn::readPropertyListFile(folder.path("combo.SkarnMacro"));
    QVERIFY(file.has_value());
    QVERIFY(*file == open.macro().without(keys::MacroID));

    const PropertyList factory = open.setting(keys::Keys)["43"];
    assignMacro(open, "43");
    QCOMPARE(open.setting(keys::Keys)["43"][keys::Command].toInt(), 10);
    open.click("mDeleteMacro");
    QVERIFY(open.hasSheet("alert"));
    confirm(open.find<QMessageBox>("alert"));
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), QStringList(), deadline);
    QTRY_VERIFY_WITH_TIMEOUT(open.setting(keys::Keys)["43"] == factory, deadline);

    open.chooseFromGear("mSettingsMacro", macroMenuTags::Import);
    open.choosePath("mMacrosPanel", path + QStringLiteral(".SkarnMacro"));
    QTRY_COMPARE_WITH_TIMEOUT(open.names(), QStringList{"Combo"}, deadline);
    QTRY_COMPARE_WITH_TIMEOUT(open.lines(), lines, deadline);
    QVERIFY(open.macro().without(keys::MacroID) == *file);
  }

  void an_export_right_after_an_edit_holds_the_edit() {
    OpenMacros open;
    QTRY_COMPARE_WITH_TIMEOUT(open.connectivity(), QStringLiteral("usb"), deadline);
    open.recordMacro(QStringLiteral("Combo"));
    open.clickLine(4);
    open.click("mDeleteMacroDetails");
    QCOMPARE(open.lineCount(), 9);
    const vorn::engine::test::TemporaryFolder folder;
    open.chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    open.choosePath("mMacrosSaveAsPanel", QString::fromStdString(folder.path("edited")));
    const auto file = vorn::readPropertyListFile(folder.path("edited.SkarnMacro"));
    QVERIFY(file.has_value());
    QCOMPARE((*file)[keys::Sequence][keys::Events].size(), std::size_t{5});
    const QAbstractItemModel& macros = *open.find<QTableView>("mMacroTableView")->model();
    QCOMPARE(macros.index(0, 1).data().toInt(), 5);
  }

 private:
  // A delay, a key, all delays, one event less, and one key more at the end.
  static void editMacro(OpenMacros& open) {
    open.clickLine(1);
    open.chooseFromGear("mSettingsMacroDetails", macroDetailsMenuTags::Edit);
    QVERIFY(open.hasSheet("mEditDelayWindow"));
    QTest::keyClicks(open.find("mInputMacroDelay"), QStringLiteral("1234"));
    QTest::keyClick(open.find("mInputMacroDelay"), Qt::Key_Return);
    QCOMPARE(open.lines()[1], QStringLiteral("1.234 seconds delay\n"));

    open.clickLine(2);
    open.chooseFromGear("mSettingsMacroDetails", macroDetailsMenuTags::Edit);
    QVERIFY(open.hasSheet("mEditEventWindow"));
    QVERIFY(VirtualMouse::type(keyboardPage, keyZ));
    QTRY_COMPARE_WITH_TIMEOUT(open.find<QLineEdit>("mInputMacroEvent")->text(), QStringLiteral("Z"), deadline);
    open.leavePartner();
    open.click("mMacroEventEditOK");
    QCOMPARE(open.lines()[2], QStringLiteral("Key Release Z"));

    open.clickLine(1);
    open.chooseFromGear("mSettingsMacroDetails", macroDetailsMenuTags::CopyDelay);
    QCOMPARE(delayLines(open.lines()), QStringList(5, QStringLiteral("1.234 seconds delay\n")));

    open.clickLine(4);
    open.click("mDeleteMacroDetails");
    QCOMPARE(eventLines(open.lines()), (QStringList{"Key Press A", "Key Release Z", "Key Release B",
                                                    "Right Button down\n", "Right Button up\n"}));

    open.click("mAddMacroDetails");
    QVERIFY(VirtualMouse::type(keyboardPage, keyC));
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 13, deadline);
    open.click("mRecordMacroDetails");
    QCOMPARE(eventLines(open.lines()),
             (QStringList{"Key Press A", "Key Release Z", "Key Release B", "Right Button down\n", "Right Button up\n",
                          "Key Press C", "Key Release C"}));
  }

  static void assignMacro(OpenMacros& open, const char* control) {
    const PropertyList record = PropertyList::dictionary({{keys::Command, 10}, {keys::Param1, 0}, {keys::Param2, 1}});
    const PropertyList assigned = open.setting(keys::Keys).with(control, record);
    open.hub().updateProfileWithID(0, PropertyList::dictionary({{keys::Keys, assigned}}));
  }

  EngineSession mEngine;
};

SKARN_QTEST(MacrosWithEngineTest)
#include "macros_with_engine_test.moc"
