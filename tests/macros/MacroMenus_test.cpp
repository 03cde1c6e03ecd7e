// The menus of the Macros tab: which entries they have, and when each can be chosen.
#include "macros/MacroMenus.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMimeData>
#include <QPointer>

#include "macros/MacrosFixture.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// Those that edit several lines at once have tests of their own.
QList<QAction*> basicItems(const QMenu& menu) {
  QList<QAction*> items;
  for (QAction* item : taggedItems(menu)) {
    if (tagOf(*item) < macroDetailsMenuTags::Cut) items << item;
  }
  return items;
}

QStringList titlesOf(const QMenu& menu, bool onlyEnabled) {
  QStringList titles;
  for (const QAction* item : basicItems(menu)) {
    if (!onlyEnabled || item->isEnabled()) titles << titleOf(*item);
  }
  return titles;
}

QStringList texts(const QStringList& keys) {
  QStringList found;
  for (const QString& key : keys) found << localized(key.toLatin1());
  return found;
}

// What the entries say in their tooltips; an action without one falls back on its title.
QStringList reasonsOf(const QMenu& menu) {
  QStringList reasons;
  for (const QAction* item : basicItems(menu)) {
    reasons << (item->toolTip() == QAction(item->text()).toolTip() ? QString() : item->toolTip());
  }
  return reasons;
}

// Counts how often it is asked for its types, which can be a question to another program.
class AskedMimeData : public QMimeData {
 public:
  QStringList formats() const override {
    ++asked;
    return QMimeData::formats();
  }
  mutable int asked = 0;
};

const QStringList macroKeys{"lkeyRename", "lkeyNew", "lkeyImport", "lkeyExport", "lkeyDelete", "lkeyDuplicateMacro"};
const QStringList detailsKeys{"lkeyRecord",          "lkeyEdit",      "lkeyDeleteEvent",
                              "lkeyDeleteAllEvents", "lkeyCopyDelay", "lkeyNoDelay"};

QStringList gearEntries(MacrosFixture& fixture, const char* gear) {
  auto* button = fixture.find<PullDownButton>(gear);
  button->openMenu();
  const QStringList titles = titlesOf(*button->menu(), true);
  button->menu()->close();
  return titles;
}

QStringList rightClickEntries(MacrosFixture& fixture, QTableView* table, int row = 0) {
  QMenu* menu = fixture.rightClick(table, row);
  if (menu == nullptr) return {QStringLiteral("(no menu)")};
  const QStringList titles = titlesOf(*menu, true);
  menu->close();
  return titles;
}

// Which of the details entries can be chosen; the gear button does not matter here.
QStringList validDetails(MacrosFixture& fixture) {
  QMenu menu;
  fixture.tab->fillMacroDetailsMenu(menu);
  return titlesOf(menu, true);
}

}  // namespace

class MacroMenusTest : public QObject {
  Q_OBJECT

 private slots:
  void bothMenusOfATableHaveTheSameEntries_data() {
    QTest::addColumn<QByteArray>("gear");
    QTest::addColumn<bool>("isDetails");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("keys");
    QTest::newRow("macros") << QByteArray("mSettingsMacro") << false << "clickMacroSettingsMenuItem" << macroKeys;
    QTest::newRow("lines") << QByteArray("mSettingsMacroDetails") << true << "clickMacroDetailsSettingsMenuItem"
                           << detailsKeys;
  }
  void bothMenusOfATableHaveTheSameEntries() {
    QFETCH(QByteArray, gear);
    QFETCH(bool, isDetails);
    QFETCH(QString, operation);
    QFETCH(QStringList, keys);
    MacrosFixture fixture;
    fixture.selectMacro(0);
    QMenu* rightClicked = fixture.rightClick(isDetails ? fixture.lines() : fixture.macros());
    QVERIFY(rightClicked != nullptr);
    for (const QMenu* menu : {fixture.find<PullDownButton>(gear.constData())->menu(), rightClicked}) {
      QCOMPARE(titlesOf(*menu, false), texts(keys));
      int tag = 0;
      for (const QAction* item : basicItems(*menu)) {
        QCOMPARE(item->objectName(), operation);
        QCOMPARE(tagOf(*item), ++tag);
      }
    }
    rightClicked->close();
  }

