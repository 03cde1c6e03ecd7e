// The Macros tab.
#include <QItemSelectionModel>
#include <QLabel>
#include <QTableView>
#include <QTest>

#include "SampleSettings.h"
#include "macros/MouseMacrosController.h"
#include "platform/Localization.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// Every cell as text; a check state as [x] or [ ].
QStringList rowsOf(const QTableView& table) {
  QStringList rows;
  const QAbstractItemModel& model = *table.model();
  for (int row = 0; row < model.rowCount(); ++row) {
    QStringList cells;
    for (int column = 0; column < model.columnCount(); ++column) {
      const QModelIndex index = model.index(row, column);
      const QVariant check = index.data(Qt::CheckStateRole);
      cells << (check.isValid() ? (check.toInt() == Qt::Checked ? QStringLiteral("[x]") : QStringLiteral("[ ]"))
                                : index.data().toString());
    }
    rows << cells.join(QLatin1String(" | "));
  }
  return rows;
}

int selectedRow(const QTableView& table) {
  const QModelIndexList rows = table.selectionModel()->selectedRows();
  return rows.size() == 1 ? rows.constFirst().row() : -1;
}

class RecordingMacroDelegate : public MacroControllerDelegate {
 public:
  explicit RecordingMacroDelegate(MouseMacrosController& answering) : tab(answering) {}

  void addMacroWithSettings(const PropertyList&) override { ++otherCalls; }
  void deleteMacroAtIndex(int) override { ++otherCalls; }
  void renameMacroAtIndex(int, std::string_view) override { ++otherCalls; }
  PropertyList macroAtIndex(int macro) override { return tab.mMacrosSettingsArray().at(macro); }
  void getMacroDetailsForMacroAtIndex(int macro) override {
    asked << macro;
    if (macro == 0) tab.updateSelectedMacroWithMacroDetails(macroLines());
  }
  PropertyList getSequenceDetails(std::uint8_t, std::uint8_t) override { return {}; }
  void updateSequenceInfo(std::uint8_t, std::uint8_t, const PropertyList&) override { ++otherCalls; }
  void removeEventAtIndex(int, int) override { ++otherCalls; }
  void removeAllEventsForMacroAtIndex(int) override { ++otherCalls; }
  void setAllEventsDelay(int, int, bool) override { ++otherCalls; }
  void setNewDelay(int, int, int) override { ++otherCalls; }
  void startMacroRecording(bool, int) override { ++otherCalls; }
  void stopMacroRecording() override { ++otherCalls; }
  void saveRecordedEventsForMacroAtIndex(int, bool) override { ++otherCalls; }
  void startEditHID() override { ++otherCalls; }
  void stopSingleKeyRecording() override { ++otherCalls; }

  MouseMacrosController& tab;
  QList<int> asked;
  int otherCalls = 0;
};

bool isShown(const QWidget& page, const char* name) {
  const auto* widget = page.findChild<QWidget*>(QLatin1String(name));
  return widget != nullptr && widget->isVisibleTo(&page);
}

}  // namespace

class TablesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void withoutADeviceTheTablesAreDisabledAndSayWhy() {
    MouseMacrosController macrosTab;
    for (const bool enabled : {false, true}) {
      macrosTab.enableControlsState(enabled);
      QCOMPARE(macrosTab.mMacroTableView()->isEnabled(), enabled);
      QCOMPARE(macrosTab.mMacroDetailsTableView()->isEnabled(), enabled);
      const QString why = enabled ? QString() : QStringLiteral("No mouse connected");
      QCOMPARE(macrosTab.toolTip(), why);
    }
  }

  void theMacrosAreListedWithTheirEvents() {
    MouseMacrosController tab;
    QCOMPARE(tab.objectName(), QStringLiteral("MouseMacrosController"));
    tab.setMMacrosSettingsArray(macros());
    tab.refreshTableDisplay();
    QCOMPARE(tab.mMacroTableView()->objectName(), QStringLiteral("mMacroTableView"));
    QCOMPARE(rowsOf(*tab.mMacroTableView()),
             (QStringList{"Fireball | 2", "Build order, first two minutes, second base | 0", "Greeting | 3"}));
    QVERIFY(isShown(tab, "mMacroTableView"));
    QVERIFY(!isShown(tab, "mNoMacrosView"));
  }

  void withoutMacrosTheTabSaysSo() {
    MouseMacrosController tab;
    QVERIFY(isShown(tab, "mNoMacrosView"));
    QVERIFY(!isShown(tab, "mMacroTableView"));
    tab.setMMacrosSettingsArray(PropertyList("no array"));
    tab.updateUISettings();
    QVERIFY(isShown(tab, "mNoMacrosView"));
    QCOMPARE(rowsOf(*tab.mMacroTableView()), QStringList());
  }

  void hostileMacrosShowEmptyCells() {
    MouseMacrosController tab;
    tab.setMMacrosSettingsArray(PropertyList::array(
        {5, PropertyList::dictionary({{keys::MacroName, PropertyList::array()}, {keys::Sequence, "x"}}),
         macro("Mixed", {macroEvent(1, 4), "junk", macroEvent(0, 4)}),
         PropertyList::dictionary(
             {{keys::MacroName, "Array"}, {keys::Sequence, PropertyList::array({macroEvent(1, 4)})}})}));
    tab.refreshTableDisplay();
    QCOMPARE(rowsOf(*tab.mMacroTableView()), (QStringList{" | ", " | 0", "Mixed | 2", "Array | 0"}));
  }

  void selectingAMacroAsksForItsLinesAndShowsThem() {
    MouseMacrosController tab;
    RecordingMacroDelegate delegate(tab);
    tab.setMMacroDelegate(&delegate);
    tab.setMMacrosSettingsArray(macros());
    tab.refreshTableDisplay();
    QVERIFY(isShown(tab, "mNoMacroSelectedLabel"));
    QVERIFY(!isShown(tab, "mMacroDetailsTableView"));
    tab.mMacroTableView()->selectRow(0);
    QCOMPARE(delegate.asked, QList<int>{0});
    QVERIFY(isShown(tab, "mMacroDetailsTableView"));
    QVERIFY(!isShown(tab, "mNoMacroSelectedLabel"));
    QCOMPARE(rowsOf(*tab.mMacroDetailsTableView()),
             (QStringList{"Key Down F\n", "0.020 seconds delay\n", "Key Up F\n"}));
    QVERIFY(tab.mMacroDetailsArray() == macroLines());
    // The next macro's lines do not come: nothing of the first one stays.
    tab.mMacroTableView()->selectRow(2);
    QCOMPARE(delegate.asked, (QList<int>{0, 2}));
    QCOMPARE(rowsOf(*tab.mMacroDetailsTableView()), QStringList());
    QCOMPARE(delegate.otherCalls, 0);
    QVERIFY(!tab.mIsRecording());
  }

  void aRefreshKeepsTheSelectedMacroAndAsksNothing() {
    MouseMacrosController tab;
    RecordingMacroDelegate delegate(tab);
    tab.setMMacroDelegate(&delegate);
    tab.setMMacrosSettingsArray(macros());
    tab.refreshTableDisplay();
    tab.mMacroTableView()->selectRow(0);
    tab.refreshTableDisplay();
    QCOMPARE(selectedRow(*tab.mMacroTableView()), 0);
    QCOMPARE(rowsOf(*tab.mMacroDetailsTableView()).size(), 3);
    QCOMPARE(delegate.asked, QList<int>{0});
    tab.setMMacrosSettingsArray(PropertyList::array());
    tab.refreshTableDisplay();
    QCOMPARE(rowsOf(*tab.mMacroDetailsTableView()), QStringList());
    QCOMPARE(delegate.asked, QList<int>{0});
  }

  void hostileLinesShowEmptyRows() {
    MouseMacrosController tab;
    tab.updateSelectedMacroWithMacroDetails(PropertyList("text"));
    QCOMPARE(rowsOf(*tab.mMacroDetailsTableView()), QStringList());
    tab.updateSelectedMacroWithMacroDetails(PropertyList::array({"Key Down A\n", 7, PropertyList()}));
    QCOMPARE(rowsOf(*tab.mMacroDetailsTableView()), (QStringList{"Key Down A\n", "", ""}));
  }

  void withoutARecordingThereIsNothingToStop() {
    MouseMacrosController tab;
    RecordingMacroDelegate delegate(tab);
    tab.setMMacroDelegate(&delegate);
    tab.setMMacrosSettingsArray(macros());
    tab.refreshTableDisplay();
    tab.setStateOfMacroTableWithState(false);
    tab.stopAllMacroRecording();
    QCOMPARE(delegate.asked, QList<int>());
    QCOMPARE(delegate.otherCalls, 0);
    QVERIFY(!tab.mMacroTableView()->isEnabled());
  }

  void theMacroTableAloneCanBeSwitchedOff() {
    MouseMacrosController tab;
    tab.setStateOfMacroTableWithState(false);
    QVERIFY(!tab.mMacroTableView()->isEnabled());
    QVERIFY(tab.mMacroDetailsTableView()->isEnabled());
    tab.setStateOfMacroTableWithState(true);
    QVERIFY(tab.mMacroTableView()->isEnabled());
  }
};

QTEST_MAIN(TablesTest)
#include "test_gui_tables.moc"
