#include "profiles/MouseProfilesController.h"

#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <algorithm>
#include <optional>
#include <utility>

#include "model/SettingsKeys.h"
#include "platform/FilePanel.h"
#include "platform/GoneAlert.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "platform/LostAssignments.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "profiles/AutoSwitchCell.h"
#include "profiles/FollowingText.h"
#include "profiles/NSTableViewSubClass.h"
#include "profiles/ProfileComparisonSheet.h"
#include "profiles/ProfileImportSheet.h"
#include "profiles/ProfileMenu.h"
#include "profiles/ProfilesTableDelegate.h"
#include "profiles/ProfilesTableModel.h"
#include "ui_MouseProfilesController.h"
#include "widgets/Alert.h"
#include "widgets/LabelState.h"

namespace skarn {

namespace keys = vorn::keys;
using vorn::PropertyList;

namespace {

// The picture is faint by itself; with this it is as faint as the other disabled icons.
constexpr float disabledGearOpacity = 0.73F;

}  // namespace

MouseProfilesController::MouseProfilesController(QWidget* parent)
    : QWidget(parent),
      mUi(std::make_unique<Ui::MouseProfilesController>()),
      mModel(new ProfilesTableModel(this)),
      mCells(new ProfilesTableDelegate(this)),
      mAutoSwitchCell(new AutoSwitchCell(this)) {
  mUi->setupUi(this);
  setUpTable();
  setUpGearMenu();
  // What comes of the press comes before.
  const auto forgetTarget = [this] { mTarget.forget(); };
  connect(mUi->mDeleteProfile, &QAbstractButton::released, this, forgetTarget, Qt::QueuedConnection);
  connect(mUi->mAddProfile, &QAbstractButton::clicked, this, [this] { clickAdd(); });
  connect(mUi->mDeleteProfile, &QAbstractButton::clicked, this, [this] { clickDelete(); });
  connect(mUi->mEnableOnScreenDisplay, &QAbstractButton::clicked, this, &MouseProfilesController::tickEnableOnScreen);
  // Its place stays while there is nothing to tell.
  mUi->mFollowing->setMinimumHeight(mUi->mFollowing->fontMetrics().height());
  tintIcons();
  explainControls();
}

MouseProfilesController::~MouseProfilesController() = default;

void MouseProfilesController::setUpTable() {
  NSTableViewSubClass* table = mUi->mProfilesTableView;
  table->mouseProfilesController = this;
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->setModel(mModel);
  for (int column = 0; column < mModel->columnCount(); ++column) {
    table->setItemDelegateForColumn(column, tableViewDataCellForTableColumn(ProfilesTableModel::identifierOf(column)));
  }
  QHeaderView* header = table->horizontalHeader();
  header->setSectionResizeMode(ProfilesTableModel::Id, QHeaderView::Fixed);
  header->setSectionResizeMode(ProfilesTableModel::Name, QHeaderView::Stretch);
  header->setSectionResizeMode(ProfilesTableModel::Application, QHeaderView::Stretch);
  header->setSectionResizeMode(ProfilesTableModel::AutoSwitch, QHeaderView::Fixed);
  connect(mModel, &ProfilesTableModel::edited, this, &MouseProfilesController::tableViewSetObjectValueForTableColumn);
  connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (!mIsReloading) tableViewSelectionDidChange();
  });
  connect(mCells, &ProfilesTableDelegate::nameEntered, mModel,
          [this, table](const QModelIndex& index, const QString& name) {
            const int row = index.row();
            mModel->setData(index, name, Qt::EditRole);
            // The reload selects the active profile, but a press on a control was meant for the one that was edited.
            const Qt::MouseButtons held = QApplication::mouseButtons();
            const QWidget* pressed = held != Qt::NoButton ? QApplication::focusWidget() : nullptr;
            const bool opensMenu = pressed == mUi->mSettingsButton || (pressed == table && (held & Qt::RightButton));
            if (opensMenu || pressed == mUi->mDeleteProfile) rememberTarget(row);
          });
  // A name given up after an add leaves the new row selected, and the tabs would change a profile that they do not
  // show.
  connect(mCells, &ProfilesTableDelegate::editAbandoned, this, [this] { selectRow(activeProfile()); });
}

