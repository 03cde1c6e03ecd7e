#include "lighting/MouseLightingController.h"

#include <QSignalBlocker>
#include <algorithm>
#include <iterator>
#include <utility>

#include "lighting/LightColor.h"
#include "model/SettingsKeys.h"
#include "platform/GoneAlert.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "ui_MouseLightingController.h"
#include "widgets/LabelState.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr const char* tagProperty = "tag";

constexpr int fixedColorEffect = 0;
constexpr int spectrumCyclingEffect = 4;

struct EffectChoice {
  int tag;
  void (MouseLightingController::*choose)();
  LightPreview::Effect shown;
};
constexpr EffectChoice effectChoices[] = {
    {fixedColorEffect, &MouseLightingController::selectColor, LightPreview::Effect::FixedColor},
    {spectrumCyclingEffect, &MouseLightingController::selectSpectrumCycling, LightPreview::Effect::SpectrumCycling},
};

const EffectChoice* choiceOf(int effect) {
  for (const EffectChoice& choice : effectChoices) {
    if (choice.tag == effect) return &choice;
  }
  return nullptr;
}

const EffectChoice* choiceOf(const QRadioButton& cell) {
  return choiceOf(cell.property(tagProperty).toInt());
}

// How bright the picture is at a position of the slider.
constexpr qreal strengths[] = {0, 0.4, 0.7, 1};

}  // namespace

MouseLightingController::MouseLightingController(QWidget* parent)
    : QWidget(parent), mUi(std::make_unique<Ui::MouseLightingController>()) {
  mUi->setupUi(this);
  wireControls();
}

MouseLightingController::~MouseLightingController() = default;

void MouseLightingController::wireControls() {
  connect(mUi->mProfileListPopUp, &QComboBox::activated, this, &MouseLightingController::selectProfile);
  connect(mUi->mMain, &QCheckBox::clicked, this, &MouseLightingController::tickMain);
  connect(mUi->mMainColor, &ColorWell::colorChosen, this, &MouseLightingController::clickMainColor);
  connect(mUi->mMainColor, &ColorWell::colorPreviewed, this, &MouseLightingController::updatePreview);
  connect(mUi->mBrightnessValue, &QSlider::valueChanged, this, &MouseLightingController::brightnessValueChange);
  for (QRadioButton* cell : mUi->mLightning->findChildren<QRadioButton*>()) {
    const EffectChoice* choice = choiceOf(*cell);
    if (choice != nullptr) connect(cell, &QRadioButton::clicked, this, choice->choose);
  }
}

// --- Handlers

void MouseLightingController::send(const PropertyList& settings) {
  if (lightingDelegate != nullptr) lightingDelegate->updateValueForSetting(settings);
}

void MouseLightingController::updateValue(int value, std::string_view ofSetting) {
  send(PropertyList::dictionary({{ofSetting, value}}));
}

void MouseLightingController::selectProfile() {
  if (lightingDelegate != nullptr) lightingDelegate->switchProfileWithID(mUi->mProfileListPopUp->currentIndex());
}

void MouseLightingController::tickMain() {
  userSettingsDict = userSettingsDict.with(keys::ScrollLED, mUi->mMain->isChecked() ? 1 : 0);
  updatePreview();
}

void MouseLightingController::clickMainColor() {
  const PropertyList zones = lightingDict[keys::LEDColors].arrayOrEmpty();
  const PropertyList main = zoneInColor(zones.at(0), mUi->mMainColor->color());
  send(PropertyList::dictionary(
      {{keys::LEDColors, zones.isEmpty() ? zones.appending(main) : zones.replacing(0, main)}}));
}

void MouseLightingController::selectColor() {
  shouldUpdateUIOnly = true;
  updatePreview();
  send(PropertyList::dictionary({{keys::ScrollLED, 1}, {keys::LEDEffects, fixedColorEffect}}));
}

void MouseLightingController::selectSpectrumCycling() {
  shouldUpdateUIOnly = true;
  updatePreview();
  updateValue(spectrumCyclingEffect, keys::LEDEffects);
}

void MouseLightingController::brightnessValueChange() {
  describeBrightness();
  updatePreview();
  updateValue(mUi->mBrightnessValue->value(), keys::BrightnessKBNormal);
}

void MouseLightingController::updateBrightnessSettings() {
  shouldUpdateUIOnly = true;
  shouldUpdateBrightness = false;
  updateValue(mUi->mBrightnessValue->value(), keys::BrightnessNormal);
}

// --- Drawing

void MouseLightingController::populateProfileListPopUpMenu() {
  QComboBox& list = *mUi->mProfileListPopUp;
  list.clear();
  for (const PropertyList& profile : allProfiles.elements()) list.addItem(textOf(profile, keys::ProfileName));
  const PropertyList& current = lightingDict[keys::ProfileName];
  list.setCurrentIndex(current.isString() ? list.findText(textOf(lightingDict, keys::ProfileName),
                                                          Qt::MatchExactly | Qt::MatchCaseSensitive)
                                          : -1);
}

