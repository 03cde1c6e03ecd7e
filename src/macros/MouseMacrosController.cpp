#include "macros/MouseMacrosController.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QTableView>

#include "macros/MacroDetailsDelegate.h"
#include "macros/MacrosTableModel.h"
#include "platform/Localization.h"
#include "ui_MouseMacrosController.h"
#include "widgets/LabelState.h"

namespace skarn {

using vorn::PropertyList;

namespace {

QStringList textLines(const PropertyList& lines) {
  QStringList texts;
  for (const PropertyList& line : lines.elements()) texts << QString::fromStdString(line.toString());
  return texts;
}

}  // namespace

MouseMacrosController::MouseMacrosController(QWidget* parent)
    : QWidget(parent),
      mUi(std::make_unique<Ui::MouseMacrosController>()),
      mModel(new MacrosTableModel(this)),
      mDetailsModel(new QStringListModel(this)) {
  mUi->setupUi(this);
  mUi->mMacroTableView->setModel(mModel);
  mUi->mMacroTableView->setItemDelegate(new RowDelegate(this));
  QHeaderView* header = mUi->mMacroTableView->horizontalHeader();
  header->setSectionResizeMode(MacrosTableModel::Name, QHeaderView::Stretch);
  header->setSectionResizeMode(MacrosTableModel::Events, QHeaderView::Fixed);
  mUi->mMacroDetailsTableView->setModel(mDetailsModel);
  mUi->mMacroDetailsTableView->setItemDelegate(new MacroDetailsDelegate(this));
  connect(mUi->mMacroTableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &MouseMacrosController::macroTableViewSelectionDidChange);
  refreshTableDisplay();
}

MouseMacrosController::~MouseMacrosController() = default;

QTableView* MouseMacrosController::mMacroTableView() const {
  return mUi->mMacroTableView;
}

QTableView* MouseMacrosController::mMacroDetailsTableView() const {
  return mUi->mMacroDetailsTableView;
}

int MouseMacrosController::selectedMacro() const {
  const QModelIndexList rows = mUi->mMacroTableView->selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.constFirst().row();
}

void MouseMacrosController::updateUISettings() {
  refreshTableDisplay();
}

void MouseMacrosController::refreshTableDisplay() {
  const int selected = selectedMacro();
  // A row that stays selected is no news to anybody.
  mIsReloading = true;
  mModel->setMacros(macrosSettingsArray);
  if (selected >= 0 && selected < mModel->rowCount()) mUi->mMacroTableView->selectRow(selected);
  mIsReloading = false;
  if (selectedMacro() != selected) macroTableViewSelectionDidChange();
  const bool hasMacros = mModel->rowCount() > 0;
  mUi->mMacroTablesView->setVisible(hasMacros);
  mUi->mNoMacrosView->setVisible(!hasMacros);
  mUi->mMacroDetailsScrollView->setVisible(selectedMacro() >= 0);
  mUi->mNoMacroSelectedLabel->setVisible(hasMacros && selectedMacro() < 0);
}

void MouseMacrosController::macroTableViewSelectionDidChange() {
  if (mIsReloading) return;
  const int selected = selectedMacro();
  updateSelectedMacroWithMacroDetails(PropertyList::array());
  mUi->mMacroDetailsScrollView->setVisible(selected >= 0);
  mUi->mNoMacroSelectedLabel->setVisible(selected < 0 && mModel->rowCount() > 0);
  if (selected >= 0 && macroDelegate != nullptr) macroDelegate->getMacroDetailsForMacroAtIndex(selected);
}

void MouseMacrosController::updateSelectedMacroWithMacroDetails(const PropertyList& lines) {
  macroDetailsArray = lines.arrayOrEmpty();
  mDetailsModel->setStringList(textLines(macroDetailsArray));
}

void MouseMacrosController::setStateOfMacroTableWithState(bool enabled) {
  mUi->mMacroTableView->setEnabled(enabled);
}

void MouseMacrosController::enableControlsState(bool enabled) {
  setStateOfMacroTableWithState(enabled);
  mUi->mMacroDetailsTableView->setEnabled(enabled);
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
}

void MouseMacrosController::stopAllMacroRecording() {
  if (!isRecording || macroDelegate == nullptr) return;
  isRecording = false;
  setStateOfMacroTableWithState(true);
  macroDelegate->stopMacroRecording();
  macroDelegate->saveRecordedEventsForMacroAtIndex(selectedMacro(), false);
  macroDelegate->getMacroDetailsForMacroAtIndex(selectedMacro());
}

}  // namespace skarn