void MouseProfilesController::setUpGearMenu() {
  PullDownButton* gear = mUi->mSettingsButton;
  addMenuItems(*gear->menu());
  gear->setValidator([this](const QAction& item) { return validateMenuItem(item); });
  gear->menu()->setToolTipsVisible(true);
  connect(gear->menu(), &QMenu::aboutToShow, this, [this, gear] {
    for (QAction* item : gear->menu()->actions()) item->setToolTip(reasonAgainst(tagOf(*item)));
  });
}

void MouseProfilesController::tintIcons() {
  const QColor text = palette().color(QPalette::WindowText);
  mUi->mAddProfile->setIcon(tintedIcon(QStringLiteral("add.png"), text));
  mUi->mDeleteProfile->setIcon(tintedIcon(QStringLiteral("remove.png"), text));
  QColor faint = text;
  faint.setAlphaF(disabledGearOpacity);
  QIcon gear;
  gear.addPixmap(tintedImage(QStringLiteral("GearOn.png"), text), QIcon::Normal);
  gear.addPixmap(tintedImage(QStringLiteral("GearOff.png"), faint), QIcon::Disabled);
  mUi->mSettingsButton->setIcon(gear);
}

void MouseProfilesController::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) tintIcons();
}

QTableView* MouseProfilesController::mProfilesTableView() const {
  return mUi->mProfilesTableView;
}

QWidget* MouseProfilesController::sheetParent() const {
  return profilesWindow ? profilesWindow.data() : window();
}

int MouseProfilesController::activeProfile() const {
  const std::optional<int> active = numberOf(deviceSettingsDict, keys::ActiveProfile);
  if (!active || *active < 0 || *active >= static_cast<int>(profilesArray.size())) return -1;
  return *active;
}

int MouseProfilesController::selectedRow() const {
  return mUi->mProfilesTableView->selectedRow();
}

int MouseProfilesController::targetRow() const {
  return mTarget.row(profilesArray, selectedRow());
}

int MouseProfilesController::takeTargetRow() {
  return mTarget.takeRow(profilesArray, selectedRow());
}

void MouseProfilesController::rememberTarget(int row) {
  mTarget.remember(profilesArray, row);
}

bool MouseProfilesController::isTargetGone() {
  const auto name = mTarget.takeGone(profilesArray);
  if (name) showGoneAlert(sheetParent(), QString::fromStdString(*name));
  return name.has_value();
}

void MouseProfilesController::endEdit() {
  const int row = mCells->editedRow();
  if (row < 0) return;
  mCells->takeEditOver();
  rememberTarget(row);
}

std::optional<int> MouseProfilesController::takeConfirmedRow() {
  if (!mTarget.hasSheet()) return takeTargetRow();
  const QString name = QString::fromStdString(mTarget.nameOfSheet());
  const std::optional<int> row = mTarget.takeSheet(profilesArray);
  if (!row) showGoneAlert(sheetParent(), name);
  return row;
}

void MouseProfilesController::updateProfile(int row, const PropertyList& settings) {
  if (profileDelegate == nullptr) return;
  if (row == selectedRow()) {
    profileDelegate->updateProfileWithSettings(settings);
  } else {
    profileDelegate->renameProfileWithProfileID(row, settings);
  }
}

bool MouseProfilesController::isFull() const {
  return profilesArray.size() >= keys::maximumProfiles;
}

// --- Selection

void MouseProfilesController::selectRow(int row, bool byExtending) {
  if (row < 0 || row >= mModel->rowCount()) return;
  const auto how = byExtending ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect;
  mUi->mProfilesTableView->selectionModel()->setCurrentIndex(mModel->index(row, ProfilesTableModel::Name),
                                                             how | QItemSelectionModel::Rows);
}