void MouseLightingController::updateMainColorSettings() {
  mUi->mMainColor->setColor(colorOfZone(lightingDict[keys::LEDColors].at(0)));
}

void MouseLightingController::selectEffectCell(int effect) {
  const auto cells = mUi->mLightning->findChildren<QRadioButton*>();
  // Exclusive cells would keep one of them selected.
  for (QRadioButton* cell : cells) cell->setAutoExclusive(false);
  for (QRadioButton* cell : cells) cell->setChecked(cell->property(tagProperty).toInt() == effect);
  for (QRadioButton* cell : cells) cell->setAutoExclusive(true);
}

void MouseLightingController::updateUISettings() {
  populateProfileListPopUpMenu();
  if (lightingDict.isNone()) return;
  // What the panel shows was meant for the profile that it was opened for.
  const QString name = textOf(lightingDict, keys::ProfileName);
  const QString before = std::exchange(mShownProfile, name);
  if (before != name && mUi->mMainColor->closePanel()) showNotCurrentAlert(window(), before);
  mUi->mMain->setChecked(lightingDict[keys::ScrollLED].toInt() != 0);
  // Apply writes the first profile, whatever profile is shown.
  mUi->mMainNote->setText(localized(deviceSettingsDict[keys::ActiveProfile].toInt64() == 0
                                        ? "lkeyLightAppliedNote"
                                        : "lkeyLightAppliedElsewhereNote"));
  {
    const QSignalBlocker quiet(mUi->mBrightnessValue);
    mUi->mBrightnessValue->setValue(lightingDict[keys::BrightnessKBNormal].toInt());
  }
  describeBrightness();
  selectEffectCell(lightingDict[keys::LEDEffects].toInt());
  updateMainColorSettings();
  updatePreview();
  if (showsDevice && !shouldUpdateUIOnly) sendEffectAndBrightness();
}

void MouseLightingController::sendEffectAndBrightness() {
  if (const EffectChoice* choice = choiceOf(lightingDict[keys::LEDEffects].toInt())) (this->*choice->choose)();
  if (shouldUpdateBrightness) updateBrightnessSettings();
}

void MouseLightingController::describeBrightness() {
  mUi->mBrightnessValue->setAccessibleDescription(mUi->mBrightnessScale->textAt(mUi->mBrightnessValue->value()));
}

void MouseLightingController::updatePreview() {
  const QColor color = mUi->mMainColor->previewedColor();
  const QString hex = color.isValid() ? color.name(QColor::HexRgb).toUpper() : QString();
  mUi->mMainColorHex->setText(hex);
  mUi->mMainColorRgb->setText(color.isValid() ? localized("lkeyLightColorParts")
                                                    .arg(QString::number(color.red()), QString::number(color.green()),
                                                         QString::number(color.blue()))
                                              : QString());
  LightPreview::Light light{.color = color};
  QStringList words;
  for (const QRadioButton* cell : mUi->mLightning->findChildren<QRadioButton*>()) {
    const EffectChoice* choice = choiceOf(*cell);
    if (choice == nullptr || !cell->isChecked()) continue;
    light.effect = choice->shown;
    words << cell->text();
  }
  if (light.effect == LightPreview::Effect::FixedColor && color.isValid()) words << hex;
  const int position = mUi->mBrightnessValue->value();
  if (mUi->mMain->isChecked()) {
    light.strength =
        strengths[std::clamp<std::size_t>(static_cast<std::size_t>(position), 1, std::size(strengths)) - 1];
  }
  words << mUi->mBrightnessScale->textAt(position);
  mUi->mLightPreview->setLight(light);
  mUi->mLightPreview->setAccessibleDescription(light.strength > 0 ? words.join(QLatin1String(", "))
                                                                  : localized("lkeyLightOffDescription"));
}

void MouseLightingController::enableControlsState(bool enabled) {
  mIsEnabled = enabled;
  setLabelsEnabled(*this, enabled, localized("lkeyNoMouseConnected"));
  for (QWidget* control :
       std::initializer_list<QWidget*>{mUi->mProfileListPopUp, mUi->mMain, mUi->mMainColor, mUi->mLightning,
                                       mUi->mBrightnessValue, mUi->mLightPreview, mUi->mOtherZones})
    control->setEnabled(enabled);
  explain();
}

void MouseLightingController::setMouseOffersLight(bool isOffered) {
  mOffersLight = isOffered;
  explain();
}

void MouseLightingController::explain() {
  const QString whyNot = mIsEnabled ? QString() : localized("lkeyNoMouseConnected");
  const QString ofLight = mIsEnabled && !mOffersLight ? localized("lkeyMouseLacksLight") : whyNot;
  for (QWidget* control : std::initializer_list<QWidget*>{mUi->mProfileListPopUp, mUi->mOtherZones})
    control->setToolTip(whyNot);
  for (QWidget* control : std::initializer_list<QWidget*>{mUi->mMain, mUi->mMainColor, mUi->mLightning,
                                                          mUi->mBrightnessValue, mUi->mLightPreview})
    control->setToolTip(ofLight);
}

}  // namespace skarn
