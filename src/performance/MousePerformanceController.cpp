#include "performance/MousePerformanceController.h"

#include <QDialog>
#include <algorithm>
#include <array>

#include "model/SettingsKeys.h"
#include "performance/DragCommit.h"
#include "performance/ExactField.h"
#include "performance/SensitivityText.h"
#include "performance/SilentValue.h"
#include "performance/StagesTableModel.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "protocol/EngineProtocol.h"
#include "ui_MousePerformanceController.h"
#include "ui_SensitivityStagesSheet.h"
#include "widgets/LabelState.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;
namespace newsKeys = vorn::newsKeys;

namespace {

struct PollingRate {
  int value;  // Hz
  const char* titleKey;
};

constexpr std::array<PollingRate, 3> pollingRates = {{{125, "lkey125Hz"}, {500, "lkey500Hz"}, {1000, "lkey1000Hz"}}};

}  // namespace

int MousePerformanceController::lastDpiX = 0;
int MousePerformanceController::lastDpiY = 0;

MousePerformanceController::MousePerformanceController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MousePerformanceController>()) {
  mUi->setupUi(this);
  createStagesSheet();
  connectControls();
  awakeFromNib();
}

void MousePerformanceController::awakeFromNib() {
  lastDpiX = 0;
  lastDpiY = 0;
  performanceSettingsDict = PropertyList::dictionary();
  deviceSettingsDict = PropertyList::dictionary();
  showStageChips();
}

MousePerformanceController::~MousePerformanceController() {
  delete mSensitivityStagesView;
}

void MousePerformanceController::connectControls() {
  mXCommit = std::make_unique<DragCommit>(*mUi->mXDpiSlider, [this] { finishTrackDPIX(); });
  mYCommit = std::make_unique<DragCommit>(*mUi->mYDpiSlider, [this] { finishTrackDPIY(); });
  const auto onMove = [this](QSlider* slider, void (MousePerformanceController::*action)()) {
    connect(slider, &QSlider::valueChanged, this, action);
  };
  onMove(mUi->mXDpiSlider, &MousePerformanceController::xDpiSliderValueChange);
  onMove(mUi->mYDpiSlider, &MousePerformanceController::yDpiSliderValueChange);
  onMove(mUi->mAccelerationSlider, &MousePerformanceController::accelerationSliderValueChange);
  const auto onClick = [this](QAbstractButton* button, void (MousePerformanceController::*action)()) {
    connect(button, &QAbstractButton::clicked, this, action);
  };
  onClick(mUi->mEnableIndependentXY, &MousePerformanceController::tickIndependentXY);
  onClick(mUi->mEnableOnTheFly, &MousePerformanceController::tickOnTheFly);
  onClick(mUi->mEnableAcceleration, &MousePerformanceController::tickAcceleration);
  onClick(mUi->mSensitivityStages, &MousePerformanceController::clickSensitivityStages);
  connect(mUi->mXDpiField, &ExactField::entered, mUi->mXDpiSlider, &QSlider::setValue);
  connect(mUi->mYDpiField, &ExactField::entered, mUi->mYDpiSlider, &QSlider::setValue);
  int index = 0;
  for (StageChip* chip : stageChips()) {
    connect(chip, &QAbstractButton::clicked, this, [this, index] { clickStageChip(index); });
    ++index;
  }
  connect(mUi->mPollingRate, &QComboBox::activated, this, &MousePerformanceController::selectPollingRateValue);
}

// --- Changes by the user

void MousePerformanceController::send(const PropertyList& settings) {
  if (mousePerformanceDelegate != nullptr) mousePerformanceDelegate->updateValueForSetting(settings);
}

void MousePerformanceController::updateValue(int value, std::string_view forSetting) {
  // Both axes always travel together.
  const PropertyList axes =
      PropertyList::dictionary({{keys::DPIX, mUi->mXDpiSlider->value()}, {keys::DPIY, mUi->mYDpiSlider->value()}});
  if (forSetting == keys::DPIX || forSetting == keys::DPIY) {
    send(axes);
  } else if (forSetting == keys::IndependentXYOn) {
    send(axes.with(keys::IndependentXYOn, value));
  } else {
    send(PropertyList::dictionary({{forSetting, value}}));
  }
}

void MousePerformanceController::xDpiSliderValueChange() {
  if (lastDpiX != 0 && mUi->mXDpiSlider->value() != lastDpiX) trackX();
}

