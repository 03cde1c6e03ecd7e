#include "maintenance/MouseMaintenanceController.h"

#include <QPointer>
#include <QSignalBlocker>

#include "model/SettingsKeys.h"
#include "platform/GoneAlert.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "ui_MouseMaintenanceController.h"
#include "widgets/Alert.h"
#include "widgets/LabelState.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

using Layout = Ui::MouseMaintenanceController;

struct PowerSlider {
  QSlider* Layout::*slider;
  SliderScale* Layout::*scale;
  keys::Key key;
  void (MouseMaintenanceController::*changed)();
};
constexpr PowerSlider powerSliders[] = {
    {&Layout::mLightBrightnessSlider, &Layout::mLightBrightnessScale, keys::BrightnessBattery,
     &MouseMaintenanceController::lightBrightnessValueChanges},
    {&Layout::mSleepModeSlider, &Layout::mSleepModeScale, keys::PowerSaver,
     &MouseMaintenanceController::sleepModeValueChanges},
    {&Layout::mFLashScrollWheelSlider, &Layout::mFlashScrollWheelScale, keys::BatteryCriticalLevel,
     &MouseMaintenanceController::flashScrollWheelValueChanges},
};

void describe(const Layout& ui, const PowerSlider& row) {
  QSlider& slider = *(ui.*row.slider);
  slider.setAccessibleDescription((ui.*row.scale)->textAt(slider.value()));
}

// What restoring gives besides the factory profile, whatever that says.
constexpr int restoredBrightness = 4;           // bright
constexpr int restoredSleepMode = 3;            // 10 minutes
constexpr int restoredCriticalLevel = 1;        // 5 percent
constexpr int restoredBrightnessOnBattery = 2;  // dim

}  // namespace

MouseMaintenanceController::MouseMaintenanceController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MouseMaintenanceController>()) {
  mUi->setupUi(this);
  wireControls();
  mUi->mCheckUpdates->setVisible(!addressOf(WebPage::Support).isEmpty());
  stopProgressIndicatorAnimation();
}

MouseMaintenanceController::~MouseMaintenanceController() = default;

void MouseMaintenanceController::wireControls() {
  for (const PowerSlider& row : powerSliders) {
    describe(*mUi, row);
    connect(mUi.get()->*row.slider, &QSlider::valueChanged, this, [this, &row] {
      describe(*mUi, row);
      (this->*row.changed)();
    });
  }
  connect(mUi->mCheckUpdates, &QPushButton::clicked, this, &MouseMaintenanceController::clickCheckUpdates);
  connect(mUi->mRestoreSettings, &QPushButton::clicked, this, &MouseMaintenanceController::clickRestoreSettings);
}

QLabel* MouseMaintenanceController::mFirmwareVersion() const {
  return mUi->mFirmwareVersion;
}

QLabel* MouseMaintenanceController::mDriverVersion() const {
  return mUi->mDriverVersion;
}

// --- Handlers

void MouseMaintenanceController::send(const PropertyList& settings) {
  if (mouseMaintenanceDelegate != nullptr) mouseMaintenanceDelegate->updateValueForSetting(settings);
}

void MouseMaintenanceController::updateValue(int value, std::string_view forSetting) {
  send(PropertyList::dictionary({{forSetting, value}}));
}

void MouseMaintenanceController::lightBrightnessValueChanges() {
  updateValue(mUi->mLightBrightnessSlider->value(), keys::BrightnessBattery);
}

void MouseMaintenanceController::sleepModeValueChanges() {
  updateValue(mUi->mSleepModeSlider->value(), keys::PowerSaver);
}

void MouseMaintenanceController::flashScrollWheelValueChanges() {
  updateValue(mUi->mFLashScrollWheelSlider->value(), keys::BatteryCriticalLevel);
}

void MouseMaintenanceController::clickCheckUpdates() {
  openPage(sheetParent(), WebPage::Support, mOpenAddress);
}

QWidget* MouseMaintenanceController::sheetParent() const {
  return maintenanceWindow ? maintenanceWindow.data() : window();
}

void MouseMaintenanceController::clickRestoreSettings() {
  const QString name = textOf(maintenanceDict, keys::ProfileName);
  Alert::ask(sheetParent(), localized("lkeyRestoreDefaultTitle").arg(shownName(name)),
             localized("lkeyRestoreDefaultDesc"), localized("lkeyRestoreAction"), localized("lkeyCancel"),
             [tab = QPointer(this), name](int returnCode) {
               if (tab && returnCode == Alert::firstButtonReturn) tab->restoreProfile(name);
             });
}

// The mouse may have switched to another profile while the alert was open.
void MouseMaintenanceController::restoreProfile(const QString& name) {
  if (textOf(maintenanceDict, keys::ProfileName) == name) {
    restoreSettings();
  } else {
    showNotCurrentAlert(sheetParent(), name);
  }
}

void MouseMaintenanceController::restoreSettings() {
  send(defaultDict.with(keys::ProfileName, maintenanceDict[keys::ProfileName].string())
           .with(keys::BrightnessNormal, restoredBrightness)
           .with(keys::ProfileOSDOn, true)
           .with(keys::PowerSaver, restoredSleepMode)
           .with(keys::BatteryCriticalLevel, restoredCriticalLevel)
           .with(keys::BrightnessBattery, restoredBrightnessOnBattery));
}

// --- Drawing

void MouseMaintenanceController::updateUISettings() {
  userSettings = maintenanceSettingsDict;
  if (userSettings.isNone()) return;
  if (!userSettings.isEmpty()) {
    for (const PowerSlider& row : powerSliders) {
      QSlider& slider = *(mUi.get()->*row.slider);
      const QSignalBlocker quiet(slider);
      slider.setValue(userSettings[row.key].toInt());
      describe(*mUi, row);
    }
  }
  mUi->mProfileNameLabel->setText(textOf(maintenanceDict, keys::ProfileName));
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
  mIsEnabled = enabled;
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
  mUi->mRestoreSettings->setEnabled(enabled);
  for (const PowerSlider& row : powerSliders) (mUi.get()->*row.slider)->setEnabled(enabled);
  explain();
}

void MouseMaintenanceController::setMouseOffers(bool light, bool power) {
  mOffersLight = light;
  mOffersPower = power;
  explain();
}

void MouseMaintenanceController::explain() {
  const QString whyNot = mIsEnabled ? QString() : localized("lkeyNoMouseConnected");
  const QString ofLight = mIsEnabled && !mOffersLight ? localized("lkeyMouseLacksLight") : whyNot;
  const QString ofPower = mIsEnabled && !mOffersPower ? localized("lkeyMouseLacksPower") : whyNot;
  mUi->mRestoreSettings->setToolTip(whyNot);
  for (const PowerSlider& row : powerSliders)
    (mUi.get()->*row.slider)->setToolTip(row.slider == &Layout::mLightBrightnessSlider ? ofLight : ofPower);
}

}  // namespace skarn
