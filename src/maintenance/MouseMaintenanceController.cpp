#include "maintenance/MouseMaintenanceController.h"

#include <array>

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "ui_MouseMaintenanceController.h"
#include "widgets/LabelState.h"

namespace skarn {

namespace keys = vorn::keys;

namespace {

// Texts along the scales.
constexpr std::array<const char*, 4> sleepKeys = {"lkeySleepOneMinute", "lkeySleepFiveMinutes", "lkeySleepTenMinutes",
                                                  "lkeySleepFifteenMinutes"};
constexpr std::array<const char*, 5> flashKeys = {"lkeyFlashFivePercent", "lkeyFlashTenPercent",
                                                  "lkeyFlashFifteenPercent", "lkeyFlashTwentyPercent",
                                                  "lkeyFlashTwentyFivePercent"};

}  // namespace

MouseMaintenanceController::MouseMaintenanceController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MouseMaintenanceController>()) {
  mUi->setupUi(this);
  stopProgressIndicatorAnimation();
}

MouseMaintenanceController::~MouseMaintenanceController() = default;

QLabel* MouseMaintenanceController::mFirmwareVersion() const {
  return mUi->mFirmwareVersion;
}

QLabel* MouseMaintenanceController::mDriverVersion() const {
  return mUi->mDriverVersion;
}

void MouseMaintenanceController::updateUISettings() {
  if (maintenanceSettingsDict.isNone()) return;
  mUi->mProfileNameLabel->setText(textOf(maintenanceDict, keys::ProfileName));
  mUi->mLightBrightnessValue->setText(brightnessText(numberOf(maintenanceSettingsDict, keys::BrightnessBattery)));
  mUi->mSleepModeValue->setText(scaleText(sleepKeys, numberOf(maintenanceSettingsDict, keys::PowerSaver)));
  mUi->mFlashScrollWheelValue->setText(
      scaleText(flashKeys, numberOf(maintenanceSettingsDict, keys::BatteryCriticalLevel)));
}

void MouseMaintenanceController::startProgresIndicatorAnimation() {
  mUi->mFirmwareVersionIndicator->show();
  mUi->mFirmwareVersionIndicator->start();
}

void MouseMaintenanceController::stopProgressIndicatorAnimation() {
  mUi->mFirmwareVersionIndicator->stop();
  mUi->mFirmwareVersionIndicator->hide();
}

void MouseMaintenanceController::enableControlsState(bool enabled) {
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
}

}  // namespace skarn