void MousePerformanceController::trackX() {
  const int x = mUi->mXDpiSlider->value();
  const bool isIndependent = mUi->mEnableIndependentXY->isChecked();
  if (!isIndependent) {
    setValueSilently(*mUi->mYDpiSlider, x);
    lastDpiY = x;
  }
  mUi->mDpiValue->setText(sensitivityText(x, mUi->mYDpiSlider->value(), isIndependent));
  showSliderValues();
  mXCommit->schedule();
  lastDpiX = x;
}

void MousePerformanceController::yDpiSliderValueChange() {
  if (lastDpiY != 0 && mUi->mYDpiSlider->value() != lastDpiY) trackY();
}

// lastDpiY stays that of the settings until they come again.
void MousePerformanceController::trackY() {
  mUi->mDpiValue->setText(sensitivityText(mUi->mXDpiSlider->value(), mUi->mYDpiSlider->value(), true));
  showSliderValues();
  mYCommit->schedule();
}

void MousePerformanceController::finishTrackDPIX() {
  updateValue(mUi->mXDpiSlider->value(), keys::DPIX);
}

void MousePerformanceController::finishTrackDPIY() {
  updateValue(mUi->mYDpiSlider->value(), keys::DPIY);
}

void MousePerformanceController::tickIndependentXY() {
  const bool isIndependent = mUi->mEnableIndependentXY->isChecked();
  const int x = mUi->mXDpiSlider->value();
  if (!isIndependent) setValueSilently(*mUi->mYDpiSlider, x);
  mUi->mDpiValue->setText(pendingAxesText(x));
  showSliderValues();
  updateValue(isIndependent ? 1 : 0, keys::IndependentXYOn);
}

void MousePerformanceController::clickStageChip(int index) {
  if (!stageChips()[static_cast<std::size_t>(index)]->isCurrent()) {
    makeCurrent(performanceSettingsDict[keys::Stages].arrayOrEmpty(), index);
  }
}

PropertyList MousePerformanceController::currentValues(const PropertyList& stages, int index) {
  const PropertyList& stage = stages.at(index);
  return PropertyList::dictionary({{keys::Stages, stages},
                                   {keys::StageValue, index},
                                   {keys::DPIX, stage[keys::StageDpiX].toInt()},
                                   {keys::DPIY, stage[keys::StageDpiY].toInt()},
                                   {keys::IndependentXYOn, stage[keys::StageIndependentXY].toInt()}});
}

void MousePerformanceController::makeCurrent(const PropertyList& stages, int index) {
  const PropertyList values = currentValues(stages, index);
  // What was let go and waits to be sent is overtaken.
  takePendingCommits();
  setValueSilently(*mUi->mXDpiSlider, values[keys::DPIX].toInt());
  setValueSilently(*mUi->mYDpiSlider, values[keys::DPIY].toInt());
  mUi->mEnableIndependentXY->setChecked(values[keys::IndependentXYOn].toInt() != 0);
  showSliderValues();
  send(values);
}

void MousePerformanceController::tickOnTheFly() {
  updateValue(mUi->mEnableOnTheFly->isChecked() ? 1 : 0, keys::SensitivityOSDOn);
}

void MousePerformanceController::tickAcceleration() {
  const bool isOn = mUi->mEnableAcceleration->isChecked();
  send(PropertyList::dictionary(
      {{keys::AccelerationOn, isOn}, {keys::Acceleration, isOn ? mUi->mAccelerationSlider->value() : 0}}));
}

void MousePerformanceController::accelerationSliderValueChange() {
  updateValue(mUi->mAccelerationSlider->value(), keys::Acceleration);
}

void MousePerformanceController::selectPollingRateValue(int index) {
  const bool isKnown = index >= 0 && index < static_cast<int>(pollingRates.size());
  updateValue(pollingRates[isKnown ? static_cast<std::size_t>(index) : 0].value, keys::PollingRate);
}

// --- Drawing

std::optional<int> MousePerformanceController::indexForPollingRateValue(int value) {
  const auto* rate = std::ranges::find(pollingRates, value, &PollingRate::value);
  if (rate == pollingRates.end()) return std::nullopt;
  return static_cast<int>(rate - pollingRates.begin());
}

void MousePerformanceController::populateUISettings() {
  mUi->mPollingRate->clear();
  for (const PollingRate& rate : pollingRates) mUi->mPollingRate->addItem(localized(rate.titleKey), rate.value);
  mUi->mPollingRate->setCurrentIndex(-1);
}

