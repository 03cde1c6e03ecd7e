// The list of macros: new ones, names, deletion and files.
#include <QKeyEvent>
#include <QTableView>
#include <algorithm>
#include <utility>

#include "macros/MacroDetailsDelegate.h"
#include "macros/MacroFiles.h"
#include "macros/MacroMenus.h"
#include "macros/MacroNameDelegate.h"
#include "macros/MacrosTableModel.h"
#include "macros/MouseMacrosController.h"
#include "model/SettingsKeys.h"
#include "model/VrCoreUtility.h"
#include "platform/AddProblem.h"
#include "platform/GoneAlert.h"
#include "platform/Localization.h"
#include "platform/LostAssignments.h"
#include "platform/RecordFile.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "protocol/EngineProtocol.h"
#include "ui_MouseMacrosController.h"
#include "widgets/Alert.h"

namespace skarn {

using vorn::PropertyList;
using vorn::RememberedRecord;
using vorn::ReturnStatus;
namespace keys = vorn::keys;

namespace {

constexpr const char* newMacroName = "Untitled Macro";
constexpr int newMacroDelay = 20;  // milliseconds

PropertyList newMacro(const std::string& name) {
  return PropertyList::dictionary({{keys::MacroName, name},
                                   {keys::Delay, newMacroDelay},
                                   {keys::ResponseMsgPortName, vorn::configuratorReplyPortName},
                                   {keys::Sequence, PropertyList::dictionary()}});
}

}  // namespace

// --- New macros

std::string MouseMacrosController::checkForDuplicateMacroName(const PropertyList& macros,
                                                              std::string_view usingDefaultName) {
  return vorn::VrCoreUtility::generateName(macros, usingDefaultName, keys::MacroName);
}

void MouseMacrosController::clickAddMacro() {
  endEdits();
  if (macroDelegate == nullptr) return;
  mIsAddMacro = true;
  const int selected = selectedMacro();
  deselectMacro();
  const PropertyList before = macrosSettingsArray;
  const PropertyList macro = newMacro(checkForDuplicateMacroName(before, newMacroName));
  macrosSettingsArray = before.appending(macro);
  // The new one is to be seen.
  mUi->mMacroSearch->clear();
  refreshTableDisplay();
  const int last = mModel->rowCount() - 1;
  selectMacroRow(last);
  mUi->mMacroTableView->edit(mModel->index(last, MacrosTableModel::Name));
  const auto status = macroDelegate->addMacroWithSettings(macro);
  mIsAddMacro = false;
  if (status == ReturnStatus::Done) {
    // Only now the engine has any.
    fetchLines();
    return;
  }
  takeBack(macro, before, selected);
  showAddProblem(sheetWindow(), textOf(macro, keys::MacroName), vorn::RecordKind::Macro, status);
}

std::optional<ReturnStatus> MouseMacrosController::addRecord(const PropertyList& record) {
  const PropertyList before = macrosSettingsArray;
  const std::string name = checkForDuplicateMacroName(before, record[keys::MacroName].string());
  const PropertyList named = record.with(keys::MacroName, name);
  const int selected = selectedMacro();
  deselectMacro();
  macrosSettingsArray = before.appending(named);
  const auto status = macroDelegate->addMacroWithSettings(named);
  if (status != ReturnStatus::Done) {
    takeBack(named, before, selected);
    return status;
  }
  mUi->mMacroSearch->clear();
  refreshTableDisplay();
  selectMacroRow(mModel->rowCount() - 1);
  return status;
}

void MouseMacrosController::importMacro(const PropertyList& macro, const QString& path) {
  if (macroDelegate == nullptr) return;
  const auto status = addRecord(macro);
  if (status != ReturnStatus::Done)
    showImportProblem(sheetWindow(), path, reasonAgainstAdding(vorn::RecordKind::Macro, status));
}

void MouseMacrosController::duplicateSelectedMacro() {
  endEdits();
  const int selected = macroToAsk();
  if (selected < 0 || isSessionRunning()) return;
  const RememberedRecord macro(macrosSettingsArray, selected, keys::MacroName);
  // Edits of single events have not renewed the list.
  macroDelegate->reloadMacros();
  const int row = selectMeantMacro(macro);
  if (row < 0) return;
  const PropertyList record = macrosSettingsArray.at(row).without(keys::MacroID);
  const auto status = addRecord(record);
  if (status != ReturnStatus::Done)
    showAddProblem(sheetWindow(), textOf(record, keys::MacroName), vorn::RecordKind::Macro, status);
}

bool MouseMacrosController::takesMacroKey(const QKeyEvent& key) {
  const MacroMenuEntry* entry = entryOfKey(macroMenuEntries(), key);
  if (entry == nullptr) return false;
  if (key.isAutoRepeat()) return true;
  if (entry->missing(menuState()) != nullptr) {
    mBeep();
  } else {
    clickMacroSettingsMenuItem(entry->tag);
  }
  return true;
}

// --- Finding

bool MouseMacrosController::hasSoughtName(int row) const {
  const QString name = mModel->index(row, MacrosTableModel::Name).data().toString();
  return name.contains(mUi->mMacroSearch->text(), Qt::CaseInsensitive);
}

void MouseMacrosController::searchAnew() {
  if (const int row = selectedMacro(); row >= 0 && !hasSoughtName(row)) deselectMacro();
  searchMacros();
}

void MouseMacrosController::searchMacros() {
  const QString sought = mUi->mMacroSearch->text();
  if (sought.isEmpty() && !std::exchange(mIsSearching, false)) return;
  mIsSearching = !sought.isEmpty();
  bool hasShown = false;
  const int selected = selectedMacro();
  for (int row = 0; row < mModel->rowCount(); ++row) {
    const bool isShown = row == selected || hasSoughtName(row);
    mUi->mMacroTableView->setRowHidden(row, !isShown);
    hasShown = hasShown || isShown;
  }
  mUi->mNothingFoundLabel->setVisible(!hasShown && mModel->rowCount() > 0);
}

bool MouseMacrosController::takesSearchKey(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Escape:
      if (mUi->mMacroSearch->text().isEmpty()) {
        mUi->mMacroTableView->setFocus();
      } else {
        mUi->mMacroSearch->clear();
      }
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      goToList();
      return true;
    default:
      return false;
  }
}