  void withoutAMacroOnlyNewAndImportAreOffered() {
    MacrosFixture fixture;
    const QStringList expected = texts({"lkeyNew", "lkeyImport"});
    QCOMPARE(gearEntries(fixture, "mSettingsMacro"), expected);
    QCOMPARE(rightClickEntries(fixture, fixture.macros(), -1), expected);
    QCOMPARE(validDetails(fixture), QStringList());
    QMenu details;
    fixture.tab->fillMacroDetailsMenu(details);
    for (const QAction* item : taggedItems(details)) {
      QVERIFY2(!item->isEnabled(), qPrintable(titleOf(*item)));
      QCOMPARE(item->toolTip(), QStringLiteral("Select a macro first"));
    }
  }

  void withAMacroAllMacroEntriesAreOffered() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    QCOMPARE(gearEntries(fixture, "mSettingsMacro"), texts(macroKeys));
    QCOMPARE(rightClickEntries(fixture, fixture.macros(), 1), texts(macroKeys));
  }

  void theSelectedLineDecidesWhichDetailsEntriesAreOffered_data() {
    QTest::addColumn<int>("macro");
    QTest::addColumn<int>("line");
    QTest::addColumn<QStringList>("keys");
    QTest::newRow("no lines") << 2 << -1 << QStringList{"lkeyRecord"};
    QTest::newRow("no line selected") << 0 << -1 << QStringList{"lkeyRecord", "lkeyDeleteAllEvents", "lkeyNoDelay"};
    const QStringList event{"lkeyRecord", "lkeyEdit", "lkeyDeleteEvent", "lkeyDeleteAllEvents", "lkeyNoDelay"};
    QTest::newRow("first event") << 0 << 0 << event;
    QTest::newRow("first delay") << 0 << 1 << detailsKeys;
    QTest::newRow("last delay") << 0 << 3 << detailsKeys;
    QTest::newRow("last event") << 0 << 4 << event;
  }
  void theSelectedLineDecidesWhichDetailsEntriesAreOffered() {
    QFETCH(int, macro);
    QFETCH(int, line);
    QFETCH(QStringList, keys);
    MacrosFixture fixture;
    fixture.selectMacro(macro);
    if (line >= 0) fixture.clickRow(fixture.lines(), line);
    QCOMPARE(gearEntries(fixture, "mSettingsMacroDetails"), texts(keys));
    QCOMPARE(rightClickEntries(fixture, fixture.lines(), line), texts(keys));
  }

  void openingAMenuAsksTheClipboardOnce() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.clickRow(fixture.lines(), 0);
    auto* data = new AskedMimeData;
    QApplication::clipboard()->setMimeData(data);
    data->asked = 0;
    gearEntries(fixture, "mSettingsMacroDetails");
    QCOMPARE(data->asked, 1);
    rightClickEntries(fixture, fixture.lines());
    QCOMPARE(data->asked, 2);
    QApplication::clipboard()->clear();
  }

  void typingATextBeginsTheGroupOfWhatIsInserted() {
    MacrosFixture fixture;
    QStringList entries;
    for (const QAction* action : fixture.find<PullDownButton>("mSettingsMacroDetails")->menu()->actions())
      entries << (action->isSeparator() ? QStringLiteral("-") : titleOf(*action));
    QCOMPARE(entries.mid(entries.indexOf(localized("lkeyTypeText")) - 1),
             (QStringList{"-", localized("lkeyTypeText"), localized("lkeyInsertBefore"), localized("lkeyInsertAfter"),
                          "-", localized("lkeyPlay")}));
  }

  void aDisabledEntrySaysWhy_data() {
    QTest::addColumn<int>("macro");
    QTest::addColumn<int>("line");
    QTest::addColumn<QStringList>("reasons");  // of the six details entries
    const QString macro = "Select a macro first", events = "Record to add events.",
                  line = "Select an event or a delay first", delay = "Select a delay first";
    QTest::newRow("no macro") << -1 << -1 << QStringList(6, macro);
    QTest::newRow("no lines") << 2 << -1 << QStringList{"", events, events, events, events, events};
    QTest::newRow("no line selected") << 0 << -1 << QStringList{"", line, line, "", line, ""};
    QTest::newRow("an event") << 0 << 2 << QStringList{"", "", "", "", delay, ""};
    QTest::newRow("a delay") << 0 << 1 << QStringList(6, "");
  }
  void aDisabledEntrySaysWhy() {
    QFETCH(int, macro);
    QFETCH(int, line);
    QFETCH(QStringList, reasons);
    MacrosFixture fixture;
    if (macro >= 0) fixture.selectMacro(macro);
    if (line >= 0) fixture.clickRow(fixture.lines(), line);
    QMenu details, macros;
    fixture.tab->fillMacroDetailsMenu(details);
    fixture.tab->fillMacroMenu(macros);
    QCOMPARE(reasonsOf(details), reasons);
    const QString rename = macro < 0 ? QStringLiteral("Select a macro first") : QString();
    QCOMPARE(reasonsOf(macros), (QStringList{rename, "", "", rename, rename, rename}));
  }

  void duringARecordingTheDetailsEntriesSayThatItRuns() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mAddMacroDetails");
    QMenu details;
    fixture.tab->fillMacroDetailsMenu(details);
    QCOMPARE(reasonsOf(details), QStringList{""} + QStringList(5, "Stop the recording first"));
  }

  // Beyond the reach of the requests for single events, the whole sequence is sent.
  void everyLineCanBeEdited_data() {
    QTest::addColumn<int>("macro");
    QTest::addColumn<int>("line");
    QTest::newRow("the last event within reach") << 0 << 254;
    QTest::newRow("the first event beyond") << 0 << 256;
    QTest::newRow("a delay beyond") << 0 << 257;
    QTest::newRow("an event of a macro beyond") << 256 << 0;
  }
  void everyLineCanBeEdited() {
    QFETCH(int, macro);
    QFETCH(int, line);
    QStringList names;
    for (int row = 0; row <= 256; ++row) names << QStringLiteral("Macro %1").arg(row);
    MacrosFixture fixture(names);
    fixture.delegate.lines = {{macro, linesOfEvents(140)}};
    fixture.selectMacro(macro);
    fixture.clickRow(fixture.lines(), line);
    QMenu* rightClicked = fixture.rightClick(fixture.lines(), line);
    QVERIFY(rightClicked != nullptr);
    QVERIFY(MacrosFixture::itemOf(*rightClicked, 2)->isEnabled());
    QVERIFY(rightClicked->toolTipsVisible());
    rightClicked->close();
    fixture.chooseFromGear("mSettingsMacroDetails", 2);
    QVERIFY(fixture.find(line % 2 == 1 ? "mEditDelayWindow" : "mEditEventWindow")->isVisible());
  }

  void aRightClickOnARowSelectsItAndItsMenuActsOnIt() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    QMenu* macroMenu = fixture.rightClick(fixture.macros(), 1);
    QVERIFY(macroMenu != nullptr);
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 1);
    QVERIFY(fixture.tab->mMacroDetailsArray() == linesOfEvents(1));
    MacrosFixture::itemOf(*macroMenu, 5)->trigger();
    macroMenu->close();
    QCOMPARE(fixture.alert()->text(), QStringLiteral("Delete Macro “Greeting”?"));
    confirm(fixture.alert());
    QTRY_VERIFY(fixture.alert() == nullptr);
    QCOMPARE(fixture.delegate.take().mid(0, 2),
             (QStringList{"getMacroDetailsForMacroAtIndex(1)", "deleteMacroAtIndex(1)"}));
  }

  void aRightClickOnALineSelectsItAndItsMenuActsOnIt() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.clickRow(fixture.lines(), 1);
    QMenu* menu = fixture.rightClick(fixture.lines(), 4);
    QVERIFY(menu != nullptr);
    QCOMPARE(MacrosFixture::selectedRow(fixture.lines()), 4);
    MacrosFixture::itemOf(*menu, 3)->trigger();
    menu->close();
    QCOMPARE(fixture.delegate.take(), (QStringList{"removeEventAtIndex(4, 0)", "getMacroDetailsForMacroAtIndex(0)"}));
  }

  void aRightClickOnTheSelectedRowOrBelowTheRowsAsksForNothing() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    QCOMPARE(rightClickEntries(fixture, fixture.macros(), 1), texts(macroKeys));
    for (QTableView* table : {fixture.macros(), fixture.lines()}) {
      QMenu* menu = fixture.rightClick(table, -1);
      QVERIFY(menu != nullptr);
      menu->close();
    }
    QCOMPARE(MacrosFixture::selectedRow(fixture.macros()), 1);
    QCOMPARE(MacrosFixture::selectedRow(fixture.lines()), -1);
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void theMenuKeyOpensTheMenuOnce() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    for (QTableView* table : {fixture.macros(), fixture.lines()}) {
      QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
      QApplication::sendEvent(table, &key);
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      QVERIFY(menu != nullptr);
      menu->close();
      // A right click has opened it with its press.
      QContextMenuEvent mouse(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
      QApplication::sendEvent(table->viewport(), &mouse);
      QVERIFY(QApplication::activePopupWidget() == nullptr);
    }
  }

  void aDisabledTableShowsNoMenu() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.tab->enableControlsState(false);
    QCOMPARE(rightClickEntries(fixture, fixture.macros()), QStringList{"(no menu)"});
    QCOMPARE(rightClickEntries(fixture, fixture.lines()), QStringList{"(no menu)"});
  }

  void duringARecordingTheLinesCanOnlyBeStopped() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    fixture.click("mAddMacroDetails");
    fixture.clickRow(fixture.lines(), 1);
    QCOMPARE(rightClickEntries(fixture, fixture.macros()), QStringList{"(no menu)"});
    QMenu* menu = fixture.rightClick(fixture.lines());
    QVERIFY(menu != nullptr);
    QCOMPARE(titlesOf(*menu, true), texts({"lkeyRecord"}));
    fixture.delegate.take();
    MacrosFixture::itemOf(*menu, 1)->trigger();
    menu->close();
    QCOMPARE(fixture.delegate.take().constFirst(), QStringLiteral("stopMacroRecording()"));
  }

  void theEntriesOfTheMacroMenuCallTheirHandlers() {
    MacrosFixture fixture;
    fixture.selectMacro(1);
    fixture.chooseFromGear("mSettingsMacro", 1);
    QCOMPARE(fixture.tab->mEditedRow(), 1);
    fixture.chooseFromGear("mSettingsMacro", 2);
    QCOMPARE(fixture.delegate.take(), (QStringList{"renameMacroAtIndex(1, Greeting)", added("Untitled Macro"),
                                                   "getMacroDetailsForMacroAtIndex(3)"}));
    fixture.chooseFromGear("mSettingsMacro", 3);
    QVERIFY(fixture.find("mMacrosPanel")->isVisible());
    fixture.find("mMacrosPanel")->close();
    fixture.chooseFromGear("mSettingsMacro", 4);
    QVERIFY(fixture.find("mMacrosSaveAsPanel")->isVisible());
    fixture.find("mMacrosSaveAsPanel")->close();
    fixture.chooseFromGear("mSettingsMacro", 5);
    QVERIFY(fixture.find("alert")->isVisible());
  }

  void recordInTheMenuPressesTheRecordButton() {
    MacrosFixture fixture;
    fixture.selectMacro(2);
    fixture.chooseFromGear("mSettingsMacroDetails", 1);
    QCOMPARE(fixture.delegate.take(), QStringList{"startMacroRecording(NO, 2)"});
    QCOMPARE(fixture.recordTitle(), QStringLiteral("Stop"));
  }

  void tagsThatNoEntryHasDoNothing() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    for (const int tag : {-1, 0, 7, 100}) {
      fixture.tab->clickMacroSettingsMenuItem(tag);
      fixture.tab->clickMacroDetailsSettingsMenuItem(tag);
    }
    QCOMPARE(fixture.delegate.take(), QStringList());
  }

  void anItemOfNeitherMenuIsNotValid() {
    MacrosFixture fixture;
    fixture.selectMacro(0);
    QVERIFY(!fixture.tab->validateMenuItem(QAction(QStringLiteral("Somersault"))));
    QVERIFY(fixture.tab->validateMenuItem(QAction(localized("lkeyRename"))));
  }

  void anOpenMenuClosesWhenTheMacrosAreOthersAndNotForOtherNews_data() {
    QTest::addColumn<bool>("isGear");
    QTest::newRow("the gear's") << true;
    QTest::newRow("the right click's") << false;
  }
  void anOpenMenuClosesWhenTheMacrosAreOthersAndNotForOtherNews() {
    QFETCH(bool, isGear);
    MacrosFixture fixture;
    fixture.selectMacro(1);
    auto* gear = fixture.find<PullDownButton>("mSettingsMacroDetails");
    if (isGear) gear->openMenu();
    const QPointer<QMenu> menu = isGear ? gear->menu() : fixture.rightClick(fixture.macros(), 1);
    QVERIFY(menu && menu->isVisible());
    fixture.delegate.take();
    fixture.tab->setMMacrosSettingsArray(fixture.tab->mMacrosSettingsArray());
    fixture.tab->refreshTableDisplay();
    QVERIFY(menu && menu->isVisible());
    fixture.tab->setMMacrosSettingsArray(macrosNamed({"Another"}));
    QVERIFY(!menu || !menu->isVisible());
  }
};

SKARN_QTEST(MacroMenusTest)
#include "MacroMenus_test.moc"
