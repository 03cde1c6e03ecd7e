// The Profiles tab of the real window in front, worked as a person does it.
#pragma once

#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include "e2e/OpenWindow.h"
#include "support/PanelTest.h"

namespace skarn::test {

class OpenProfiles : public OpenWindow {
 public:
  OpenProfiles() {
    showTab("MouseProfilesController");
    window().show();
    window().activateWindow();
    if (!QTest::qWaitForWindowActive(&window())) QTest::qFail("the window is active", __FILE__, __LINE__);
  }

  MouseProfilesController& tab() { return *find<MouseProfilesController>("MouseProfilesController"); }
  QTableView& table() { return *tab().mProfilesTableView(); }
  // Null while it is not shown.
  template <typename Dialog>
  Dialog* dialog(const char* name) {
    return window().findChild<Dialog*>(QLatin1String(name));
  }

  int selectedRow() {
    const QModelIndexList rows = table().selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.constFirst().row() : -1;
  }
  QStringList names() {
    QStringList names;
    for (int row = 0; row < table().model()->rowCount(); ++row)
      names << table().model()->index(row, 1).data().toString();
    return names;
  }
  void click(int row, int column = 1) {
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {},
                      table().visualRect(table().model()->index(row, column)).center());
  }
  QLineEdit* editor() {
    for (auto* edit : table().viewport()->findChildren<QLineEdit*>()) {
      if (edit->isVisible()) return edit;
    }
    return nullptr;
  }
  void enterName(const QString& name) {
    QVERIFY(editor());
    QTest::keyClicks(editor(), name);
    QTest::keyClick(editor(), Qt::Key_Return);
    QVERIFY(!editor());
  }
  void add(const QString& name) {
    QTest::mouseClick(find<QToolButton>("mAddProfile"), Qt::LeftButton);
    enterName(name);
  }
  void choose(int tag) { tab().selectMenuItem(tag); }
  // The menu of a right click on a row, beside its name; null where none opens.
  QMenu* rightClick(int row) {
    QTest::mouseClick(table().viewport(), Qt::RightButton, {},
                      table().visualRect(table().model()->index(row, 0)).center());
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  // Chooses the item and closes the menu.
  static void chooseIn(QMenu& menu, int tag) {
    for (QAction* item : menu.actions()) {
      if (item->property("tag").toInt() == tag) item->trigger();
    }
    menu.close();
  }
  void acceptAlert() {
    QVERIFY(dialog<QMessageBox>("alert"));
    confirm(dialog<QMessageBox>("alert"));
    QTRY_VERIFY(!dialog<QMessageBox>("alert"));
  }
  void deleteRow(int row) {
    click(row);
    QTest::mouseClick(find<QToolButton>("mDeleteProfile"), Qt::LeftButton);
    acceptAlert();
  }
  void enterPath(const char* panel, const QString& path) {
    auto* shown = dialog<QFileDialog>(panel);
    QVERIFY(shown);
    QVERIFY(QTest::qWaitForWindowExposed(shown));
    auto* name = shown->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_VERIFY(!dialog<QFileDialog>(panel));
  }
  void exportTo(const QString& path) {
    choose(4);
    enterPath("mProfileSavePanel", path);
  }
  void importFile(const QString& path) {
    choose(3);
    enterPath("mProfileOpenPanel", path);
    confirmImport();
  }
  // Takes the last change back, as soon as the window has heard of it.
  void undo(const char* change) {
    auto* button = find<QToolButton>("mUndoButton");
    QTRY_COMPARE_WITH_TIMEOUT(button->toolTip(), QStringLiteral("Undo: ") + QString::fromUtf8(change), deadline);
    QTest::mouseClick(button, Qt::LeftButton);
  }
  // What the file holds is told first, where it can be imported.
  void confirmImport() {
    auto* sheet = dialog<QDialog>("profileImportSheet");
    if (sheet == nullptr) return;
    QTest::keyClick(sheet, Qt::Key_Return);
    QTRY_VERIFY(!dialog<QDialog>("profileImportSheet"));
  }
};

}  // namespace skarn::test