void MouseMacrosController::goToList() {
  int row = selectedMacro();
  for (int shown = 0; row < 0 && shown < mModel->rowCount(); ++shown) {
    if (!mUi->mMacroTableView->isRowHidden(shown)) row = shown;
  }
  if (row < 0) return;
  mUi->mMacroTableView->setFocus();
  if (row != selectedMacro()) selectMacroRow(row);
}

void MouseMacrosController::selectMacroNear(int row) {
  const int count = mModel->rowCount();
  int near = std::min(row, count - 1);
  while (near < count && !hasSoughtName(near)) ++near;
  if (near == count) near = std::min(row, count) - 1;
  while (near >= 0 && !hasSoughtName(near)) --near;
  if (near >= 0) {
    selectMacroRow(near);
  } else {
    deselectMacro();
  }
  searchMacros();
}

void MouseMacrosController::setMAllProfiles(const PropertyList& profiles) {
  allProfiles = profiles;
  tellWhoPlays();
}

void MouseMacrosController::tellWhoPlays() {
  const int row = selectedMacro();
  const QString controls =
      row < 0 ? QString()
              : assignmentsTo(allProfiles, {vorn::AssignmentCommand::Macro, row, macrosSettingsArray.size()});
  mUi->mMacroAssignmentLabel->setText(controls.isEmpty() ? localized("lkeyMacroAssignment")
                                                         : localized("lkeyPlayedBy").arg(controls));
}

void MouseMacrosController::takeBack(const PropertyList& macro, const PropertyList& before, int selected) {
  mNames->discardEdit();
  if (macrosSettingsArray == before.appending(macro)) macrosSettingsArray = before;
  refreshTableDisplay();
  if (selected >= 0 && selected < mModel->rowCount()) selectMacroRow(selected);
}

// --- Deletion

void MouseMacrosController::clickDeleteMacro() {
  endEdits();
  const int row = macroToAsk();
  if (row < 0) return;
  askAboutMacro(row, "lkeyDeleteMacroAlertTitle",
                withLostAssignments(localized("lkeyDeleteMacroAlertDesc"), allProfiles,
                                    {vorn::AssignmentCommand::Macro, row, macrosSettingsArray.size()}),
                &MouseMacrosController::deleteMacro);
}

void MouseMacrosController::askAboutMacro(int row, const char* title, const QString& description,
                                          void (MouseMacrosController::*confirmed)(int row)) {
  const RememberedRecord macro(macrosSettingsArray, row, keys::MacroName);
  Alert::ask(sheetWindow(), localized(title).arg(shownName(QString::fromStdString(macro.name()))), description,
             localized("lkeyDeleteAction"), localized("lkeyCancel"),
             [guard = QPointer(this), macro, confirmed](int returnCode) {
               if (!guard || returnCode != Alert::firstButtonReturn) return;
               if (const int place = guard->selectMeantMacro(macro); place >= 0) (guard->*confirmed)(place);
             });
}

int MouseMacrosController::selectMeantMacro(const RememberedRecord& macro) {
  refreshTableDisplay();
  if (macroDelegate == nullptr) return -1;
  const auto place = macro.placeIn(macrosSettingsArray);
  if (!place) {
    showGoneAlert(sheetWindow(), QString::fromStdString(macro.name()));
    return -1;
  }
  const int row = static_cast<int>(*place);
  if (row != selectedMacro()) selectMacroRow(row);
  return row;
}