MousePerformanceController::ChosenAxes MousePerformanceController::takePendingCommits() {
  return {mXCommit->cancel(), mYCommit->cancel()};
}

void MousePerformanceController::restorePendingCommits(const ChosenAxes& chosen) {
  if (chosen.x && lastDpiX != 0 && *chosen.x != mUi->mXDpiSlider->value()) {
    setValueSilently(*mUi->mXDpiSlider, *chosen.x);
    trackX();
  }
  // Axes that are locked by now have the value of X.
  if (chosen.y && mUi->mEnableIndependentXY->isChecked() && lastDpiY != 0 && *chosen.y != mUi->mYDpiSlider->value()) {
    setValueSilently(*mUi->mYDpiSlider, *chosen.y);
    trackY();
  }
}

void MousePerformanceController::updateUISettings() {
  if (performanceSettingsDict.isNone()) return;
  const ChosenAxes chosen = takePendingCommits();
  const QString profileName = textOf(performanceSettingsDict, keys::ProfileName);
  const bool isSameProfile = profileName == mUi->mProfileNameLabel->text();
  if (!isSameProfile) giveUpStagesSheet();
  loadStagesArray();
  if (!isSameProfile) {
    mUi->mXDpiField->discard();
    mUi->mYDpiField->discard();
  }
  mUi->mProfileNameLabel->setText(profileName);

  const std::optional<int> x = numberOf(performanceSettingsDict, keys::DPIX);
  const std::optional<int> y = numberOf(performanceSettingsDict, keys::DPIY);
  lastDpiX = x.value_or(0);
  lastDpiY = y.value_or(0);
  setValueSilently(*mUi->mXDpiSlider, lastDpiX);
  setValueSilently(*mUi->mYDpiSlider, lastDpiY);
  showStageChips();
  showAxes(numberOf(performanceSettingsDict, keys::IndependentXYOn).value_or(0) != 0, x, y);
  mUi->mEnableOnTheFly->setChecked(numberOf(performanceSettingsDict, keys::SensitivityOSDOn).value_or(0) != 0);
  showPointer();
  // What was chosen for one profile is not meant for another.
  if (isSameProfile) restorePendingCommits(chosen);
}

void MousePerformanceController::updateDPISliders(const PropertyList& sensitivity) {
  if (sensitivity.isNone()) return;
  const ChosenAxes chosen = takePendingCommits();
  const std::optional<int> x = numberOf(sensitivity, newsKeys::DPIValue);
  const std::optional<int> y = numberOf(sensitivity, newsKeys::DPIYValue);
  if (x) setValueSilently(*mUi->mXDpiSlider, *x);
  if (y) setValueSilently(*mUi->mYDpiSlider, *y);
  const bool isIndependent = x != y || numberOf(sensitivity, keys::IndependentXYOn) == 1;
  showAxes(isIndependent, x.value_or(mUi->mXDpiSlider->value()), y.value_or(mUi->mYDpiSlider->value()));
  restorePendingCommits(chosen);
}

// While the axes are independent the sliders say what they are, and the given values only whether there are any.
void MousePerformanceController::showAxes(bool isIndependent, std::optional<int> x, std::optional<int> y) {
  mUi->mEnableIndependentXY->setChecked(isIndependent);
  mUi->mDpiXLabel->setVisible(isIndependent);
  mUi->mDpiYLabel->setVisible(isIndependent);
  for (QWidget* control : std::initializer_list<QWidget*>{mUi->mYDpiSlider, mUi->mYDpiField}) {
    control->setEnabled(mIsEnabled && isIndependent);
    control->setToolTip(mIsEnabled && !isIndependent ? localized("lkeyAxesLocked") : sensitivityTip());
  }
  if (isIndependent && x && y) {
    x = mUi->mXDpiSlider->value();
    y = mUi->mYDpiSlider->value();
  }
  mUi->mDpiValue->setText(sensitivityText(x, y, isIndependent));
  showSliderValues();
  // Nothing is known of an axis without a value.
  if (!x) mUi->mXDpiField->showValue({});
  if (!y) mUi->mYDpiField->showValue({});
}

std::array<StageChip*, keys::maximumStages> MousePerformanceController::stageChips() const {
  return {mUi->mStageOne, mUi->mStageTwo, mUi->mStageThree, mUi->mStageFour, mUi->mStageFive};
}

