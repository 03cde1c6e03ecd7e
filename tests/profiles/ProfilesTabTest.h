// What tests of the Profiles tab share: a window with the tab, and a delegate that writes down every call and answers
// like the owner with an engine behind it, or not at all.
#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Localization.h"
#include "profiles/MouseProfilesController.h"
#include "support/SampleSettings.h"

namespace skarn::test {

// One call of the delegate. profileID is -1 where the operation has none.
struct ProfileCall {
  std::string operation;
  int profileID;
  PropertyList settings;

  friend bool operator==(const ProfileCall&, const ProfileCall&) = default;
};
using ProfileCalls = std::vector<ProfileCall>;

inline ProfileCall added(const PropertyList& profile) {
  return {"add", -1, profile};
}
inline ProfileCall addedFurther(const PropertyList& profile) {
  return {"add further", -1, profile};
}
inline ProfileCall deleted(int profileID) {
  return {"delete", profileID, {}};
}
inline ProfileCall switchedTo(int profileID) {
  return {"switch", profileID, {}};
}
inline ProfileCall renamed(int profileID, const PropertyList& profile) {
  return {"rename", profileID, profile};
}
inline ProfileCall reordered(const vorn::ProfileOrder& order, const PropertyList& names) {
  return {"reorder", -1, PropertyList::array({vorn::orderRecord(order), names})};
}
inline ProfileCall updated(const PropertyList& settings) {
  return {"update", -1, settings};
}

inline std::string described(const ProfileCalls& calls) {
  std::string text = std::to_string(calls.size()) + " calls";
  for (const ProfileCall& call : calls) {
    text += "\n  " + call.operation + " " + std::to_string(call.profileID) + " " + call.settings.description(400);
  }
  return text;
}

#define VERIFY_CALLS(actual, ...)                                                                              \
  do {                                                                                                         \
    const ProfileCalls expectedCalls __VA_ARGS__;                                                              \
    const std::string shownCalls = "\nsent: " + described(actual) + "\nexpected: " + described(expectedCalls); \
    QVERIFY2((actual) == expectedCalls, shownCalls.c_str());                                                   \
  } while (false)

class RecordingProfileDelegate : public ProfileControllerDelegate {
 public:
  std::optional<vorn::ReturnStatus> addNewProfileWithSettings(const PropertyList& profile) override {
    return add("add", profile);
  }
  std::optional<vorn::ReturnStatus> addFurtherProfileWithSettings(const PropertyList& profile) override {
    return add("add further", profile);
  }
  void deleteProfileWithProfileID(int profileID) override {
    record(deleted(profileID));
    if (doesAnswer) tab->enableControlsState(false);
    answer([&] {
      list = list.removing(profileID);
      active = std::max(profileID - 1, 0);
    });
    if (doesAnswer) tab->enableControlsState(true);
  }
  void switchProfileWithID(int profileID) override {
    record(switchedTo(profileID));
    answer([&] { active = profileID; });
    if (doesAnswer) tab->enableControlsState(true);
  }
  void renameProfileWithProfileID(int profileID, const PropertyList& andSettings) override {
    record(renamed(profileID, andSettings));
    answer([&] { list = list.replacing(profileID, list.at(profileID).merging(andSettings)); });
  }
  std::optional<vorn::ReturnStatus> reorderProfiles(const vorn::ProfileOrder& order,
                                                    const PropertyList& names) override {
    record(reordered(order, names));
    if (!doesAnswer) return std::nullopt;
    if (statusOfReorder != vorn::ReturnStatus::Done) {
      reload();
      return statusOfReorder;
    }
    answer([&] {
      list = vorn::profilesInOrder(list, order);
      active = static_cast<int>(vorn::placeInOrder(order, active));
    });
    return statusOfReorder;
  }
  void updateProfileWithSettings(const PropertyList& settings) override {
    record(updated(settings));
    const QModelIndexList rows = tab->mProfilesTableView()->selectionModel()->selectedRows();
    const int row = rows.isEmpty() ? active : rows.constFirst().row();
    answer([&] {
      list = list.replacing(row, list.at(row).merging(settings));
      if (settings.contains(keys::ProfileOSDOn)) device = device.with(keys::ProfileOSDOn, settings[keys::ProfileOSDOn]);
    });
  }

  // Hands the settings to the tab and redraws it, as the owner does after every change and all news.
  void reload() {
    tab->setMProfileSettingsDict(list.at(active).dictionaryOrEmpty());
    tab->setMDeviceSettingsDict(device.with(keys::ActiveProfile, active));
    tab->setMProfilesArray(list);
    tab->setMDefaultDict(factory);
    tab->updateUISettings();
    tab->refreshTableDisplay();
  }

  MouseProfilesController* tab = nullptr;
  PropertyList list = profiles();
  PropertyList device = deviceSettings();
  PropertyList factory = profile("Factory").with("further", 7);
  int active = 1;
  bool doesAnswer = true;
  vorn::ReturnStatus statusOfAdd = vorn::ReturnStatus::Done;
  vorn::ReturnStatus statusOfReorder = vorn::ReturnStatus::Done;
  bool doesRefusalTellTheList = true;
  ProfileCalls calls;
  std::function<void()> duringCall;  // before the answer

