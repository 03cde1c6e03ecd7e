#include "profiles/MouseProfilesController.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <optional>

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "profiles/NSTableViewSubClass.h"
#include "profiles/ProfilesTableDelegate.h"
#include "profiles/ProfilesTableModel.h"
#include "ui_MouseProfilesController.h"
#include "widgets/LabelState.h"

namespace skarn {

namespace keys = vorn::keys;

MouseProfilesController::MouseProfilesController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MouseProfilesController>()), mModel(new ProfilesTableModel(this)) {
  mUi->setupUi(this);
  NSTableViewSubClass* table = mUi->mProfilesTableView;
  table->mouseProfilesController = this;
  table->setModel(mModel);
  table->setItemDelegate(new ProfilesTableDelegate(table));
  table->horizontalHeader()->setSectionResizeMode(ProfilesTableModel::Id, QHeaderView::Fixed);
  table->horizontalHeader()->setSectionResizeMode(ProfilesTableModel::Name, QHeaderView::Stretch);
  table->horizontalHeader()->setSectionResizeMode(ProfilesTableModel::Application, QHeaderView::Stretch);
  table->horizontalHeader()->setSectionResizeMode(ProfilesTableModel::AutoSwitch, QHeaderView::Fixed);
}

MouseProfilesController::~MouseProfilesController() = default;

QTableView* MouseProfilesController::mProfilesTableView() const {
  return mUi->mProfilesTableView;
}

int MouseProfilesController::activeProfile() const {
  const std::optional<int> active = numberOf(deviceSettingsDict, keys::ActiveProfile);
  if (!active || *active < 0 || *active >= static_cast<int>(profilesArray.arrayOrEmpty().size())) return -1;
  return *active;
}

void MouseProfilesController::selectRow(int row) {
  QItemSelectionModel* selection = mUi->mProfilesTableView->selectionModel();
  if (row < 0 || row >= mModel->rowCount()) {
    selection->clearSelection();
  } else {
    selection->select(mModel->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
}

void MouseProfilesController::updateUISettings() {
  if (profileSettingsDict.isNone()) return;
  mModel->setProfiles(profilesArray, activeProfile());
  selectRow(activeProfile());
}

void MouseProfilesController::refreshTableDisplay() {
  const QModelIndexList selected = mUi->mProfilesTableView->selectionModel()->selectedRows();
  const int row = selected.isEmpty() ? -1 : selected.constFirst().row();
  mModel->setProfiles(profilesArray, activeProfile());
  selectRow(row);
}

void MouseProfilesController::enableControlsState(bool enabled) {
  mUi->mProfilesTableView->setEnabled(enabled);
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
}

}  // namespace skarn