void MousePerformanceController::showStageChips() {
  const PropertyList stages = performanceSettingsDict[keys::Stages].arrayOrEmpty();
  int index = 0;
  for (StageChip* chip : stageChips()) {
    const PropertyList& stage = stages.at(index);
    chip->setText(stageChipText(stage));
    chip->setAccessibleName(stageText(stage));
    chip->setHidden(chip->text().isEmpty());
    ++index;
  }
  showSliderValues();
}

void MousePerformanceController::showSliderValues() {
  const int x = mUi->mXDpiSlider->value();
  const int y = mUi->mYDpiSlider->value();
  mUi->mXDpiField->showValue(x);
  mUi->mYDpiField->showValue(y);
  const PropertyList stages = performanceSettingsDict[keys::Stages].arrayOrEmpty();
  const int current = numberOf(performanceSettingsDict, keys::StageValue).value_or(-1);
  int index = 0;
  for (StageChip* chip : stageChips()) {
    const bool isInForce =
        index == current && hasSensitivity(stages.at(index), x, y, mUi->mEnableIndependentXY->isChecked());
    chip->setCurrent(isInForce);
    chip->setAccessibleDescription(isInForce ? localized("lkeyCurrentStage") : QString());
    ++index;
  }
}

void MousePerformanceController::showPointer() {
  const std::optional<int> rate = numberOf(deviceSettingsDict, keys::PollingRate);
  const std::optional<int> index = rate ? indexForPollingRateValue(*rate) : std::nullopt;
  if (index) mUi->mPollingRate->setCurrentIndex(*index);

  const bool isOn = numberOf(performanceSettingsDict, keys::AccelerationOn).value_or(0) != 0;
  mUi->mEnableAcceleration->setChecked(isOn);
  setValueSilently(*mUi->mAccelerationSlider, numberOf(performanceSettingsDict, keys::Acceleration).value_or(0));
  mUi->mAccelerationSlider->setEnabled(mIsEnabled && isOn);
  mUi->mAccelerationSlider->setToolTip(mIsEnabled && !isOn ? localized("lkeyAccelerationOff") : QString());
}

void MousePerformanceController::enableControlsState(bool enabled) {
  mIsEnabled = enabled;
  if (!enabled) {
    // A slider that is disabled is let go, and without a mouse nothing is sent.
    takePendingCommits();
    mUi->mXDpiField->discard();
    mUi->mYDpiField->discard();
    if (mSensitivityStagesView && mSensitivityStagesView->isVisible()) mSensitivityStagesView->reject();
  }
  for (QWidget* control :
       std::initializer_list<QWidget*>{mUi->mSensitivityStages, mUi->mXDpiSlider, mUi->mYDpiSlider, mUi->mXDpiField,
                                       mUi->mYDpiField, mUi->mEnableIndependentXY, mUi->mEnableOnTheFly,
                                       mUi->mEnableAcceleration, mUi->mAccelerationSlider, mUi->mPollingRate}) {
    control->setEnabled(enabled);
    // A disabled one shows the page's reason.
    control->setToolTip(QString());
  }
  for (StageChip* chip : stageChips()) chip->setEnabled(enabled);
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
  explainMissing();
}

void MousePerformanceController::setMouseOffers(bool sensitivity, bool pollingRate) {
  mOffersSensitivity = sensitivity;
  mOffersPollingRate = pollingRate;
  explainMissing();
}

QString MousePerformanceController::sensitivityTip() const {
  return mIsEnabled && !mOffersSensitivity ? localized("lkeyMouseLacksSensitivity") : QString();
}

void MousePerformanceController::explainMissing() {
  const bool lacksRate = mIsEnabled && !mOffersPollingRate;
  const QString rateNote = localized(lacksRate ? "lkeyMouseLacksPollingRate" : "lkeyPollingRateNote");
  mUi->mPollingRate->setToolTip(lacksRate ? rateNote : QString());
  mUi->mPollingRate->setAccessibleDescription(rateNote);
  mUi->mPollingRateNoteLabel->setText(rateNote);
  for (QWidget* control : std::initializer_list<QWidget*>{mUi->mXDpiSlider, mUi->mXDpiField})
    control->setToolTip(sensitivityTip());
  for (QWidget* control : std::initializer_list<QWidget*>{mUi->mYDpiSlider, mUi->mYDpiField}) {
    if (control->isEnabled()) control->setToolTip(sensitivityTip());
  }
}

}  // namespace skarn