void MouseProfilesController::deselect() {
  mUi->mProfilesTableView->clearSelection();
}

void MouseProfilesController::selectLastRow() {
  selectRow(mModel->rowCount() - 1);
}

// Only the selected row's name: a rename goes to the selected row, whatever row was edited.
void MouseProfilesController::editName(int row) {
  NSTableViewSubClass* table = mUi->mProfilesTableView;
  if (row < 0 || row != selectedRow() || !table->isVisible() || !table->isEnabled()) return;
  if (mCells->editedRow() == row) {
    mCells->restartEdit();
    return;
  }
  mCells->discardEdit();
  table->setFocus();
  table->edit(mModel->index(row, ProfilesTableModel::Name));
}

void MouseProfilesController::editTarget() {
  const int row = takeTargetRow();
  if (row != selectedRow()) {
    // As after an add: the row is selected, and not switched to.
    const QScopedValueRollback quietly(mIsAddProfile, true);
    selectRow(row);
  }
  editName(row);
}

void MouseProfilesController::discardStaleEdit(int rowToBeSelected) {
  const int row = mCells->editedRow();
  const bool isFresh = row == rowToBeSelected && row < static_cast<int>(profilesArray.size()) &&
                       textOf(profilesArray.at(row), keys::ProfileName) == mCells->nameBefore();
  if (!isFresh) mCells->discardEdit();
}

void MouseProfilesController::tableViewSelectionDidChange() {
  const int row = selectedRow();
  if (row >= 0 && row < static_cast<int>(profilesArray.size()) && !mIsAddProfile && profileDelegate) {
    if (!mIsFirstLaunch && row != activeProfile()) {
      mNeedsProfileEditing = false;
      profileDelegate->switchProfileWithID(row);
    } else if (mIsFirstLaunch && !mNeedsUpdate) {
      selectRow(activeProfile());
    }
  }
  enableAddByCount();
  mIsFirstLaunch = false;
}

// --- Drawing

void MouseProfilesController::updateUISettings() {
  if (profileSettingsDict.isNone()) return;
  refreshTableDisplay();
  if (!mIsAddProfile) {
    discardStaleEdit(activeProfile());
    deselect();
    mUi->mEnableOnScreenDisplay->setChecked(numberOf(deviceSettingsDict, keys::ProfileOSDOn).value_or(0) != 0);
    selectRow(activeProfile(), mNeedsUpdate);
  }
  if (mNeedsProfileEditing) editName(mModel->rowCount() - 1);
  enableAddByCount();
  if (mComparison) mComparison->setSettings(bundle());
  if (mImport) mImport->setSettings(bundle());
}

void MouseProfilesController::setMProfilesArray(const PropertyList& profiles) {
  // What the tab does itself it tells behind the reload.
  if (profiles.arrayOrEmpty() != profilesArray) mUi->mProfileNotice->fallSilent();
  profilesArray = profiles.arrayOrEmpty();
  tellFollowing();
}

void MouseProfilesController::setFocusState(const PropertyList& state) {
  focusState = state;
  tellFollowing();
}

void MouseProfilesController::tellFollowing() {
  const bool isAskedFor = std::ranges::any_of(profilesArray.elements(), [](const PropertyList& profile) {
    return numberOf(profile, keys::AutoSwitchOn).value_or(0) != 0;
  });
  mUi->mFollowing->setText(followingText(focusState, isAskedFor));
}

void MouseProfilesController::refreshTableDisplay() {
  const int before = selectedRow();
  discardStaleEdit(before);
  {
    const QScopedValueRollback reloading(mIsReloading, true);
    mModel->setProfiles(profilesArray, activeProfile());
    if (before < mModel->rowCount()) {
      selectRow(before);
    } else {
      deselect();
    }
  }
  numberOfRowsInTableView();
  if (selectedRow() != before) tableViewSelectionDidChange();
}

int MouseProfilesController::numberOfRowsInTableView() {
  mUi->mDeleteProfile->setEnabled(mHasDeviceConnected && profilesArray.size() != 1);
  explainControls();
  return static_cast<int>(profilesArray.size());
}