 private:
  std::optional<vorn::ReturnStatus> add(const char* how, const PropertyList& profile) {
    record({how, -1, profile});
    if (!doesAnswer) return std::nullopt;
    if (!vorn::isChanged(statusOfAdd)) {
      if (doesRefusalTellTheList) reload();
      return statusOfAdd;
    }
    answer([&] { list = list.appending(profile); });
    return statusOfAdd;
  }
  void record(const ProfileCall& call) {
    calls.push_back(call);
    if (duringCall) duringCall();
  }
  template <typename Change>
  void answer(const Change& change) {
    if (!doesAnswer) return;
    change();
    reload();
  }
};

class ProfilesTab {
 public:
  ProfilesTab() {
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(tab);
    delegate.tab = tab;
    tab->setMProfileDelegate(&delegate);
    tab->setMProfilesWindow(&window);
    window.resize(1000, 600);
  }
  // An edit that is still open is taken over when the window goes.
  ~ProfilesTab() { tab->setMProfileDelegate(nullptr); }
  ProfilesTab(const ProfilesTab&) = delete;
  ProfilesTab& operator=(const ProfilesTab&) = delete;

  // The tab as the start-up leaves it, shown and in use.
  void show() {
    delegate.reload();
    appear();
  }
  void appear() {
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
  }
  void showProfiles(const PropertyList& list, int active) {
    delegate.list = list;
    delegate.active = active;
    show();
  }

  template <typename Widget>
  Widget* find(const char* name) {
    return window.findChild<Widget*>(QLatin1String(name));
  }
  QTableView& table() { return *tab->mProfilesTableView(); }
  QAbstractButton& add() { return *find<QAbstractButton>("mAddProfile"); }
  QAbstractButton& remove() { return *find<QAbstractButton>("mDeleteProfile"); }
  QToolButton& gear() { return *find<QToolButton>("mSettingsButton"); }
  QCheckBox& onScreen() { return *find<QCheckBox>("mEnableOnScreenDisplay"); }
  QMessageBox* alert() { return find<QMessageBox>("alert"); }
  // The line edit in the name's cell, null when none is open.
  QLineEdit* editor() {
    for (auto* edit : table().viewport()->findChildren<QLineEdit*>()) {
      if (edit->isVisible()) return edit;
    }
    return nullptr;
  }
  int editedRow() { return editor() ? table().indexAt(editor()->geometry().center()).row() : -1; }

  int selectedRow() {
    const QModelIndexList rows = table().selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.constFirst().row() : -1;
  }
  QPoint cell(int row, int column) { return table().visualRect(table().model()->index(row, column)).center(); }
  void click(int row, int column, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(table().viewport(), Qt::LeftButton, modifiers, cell(row, column));
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&table(), key, modifiers); }
  // Types over what is selected and finishes with Return.
  void typeName(const QString& name) {
    QVERIFY(editor());
    QTest::keyClicks(editor(), name);
    QTest::keyClick(editor(), Qt::Key_Return);
    QTRY_VERIFY(!editor());
  }

  // Every cell as text; a check state as [x] or [ ].
  QStringList rows() {
    QStringList rows;
    const QAbstractItemModel& model = *table().model();
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < model.columnCount(); ++column) {
        const QVariant check = model.index(row, column).data(Qt::CheckStateRole);
        cells << (check.isValid() ? (check.toInt() == Qt::Checked ? QStringLiteral("[x]") : QStringLiteral("[ ]"))
                                  : model.index(row, column).data().toString());
      }
      rows << cells.join(QLatin1String(" | "));
    }
    return rows;
  }
  QStringList names() {
    QStringList names;
    for (int row = 0; row < table().model()->rowCount(); ++row)
      names << table().model()->index(row, 1).data().toString();
    return names;
  }

  // Chooses an item of the gear menu with the mouse.
  void choose(int tag) {
    QTest::mouseClick(&gear(), Qt::LeftButton);
    chooseIn(*gear().menu(), tag);
  }
  void chooseIn(QMenu& menu, int tag) {
    QTRY_VERIFY(menu.isVisible());
    for (QAction* item : menu.actions()) {
      if (item->property("tag").toInt() == tag) {
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(item).center());
      }
    }
    QTRY_VERIFY(!menu.isVisible());
  }
  // The menu that a right click on a cell opens; the caller closes it.
  QMenu* rightClick(int row, int column) {
    QTest::mouseClick(table().viewport(), Qt::RightButton, {}, cell(row, column));
    return openMenu();
  }
  void rightClickBelowTheRows() {
    QWidget* viewport = table().viewport();
    QTest::mouseClick(viewport, Qt::RightButton, {}, viewport->rect().bottomLeft() + QPoint(200, -10));
  }
  QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

  void press(const QString& button) {
    QVERIFY(alert());
    for (QAbstractButton* each : alert()->buttons()) {
      if (each->text() == button) QTest::mouseClick(each, Qt::LeftButton);
    }
    QTRY_VERIFY(!alert());
  }

  QWidget window;
  MouseProfilesController* tab = new MouseProfilesController(&window);
  RecordingProfileDelegate delegate;
};

inline PropertyList namedProfiles(const std::vector<std::string>& names) {
  std::vector<PropertyList> list;
  for (const std::string& name : names) list.push_back(profile(name));
  return PropertyList::array(list);
}

}  // namespace skarn::test
