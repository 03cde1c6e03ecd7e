// The sheet of the stages.
#include <QDialog>
#include <QHeaderView>
#include <QItemSelectionModel>

#include "model/SettingsKeys.h"
#include "performance/ExactField.h"
#include "performance/MousePerformanceController.h"
#include "performance/SilentValue.h"
#include "performance/StagesTableModel.h"
#include "platform/GoneAlert.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "ui_MousePerformanceController.h"
#include "ui_SensitivityStagesSheet.h"
#include "widgets/RowDelegate.h"
#include "widgets/SheetFlags.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

void enableWithReason(QWidget& control, bool enabled, const char* whyNot) {
  control.setEnabled(enabled);
  control.setToolTip(enabled ? QString() : localized(whyNot));
}

}  // namespace

void MousePerformanceController::createStagesSheet() {
  mSensitivityStagesView = new QDialog(this, sheetFlags);
  mSensitivityStagesView->setWindowModality(Qt::WindowModal);
  mStagesUi = std::make_unique<Ui::SensitivityStagesSheet>();
  mStagesUi->setupUi(mSensitivityStagesView);
  mStagesModel = new StagesTableModel(mSensitivityStagesView);
  mStagesUi->mStagesTable->setModel(mStagesModel);
  mStagesUi->mStagesTable->setItemDelegate(new RowDelegate(mSensitivityStagesView));
  mStagesUi->mStagesTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  showStageEditors();
  numberOfRowsInTableView();

  const auto onClick = [this](QAbstractButton* button, void (MousePerformanceController::*action)()) {
    connect(button, &QAbstractButton::clicked, this, action);
  };
  onClick(mStagesUi->mStageAddButton, &MousePerformanceController::clickStageAdd);
  onClick(mStagesUi->mStageDeleteButton, &MousePerformanceController::clickStageDelete);
  onClick(mStagesUi->mStageEnableIndependentXY, &MousePerformanceController::tickStageIndependentXY);
  onClick(mStagesUi->mStageOkButton, &MousePerformanceController::clickStageOK);
  connect(mStagesUi->mStageCancelButton, &QAbstractButton::clicked, mSensitivityStagesView, &QDialog::reject);
  // Escape and a close of the sheet are a cancel too.
  connect(mSensitivityStagesView, &QDialog::rejected, this, &MousePerformanceController::clickStageCancel);
  connect(mSensitivityStagesView, &QDialog::finished, this, [this] { showStageRows(false); });
  connect(mStagesUi->mStageXDpiSlider, &QSlider::valueChanged, this,
          &MousePerformanceController::xDpiStageSliderValueChange);
  connect(mStagesUi->mStageYDpiSlider, &QSlider::valueChanged, this,
          &MousePerformanceController::yDpiStageSliderValueChange);
  connect(mStagesUi->mStageXDpiField, &ExactField::entered, mStagesUi->mStageXDpiSlider, &QSlider::setValue);
  connect(mStagesUi->mStageYDpiField, &ExactField::entered, mStagesUi->mStageYDpiSlider, &QSlider::setValue);
  connect(mStagesUi->mStagesTable->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &MousePerformanceController::tableViewSelectionDidChange);
}

void MousePerformanceController::clickSensitivityStages() {
  if (mSensitivityStagesView.isNull()) return;
  QWidget* under = performanceWindow ? performanceWindow.data() : this;
  if (mSensitivityStagesView->parentWidget() != under) {
    mSensitivityStagesView->setParent(under, mSensitivityStagesView->windowFlags());
  }
  mStagesUi->mStagesTitle->setText(localized("lkeyStagesOfProfile").arg(shownName(mUi->mProfileNameLabel->text())));
  showStageRows(true);
  selectCurrentStage();
  mStagesUi->mStagesTable->setFocus();
  mSensitivityStagesView->open();
}

int MousePerformanceController::selectedStage() const {
  const QModelIndexList rows = mStagesUi->mStagesTable->selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.constFirst().row();
}

void MousePerformanceController::selectCurrentStage() {
  const int current = numberOf(performanceSettingsDict, keys::StageValue).value_or(-1);
  if (current >= 0 && current < numberOfRowsInTableView()) {
    mStagesUi->mStagesTable->selectRow(current);
  } else {
    mStagesUi->mStagesTable->clearSelection();
  }
  tableViewSelectionDidChange();
}

void MousePerformanceController::loadStagesArray() {
  if (mSensitivityStagesView.isNull() || performanceSettingsDict.isNone()) return;
  mStagesArray = performanceSettingsDict[keys::Stages].arrayOrEmpty();
  reloadStagesTable();
  selectCurrentStage();
}

void MousePerformanceController::reloadStagesTable() {
  const int selected = selectedStage();
  mStagesModel->setStages(mStagesArray);
  showStageRows(mSensitivityStagesView->isVisible());
  mStagesUi->mStagesTable->selectRow(selected);
  numberOfRowsInTableView();
}

void MousePerformanceController::showStageRows(bool shown) {
  for (int row = 0; row < mStagesModel->rowCount(); ++row) mStagesUi->mStagesTable->setRowHidden(row, !shown);
}

void MousePerformanceController::tableViewSelectionDidChange() {
  // What was typed was meant for the stage before.
  mStagesUi->mStageXDpiField->discard();
  mStagesUi->mStageYDpiField->discard();
  showStageEditors();
  numberOfRowsInTableView();
}

