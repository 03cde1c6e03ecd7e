// The Macros tab of the real window, worked as a person does it, with keys typed on the virtual mouse of the real
// engine.
#pragma once

#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <vector>

#include "e2e/OpenWindow.h"
#include "e2e/OtherClient.h"
#include "e2e/VirtualMouse.h"
#include "widgets/PullDownButton.h"

namespace skarn::test {

// Usages of the keyboard page.
inline constexpr int keyA = 4, keyB = 5, keyC = 6, keyZ = 29;
inline constexpr int keyboardPage = 7, buttonPage = 9;

class OpenMacros : public OpenWindow {
 public:
  OpenMacros() { showTab("MouseMacrosController"); }

  bool hasSheet(const char* name) {
    const auto* sheet = window().findChild<QDialog*>(QLatin1String(name));
    return sheet != nullptr && sheet->isVisible();
  }
  void click(const char* button) { QTest::mouseClick(find(button), Qt::LeftButton); }
  // In the sheet for an event: the other event of its stroke stays as it is.
  void leavePartner() {
    auto* box = find<QCheckBox>("mChangesPartner");
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    QVERIFY(!box->isChecked());
  }
  void chooseFromGear(const char* gear, int tag) {
    auto* button = find<PullDownButton>(gear);
    button->openMenu();
    chooseIn(*button->menu(), tag);
  }
  // Chooses the item and closes the menu.
  static void chooseIn(QMenu& menu, int tag) {
    for (QAction* item : taggedItems(menu)) {
      if (tagOf(*item) == tag) item->trigger();
    }
    menu.close();
  }
  // The menu of a right click on a row; null where none opens.
  QMenu* rightClick(const char* tableName, int row) {
    auto* table = find<QTableView>(tableName);
    QTest::mouseClick(table->viewport(), Qt::RightButton, {},
                      table->visualRect(table->model()->index(row, 0)).center());
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  void clickLine(int row) {
    auto* table = find<QTableView>("mMacroDetailsTableView");
    const QModelIndex line = table->model()->index(row, 0);
    table->scrollTo(line);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(line).center());
  }
  void choosePath(const char* panel, const QString& path) {
    auto* dialog = find<QFileDialog>(panel);
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    // A field without the focus takes the name of the file that the list selects for it.
    QApplication::setActiveWindow(dialog);
    name->setFocus();
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
  }

  QStringList shown(const char* tableName) {
    const QAbstractItemModel& model = *find<QTableView>(tableName)->model();
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) texts << model.index(row, 0).data().toString();
    return texts;
  }
  QStringList names() { return shown("mMacroTableView"); }
  QStringList lines() { return shown("mMacroDetailsTableView"); }
  qsizetype lineCount() { return lines().size(); }
  QString recordTitle() { return find<QPushButton>("mRecordMacroDetails")->text(); }
  vorn::PropertyList macro(int row = 0) { return hub().mMacrosArray().at(row); }

  // A new macro, selected.
  void addMacro(const QString& name) {
    click("mAddMacro");
    auto* editor = find("mMacroTableView")->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    QTest::keyClicks(editor, name);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(names().last(), name, deadline);
  }
  // Begins a recording and types six events.
  void typeMacro() {
    click("mRecordMacroDetails");
    QCOMPARE(recordTitle(), QStringLiteral("Stop"));
    QVERIFY(vorn::test::VirtualMouse::type(keyboardPage, keyA));
    QVERIFY(vorn::test::VirtualMouse::type(keyboardPage, keyB));
    QVERIFY(vorn::test::VirtualMouse::type(buttonPage, 2));
  }
  // A macro with six events, recorded as a person does it.
  void recordMacro(const QString& name) {
    addMacro(name);
    typeMacro();
    // The lines are seen while it records.
    QTRY_COMPARE_WITH_TIMEOUT(lineCount(), 11, deadline);
    click("mRecordMacroDetails");
    QCOMPARE(recordTitle(), QStringLiteral("Record"));
    QCOMPARE(lineCount(), 11);
  }
};

// A macro "Mn" of n events.
inline void addMacro(OtherClient& other, int count) {
  std::vector<vorn::PropertyList> events;
  for (int event = 0; event < count; ++event) {
    events.push_back(vorn::PropertyList::dictionary({{vorn::keys::Command, 1},
                                                     {vorn::keys::Delay, 20},
                                                     {vorn::keys::Page, keyboardPage},
                                                     {vorn::keys::Argument, keyA + event}}));
  }
  other.ask(vorn::MessageID::AddMacro,
            vorn::PropertyList::dictionary(
                {{vorn::requestKeys::MacroContents,
                  vorn::PropertyList::dictionary(
                      {{vorn::keys::MacroName, "M" + std::to_string(count)},
                       {vorn::keys::Sequence, vorn::PropertyList::dictionary(
                                                  {{vorn::keys::Events, vorn::PropertyList::array(events)}})}})}}));
}

inline void deleteMacro(OtherClient& other, int macro) {
  other.ask(vorn::MessageID::DeleteMacro, vorn::PropertyList::dictionary({{vorn::requestKeys::MacroID, macro}}));
}

}  // namespace skarn::test
