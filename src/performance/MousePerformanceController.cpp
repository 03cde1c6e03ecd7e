#include "performance/MousePerformanceController.h"

#include <algorithm>
#include <optional>

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "ui_MousePerformanceController.h"
#include "widgets/LabelState.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr std::array<std::pair<int, const char*>, 3> pollingRateTitles = {
    {{125, "lkey125Hz"}, {500, "lkey500Hz"}, {1000, "lkey1000Hz"}}};

// One value for both axes, or one for each; empty when a value that is needed is missing.
QString sensitivityText(std::optional<int> x, std::optional<int> y, bool isIndependent) {
  if (!x || (isIndependent && !y)) return {};
  const QString dpi = localized("lkeyDPI");
  if (!isIndependent) return QStringLiteral("%1 %2").arg(QString::number(*x), dpi);
  return QStringLiteral("%1 = %2, %3 = %4 %5")
      .arg(localized("lkeyX"), QString::number(*x), localized("lkeyY"), QString::number(*y), dpi);
}

// A stage in few characters, without the unit.
QString stageText(std::optional<int> x, std::optional<int> y, bool isIndependent) {
  if (!x || (isIndependent && !y)) return {};
  return isIndependent ? QStringLiteral("%1 × %2").arg(*x).arg(*y) : QString::number(*x);
}

}  // namespace

MousePerformanceController::MousePerformanceController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MousePerformanceController>()) {
  mUi->setupUi(this);
  showStages();
}

MousePerformanceController::~MousePerformanceController() = default;

void MousePerformanceController::populateUISettings() {
  std::transform(pollingRateTitles.begin(), pollingRateTitles.end(), mPollingRates.begin(),
                 [](const auto& rate) { return std::pair(rate.first, localized(rate.second)); });
}

void MousePerformanceController::updateUISettings() {
  if (performanceSettingsDict.isNone()) return;
  mUi->mProfileNameLabel->setText(textOf(performanceSettingsDict, keys::ProfileName));
  showSensitivity();
  showStages();
  showPointer();
}

void MousePerformanceController::showSensitivity() {
  const bool isIndependent = numberOf(performanceSettingsDict, keys::IndependentXYOn).value_or(0) != 0;
  mUi->mDpiValue->setText(sensitivityText(numberOf(performanceSettingsDict, keys::DPIX),
                                          numberOf(performanceSettingsDict, keys::DPIY), isIndependent));
  mUi->mOnTheFlyValue->setText(onOffText(numberOf(performanceSettingsDict, keys::SensitivityOSDOn)));
}

void MousePerformanceController::showStages() {
  const std::array<StageChip*, keys::maximumStages> chips = {mUi->mStageOne, mUi->mStageTwo, mUi->mStageThree,
                                                             mUi->mStageFour, mUi->mStageFive};
  const PropertyList stages = performanceSettingsDict[keys::Stages].arrayOrEmpty();
  const int current = numberOf(performanceSettingsDict, keys::StageValue).value_or(-1);
  int index = 0;
  for (StageChip* chip : chips) {
    const PropertyList& stage = stages.at(index);
    const bool isIndependent = numberOf(stage, keys::StageIndependentXY).value_or(0) != 0;
    const std::optional<int> x = numberOf(stage, keys::StageDpiX);
    const std::optional<int> y = numberOf(stage, keys::StageDpiY);
    chip->setText(stageText(x, y, isIndependent));
    chip->setAccessibleName(sensitivityText(x, y, isIndependent));
    chip->setCurrent(index == current);
    chip->setAccessibleDescription(chip->isCurrent() ? localized("lkeyCurrentStage") : QString());
    chip->setHidden(chip->text().isEmpty());
    ++index;
  }
}

void MousePerformanceController::showPointer() {
  const std::optional<int> rate = numberOf(deviceSettingsDict, keys::PollingRate);
  const auto* title = std::find_if(mPollingRates.begin(), mPollingRates.end(),
                                   [&rate](const auto& known) { return rate && known.first == *rate; });
  mUi->mPollingRateValue->setText(title != mPollingRates.end() ? title->second : QString());

  const std::optional<int> isOn = numberOf(performanceSettingsDict, keys::AccelerationOn);
  const std::optional<int> level = numberOf(performanceSettingsDict, keys::Acceleration);
  const bool showsLevel = isOn.value_or(0) != 0 && level;
  mUi->mAccelerationValue->setText(showsLevel ? localized("lkeyAccelerationLevel").arg(*level) : onOffText(isOn));
}

void MousePerformanceController::enableControlsState(bool enabled) {
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
}

}  // namespace skarn
