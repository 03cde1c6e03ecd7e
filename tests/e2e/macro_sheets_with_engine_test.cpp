// What a sheet, an alert or a name on the Macros tab is for, while other programs change the same macros; and macros
// that the engine does not take.
#include <QCheckBox>

#include "e2e/OpenMacros.h"
#include "e2e/Vornctl.h"
#include "macros/MacroMenus.h"
#include "model/PropertyListCodec.h"
#include "platform/Localization.h"
#include "support/ChildProcess.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"
#include "widgets/Notice.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;
using vorn::MessageID;
using vorn::PropertyList;
using vorn::test::VirtualMouse;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;

namespace {

// As a person does it in a terminal.
void deleteMacro(const char* name) {
  QVERIFY(runVornctl({"macros", "delete", name}));
}

// With three macros, M1 to M3, of which one is selected.
class ThreeMacros : public OpenMacros {
 public:
  explicit ThreeMacros(int selected) {
    awaitAnnouncement();
    find<QTableView>("mMacroTableView")->selectRow(selected);
  }
  void awaitNames(const QStringList& expected) { QTRY_COMPARE_WITH_TIMEOUT(names(), expected, deadline); }
  void edit(int line) {
    clickLine(line);
    chooseFromGear("mSettingsMacroDetails", macroDetailsMenuTags::Edit);
  }
  QMessageBox* alert() {
    for (auto* shown : window().findChildren<QMessageBox*>(QStringLiteral("alert"))) {
      if (shown->isVisible()) return shown;
    }
    return nullptr;
  }
  QLineEdit* editor() {
    for (auto* field : find("mMacroTableView")->findChildren<QLineEdit*>()) {
      if (field->isVisible()) return field;
    }
    return nullptr;
  }
};

}  // namespace

class MacroSheetsWithEngineTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }
  void init() {
    mEngine.begin();
    OtherClient other;
    for (int events = 1; events <= 3; ++events) addMacro(other, events);
  }
  void cleanup() { mEngine.end(); }

  void a_delay_goes_to_the_macro_that_its_sheet_was_opened_for() {
    OtherClient other;
    ThreeMacros open(2);
    open.edit(3);
    deleteMacro("M1");
    open.awaitNames({"M2", "M3"});
    QVERIFY(open.hasSheet("mEditDelayWindow"));
    QTest::keyClicks(open.find("mInputMacroDelay"), QStringLiteral("1234"));
    open.click("mMacroDelayOK");
    QCOMPARE(open.lines()[3], QStringLiteral("1.234 seconds delay\n"));
    const PropertyList macros = other.bundle()[keys::Macros];
    QCOMPARE(events(macros.at(1)).at(2)[keys::Delay].toInt(), 1234);
    QCOMPARE(events(macros.at(0)).at(1)[keys::Delay].toInt(), 20);
  }

  void a_caught_key_goes_to_the_line_that_its_sheet_was_opened_for() {
    OtherClient other;
    ThreeMacros open(2);
    open.edit(4);
    // The first event goes, and the sheet's line moves up.
    other.ask(MessageID::RemoveMacroEvent,
              PropertyList::dictionary({{requestKeys::MacroID, 2}, {requestKeys::MacroEventTableIndex, 0}}));
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 3, deadline);
    QVERIFY(open.hasSheet("mEditEventWindow"));
    QVERIFY(VirtualMouse::type(keyboardPage, keyZ));
    QTRY_COMPARE_WITH_TIMEOUT(open.find<QLineEdit>("mInputMacroEvent")->text(), QStringLiteral("Z"), deadline);
    open.click("mMacroEventEditOK");
    QCOMPARE(open.lines(), (QStringList{"Key Press B", "0.020 seconds delay\n", "Key Press Z"}));
  }

  void a_sheet_whose_macro_another_program_deletes_closes_and_says_so_data() {
    QTest::addColumn<int>("line");
    QTest::newRow("a delay") << 1;
    QTest::newRow("an event") << 2;
  }
  void a_sheet_whose_macro_another_program_deletes_closes_and_says_so() {
    QFETCH(int, line);
    OtherClient other;
    ThreeMacros open(1);
    open.edit(line);
    deleteMacro("M2");
    QTRY_VERIFY_WITH_TIMEOUT(open.alert() != nullptr, deadline);
    QCOMPARE(open.alert()->text(), QStringLiteral("“M2” is no longer there"));
    QVERIFY(!open.hasSheet("mEditDelayWindow") && !open.hasSheet("mEditEventWindow"));
    QCOMPARE(open.recordTitle(), QStringLiteral("Record"));
    QCOMPARE(events(other.bundle()[keys::Macros].at(1)).size(), std::size_t{3});
  }

  void all_events_go_from_the_macro_that_was_asked_about() {
    OtherClient other;
    ThreeMacros open(2);
    open.chooseFromGear("mSettingsMacroDetails", macroDetailsMenuTags::DeleteAllEvents);
    deleteMacro("M1");
    open.awaitNames({"M2", "M3"});
    confirm(open.alert());
    QTRY_COMPARE_WITH_TIMEOUT(open.lineCount(), 0, deadline);
    const PropertyList macros = other.bundle()[keys::Macros];
    QCOMPARE(events(macros.at(0)).size(), std::size_t{2});
    QCOMPARE(events(macros.at(1)).size(), std::size_t{0});
  }

  void a_typed_name_goes_to_the_macro_that_it_was_begun_for() {
    OtherClient other;
    ThreeMacros open(2);
    open.chooseFromGear("mSettingsMacro", macroMenuTags::Rename);
    QTest::keyClicks(open.editor(), QStringLiteral("Dash"));
    deleteMacro("M1");
    open.awaitNames({"M2", "M3"});
    QVERIFY(open.editor() != nullptr);
    QCOMPARE(open.editor()->text(), QStringLiteral("Dash"));
    QTest::keyClick(open.editor(), Qt::Key_Return);
    open.awaitNames({"M2", "Dash"});
    QCOMPARE(QString::fromStdString(other.bundle()[keys::Macros].at(1)[keys::MacroName].toString()),
             QStringLiteral("Dash"));
  }

  void a_press_and_its_release_change_together_data() {
    QTest::addColumn<int>("line");
    QTest::newRow("the press is edited") << 0;
    QTest::newRow("the release is edited") << 2;
  }
  void a_press_and_its_release_change_together() {
    QFETCH(int, line);
    ThreeMacros open(0);
    open.recordMacro(QStringLiteral("Combo"));
    open.edit(line);
    QVERIFY(open.find<QCheckBox>("mChangesPartner")->isChecked());
    QVERIFY(VirtualMouse::type(keyboardPage, keyZ));
    QTRY_COMPARE_WITH_TIMEOUT(open.find<QLineEdit>("mInputMacroEvent")->text(), QStringLiteral("Z"), deadline);
    open.click("mMacroEventEditOK");
    QCOMPARE(open.lines().value(0), QStringLiteral("Key Press Z"));
    QCOMPARE(open.lines().value(2), QStringLiteral("Key Release Z"));
    QCOMPARE(open.requests(MessageID::UpdateMacroEvent), 2);
  }

  void batches_that_wait_at_a_stop_are_shown_once() {
    ThreeMacros open(0);
    vorn::test::ChildProcess monitor({VORNCTL_PROGRAM, "monitor"});
    const auto tells = [&monitor](const char* beginning) {
      return monitor.waitForLine([&](const std::string& line) { return line.starts_with(beginning); }).has_value();
    };
    QVERIFY(tells("listening"));
    open.click("mRecordMacroDetails");
    // The window does nothing until the engine has sent two.
    for (const int key : {keyA, keyB}) {
      QVERIFY(VirtualMouse::type(keyboardPage, key));
      QVERIFY(tells("MacroSequence273"));
    }
    open.click("mRecordMacroDetails");
    QCOMPARE(open.lineCount(), 7);
    const QStringList lines = open.lines();
    // News come in their order: the batches are in when this has come.
    const QString battery = open.battery();
    QVERIFY(VirtualMouse::setBattery(5));
    QTRY_VERIFY_WITH_TIMEOUT(open.battery() != battery, deadline);
    QCOMPARE(open.lines(), lines);
  }

  void a_macro_that_cannot_be_saved_is_told_and_leaves_no_row() {
    ThreeMacros open(1);
    mEngine.takeDisk();
    open.click("mAddMacro");
    QVERIFY(open.alert() != nullptr);
    QCOMPARE(open.alert()->text(), QStringLiteral("“Untitled Macro” could not be added"));
    QCOMPARE(open.alert()->informativeText(), localized("lkeyEngineDidNotSave"));
    QCOMPARE(open.names(), (QStringList{"M1", "M2", "M3"}));
    QVERIFY(open.editor() == nullptr);
    QCOMPARE(open.lineCount(), 3);
  }

  void an_import_that_the_disk_does_not_take_is_told_and_leaves_no_row() {
    ThreeMacros open(1);
    const vorn::engine::test::TemporaryFolder folder;
    open.chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    open.choosePath("mMacrosSaveAsPanel", QString::fromStdString(folder.path("kept")));
    mEngine.takeDisk();
    open.chooseFromGear("mSettingsMacro", macroMenuTags::Import);
    open.choosePath("mMacrosPanel", QString::fromStdString(folder.path("kept.SkarnMacro")));
    QTRY_VERIFY(open.alert() != nullptr);
    QCOMPARE(open.alert()->text(), QStringLiteral("“kept.SkarnMacro” could not be imported"));
    QCOMPARE(open.alert()->informativeText(), localized("lkeyEngineDidNotSave"));
    QCOMPARE(open.names(), (QStringList{"M1", "M2", "M3"}));
    QCOMPARE(open.lineCount(), 3);
    QCOMPARE(OtherClient().bundle()[keys::Macros].size(), std::size_t{3});
  }

  void a_right_click_selects_its_row_and_its_menu_acts_on_it() {
    ThreeMacros open(0);
    QMenu* ofMacro = open.rightClick("mMacroTableView", 2);
    QVERIFY(ofMacro != nullptr);
    ofMacro->close();
    QCOMPARE(open.lineCount(), 5);
    QMenu* ofLine = open.rightClick("mMacroDetailsTableView", 2);
    QVERIFY(ofLine != nullptr);
    OpenMacros::chooseIn(*ofLine, macroDetailsMenuTags::DeleteEvent);
    QCOMPARE(open.lines(), (QStringList{"Key Press A", "0.020 seconds delay\n", "Key Press C"}));
    OpenMacros::chooseIn(*open.rightClick("mMacroTableView", 1), macroMenuTags::Delete);
    QCOMPARE(open.alert()->text(), QStringLiteral("Delete Macro “M2”?"));
    confirm(open.alert());
    open.awaitNames({"M1", "M3"});
  }

  void an_export_without_an_engine_writes_what_is_shown_at_once() {
    ThreeMacros open(2);
    const PropertyList shown = open.macro(2);
    const int loads = open.requests(MessageID::GetAllSettings);
    mEngine.kill();
    const vorn::engine::test::TemporaryFolder folder;
    open.chooseFromGear("mSettingsMacro", macroMenuTags::Export);
    open.choosePath("mMacrosSaveAsPanel", QString::fromStdString(folder.path("shown")));
    const auto file = vorn::readPropertyListFile(folder.path("shown.SkarnMacro"));
    QVERIFY(file.has_value());
    QVERIFY(*file == shown.without(keys::MacroID));
    QCOMPARE(open.requests(MessageID::GetAllSettings), loads);
    QCOMPARE(open.find<Notice>("mMacroNotice")->text(),
             QStringLiteral("Exported to %1").arg(QString::fromStdString(folder.path("shown.SkarnMacro"))));
  }

 private:
  static PropertyList events(const PropertyList& macro) { return macro[keys::Sequence][keys::Events]; }

  EngineSession mEngine;
};

SKARN_QTEST(MacroSheetsWithEngineTest)
#include "macro_sheets_with_engine_test.moc"