void MouseProfilesController::enableAddByCount() {
  mUi->mAddProfile->setEnabled(mHasDeviceConnected && !isFull());
  explainControls();
}

void MouseProfilesController::enableControlsState(bool enabled) {
  mHasDeviceConnected = enabled;
  // A table that is disabled lets go of the keyboard, and the edit would be taken over as a rename.
  if (!enabled) mCells->discardEdit();
  if (!enabled) mUi->mProfileNotice->fallSilent();
  for (QWidget* control : std::initializer_list<QWidget*>{mUi->mProfilesTableView, mUi->mAddProfile,
                                                          mUi->mSettingsButton, mUi->mEnableOnScreenDisplay}) {
    control->setEnabled(enabled);
  }
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
  numberOfRowsInTableView();
  enableAddByCount();
}

void MouseProfilesController::enableControlsForAddProfiles(bool enabled) {
  mUi->mDeleteProfile->setEnabled(enabled);
  mUi->mSettingsButton->setEnabled(enabled);
  mUi->mEnableOnScreenDisplay->setEnabled(enabled);
  enableAddByCount();
}

// Each control says what it does, or why it cannot.
void MouseProfilesController::explainControls() {
  const QString noMouse = mHasDeviceConnected ? QString() : localized("lkeyNoMouseConnected");
  const auto explain = [&noMouse](QWidget* control, const QString& purpose, const QString& obstacle = {}) {
    control->setToolTip(!noMouse.isEmpty() ? noMouse : obstacle.isEmpty() ? purpose : obstacle);
  };
  explain(mUi->mAddProfile, mUi->mAddProfile->accessibleName(), reasonAgainst(static_cast<int>(ProfileItem::New)));
  explain(mUi->mDeleteProfile, mUi->mDeleteProfile->accessibleName(),
          reasonAgainst(static_cast<int>(ProfileItem::Delete)));
  explain(mUi->mSettingsButton, mUi->mSettingsButton->accessibleName());
  explain(mUi->mEnableOnScreenDisplay, QString());
}

// --- Menus

void MouseProfilesController::addMenuItems(QMenu& menu) {
  connect(
      &menu, &QMenu::aboutToHide, this, [this] { mTarget.forget(); }, Qt::QueuedConnection);
  addProfileItems(
      menu, [this](int tag) { selectMenuItem(tag); }, [this](int tag) { selectListItem(tag); });
}

QString MouseProfilesController::reasonAgainst(int tag) const {
  return tag < firstListItem ? reasonAgainst(static_cast<ProfileItem>(tag))
                             : reasonAgainst(static_cast<ProfileListItem>(tag));
}

QString MouseProfilesController::reasonAgainst(ProfileItem item) const {
  switch (item) {
    case ProfileItem::New:
    case ProfileItem::Import:
    case ProfileItem::Copy:
      return isFull() ? localized("lkeyNoRoomForProfile") : QString();
    case ProfileItem::Delete:
      return profilesArray.size() == 1 ? localized("lkeyLastProfileStays") : QString();
    case ProfileItem::RemoveApplication:
      return textOf(targetProfile()[keys::AppInfo], keys::Application).isEmpty()
                 ? localized("lkeyNoApplicationAssigned")
                 : QString();
    default:
      return {};
  }
}

bool MouseProfilesController::validateMenuItem(const QAction& item) const {
  return reasonAgainst(tagOf(item)).isEmpty();
}

void MouseProfilesController::selectMenuItem(int tag) {
  endEdit();
  const auto item = static_cast<ProfileItem>(tag);
  if (item != ProfileItem::New && item != ProfileItem::Import && isTargetGone()) return;
  switch (item) {
    case ProfileItem::Rename:
      editTarget();
      break;
    case ProfileItem::New:
      clickAdd();
      break;
    case ProfileItem::Import:
      loadPanelForIdentifier(ProfileFileContext);
      break;
    case ProfileItem::Export:
      loadSaveAsPanel();
      break;
    case ProfileItem::Delete:
      clickDelete();
      break;
    case ProfileItem::Copy:
      copyProfile();
      break;
    case ProfileItem::AssignApplication:
      loadPanelForIdentifier(ApplicationContext);
      break;
    case ProfileItem::RemoveApplication:
      removeApplication();
      break;
    case ProfileItem::RestoreDefault:
      showAlert("lkeyRestoreDefaultTitle", localized("lkeyRestoreDefaultDesc"), "lkeyRestoreAction", RestoreContext);
      break;
  }
}

