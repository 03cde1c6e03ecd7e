#include "core-engine/news/ScreenMessages.h"

#include <algorithm>
#include <string>
#include <utility>

#include "model/SettingsKeys.h"
#include "model/Utf8.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

namespace {

constexpr std::size_t maximumName = 80;  // bytes; what is longer fills a screen

// Names are a person's own, or a file's: one line of them, and no longer than can be read in passing.
std::string shownName(std::string_view name) {
  std::string shown;
  while (!name.empty()) {
    const Utf8Character next = firstCharacter(name);
    if (shown.size() + next.length > maximumName) return shown + "…";
    shown += next.isValid && !isControlCharacter(next.code) ? name.substr(0, next.length) : " ";
    name.remove_prefix(next.length);
  }
  return shown;
}

// A change that a person sees where it is made.
bool isSeenAnyway(const ChangeOrigin& origin) {
  return origin.kind == ChangeOrigin::Kind::History || origin.sourceApp == configuratorIdentifier;
}

std::int64_t activeID(const PropertyList& bundle) {
  return bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64();
}

bool hasOtherSensitivity(const PropertyList& before, const PropertyList& after) {
  return std::ranges::any_of(std::initializer_list<keys::Key>{keys::DPIX, keys::DPIY, keys::StageValue},
                             [&](keys::Key key) { return before[key].toInt64() != after[key].toInt64(); });
}

bool isOfStage(const PropertyList& profile, const PropertyList& stage) {
  return stage[keys::StageDpiX].toInt64() == profile[keys::DPIX].toInt64() &&
         stage[keys::StageDpiY].toInt64() == profile[keys::DPIY].toInt64();
}

// In percent; negative for none.
int criticalLevel(const PropertyList& bundle) {
  constexpr int percentPerPosition = 5;
  constexpr int lastPosition = 5;
  const int position = bundle[keys::DeviceSettings][keys::BatteryCriticalLevel].toInt();
  return position < 1 ? -1 : std::min(position, lastPosition) * percentPerPosition;
}

}  // namespace

void ScreenMessages::settingsChanged(const PropertyList& before, const PropertyList& after,
                                     const ChangeOrigin& origin) {
  if (isSeenAnyway(origin) || !mDevice.isPresent()) return;
  const PropertyList& profile = after[keys::Profiles].at(activeID(after));
  if (activeID(before) == activeID(after)) {
    const PropertyList& former = before[keys::Profiles].at(activeID(before));
    if (profile[keys::SensitivityOSDOn].toBool() && hasOtherSensitivity(former, profile)) showSensitivity(profile);
    return;
  }
  // Where profiles have come, gone or moved, the same one may stand elsewhere.
  const bool isSwitch = before[keys::Profiles] == after[keys::Profiles];
  if (!isSwitch || !after[keys::DeviceSettings][keys::ProfileOSDOn].toBool()) return;
  mScreen.show({ScreenMessage::Kind::Change, filledIn(mTexts.profile, shownName(profile[keys::ProfileName].string()))});
}

void ScreenMessages::showSensitivity(const PropertyList& profile) {
  const std::string fromSideToSide = std::to_string(profile[keys::DPIX].toInt64());
  const std::string fromFrontToBack = std::to_string(profile[keys::DPIY].toInt64());
  const bool isOne = fromSideToSide == fromFrontToBack;
  const PropertyList& stages = profile[keys::Stages];
  const std::int64_t stage = profile[keys::StageValue].toInt64();
  const bool isStage = isOfStage(profile, stages.at(stage));
  mScreen.show(
      {ScreenMessage::Kind::Change,
       filledIn(mTexts.sensitivity, isOne ? fromSideToSide : filledIn(mTexts.axes, fromSideToSide, fromFrontToBack)),
       isStage ? filledIn(mTexts.stage, std::to_string(stage + 1), std::to_string(stages.size())) : ""});
}

void ScreenMessages::batteryChanged(const PropertyList& bundle) {
  if (!mDevice.isPresent()) return;
  const ChargingStatus status = mDevice.chargingStatus();
  // A battery that nobody tells of may be as low as before.
  if (status == ChargingStatus::NoBatteryDisplay) return;
  const int percent = mDevice.batteryPercent();
  const bool isLow = status == ChargingStatus::OnBattery && percent <= criticalLevel(bundle);
  if (!isLow || std::exchange(mIsBatteryLow, true)) {
    mIsBatteryLow = isLow;
    return;
  }
  mScreen.show({ScreenMessage::Kind::Warning, std::string(mTexts.batteryLow),
                filledIn(mTexts.batteryLeft, std::to_string(percent))});
}

}  // namespace vorn::engine