void MouseMacrosController::deleteMacro(int row) {
  const PropertyList before = mShownRecord;
  macroDelegate->deleteMacroAtIndex(row);
  refreshTableDisplay();
  // Where another macro has moved into the row, its lines are there already.
  if (mShownRecord == before) fetchLines();
  if (mModel->rowCount() > 0) selectMacroNear(row);
  mUi->mMacroTableView->setFocus();
}

// --- Names

void MouseMacrosController::renameSelectedMacro() {
  endEdits();
  const int row = selectedMacro();
  if (row < 0) return;
  isRenamingMacroName = true;
  mUi->mMacroTableView->edit(mModel->index(row, MacrosTableModel::Name));
}

void MouseMacrosController::nameEditingStarted(int row) {
  editedRow = row;
  isRenamingMacroName = true;
  mNamed.emplace(macrosSettingsArray, row, keys::MacroName);
  updateControls();
}

void MouseMacrosController::nameEditingEnded() {
  editedRow = -1;
  isRenamingMacroName = false;
  mNamed.reset();
  updateControls();
}

void MouseMacrosController::endEdits() {
  mNames->commitEdit();
  mDelays->commitEdit();
}

std::optional<MouseMacrosController::InterruptedEdit> MouseMacrosController::interruptNameEdit() {
  if (!mNamed) return std::nullopt;
  const RememberedRecord macro = *mNamed;
  const auto place = macro.placeIn(macrosSettingsArray);
  if (place == editedRow) return std::nullopt;
  const InterruptedEdit edit{macro.name(), place ? static_cast<int>(*place) : -1, mNames->typedName()};
  mNames->discardEdit();
  return edit;
}

void MouseMacrosController::resumeNameEdit(const InterruptedEdit& edit) {
  if (edit.row < 0) {
    showGoneAlert(sheetWindow(), QString::fromStdString(edit.macro));
    return;
  }
  selectMacroRow(edit.row);
  mUi->mMacroTableView->edit(mModel->index(edit.row, MacrosTableModel::Name));
  if (edit.typed) mNames->setTypedName(*edit.typed);
}

void MouseMacrosController::nameEdited(int place, const QString& text) {
  // The list that changes here is no news to the edit that ends.
  const RememberedRecord named =
      std::exchange(mNamed, std::nullopt).value_or(RememberedRecord(macrosSettingsArray, place, keys::MacroName));
  if (text.isEmpty() || macroDelegate == nullptr) return;
  const auto found = named.placeIn(macrosSettingsArray);
  if (!found) {
    showGoneAlert(sheetWindow(), QString::fromStdString(named.name()));
    return;
  }
  const int row = static_cast<int>(*found);
  // Its own old name must not count against the new one.
  const PropertyList nameless = macrosSettingsArray.at(row).dictionaryOrEmpty().with(keys::MacroName, "");
  macrosSettingsArray = macrosSettingsArray.replacing(row, nameless);
  const std::string name = checkForDuplicateMacroName(macrosSettingsArray, text.toStdString());
  macrosSettingsArray = macrosSettingsArray.replacing(row, nameless.with(keys::MacroName, name));
  const bool isSelected = row == selectedMacro();
  // The same macro under another name.
  if (isSelected) mShownRecord = macrosSettingsArray.at(row);
  refreshTableDisplay();
  const RememberedRecord renamed(macrosSettingsArray, row, keys::MacroName);
  macroDelegate->renameMacroAtIndex(row, name);
  isRenamingMacroName = false;
  // What the reload brought may have moved it, and what comes next is meant for it.
  const auto stands = renamed.placeIn(macrosSettingsArray);
  if (isSelected && stands && *stands != selectedMacro()) selectMacroRow(static_cast<int>(*stands));
}

// --- Files

void MouseMacrosController::loadPanel() {
  endEdits();
  MacroFiles::open(sheetWindow(), [guard = QPointer(this)](const PropertyList& macro, const QString& path) {
    if (guard) guard->importMacro(macro, path);
  });
}

void MouseMacrosController::loadSaveAsPanel() {
  endEdits();
  const int row = macroToAsk();
  if (row < 0) return;
  const RememberedRecord macro(macrosSettingsArray, row, keys::MacroName);
  macroDelegate->reloadMacros();
  if (!macro.placeIn(macrosSettingsArray)) {
    showGoneAlert(sheetWindow(), QString::fromStdString(macro.name()));
    return;
  }
  MacroFiles::saveAs(sheetWindow(), QString::fromStdString(macro.name()),
                     [guard = QPointer(this), macro](const QString& path) {
                       if (guard) guard->exportMacro(macro, path);
                     });
}

void MouseMacrosController::exportMacro(const RememberedRecord& macro, const QString& path) {
  if (const auto place = macro.placeIn(macrosSettingsArray)) {
    exportRecord(sheetWindow(), path, macrosSettingsArray.at(*place), vorn::RecordKind::Macro, mUi->mMacroNotice);
  } else {
    showGoneAlert(sheetWindow(), QString::fromStdString(macro.name()));
  }
}

}  // namespace skarn