// --- The table's cells

QAbstractItemDelegate* MouseProfilesController::tableViewDataCellForTableColumn(const QString& column) const {
  if (column == QLatin1String(ProfilesTableModel::autoSwitchColumn)) return mAutoSwitchCell;
  return mCells;
}

void MouseProfilesController::tableViewSetObjectValueForTableColumn(const QVariant& value, const QString& column,
                                                                    int row) {
  if (column == QLatin1String(ProfilesTableModel::nameColumn)) {
    renameProfile(row, value.toString());
  } else if (column == QLatin1String(ProfilesTableModel::autoSwitchColumn)) {
    setAutoSwitch(row, value.toInt());
  }
}

// --- Delete, restore

void MouseProfilesController::showAlert(const char* title, const QString& informativeText, const char* action,
                                        int contextInfo) {
  const int row = takeTargetRow();
  mTarget.openSheet(profilesArray, row);
  const QString name = shownName(textOf(profilesArray.at(row), keys::ProfileName));
  Alert::ask(sheetParent(), localized(title).arg(name), informativeText, localized(action), localized("lkeyCancel"),
             [tab = QPointer(this), contextInfo](int returnCode) {
               if (tab) tab->sheetDidEnd(returnCode, contextInfo);
             });
}

void MouseProfilesController::clickDelete() {
  endEdit();
  if (isTargetGone()) return;
  showAlert("lkeyDeleteProfileAlertTitle",
            withLostAssignments(localized("lkeyDeleteProfileAlertDesc"), profilesArray,
                                {vorn::AssignmentCommand::Profile, targetRow(), profilesArray.size()}),
            "lkeyDeleteAction", DeleteContext);
}

void MouseProfilesController::deleteProfile() {
  const int row = takeConfirmedRow().value_or(-1);
  if (profilesArray.size() > 1 && row >= 0 && profileDelegate) {
    mNeedsUpdate = true;
    mNeedsProfileEditing = false;
    mCells->discardEdit();
    profileDelegate->deleteProfileWithProfileID(row);
    refreshTableDisplay();
    mUi->mProfilesTableView->setFocus();
    mNeedsUpdate = false;
  }
  enableAddByCount();
}

void MouseProfilesController::restoreProfileToDefaultSettings() {
  const int row = takeConfirmedRow().value_or(-1);
  const PropertyList& profile = profilesArray.at(row);
  if (profile.isNone()) return;
  updateProfile(row, defaultDict.with(keys::ProfileName, profile[keys::ProfileName].string()));
}

void MouseProfilesController::sheetDidEnd(int returnCode, int contextInfo, const QString& path) {
  const bool isConfirmed =
      returnCode == (contextInfo == ExportContext ? FilePanel::okButton : Alert::firstButtonReturn);
  if (!isConfirmed) {
    mTarget.closeSheet();
    return;
  }
  if (contextInfo == ExportContext) {
    exportProfile(path);
  } else if (contextInfo == RestoreContext) {
    restoreProfileToDefaultSettings();
  } else if (contextInfo == DeleteContext) {
    deleteProfile();
  }
}

// --- Single settings

void MouseProfilesController::updateValue(int value, std::string_view ofSetting) {
  if (profileDelegate) profileDelegate->updateProfileWithSettings(PropertyList::dictionary({{ofSetting, value}}));
}

void MouseProfilesController::tickEnableOnScreen(bool on) {
  updateValue(on ? 1 : 0, keys::ProfileOSDOn);
}

}  // namespace skarn
