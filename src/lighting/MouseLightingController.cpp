#include "lighting/MouseLightingController.h"

#include <QColor>
#include <algorithm>
#include <cmath>
#include <optional>

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "ui_MouseLightingController.h"
#include "widgets/LabelState.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr int fixedColorEffect = 0;
constexpr int spectrumCyclingEffect = 4;

QString effectText(std::optional<int> effect) {
  if (effect == fixedColorEffect) return localized("lkeyFixedColor");
  if (effect == spectrumCyclingEffect) return localized("lkeySpectrumCycling");
  return {};
}

// Components outside 0 to 1 are brought back into the range; invalid without all three.
QColor colorOf(const PropertyList& zone) {
  const auto component = [&zone](std::string_view key) {
    return static_cast<float>(std::clamp(zone[key].toDouble(), 0.0, 1.0));
  };
  for (const auto key : {keys::Red, keys::Green, keys::Blue}) {
    if (!zone[key].isNumber() || std::isnan(zone[key].toDouble())) return {};
  }
  return QColor::fromRgbF(component(keys::Red), component(keys::Green), component(keys::Blue));
}

}  // namespace

MouseLightingController::MouseLightingController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MouseLightingController>()) {
  mUi->setupUi(this);
}

MouseLightingController::~MouseLightingController() = default;

void MouseLightingController::updateUISettings() {
  if (lightingDict.isNone()) return;
  mUi->mProfileNameLabel->setText(textOf(lightingDict, keys::ProfileName));
  mUi->mMainValue->setText(onOffText(numberOf(lightingDict, keys::ScrollLED)));
  mUi->mLightningValue->setText(effectText(numberOf(lightingDict, keys::LEDEffects)));
  mUi->mBrightnessText->setText(brightnessText(numberOf(lightingDict, keys::BrightnessKBNormal)));
  updateMainColorSettings();
}

void MouseLightingController::updateMainColorSettings() {
  const QColor color = colorOf(lightingDict[keys::LEDColors].at(0));
  mUi->mMainColor->setColor(color);
  mUi->mMainColorHex->setText(color.isValid() ? color.name(QColor::HexRgb).toUpper() : QString());
}

void MouseLightingController::enableControlsState(bool enabled) {
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
}

}  // namespace skarn
