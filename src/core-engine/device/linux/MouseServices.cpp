#include "core-engine/device/linux/MouseServices.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace vorn::engine {

namespace {

constexpr Scheduler::Duration settlingTime = std::chrono::seconds(1);

// "usb-16c0:27db-A1B2" is a "usb:16c0:27db" to ratbagd.
std::string modelOf(std::string_view id) {
  const std::size_t bus = id.find('-');
  if (bus == std::string_view::npos) return {};
  std::string model(id.substr(0, id.find('-', bus + 1)));
  model[bus] = ':';
  return model;
}

RatbagIdentity identityOf(const MouseHardware& hardware) {
  RatbagIdentity identity{{}, modelOf(hardware.id)};
  for (const std::string& node : hardware.rawNodes) identity.hidrawNames.push_back(node.substr(node.rfind('/') + 1));
  return identity;
}

std::uint8_t byteOf(double component) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

RatbagLight lightOf(const LightValues& values, bool isOnBattery) {
  constexpr std::int32_t spectrumCycling = 4;
  constexpr std::int32_t step = 85;
  const std::int32_t position = std::clamp(isOnBattery ? values.brightnessOnBattery : values.brightness, 1, 4);
  RatbagLight light;
  light.isOn = values.isOn;
  light.isCycling = values.effect == spectrumCycling;
  light.brightness = static_cast<std::uint8_t>((position - 1) * step);
  for (const LightColor& color : values.colors)
    light.colors.push_back({byteOf(color.red), byteOf(color.green), byteOf(color.blue)});
  return light;
}

}  // namespace

void MouseServices::update(const std::optional<MouseHardware>& hardware) {
  if (hardware) {
    if (!mSleep) {
      mSleep = std::make_unique<SleepWatch>(
          [this](bool isGoingToSleep) { isGoingToSleep ? mHandlers.goesToSleep() : wakeUp(); });
    }
    follow(identityOf(*hardware));
    followBattery(hardware->powerSupplies, !hardware->isWireless);
  } else {
    stopSettling();
    mSleep.reset();
    mRatbag.reset();
    mBattery.reset();
    mBatteryWatch.reset();
  }
}

void MouseServices::follow(const RatbagIdentity& identity) {
  if (mRatbag && identity == mIdentity) return;
  stopSettling();
  mIdentity = identity;
  mRatbag = std::make_unique<RatbagMouse>(identity, [this](RatbagMouse::News news) { hear(news); });
}

void MouseServices::followBattery(const std::vector<std::string>& supplies, bool isWired) {
  if (mBattery && supplies == mSupplies && isWired == mIsWired) return;
  const bool wasKnown = mBattery && mBattery->percent();
  mSupplies = supplies;
  mIsWired = isWired;
  if (!supplies.empty())
    mBatteryWatch.reset();
  else if (!mBatteryWatch)
    mBatteryWatch = std::make_unique<BatteryWatch>([this] { mHandlers.batteryAppeared(); });
  mBattery = std::make_unique<MouseBattery>(supplies, isWired, [this] {
    pursue();
    mHandlers.batteryChanged();
  });
  if (wasKnown) mHandlers.batteryChanged();
}

void MouseServices::hear(RatbagMouse::News news) {
  if (news == RatbagMouse::News::Known) applyAnew();
  if (news == RatbagMouse::News::Forgotten) stopSettling();
  mHandlers.hardwareChanged();
}

void MouseServices::wakeUp() {
  applyAnew();
  mHandlers.hardwareChanged();
}

void MouseServices::apply(const DeviceValues& values) {
  mValues = values == DeviceValues() ? std::nullopt : std::optional(values);
  pursue();
}

void MouseServices::applyAnew() {
  mApplied = {};
  pursue();
}

void MouseServices::pursue() {
  if (!isKnown() || !mValues) return stopSettling();
  if (mApplied.pollingRate != mValues->pollingRate) {
    mApplied.pollingRate = mValues->pollingRate;
    mRatbag->setReportRate(static_cast<std::uint32_t>(std::max(mValues->pollingRate, 0)));
  }
  const RatbagLight light = lightOf(mValues->light, chargingStatus() == ChargingStatus::OnBattery);
  if (mApplied.light != light) {
    mApplied.light = light;
    mRatbag->setLight(light);
  }
  if (mApplied.sensitivity == mValues->sensitivity) return stopSettling();
  isHandled() ? settleLater() : setSensitivity();
}

void MouseServices::setSensitivity() {
  stopSettling();
  const auto [x, y] = mValues->sensitivity;
  mApplied.sensitivity = mValues->sensitivity;
  mRatbag->setResolution({static_cast<std::uint32_t>(std::max(x, 0)), static_cast<std::uint32_t>(std::max(y, 0))});
}

bool MouseServices::isHandled() const {
  return mHeldControls > 0 || mIsUnsettled || (mHandledLast && mScheduler.now() - *mHandledLast < settlingTime);
}

void MouseServices::noteControl(bool isPressed) {
  mHeldControls = isPressed ? mHeldControls + 1 : mHeldControls - std::min<std::size_t>(mHeldControls, 1);
  mHandledLast = mScheduler.now();
  if (mIsUnsettled) settleLater();
}

void MouseServices::settleLater() {
  stopSettling();
  mIsUnsettled = true;
  if (mHeldControls > 0) return;
  mSettling = mScheduler.after(settlingTime, [this] {
    setSensitivity();
    mHandlers.hardwareChanged();
  });
}

void MouseServices::stopSettling() {
  mIsUnsettled = false;
  mScheduler.cancel(std::exchange(mSettling, 0));
}

std::optional<Sensitivity> MouseServices::sensitivity() const {
  const auto resolution = mRatbag ? mRatbag->resolution() : std::nullopt;
  if (!resolution) return std::nullopt;
  return Sensitivity{static_cast<std::int32_t>(resolution->x), static_cast<std::int32_t>(resolution->y)};
}

std::string MouseServices::firmwareVersion() const {
  return isKnown() ? mRatbag->state()->firmwareVersion : std::string();
}

int MouseServices::batteryPercent() const {
  return mBattery ? mBattery->percent().value_or(0) : 0;
}

ChargingStatus MouseServices::chargingStatus() const {
  return mBattery ? mBattery->chargingStatus() : ChargingStatus::NoBatteryDisplay;
}

DeviceAbilities MouseServices::abilities() const {
  DeviceAbilities abilities;
  abilities.hasBattery = mBattery && mBattery->percent();
  if (sensitivity()) abilities.sensitivity = DeviceAbilities::Way::Hardware;
  abilities.hasPollingRate = isKnown() && !mRatbag->state()->reportRates.empty();
  abilities.hasLight = isKnown() && !mRatbag->state()->leds.empty();
  return abilities;
}

}  // namespace vorn::engine
