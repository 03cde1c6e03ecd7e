// Recordings: the record and append buttons, and the lines that arrive meanwhile.
#include <QPushButton>
#include <QTableView>
#include <utility>

#include "macros/MacroDetailsModel.h"
#include "macros/MacroSheets.h"
#include "macros/MacrosTableModel.h"
#include "macros/MouseMacrosController.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"
#include "platform/Localization.h"
#include "protocol/EngineProtocol.h"
#include "ui_MouseMacrosController.h"
#include "widgets/Alert.h"

namespace skarn {

using vorn::Notification;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace newsKeys = vorn::newsKeys;

namespace {

// The two titles of the record button; its state, and so never translated.
constexpr QLatin1String recordTitle("Record");
constexpr QLatin1String stopTitle("Stop");

PropertyList finishedLines(const PropertyList& lines) {
  return lines.at(0).isDictionary() ? vorn::eventParser::getMessagesArray(lines) : lines;
}

}  // namespace

void MouseMacrosController::setMNotificationCenter(vorn::NotificationCenter* center) {
  if (notificationCenter != nullptr) notificationCenter->removeObserver(this);
  notificationCenter = center;
  if (notificationCenter != nullptr) registerNotifications();
}

void MouseMacrosController::registerNotifications() {
  notificationCenter->addObserver(this, vorn::notificationNames::macroSequence(vorn::wiredProductID),
                                  [this](const Notification& news) { recordedMessages(news); });
  notificationCenter->addObserver(this,
                                  vorn::notificationNames::singleKeyEvent(vorn::notificationNames::macroEventCapture),
                                  [this](const Notification& news) { singleKeyEvents(news); });
}

void MouseMacrosController::setRecordTitle(bool isStop) {
  mUi->mRecordMacroDetails->setText(isStop ? stopTitle : recordTitle);
  mUi->mRecordMacroDetails->setChecked(isStop);
}

bool MouseMacrosController::isRecordTitleStop() const {
  return mUi->mRecordMacroDetails->text() == stopTitle;
}

void MouseMacrosController::clickAddMacroDetails() {
  endEdits();
  const int macro = macroToAsk();
  if (macro < 0) return;
  mIsAppendMacro = true;
  isRecording = true;
  mIsStopRecording = false;
  setStateOfTables(false);
  setRecordTitle(true);
  mUi->mRecordMacroDetails->setFocus();
  mUi->mMacroDetailsTableView->clearSelection();
  rememberRecordedMacro(macro);
  beginRecordingProgress();
  macroDelegate->startMacroRecording(true, macro);
}

void MouseMacrosController::clickRecordMacroDetails() {
  mIsStopRecording = false;
  if (isRecordTitleStop()) {
    endRecording();
  } else {
    beginRecording();
  }
}

void MouseMacrosController::beginRecording() {
  endEdits();
  const int macro = macroToAsk();
  // The press has turned the button already.
  setRecordTitle(macro >= 0);
  if (macro < 0) return;
  isRecording = true;
  isRenamingMacroName = false;
  setStateOfTables(false);
  mUi->mRecordMacroDetails->setFocus();
  showLines(PropertyList::array());
  offerLineDeletion(selectedLine() >= 0);
  rememberRecordedMacro(macro);
  beginRecordingProgress();
  macroDelegate->startMacroRecording(mIsAppendMacro, macro);
}

void MouseMacrosController::clickDiscardRecording() {
  if (!isRecording) return;
  const bool hasEvents = (mDetailsModel->rowCount() + 1) / 2 > mEventsBeforeRecording;
  const bool canBeSaved = mRecorded && hasEvents;
  const bool wasAppended = mIsAppendMacro;
  mRecorded.reset();
  isRecording = false;
  mIsAppendMacro = false;
  // The stop is followed by one last batch.
  mIsStopRecording = true;
  mIsLastDiscarded = true;
  setRecordTitle(false);
  setStateOfTables(true);
  if (macroDelegate != nullptr) {
    macroDelegate->stopMacroRecording();
    fetchLines();
    if (canBeSaved) mDiscarded.emplace(DiscardedRecording{meantLines(), wasAppended});
  }
  offerLineDeletion(selectedLine() >= 0);
  mUi->mRecordMacroDetails->setFocus();
}

void MouseMacrosController::clickUndoDiscard() {
  if (macroToAsk() < 0 || !mDiscarded) return;
  const DiscardedRecording discarded = *std::exchange(mDiscarded, std::nullopt);
  if (const auto opened = openSequence(discarded.left)) {
    macroDelegate->saveRecordedEventsForMacroAtIndex(opened->macro, discarded.wasAppended);
    fetchLines();
  }
  tellRecordingProgress();
  mUi->mRecordMacroDetails->setFocus();
}

void MouseMacrosController::beginRecordingProgress() {
  mDiscarded.reset();
  mIsLastDiscarded = false;
  mEventsBeforeRecording = (mDetailsModel->rowCount() + 1) / 2;
  mRecordingTime.start();
  mRecordingTicks.start();
  updateVisibleParts();
  tellRecordingProgress();
}

void MouseMacrosController::tellRecordingProgress() {
  // The macro that it was made for is to be seen, as it was then.
  const bool canUndo = !isRecording && mDiscarded &&
                       mDiscarded->left.macro.placeIn(macrosSettingsArray) == selectedMacro() &&
                       mDiscarded->left.lines == mDetailsModel->lines();
  mUi->mRecordingProgress->setVisible(isRecording || canUndo);
  mUi->mDiscardRecording->setVisible(isRecording);
  mUi->mUndoDiscard->setVisible(canUndo);
  const QString whyNot = whyDisabled(Needs::Macro, mAreTableButtonsOffered);
  mUi->mUndoDiscard->setEnabled(whyNot.isEmpty());
  mUi->mUndoDiscard->setToolTip(whyNot.isEmpty() ? localized("lkeyUndoDiscardTip") : whyNot);
  if (!isRecording) {
    mUi->mRecordingProgress->setText(localized("lkeyRecordingDiscarded"));
    mRecordingTicks.stop();
    return;
  }
  const int events = (mDetailsModel->rowCount() + 1) / 2 - mEventsBeforeRecording;
  const qint64 seconds = mRecordingTime.isValid() ? mRecordingTime.elapsed() / 1000 : 0;
  mUi->mRecordingProgress->setText(
      localized("lkeyRecordingProgress").arg(events).arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0')));
}

void MouseMacrosController::tellPressedAtEnd() {
  QStringList names;
  if (!isRecording) {
    for (const std::string& name : vorn::namesPressedAtEnd(mDetailsModel->lines()))
      names << (name.empty() ? localized("lkeySingleKeyNameless") : QString::fromStdString(name));
  }
  mUi->mPressedAtEndLabel->setVisible(!names.isEmpty());
  mUi->mPressedAtEndLabel->setText(
      names.isEmpty() ? QString() : localized("lkeyPressedAtEnd").arg(names.join(QLatin1String(", "))));
}

void MouseMacrosController::rememberRecordedMacro(int row) {
  mRecorded.emplace(macrosSettingsArray, row, keys::MacroName);
  mMacroCountAtRecording = macrosSettingsArray.size();
}

void MouseMacrosController::followRecordedMacro() {
  auto place = mRecorded->placeIn(macrosSettingsArray);
  // In a list of the same length it has only got another name.
  if (!place && macrosSettingsArray.size() == mMacroCountAtRecording) place = selectedMacro();
  if (!place || *place < 0) return recordingIsLost("lkeyRecordingLostDesc");
  const int row = static_cast<int>(*place);
  if (row != selectedMacro()) {
    mIsReloading = true;
    selectMacroRow(row);
    mIsReloading = false;
  }
  rememberRecordedMacro(row);
}

void MouseMacrosController::recordingIsLost(const char* reason) {
  const QString name = QString::fromStdString(mRecorded->name());
  mRecorded.reset();
  isRecording = false;
  mIsAppendMacro = false;
  // The engine has dropped the recording: no last batch follows.
  mIsStopRecording = false;
  setRecordTitle(false);
  setStateOfTables(true);
  macroTableViewSelectionDidChange();
  Alert::show(sheetWindow(), localized("lkeyRecordingLostTitle"), localized(reason).arg(name), {localized("lkeyOK")});
}

void MouseMacrosController::endRecording() {
  mRecorded.reset();
  isRecording = false;
  mIsStopRecording = true;
  setRecordTitle(false);
  setStateOfTables(true);
  if (mIsMacroEventEdit) {
    mIsMacroEventEdit = false;
    mEdited.reset();
    mInsertedKey.reset();
    mEditEventWindow->hide();
  }
  if (macroDelegate != nullptr) {
    if (mIsEditingMacro) {
      macroDelegate->stopSingleKeyRecording();
    } else {
      macroDelegate->stopMacroRecording();
      if (const int macro = selectedMacro(); macro >= 0) {
        macroDelegate->saveRecordedEventsForMacroAtIndex(macro, mIsAppendMacro);
        fetchLines();
      }
    }
  }
  offerLineDeletion(selectedLine() >= 0);
  mIsEditingMacro = false;
  mIsAppendMacro = false;
}

const QWidget* MouseMacrosController::captureArea() const {
  return mUi->mMacroDetailsTableView;
}

void MouseMacrosController::stopAllMacroRecording() {
  if (!isSessionRunning()) return;
  setRecordTitle(true);
  clickRecordMacroDetails();
}

void MouseMacrosController::tabViewDidSelectTabViewItem(const QWidget* page) {
  if (page != this) {
    stopAllMacroRecording();
    return;
  }
  setRecordTitle(false);
  mRecorded.reset();
  isRecording = false;
  mIsStopRecording = true;
  setStateOfTableButtonsWithState(true);
  offerLineDeletion(selectedLine() >= 0);
}

void MouseMacrosController::updateSelectedMacroWithMacroDetails(const PropertyList& lines) {
  showLines(lines);
  mAreLinesNewer = !areShownLinesOf(macrosSettingsArray.at(selectedMacro()));
  // The record in the list is older where single events were edited.
  mModel->setEventCount(selectedMacro(), (mDetailsModel->rowCount() + 1) / 2);
  followEditedLine();
}

void MouseMacrosController::showLines(const PropertyList& lines) {
  const std::vector<int> selected = selectedLines();
  interruptDelayEdit();
  mIsReloading = true;
  mDetailsModel->setLines(finishedLines(lines));
  selectLines(selected);
  mIsReloading = false;
  if (!isRecordTitleStop()) offerLineDeletion(mDetailsModel->rowCount() > 0);
  updateVisibleParts();
}

void MouseMacrosController::recordedMessages(const Notification& notification) {
  const PropertyList lines = finishedLines(notification.userInfo[newsKeys::MessagesArray]);
  const PropertyList& client = notification.userInfo[newsKeys::ResponseMsgPortName];
  if (client.isString() && client.string() != vorn::configuratorReplyPortName) {
    // Another program's recording. It is told without lines where it takes the place of this one; lines are still those
    // of one that was before this.
    if (mRecorded && lines.isEmpty()) recordingIsLost("lkeyRecordingTakenDesc");
    return;
  }
  if (std::exchange(mIsStopRecording, false)) return;
  // More than one batch may have been under way at a stop, whose lines have been fetched since, or are discarded.
  if (!isRecording && mIsLastDiscarded) return;
  if (!isRecording && vorn::holdsLines(mDetailsModel->lines(), lines)) return;
  mDetailsModel->appendLines(lines);
  if (!isRecordTitleStop()) offerLineDeletion(mDetailsModel->rowCount() > 0);
  updateVisibleParts();
  tellRecordingProgress();
  mUi->mMacroDetailsTableView->scrollToBottom();
}

}  // namespace skarn