void MousePerformanceController::showStageEditors() {
  const int selected = selectedStage();
  const PropertyList& stage = mStagesArray.at(selected);
  const bool isIndependent = stage[keys::StageIndependentXY].toInt() != 0;
  mStagesUi->mStageEnableIndependentXY->setChecked(isIndependent);
  setValueSilently(*mStagesUi->mStageXDpiSlider, stage[keys::StageDpiX].toInt());
  setValueSilently(*mStagesUi->mStageYDpiSlider, stage[keys::StageDpiY].toInt());
  showStageFields();
  const bool isSelected = selected >= 0;
  enableWithReason(*mStagesUi->mStageEnableIndependentXY, isSelected, "lkeyNoStageSelected");
  for (QWidget* control : std::initializer_list<QWidget*>{mStagesUi->mStageXDpiSlider, mStagesUi->mStageXDpiField}) {
    enableWithReason(*control, isSelected, "lkeyNoStageSelected");
  }
  for (QWidget* control : std::initializer_list<QWidget*>{mStagesUi->mStageYDpiSlider, mStagesUi->mStageYDpiField}) {
    enableWithReason(*control, isSelected && isIndependent, isSelected ? "lkeyAxesLocked" : "lkeyNoStageSelected");
  }
}

void MousePerformanceController::showStageFields() {
  const bool isSelected = selectedStage() >= 0;
  const auto shown = [isSelected](const QSlider& slider) {
    return isSelected ? std::optional(slider.value()) : std::nullopt;
  };
  mStagesUi->mStageXDpiField->showValue(shown(*mStagesUi->mStageXDpiSlider));
  mStagesUi->mStageYDpiField->showValue(shown(*mStagesUi->mStageYDpiSlider));
}

int MousePerformanceController::numberOfRowsInTableView() {
  const int count = mStagesModel->rowCount();
  const bool isSelected = selectedStage() >= 0;
  enableWithReason(*mStagesUi->mStageAddButton, count < static_cast<int>(keys::maximumStages), "lkeyMostStages");
  enableWithReason(*mStagesUi->mStageDeleteButton, isSelected && count > 1,
                   count > 1 ? "lkeyNoStageSelected" : "lkeyLastStage");
  enableWithReason(*mStagesUi->mStageOkButton, isSelected, "lkeyNoStageSelected");
  const QString note = isSelected && areStagesInForce() ? localized("lkeyStagesUnchanged") : QString();
  if (isSelected) mStagesUi->mStageOkButton->setToolTip(note);
  mStagesUi->mStagesNote->setText(note);
  return count;
}

bool MousePerformanceController::areStagesInForce() const {
  const PropertyList values = currentValues(mStagesArray, selectedStage());
  for (std::size_t entry = 0; entry < values.size(); ++entry) {
    if (!(performanceSettingsDict[values.keyAt(entry)] == values[values.keyAt(entry)])) return false;
  }
  return true;
}

void MousePerformanceController::clickStageAdd() {
  mStagesArray = mStagesArray.appending(mStagesArray.at(0)
                                            .with(keys::StageDpiX, mStagesUi->mStageXDpiSlider->value())
                                            .with(keys::StageDpiY, mStagesUi->mStageYDpiSlider->value())
                                            .with(keys::StageIndependentXY, 0));
  reloadStagesTable();
  // Past the last row, which selects nothing: the stage that was selected stays so.
  mStagesUi->mStagesTable->selectRow(static_cast<int>(mStagesArray.size()) + 2);
  tableViewSelectionDidChange();
}

void MousePerformanceController::clickStageDelete() {
  mStagesArray = mStagesArray.removing(selectedStage());
  reloadStagesTable();
  mStagesUi->mStagesTable->selectRow(static_cast<int>(mStagesArray.size()) - 1);
  tableViewSelectionDidChange();
}

void MousePerformanceController::replaceSelectedStage(const PropertyList& stage) {
  mStagesArray = mStagesArray.replacing(selectedStage(), stage);
  reloadStagesTable();
  showStageFields();
}

void MousePerformanceController::xDpiStageSliderValueChange() {
  const int x = mStagesUi->mStageXDpiSlider->value();
  PropertyList stage = mStagesArray.at(selectedStage()).with(keys::StageDpiX, x);
  if (!mStagesUi->mStageEnableIndependentXY->isChecked()) {
    setValueSilently(*mStagesUi->mStageYDpiSlider, x);
    stage = stage.with(keys::StageDpiY, x);
  }
  replaceSelectedStage(stage);
}

void MousePerformanceController::yDpiStageSliderValueChange() {
  replaceSelectedStage(mStagesArray.at(selectedStage()).with(keys::StageDpiY, mStagesUi->mStageYDpiSlider->value()));
}

void MousePerformanceController::tickStageIndependentXY() {
  const bool isIndependent = mStagesUi->mStageEnableIndependentXY->isChecked();
  PropertyList stage = mStagesArray.at(selectedStage()).with(keys::StageIndependentXY, isIndependent ? 1 : 0);
  if (!isIndependent) stage = stage.with(keys::StageDpiY, mStagesUi->mStageXDpiSlider->value());
  replaceSelectedStage(stage);
  showStageEditors();
}

void MousePerformanceController::clickStageOK() {
  mSensitivityStagesView->accept();
  makeCurrent(mStagesArray, selectedStage());
}

void MousePerformanceController::giveUpStagesSheet() {
  if (mSensitivityStagesView.isNull() || !mSensitivityStagesView->isVisible()) return;
  mSensitivityStagesView->reject();
  showNotCurrentAlert(mSensitivityStagesView->parentWidget(), mUi->mProfileNameLabel->text());
}

void MousePerformanceController::clickStageCancel() {
  loadStagesArray();
}

}  // namespace skarn
