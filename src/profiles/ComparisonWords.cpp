#include "profiles/ComparisonWords.h"

#include <QColor>
#include <QStringList>
#include <algorithm>

#include "model/SettingsKeys.h"
#include "platform/AssignmentWords.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

QString flagWords(const PropertyList& value) {
  return localized(value.toBool() ? "lkeyOn" : "lkeyOff");
}

QString numberWords(const PropertyList& value) {
  return QString::number(value.toInt64());
}

// Of a position, which counts from 0.
QString placeWords(const PropertyList& value) {
  return QString::number(value.toInt64() + 1);
}

QString dpiWords(const PropertyList& value) {
  return localized("lkeyComparedDpi").arg(value.toInt64());
}

QString stagesWords(const PropertyList& value) {
  QStringList stages;
  for (const PropertyList& stage : value.elements()) {
    const QString x = numberWords(stage[keys::StageDpiX]);
    const bool isApart = stage[keys::StageIndependentXY].toBool();
    stages << (isApart ? x + QStringLiteral(" × ") + numberWords(stage[keys::StageDpiY]) : x);
  }
  return stages.join(QStringLiteral(", "));
}

QString colorsWords(const PropertyList& value) {
  QStringList colors;
  for (const PropertyList& each : value.elements()) {
    const auto component = [&each](keys::Key key) {
      return std::clamp(static_cast<float>(each[key].toDouble()), 0.0F, 1.0F);
    };
    colors << QColor::fromRgbF(component(keys::Red), component(keys::Green), component(keys::Blue)).name().toUpper();
  }
  return colors.join(QStringLiteral(", "));
}

QString effectWords(const PropertyList& value) {
  constexpr std::int64_t oneColor = 0;
  constexpr std::int64_t spectrumCycling = 4;
  if (value.toInt64() == oneColor) return localized("lkeyComparedOneColor");
  return value.toInt64() == spectrumCycling ? localized("lkeySpectrumCycling") : numberWords(value);
}

QString brightnessWords(const PropertyList& value) {
  constexpr const char* levels[] = {"lkeyBrightnessOff", "lkeyBrightnessDim", "lkeyBrightnessNormal",
                                    "lkeyBrightnessBright"};
  const std::int64_t level = value.toInt64();
  return level >= 1 && level <= 4 ? localized(levels[level - 1]) : numberWords(value);
}

QString applicationWords(const PropertyList& value) {
  const QString name = textOf(value, keys::Application);
  return name.isEmpty() ? localized("lkeyComparedNone") : shownName(name);
}

struct SettingWords {
  keys::Key key;
  const char* titleKey;
  QString (*words)(const PropertyList& value);
};

constexpr SettingWords settings[] = {
    {keys::AppInfo, "lkeyComparedApplication", applicationWords},
    {keys::AutoSwitchOn, "lkeyProfileAutoSwitchColumn", flagWords},
    {keys::KeymapID, "lkeyComparedKeymap", placeWords},
    {keys::DPIX, "lkeyComparedX", dpiWords},
    {keys::DPIY, "lkeyComparedY", dpiWords},
    {keys::IndependentXYOn, "lkeyComparedLock", flagWords},
    {keys::Stages, "lkeyComparedStages", stagesWords},
    {keys::StageValue, "lkeyComparedStage", placeWords},
    {keys::SensitivityOSDOn, "lkeyComparedSensitivityMessage", flagWords},
    {keys::AccelerationOn, "lkeyAcceleration", flagWords},
    {keys::Acceleration, "lkeyAccelerationLevel", numberWords},
    {keys::ScrollLED, "lkeyLight", flagWords},
    {keys::LEDEffects, "lkeyEffect", effectWords},
    {keys::LEDColors, "lkeyLightColor", colorsWords},
    {keys::BrightnessKBNormal, "lkeyBrightness", brightnessWords},
};

QString valueWords(const PropertyList& value, QString (*words)(const PropertyList& value)) {
  return value.isNone() ? localized("lkeyComparedMissing") : words(value);
}

// Of a key that no tab shows.
QString plainWords(const PropertyList& value) {
  return shownName(QString::fromStdString(value.description(200)));
}

const SettingWords* wordsOfSetting(std::string_view key) {
  const auto* const found = std::ranges::find(settings, key, &SettingWords::key);
  return found == std::end(settings) ? nullptr : found;
}

}  // namespace

QString settingTitle(std::string_view key) {
  const SettingWords* words = wordsOfSetting(key);
  return words ? localized(words->titleKey) : QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

QString partWords(vorn::ProfilePart part) {
  switch (part) {
    case vorn::ProfilePart::Application:
      return localized("lkeyProfileApplicationColumn");
    case vorn::ProfilePart::Controls:
      return localized("lkeyTabButtons");
    case vorn::ProfilePart::Sensitivity:
      return localized("lkeyTabPerformance");
    case vorn::ProfilePart::Light:
      return localized("lkeyTabLighting");
    case vorn::ProfilePart::Other:
      break;
  }
  return localized("lkeyComparedOther");
}

ComparisonWords comparisonWords(const vorn::ProfileDifference& difference, const PropertyList& bundle) {
  if (difference.control != nullptr) {
    return {
        localized("lkeyComparedControl").arg(controlWords(*difference.control), QString::number(difference.keymap + 1)),
        assignmentWords(difference.left, *difference.control, bundle),
        assignmentWords(difference.right, *difference.control, bundle)};
  }
  const SettingWords* found = wordsOfSetting(difference.key);
  if (found == nullptr) {
    return {settingTitle(difference.key), valueWords(difference.left, plainWords),
            valueWords(difference.right, plainWords)};
  }
  return {settingTitle(difference.key), valueWords(difference.left, found->words),
          valueWords(difference.right, found->words)};
}

}  // namespace skarn
