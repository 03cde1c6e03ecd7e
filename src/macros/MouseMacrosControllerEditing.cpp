// The lines of a macro: the menus, deleting lines, and the two sheets.
#include <QMenu>
#include <QTableView>
#include <algorithm>
#include <utility>

#include "macros/MacroDetailsDelegate.h"
#include "macros/MacroDetailsModel.h"
#include "macros/MacroMenus.h"
#include "macros/MacroSheets.h"
#include "macros/MouseMacrosController.h"
#include "macros/NumberOnlyTextField.h"
#include "model/HidUsages.h"
#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"
#include "platform/GoneAlert.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "protocol/EngineProtocol.h"
#include "ui_MouseMacrosController.h"
#include "widgets/Alert.h"
#include "widgets/KeyCaptureField.h"

namespace skarn {

using vorn::Notification;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace newsKeys = vorn::newsKeys;

namespace {

MacroEventSheet::Partner partnerToOffer(const MacroDetailsModel& lines, int line) {
  const auto partner = lines.partnerOf(line);
  if (!partner) return MacroEventSheet::Partner::None;
  return *partner < line ? MacroEventSheet::Partner::Press : MacroEventSheet::Partner::Release;
}

}  // namespace

// --- Menus

MouseMacrosController::Menu MouseMacrosController::macroMenu() {
  return {macroMenuEntries(), QStringLiteral("clickMacroSettingsMenuItem"),
          &MouseMacrosController::clickMacroSettingsMenuItem};
}

MouseMacrosController::Menu MouseMacrosController::macroDetailsMenu() {
  return {macroDetailsMenuEntries(), QStringLiteral("clickMacroDetailsSettingsMenuItem"),
          &MouseMacrosController::clickMacroDetailsSettingsMenuItem};
}

void MouseMacrosController::setMMacrosSettingsArray(const PropertyList& macros) {
  // An edit of single lines does not renew the list: the record that they were edited away from may come back.
  if (mAreLinesNewer) mShownRecord = mShownRecord.without(keys::Sequence);
  if (macros.arrayOrEmpty() == macrosSettingsArray) return;
  macrosSettingsArray = macros.arrayOrEmpty();
  for (QMenu* menu : findChildren<QMenu*>()) menu->close();
}

void MouseMacrosController::setupSettingsMenus() {
  const auto setUp = [this](PullDownButton& gear, const Menu& menu) {
    gear.setItems(itemsOf(menu.entries), menu.operation, [this, menu](int tag) { (this->*menu.chosen)(tag); });
    connect(gear.menu(), &QMenu::aboutToShow, this, [this, shown = gear.menu()] { offerMenuItems(*shown); });
  };
  setUp(*mUi->mSettingsMacro, macroMenu());
  setUp(*mUi->mSettingsMacroDetails, macroDetailsMenu());
}

void MouseMacrosController::fillMenu(QMenu& shown, const Menu& menu) {
  addTaggedItems(shown, itemsOf(menu.entries), menu.operation, [this, menu](int tag) { (this->*menu.chosen)(tag); });
  offerMenuItems(shown);
}

void MouseMacrosController::fillMacroMenu(QMenu& menu) {
  fillMenu(menu, macroMenu());
}

void MouseMacrosController::fillMacroDetailsMenu(QMenu& menu) {
  fillMenu(menu, macroDetailsMenu());
}

bool MouseMacrosController::validateMenuItem(const QAction& item) const {
  return isMenuItemEnabled(item, menuState());
}

void MouseMacrosController::offerMenuItems(QMenu& menu) const {
  menu.setToolTipsVisible(true);
  for (QMenu* submenu : menu.findChildren<QMenu*>()) submenu->setToolTipsVisible(true);
  const MacroMenuState state = menuState();
  for (QAction* item : taggedItems(menu)) {
    item->setEnabled(isMenuItemEnabled(*item, state));
    item->setToolTip(whyMenuItemIsDisabled(*item, state));
    if (item->isCheckable()) item->setChecked(mKeepsPairs);
  }
}

void MouseMacrosController::clickMacroSettingsMenuItem(int tag) {
  switch (tag) {
    case macroMenuTags::Rename:
      renameSelectedMacro();
      break;
    case macroMenuTags::New:
      clickAddMacro();
      break;
    case macroMenuTags::Import:
      loadPanel();
      break;
    case macroMenuTags::Export:
      loadSaveAsPanel();
      break;
    case macroMenuTags::Delete:
      clickDeleteMacro();
      break;
    case macroMenuTags::Duplicate:
      duplicateSelectedMacro();
      break;
    default:
      break;
  }
}

void MouseMacrosController::clickMacroDetailsSettingsMenuItem(int tag) {
  endEdits();
  const int macro = macroToAsk();
  if (macro < 0) return;
  switch (tag) {
    case macroDetailsMenuTags::Record:
      clickRecordMacroDetails();
      break;
    case macroDetailsMenuTags::Edit:
      editSelectedLine();
      break;
    case macroDetailsMenuTags::DeleteEvent:
      clickDeleteMacroDetails();
      break;
    case macroDetailsMenuTags::DeleteAllEvents:
      askAboutMacro(macro, "lkeyDeleteAllEventsAlertTitle", localized("lkeyDeleteAllEventsAlertDesc"),
                    &MouseMacrosController::deleteAllLines);
      break;
    case macroDetailsMenuTags::CopyDelay:
      // The row stands for its delay: the engine reads it and gives it to every event.
      if (const int line = selectedLine(); line >= 1 && isDelayLine(line)) {
        macroDelegate->setAllEventsDelay(line, macro, false);
        fetchLines();
      }
      break;
    case macroDetailsMenuTags::NoDelay:
      macroDelegate->setAllEventsDelay(0, macro, true);
      fetchLines();
      break;
    default:
      clickSequenceMenuItem(tag);
  }
}

// --- Lines

void MouseMacrosController::detailsTableViewSelectionDidChange() {
  if (!mIsReloading) offerLineDeletion(selectedLine() >= 0);
}

void MouseMacrosController::offerLineDeletion(bool offered) {
  mIsLineDeletionOffered = offered;
  updateControls();
}

void MouseMacrosController::clickDeleteMacroDetails() {
  endEdits();
  const int macro = macroToAsk();
  const int line = selectedLine();
  if (macro < 0 || line < 0) {
    mBeep();
    return;
  }
  if (selectedLines().size() > 1) {
    deleteSelectedLines();
    return;
  }
  macroDelegate->removeEventAtIndex(line, macro);
  fetchLines();
  const int count = mDetailsModel->rowCount();
  if (count > 0) selectLine(std::min(line, count - 1));
  mUi->mMacroDetailsTableView->setFocus();
}

void MouseMacrosController::deleteAllLines(int macro) {
  macroDelegate->removeAllEventsForMacroAtIndex(macro);
  fetchLines();
}

void MouseMacrosController::editSelectedLine() {
  const int macro = macroToAsk();
  const int line = selectedLine();
  if (macro < 0 || line < 0) return;
  if (selectedLines().size() > 1) {
    openDelaysOfMany();
  } else if (isDelayLine(line)) {
    rememberEditedLine(macro, line);
    mEditDelayWindow->begin(mDetailsModel->index(line).data().toString());
  } else {
    openEventSheet();
  }
}

// --- What a sheet is for

bool MouseMacrosController::isLineEdited() const {
  return mEdited && (mEdited->isInPlace || mEditDelayWindow->isVisible() || mEditEventWindow->isVisible());
}

void MouseMacrosController::rememberEditedLine(int macro, int line) {
  // The delay sheet is for this line now.
  mMeantSheet.reset();
  mEdited.emplace(EditedLine{vorn::RememberedRecord(macrosSettingsArray, macro, keys::MacroName),
                             vorn::RememberedLine(mDetailsModel->lines(), line)});
}

bool MouseMacrosController::followEditedMacro() {
  if (!isLineEdited()) return true;
  const auto place = mEdited->macro.placeIn(macrosSettingsArray);
  if (!place) {
    const QString name = QString::fromStdString(mEdited->macro.name());
    cancelLineEdit();
    showGoneAlert(sheetWindow(), name);
    return false;
  }
  mEdited->macro = vorn::RememberedRecord(macrosSettingsArray, *place, keys::MacroName);
  // The lines that come then are followed too.
  if (const int row = static_cast<int>(*place); row != selectedMacro()) {
    selectMacroRow(row);
  } else if (!areLinesOf(row)) {
    macroTableViewSelectionDidChange();
  }
  // An edit in place needs its line, and that has not come.
  if (mEdited && mEdited->isInPlace && !mDelays->isEditing()) mEdited.reset();
  return mEdited.has_value();
}

bool MouseMacrosController::followEditedLine() {
  // Lines of another macro say nothing about it.
  const bool areItsLines = mEdited && mEdited->macro.placeIn(macrosSettingsArray) == selectedMacro();
  if (!areItsLines || !isLineEdited()) return true;
  const auto place = mEdited->line.placeIn(mDetailsModel->lines());
  if (!place) {
    const std::string macro = mEdited->macro.name();
    cancelLineEdit();
    lineIsGone(macro);
    return false;
  }
  const int line = static_cast<int>(*place);
  if (line != selectedLine()) selectLine(line);
  mEdited->line = vorn::RememberedLine(mDetailsModel->lines(), line);
  resumeDelayEdit();
  return true;
}

void MouseMacrosController::cancelLineEdit() {
  if (mEdited->isInPlace) {
    mDelays->discardEdit();
    mEdited.reset();
  } else if (mEditEventWindow->isVisible()) {
    clickMacroEventCancel();
  } else {
    clickMacroDelayCancel();
  }
}

void MouseMacrosController::lineIsGone(const std::string& macro) {
  Alert::show(sheetWindow(), localized("lkeyLineGoneTitle"),
              localized("lkeyLineGoneDesc").arg(shownName(QString::fromStdString(macro))), {localized("lkeyOK")});
}

// --- A delay in place

void MouseMacrosController::editLineInPlace() {
  const int line = selectedLine();
  if (line < 0 || !validateMenuItem(QAction(localized("lkeyEdit")))) return;
  if (isDelayLine(line) && selectedLines().size() == 1) {
    if (macroToAsk() >= 0) mUi->mMacroDetailsTableView->edit(mDetailsModel->index(line));
  } else {
    editSelectedLine();
  }
}

void MouseMacrosController::delayEditingStarted(int row) {
  rememberEditedLine(selectedMacro(), row);
  mEdited->isInPlace = true;
}

void MouseMacrosController::delayEditingEnded(std::optional<int> milliseconds) {
  if (!mEdited || !mEdited->isInPlace) return;
  const EditedLine edited = *std::exchange(mEdited, std::nullopt);
  if (!milliseconds || macroDelegate == nullptr || isSessionRunning()) return;
  const int macro = selectMeantMacro(edited.macro);
  if (macro < 0) return;
  const auto place = edited.line.placeIn(mDetailsModel->lines());
  if (!place) return lineIsGone(edited.macro.name());
  const int line = static_cast<int>(*place);
  macroDelegate->setNewDelay(*milliseconds, line, macro);
  fetchLines();
  selectLine(line);
}

void MouseMacrosController::interruptDelayEdit() {
  if (!mEdited || !mDelays->isEditing()) return;
  EditedLine edited = *std::exchange(mEdited, std::nullopt);
  edited.typed = mDelays->typedDelay();
  mDelays->discardEdit();
  mEdited = std::move(edited);
}

void MouseMacrosController::resumeDelayEdit() {
  if (!mEdited->isInPlace || mDelays->isEditing()) return;
  const auto typed = mEdited->typed;
  mUi->mMacroDetailsTableView->edit(mDetailsModel->index(selectedLine()));
  if (typed) mDelays->setTypedDelay(*typed);
}

// --- A delay

void MouseMacrosController::clickMacroDelayOK() {
  const int milliseconds = mEditDelayWindow->mInputMacroDelay().integerValue();
  if (const auto entered = std::exchange(mDelayEntered, {})) {
    mEditDelayWindow->hide();
    entered(milliseconds);
    return;
  }
  if (!followEditedMacro() || !followEditedLine()) return;
  mEdited.reset();
  mEditDelayWindow->hide();
  const int macro = macroToAsk();
  const int line = selectedLine();
  if (macro < 0 || line < 0) return;
  macroDelegate->setNewDelay(milliseconds, line, macro);
  fetchLines();
}

void MouseMacrosController::clickMacroDelayCancel() {
  mDelayEntered = {};
  mEdited.reset();
  mEditDelayWindow->hide();
}

// --- An event

void MouseMacrosController::openEventSheet() {
  beginEventCapture();
  rememberEditedLine(selectedMacro(), selectedLine());
  mEditEventWindow->begin(partnerToOffer(*mDetailsModel, selectedLine()));
  mIsEditingMacro = true;
  mSequenceDict = PropertyList::dictionary();
  if (isEventWithinReach(selectedMacro(), selectedLine())) {
    mSequenceDict = macroDelegate->getSequenceDetails(static_cast<std::uint8_t>(selectedMacro()),
                                                      static_cast<std::uint8_t>(selectedLine()));
  }
  macroDelegate->startEditHID();
  setRecordTitle(true);
}

void MouseMacrosController::openInsertSheet(const MeantLines& meant, bool isBefore) {
  beginEventCapture();
  mInsertedKey.emplace(InsertedKey{meant, isBefore});
  mEditEventWindow->beginInserting();
  mIsEditingMacro = true;
  rememberMeantSheet(meant, *mEditEventWindow);
  macroDelegate->startEditHID();
  setRecordTitle(true);
}

void MouseMacrosController::beginEventCapture() {
  setStateOfTables(false);
  mIsMacroEventEdit = true;
  mMacroEventEditHIDCode = 0;
  mInsertedKey.reset();
}

void MouseMacrosController::singleKeyEvents(const Notification& notification) {
  const int key = notification.userInfo[newsKeys::SingleKey].toInt();
  const int modifier = notification.userInfo[newsKeys::SingleKeyModif].toInt();
  takeCaughtKey(modifier != 0 && key == 0 ? modifier : key);
  // Without the sheet nobody would confirm it.
  if (!isRecordTitleStop() || !mIsEditingMacro || mEditEventWindow->isVisible()) return;
  endEventCapture();
  if (!std::exchange(mInsertedKey, std::nullopt)) storeCaughtKey(false, false);
  endEventEditing();
}

void MouseMacrosController::takeCaughtKey(int usage) {
  KeyCaptureField& input = mEditEventWindow->mInputMacroEvent();
  mMacroEventEditHIDCode = static_cast<std::uint8_t>(usage);
  if (mMacroEventEditHIDCode == 0) {
    input.begin();
  } else {
    input.showKey(QString::fromStdString(vorn::eventParser::getStringWithHID(mMacroEventEditHIDCode, 0)));
  }
}

// The event is read afresh: it may have changed since the sheet was opened.
void MouseMacrosController::storeCaughtKey(bool setsPage, bool changesPartner) {
  const int macro = macroToAsk();
  const int line = selectedLine();
  if (macro < 0 || line < 0) return;
  const auto partner = changesPartner ? mDetailsModel->partnerOf(line) : std::nullopt;
  if (!isEventWithinReach(macro, std::max(line, partner.value_or(line)))) {
    if (mMacroEventEditHIDCode != 0)
      replaceUsage(meantLines(), {vorn::hid::keyboardPage, mMacroEventEditHIDCode}, partner.has_value());
    return;
  }
  const auto macroRow = static_cast<std::uint8_t>(macro);
  const auto lineRow = static_cast<std::uint8_t>(line);
  mSequenceDict = macroDelegate->getSequenceDetails(macroRow, lineRow);
  if (mSequenceDict.isEmpty() || mMacroEventEditHIDCode == 0) return;
  const PropertyList before = std::exchange(mSequenceDict, withCaughtKey(mSequenceDict, setsPage));
  const auto partnerRow = static_cast<std::uint8_t>(partner.value_or(0));
  const PropertyList other = partner ? macroDelegate->getSequenceDetails(macroRow, partnerRow) : PropertyList();
  macroDelegate->updateSequenceInfo(macroRow, lineRow, mSequenceDict);
  // Keys of one name share their lines.
  if (vorn::isReleaseOf(before, other) || vorn::isReleaseOf(other, before))
    macroDelegate->updateFurtherSequenceInfo(macroRow, partnerRow, withCaughtKey(other, setsPage));
  fetchLines();
}

PropertyList MouseMacrosController::withCaughtKey(const PropertyList& event, bool setsPage) const {
  const PropertyList changed = event.with(keys::Argument, mMacroEventEditHIDCode);
  return setsPage ? changed.with(keys::Page, vorn::hid::keyboardPage) : changed;
}

void MouseMacrosController::endEventCapture() {
  mIsEditingMacro = false;
  mIsMacroEventEdit = false;
  if (macroDelegate != nullptr) macroDelegate->stopSingleKeyRecording();
}

void MouseMacrosController::endEventEditing() {
  setRecordTitle(false);
  setStateOfTables(true);
  mEditEventWindow->hide();
}

void MouseMacrosController::clickMacroEventOK() {
  if (const auto inserted = std::exchange(mInsertedKey, std::nullopt)) {
    endEventCapture();
    endEventEditing();
    if (mMacroEventEditHIDCode != 0)
      insertStroke(inserted->meant, inserted->isBefore, {vorn::hid::keyboardPage, mMacroEventEditHIDCode});
    return;
  }
  if (!followEditedMacro() || !followEditedLine()) return;
  mEdited.reset();
  endEventCapture();
  storeCaughtKey(true, mEditEventWindow->changesPartner());
  endEventEditing();
}

void MouseMacrosController::clickMacroEventCancel() {
  mEdited.reset();
  mInsertedKey.reset();
  endEventCapture();
  endEventEditing();
  mUi->mMacroDetailsTableView->setFocus();
}

}  // namespace skarn
