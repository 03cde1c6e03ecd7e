// Whether the engine and the mouse are there: what the window shows and allows meanwhile, and what it shows while a
// request waits for its answer.
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <bitset>
#include <utility>

#include "app/FocusState.h"
#include "app/HistoryControls.h"
#include "app/MouseChoice.h"
#include "app/MouseControls.h"
#include "app/MouseMainController.h"
#include "app/MouseMainWindow.h"
#include "app/MouseSheet.h"
#include "app/NamedImageView.h"
#include "app/SettingsHistory.h"
#include "app/Sheets.h"
#include "app/StateStrip.h"
#include "app/TrayControls.h"
#include "app/VRCErrorHandler.h"
#include "buttons/MouseButtonController.h"
#include "lighting/MouseLightingController.h"
#include "macros/MouseMacrosController.h"
#include "maintenance/MouseMaintenanceController.h"
#include "model/SettingsKeys.h"
#include "performance/MousePerformanceController.h"
#include "platform/Bundle.h"
#include "platform/Localization.h"
#include "profiles/MouseProfilesController.h"
#include "protocol/EngineProtocol.h"
#include "widgets/BusyIndicator.h"

namespace skarn {

using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;
namespace replyKeys = vorn::replyKeys;

void MouseMainController::updateControlsWithState(bool state) {
  if (!state) closeSheetsOfTabs();
  // The focus of a control that is disabled would go on to a button that opens the browser.
  const bool takesFocus = !state && mMouseTabView->isAncestorOf(mWindow.focusWidget());
  mAreTabsEnabled = state;
  mMouseButtonController->enableControlsState(state);
  mMousePerformanceController->enableControlsState(state);
  mMouseProfilesController->enableControlsState(state);
  mMouseMacrosController->enableControlsState(state);
  mMouseLightingController->enableControlsState(state);
  mMouseMaintenenceController->enableControlsState(state);
  if (takesFocus) mMouseTabView->tabBar()->setFocus();
}

void MouseMainController::updateProfilesControlState(bool state) {
  if (state) {
    mBusyIndicator->stop();
  } else {
    mBusyIndicator->start();
    // The requests that follow block the thread.
    mBusyIndicator->repaint();
  }
  // The mouse may have gone meanwhile.
  mMouseProfilesController->enableControlsState(state && mAreTabsEnabled);
}

void MouseMainController::closeMenus() {
  while (QWidget* menu = QApplication::activePopupWidget()) {
    if (!menu->close()) break;
  }
}

void MouseMainController::closeSheetsOfTabs() {
  closeMenus();
  // One that lies upon another is the later one and goes first.
  QList<QDialog*> dialogs = mWindow.findChildren<QDialog*>();
  std::reverse(dialogs.begin(), dialogs.end());
  for (const QPointer<QDialog>& dialog : QList<QPointer<QDialog>>(dialogs.begin(), dialogs.end())) {
    // A mouse is chosen also while none is there.
    if (dialog == mDeviceConnectionWindow || dialog == restoringStateWindow || dialog == mMouseControls->sheet())
      continue;
    if (dialog && dialog->isVisible() && dialog->isModal()) dialog->reject();
  }
}

// --- The engine

PropertyList MouseMainController::registerDevice() {
  const PropertyList answer = sendAndWait(
      MessageID::RegisterDevice,
      PropertyList::dictionary(
          {{requestKeys::ProductName, "Skarn"},
           {requestKeys::ProductID, vorn::wiredProductID},
           {requestKeys::ResponseMsgPortName, vorn::configuratorReplyPortName},
           {requestKeys::IsDeviceWired, 1},
           {requestKeys::DefaultVrPlistPath, Bundle::mainBundle().resourcePath(defaultSettingsFile).toStdString()}}));
  mServices.link.emptySlot();
  return answer;
}

void MouseMainController::startEngine(bool isAskedFor) {
  if (mIsStartingEngine) return;
  mIsStartingEngine = true;
  mServices.report("asking the session to start the engine");
  sayPresence();
  const unsigned start = ++mEngineStarts;
  mServices.link.startEngine([hub = QPointer(this), start, isAskedFor](const vorn::ServiceStart& outcome) {
    // The engine may have come, and gone again, before.
    if (!hub || !hub->mIsStartingEngine || hub->mEngineStarts != start) return;
    const bool isSilent = outcome.status == vorn::ServiceStart::Status::Running;
    hub->mServices.report("the engine was not started: " + (isSilent ? "it has no message port" : outcome.error));
    hub->endEngineStart();
    if (isAskedFor) hub->tellWhyNotStarted(outcome);
  });
}

void MouseMainController::endEngineStart() {
  if (!std::exchange(mIsStartingEngine, false)) return;
  sayPresence();
  emit engineStartEnded();
}

void MouseMainController::tellWhyNotStarted(const vorn::ServiceStart& outcome) {
  using Status = vorn::ServiceStart::Status;
  QString reason;
  switch (outcome.status) {
    case Status::NotInstalled:
      reason = localized("lkeyStartFailedNotInstalled");
      break;
    case Status::Running:  // but its port is not there
    case Status::Timeout:
      reason = localized("lkeyStartFailedTimeout");
      break;
    case Status::Failed:
    case Status::NoBus:
      reason = localized("lkeyStartFailedReason").arg(QString::fromStdString(outcome.error));
      break;
  }
  VRCErrorHandler::showErrorWithTitle(localized("lkeyStartFailedTitle"), reason, localized("lkeyOK"), QString(),
                                      mouseMainView);
}

void MouseMainController::engineWent() {
  mIsEngineThere = false;
  mIsEngineGone = true;
  askForMice();
  askForFocus();
  if (!mHasStarted) return;
  mServices.report("the engine has gone");
  hideErrorDialog();
  forgetDevice();
  setPresence(Presence::NoEngine);
}

void MouseMainController::engineCame() {
  mIsEngineThere = true;
  mIsEngineGone = false;
  endEngineStart();
  if (!mHasStarted) return;
  mServices.report("the engine has come");
  sayPresence();
  // What told that there is no engine, or why it did not start.
  closeSheetsOfTabs();
  askForMice();
  askForFocus();
  setMFirmwareVersionString({});
  const PropertyList answer = registerDevice();
  if (answer.isNone()) {
    // Its news are still to come.
    setPresence(Presence::EngineSilent);
    return;
  }
  if (!answer[replyKeys::ReturnStatus].toBool()) {
    setMFirmwareVersionString("-");
    setPresence(Presence::NoDevice);
    showErrorDialog();
    return;
  }
  hideErrorDialog();
  loadLatestSettings();
  setProperties();
  updateControlsWithState(true);
  setPresence(Presence::Connected);
  updateUISettings();
}

void MouseMainController::forgetDevice() {
  mMouseMaintenenceController->mFirmwareVersion()->setText(QStringLiteral("-"));
  mMouseMaintenenceController->stopProgressIndicatorAnimation();
  mMouseMacrosController->stopAllMacroRecording();
  stopChargingAnimation();
  mBattery->clearImage();
  mDeviceConnectivity->clearImage();
  batteryStatus = unknownBatteryStatus;
  mBatteryPercent.reset();
  updateControlsWithState(false);
}

// --- The strip

QString MouseMainController::textOf(Presence presence) const {
  switch (presence) {
    case Presence::Starting:
      return localized("lkeyStateStarting");
    case Presence::NoDevice:
      return localized(mShowsDefaults ? "lkeyStateNoDevice" : "lkeyStateDeviceGone");
    case Presence::NoEngine:
      return localized(mShowsDefaults ? "lkeyStateNoEngine" : "lkeyStateEngineGone");
    case Presence::EngineSilent:
      return localized("lkeyStateEngineSilent");
    case Presence::Connected:
      break;
  }
  return {};
}

void MouseMainController::setPresence(Presence presence) {
  mPresence = presence;
  sayPresence();
}

void MouseMainController::sayPresence() {
  const bool isMissed = mPresence == Presence::NoEngine && !mIsEngineThere;
  StripButton button;
  if (isMissed) button = {localized("lkeyStartEngine"), localized("lkeyStartEngineHint"), !mIsStartingEngine};
  if (mPresence == Presence::NoDevice) button = mMouseControls->stripButton();
  mWindow.stateStrip().say(mIsStartingEngine ? localized("lkeyStateEngineStarting") : textOf(mPresence), button);
  // Nobody would take what it sends.
  mAppySettings->setEnabled(!isMissed);
  mAppySettings->setToolTip(localized(isMissed ? "lkeyApplyNoEngineTip" : "lkeyApplyTip"));
  offerHistory();
  tellTray();
}

void MouseMainController::offerHistory() {
  const char* why = nullptr;
  switch (mPresence) {
    case Presence::Starting:
      why = "lkeyHistoryStarting";
      break;
    case Presence::NoDevice:
      why = "lkeyNoMouseConnected";
      break;
    case Presence::NoEngine:
      why = "lkeyHistoryNoEngine";
      break;
    case Presence::EngineSilent:
      why = "lkeyHistoryNoAnswer";
      break;
    case Presence::Connected:
      break;
  }
  if (why == nullptr) {
    mHistory->begin();
  } else {
    mHistory->end();
  }
  mHistoryControls->setObstacle(why == nullptr ? QString() : localized(why));
}

// --- The mice

void MouseMainController::askForMice() {
  if (mHasStarted && mIsEngineThere) {
    mMouseChoice->begin();
  } else {
    mMouseChoice->end();
  }
}

void MouseMainController::askForFocus() {
  if (!mHasStarted || !mIsEngineThere) return mFocusState->end();
  if (mMouseTabView->currentWidget() == mMouseProfilesController) {
    mFocusState->begin();
  } else {
    mFocusState->rest();
  }
}

void MouseMainController::showWhatMouseLacks() {
  const MouseDescription* mouse = mMouseChoice->inUse();
  const bool isKnown = mouse != nullptr && mouse->isRealInUse() && mouse->isPresent;
  std::bitset<controlTable.size()> missing;
  for (std::size_t index = 0; isKnown && index < controlTable.size(); ++index)
    missing.set(index, !mouse->controls.contains(controlTable[index].identifier));
  mMouseButtonController->setMissingControls(missing);
  mMousePerformanceController->setMouseOffers(!isKnown || mouse->sensitivity != MouseDescription::Sensitivity::Missing,
                                              !isKnown || mouse->hasPollingRate);
  mMouseLightingController->setMouseOffersLight(!isKnown || mouse->hasLight);
  mMouseMaintenenceController->setMouseOffers(!isKnown || mouse->hasLight, !isKnown || mouse->hasPower);
}

void MouseMainController::tellTray() {
  const bool isConnected = mPresence == Presence::Connected;
  TrayState state;
  state.mouse = isConnected ? mBattery->toolTip() : textOf(mPresence);
  state.canSwitch = isConnected && !mMouseMacrosController->mIsRecording();
  for (std::size_t i = 0; !mShowsDefaults && i < profilesArray.size(); ++i)
    state.profiles << QString::fromStdString(
        profilesArray.at(static_cast<std::int64_t>(i))[keys::ProfileName].toString());
  state.active = deviceSettingsDict[keys::ActiveProfile].toInt();
  mTrayControls->setState(state);
}

void MouseMainController::noteAnswer(bool isAnswered) {
  if (!isAnswered && mPresence == Presence::Connected) setPresence(Presence::EngineSilent);
  if (isAnswered && mPresence == Presence::EngineSilent) setPresence(Presence::Connected);
}

// --- Waiting

bool MouseMainController::goOnWaiting() {
  if (!mShowsWait) beginShowingWait();
  for (BusyIndicator* indicator : mWindow.findChildren<BusyIndicator*>()) indicator->turn();
  return !mServices.mustEnd();
}

void MouseMainController::beginShowingWait() {
  mShowsWait = true;
  // It could not be used, and what lies under it could not be painted.
  closeMenus();
  mWasBusyBeforeWait = mBusyIndicator->isRunning();
  mBusyIndicator->start();
  mWindow.stateStrip().say(localized("lkeyStateStarting"));
  mWindow.stateStrip().paintNow();
}

void MouseMainController::endShowingWait() {
  if (!std::exchange(mShowsWait, false)) return;
  if (!mWasBusyBeforeWait) mBusyIndicator->stop();
  setPresence(mPresence);
}

}  // namespace skarn
