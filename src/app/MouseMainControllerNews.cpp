// What the hub does with the engine's news, and how it shows the device's presence, battery and versions.
#include <QLabel>
#include <QMetaObject>
#include <charconv>
#include <chrono>

#include "app/FocusState.h"
#include "app/MouseChoice.h"
#include "app/MouseMainController.h"
#include "app/MouseMainWindow.h"
#include "app/NamedImageView.h"
#include "macros/MouseMacrosController.h"
#include "maintenance/MouseMaintenanceController.h"
#include "platform/Bundle.h"
#include "platform/Localization.h"
#include "protocol/DeviceStatus.h"
#include "protocol/EngineProtocol.h"

namespace skarn {

using vorn::ChargingStatus;
using vorn::MessageID;
using vorn::Notification;
using vorn::PropertyList;
namespace names = vorn::notificationNames;
namespace newsKeys = vorn::newsKeys;
using namespace std::chrono_literals;

namespace {

// The product of "Device Attached 273": the third of the name's words.
int productOf(std::string_view name) {
  for (int word = 0; word < 2; ++word) {
    const std::size_t blank = name.find(' ');
    if (blank == std::string_view::npos) return 0;
    name.remove_prefix(blank + 1);
  }
  int product = 0;
  std::from_chars(name.data(), name.data() + name.size(), product);
  return product;
}

}  // namespace

// --- Observers

void MouseMainController::observe(const std::string& name, void (MouseMainController::*handler)(const Notification&)) {
  mNotificationCenter->addObserver(this, name, [this, handler](const Notification& news) { (this->*handler)(news); });
}

void MouseMainController::observeDeviceAttached(std::int32_t product) {
  observe(names::deviceAttached(product), &MouseMainController::deviceConnectedNotification);
}

void MouseMainController::registerNotifications() {
  observeDeviceAttached(vorn::wiredProductID);
  addObserverDeviceRemoval();
  addObserverProfileUpdate();
  addObserverDPIUpdate();
  addObserverKeymapPressed();
  observeDeviceAttached(vorn::wirelessProductID);
}

void MouseMainController::addObserverDeviceAttachment() {
  observeDeviceAttached(vorn::wiredProductID);
  observeDeviceAttached(vorn::wirelessProductID);
}

void MouseMainController::removeObserverDeviceAttachment() {
  mNotificationCenter->removeObserver(this, names::deviceAttached(vorn::wiredProductID));
  mNotificationCenter->removeObserver(this, names::deviceAttached(vorn::wirelessProductID));
}

void MouseMainController::addObserverDeviceRemoval() {
  observe(names::deviceRemoved(vorn::wiredProductID), &MouseMainController::deviceDisconnectedNotification);
}

void MouseMainController::removeObserverDeviceRemoval() {
  mNotificationCenter->removeObserver(this, names::deviceRemoved(vorn::wiredProductID));
}

void MouseMainController::addObserverProfileUpdate() {
  observe(names::profileUpdated(vorn::wiredProductID), &MouseMainController::deamonProfileUpdateNotification);
}

void MouseMainController::removeObserverProfileUpdate() {
  mNotificationCenter->removeObserver(this, names::profileUpdated(vorn::wiredProductID));
}

void MouseMainController::addObserverDPIUpdate() {
  observe(names::dpiUpdated(vorn::wiredProductID), &MouseMainController::deamonDPIUpdateNotification);
}

void MouseMainController::removeObserverDPIUpdate() {
  mNotificationCenter->removeObserver(this, names::dpiUpdated(vorn::wiredProductID));
}

void MouseMainController::addObserverKeymapPressed() {
  observe(names::keymapUpdated(vorn::wiredProductID), &MouseMainController::deamonKeyMapPressed);
}

void MouseMainController::removeObserverKeymapPressed() {
  mNotificationCenter->removeObserver(this, names::keymapUpdated(vorn::wiredProductID));
}

// --- Handlers

void MouseMainController::deviceConnectedNotification(const Notification& notification) {
  removeObserverDeviceAttachment();
  setMFirmwareVersionString({});
  const int product = productOf(notification.name);
  hideErrorDialog();
  if (product == vorn::wiredProductID || product == vorn::wirelessProductID) {
    devicePID = static_cast<std::uint32_t>(product);
    // An earlier observation is not removed: after two attachments each answer is handled twice.
    observe(names::commandReply(product), &MouseMainController::commandReplyReceived);
    isWiredDevice = product == vorn::wiredProductID;
  }
  loadLatestSettings();
  setProperties();
  updateControlsWithState(true);
  setPresence(Presence::Connected);
  updateUISettings();
  updateDeviceConnectivityIcon();
  setDriverVersions();
  addObserverDeviceAttachment();
}

void MouseMainController::deviceDisconnectedNotification(const Notification&) {
  removeObserverDeviceRemoval();
  // The one before goes where this window has asked for another.
  if (!mMouseChoice->isChoosing()) showErrorDialog();
  forgetDevice();
  setPresence(Presence::NoDevice);
  addObserverDeviceRemoval();
}

void MouseMainController::reloadUnlessOurs(const Notification& notification) {
  if (notification.userInfo[newsKeys::SourceApp].string() != vorn::configuratorIdentifier) reloadForNews();
}

void MouseMainController::reloadForNews() {
  if (mNewsTimer.isActive()) {
    mHasMoreNews = true;
    return;
  }
  reload();
  mNewsTimer.start(newsRest);
}

void MouseMainController::deamonProfileUpdateNotification(const Notification& notification) {
  removeObserverProfileUpdate();
  reloadUnlessOurs(notification);
  addObserverProfileUpdate();
}

void MouseMainController::deamonDPIUpdateNotification(const Notification& notification) {
  removeObserverDPIUpdate();
  reloadUnlessOurs(notification);
  addObserverDPIUpdate();
}

void MouseMainController::deamonKeyMapPressed(const Notification& notification) {
  const PropertyList& bundle = notification.userInfo[newsKeys::UpdatedKeymapProfile];
  if (!bundle.isDictionary()) return;
  updateToLatestSettings(bundle);
  setProperties();
  updateUISettings();
}

void MouseMainController::commandReplyReceived(const Notification& notification) {
  const PropertyList& info = notification.userInfo;
  if (!info.isDictionary()) return;
  switch (static_cast<MessageID>(info[newsKeys::MessageID].toInt())) {
    case MessageID::QueryBatteryLevel:
      updateBatteryLevel(info);
      break;
    case MessageID::QueryChargingStatus: {
      const auto status = static_cast<std::uint32_t>(info[newsKeys::DeviceChargingStatus].toInt());
      if (status == batteryStatus) break;
      batteryStatus = status;
      updateBatteryStatus(info);
      break;
    }
    case MessageID::QueryFirmwareVersion:
      mMouseMaintenenceController->stopProgressIndicatorAnimation();
      updateFWVersion(info);
      break;
    default:
      break;
  }
}

void MouseMainController::checkMacroRecordingStatus() {
  if (!mMouseMacrosController->mIsRecording()) return;
  mMouseMacrosController->setRecordButtonToStop();
  mMouseMacrosController->clickRecordMacroDetails();
}

// --- Presence, battery, versions

void MouseMainController::updateDeviceConnectivityIcon() {
  mDeviceConnectivity->setImage(isWiredDevice ? QStringLiteral("usb.png") : QStringLiteral("wireless.png"));
  mDeviceConnectivity->setWords(localized(isWiredDevice ? "lkeyConnectedByCable" : "lkeyConnectedWireless"));
}

std::string MouseMainController::mFirmwareVersionString() const {
  const std::lock_guard lock(mFirmwareVersionMutex);
  return firmwareVersionString;
}

void MouseMainController::setMFirmwareVersionString(const std::string& version) {
  {
    const std::lock_guard lock(mFirmwareVersionMutex);
    firmwareVersionString = version;
  }
  // What is known is not asked for, and nothing wakes the program for it.
  if (!version.empty()) {
    mFirmwareThread.stop();
  } else if (mHasStarted) {
    FWQueryThreadAboutToRun();
  }
}

void MouseMainController::setDriverVersions() {
  if (!mFirmwareVersionString().empty()) return;
  sendQuery(MessageID::QueryFirmwareVersion);
  QMetaObject::invokeMethod(this, [this] {
    // The answer may have been handled before this.
    if (mFirmwareVersionString().empty()) mMouseMaintenenceController->startProgresIndicatorAnimation();
  });
}

void MouseMainController::FWQueryThreadAboutToRun() {
  if (mFirmwareVersionString().empty()) mFirmwareThread.start(3s, [this] { setDriverVersions(); });
}

void MouseMainController::batteryThreadAboutToRun() {
  mBatteryThread.start(10s, [this] { checkBatteryStatus(); });
}

void MouseMainController::updateFWVersion(const PropertyList& info) {
  if (!info.isDictionary()) return;
  const std::string version = info[newsKeys::FirmwareVersion].toString();
  setMFirmwareVersionString(version);
  if (info[newsKeys::ReturnStatus].toInt() != 0) return;
  mMouseMaintenenceController->mDriverVersion()->setText(Bundle::mainBundle().version());
  mMouseMaintenenceController->mFirmwareVersion()->setText(QString::fromStdString(version));
}

void MouseMainController::updateBatteryLevel(const PropertyList& info) {
  if (!info.isDictionary()) return;
  const int percent = info[newsKeys::BatteryPercentLevel].toInt();
  if (percent < 34) {
    mBattery->setImage(QStringLiteral("battery1.png"));
  } else if (percent < 68) {
    mBattery->setImage(QStringLiteral("battery2.png"));
  } else if (percent <= 100) {
    mBattery->setImage(QStringLiteral("battery3.png"));
  }
  if (percent >= 0 && percent <= 100) mBatteryPercent = percent;
  sayBatteryInWords();
}

void MouseMainController::updateBatteryStatus(const PropertyList& info) {
  if (mBattery->imageName().isEmpty()) mBattery->setImage(QStringLiteral("battery3.png"));
  if (!info.isDictionary()) return;
  switch (static_cast<ChargingStatus>(info[newsKeys::DeviceChargingStatus].toInt())) {
    case ChargingStatus::Charging:
      chargingBatteryAboutToRun();
      break;
    case ChargingStatus::OnBattery:
      stopChargingAnimation();
      checkBatteryLevel();
      break;
    case ChargingStatus::NoBatteryDisplay:
      stopChargingAnimation();
      mBattery->clearImage();
      break;
    default:
      break;
  }
  sayBatteryInWords();
}

void MouseMainController::sayBatteryInWords() {
  if (mBattery->imageName().isEmpty()) return tellTray();
  const bool isCharging = batteryStatus == static_cast<std::uint32_t>(ChargingStatus::Charging);
  if (!mBatteryPercent) {
    mBattery->setWords(localized(isCharging ? "lkeyBatteryCharging" : "lkeyBattery"));
  } else {
    mBattery->setWords(
        localized(isCharging ? "lkeyBatteryChargingPercent" : "lkeyBatteryPercent").arg(*mBatteryPercent));
  }
  tellTray();
}

void MouseMainController::chargingBatteryAboutToRun() {
  const unsigned animation = mChargingAnimation;
  const auto step = [this, animation] {
    // A step may still be on its way when its animation has been stopped.
    QMetaObject::invokeMethod(this, [this, animation] {
      if (animation == mChargingAnimation) runChargingBattery();
    });
  };
  mChargingThread.start(1s, step, true);
}

void MouseMainController::stopChargingAnimation() {
  ++mChargingAnimation;
  mChargingThread.stop();
}

void MouseMainController::runChargingBattery() {
  if (mBattery->imageName().isEmpty()) mBattery->setImage(QStringLiteral("battery3.png"));
  static const std::pair<QString, QString> steps[] = {
      {QStringLiteral("battery"), QStringLiteral("battery1.png")},
      {QStringLiteral("battery1"), QStringLiteral("battery2.png")},
      {QStringLiteral("battery2"), QStringLiteral("battery3.png")},
      {QStringLiteral("battery3"), QStringLiteral("battery.png")},
  };
  for (const auto& [from, to] : steps) {
    if (mBattery->imageName() != from) continue;
    mBattery->setImage(to);
    return;
  }
}

}  // namespace skarn
