#include "core-engine/device/linux/MouseBattery.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

#include "ports/BusService.h"

namespace vorn::engine {

namespace {

constexpr const char* busName = "org.freedesktop.UPower";
constexpr const char* managerPath = "/org/freedesktop/UPower";
constexpr const char* managerInterface = "org.freedesktop.UPower";
constexpr const char* deviceInterface = "org.freedesktop.UPower.Device";
// No machine has as many batteries.
constexpr std::size_t maximumDevices = 256;

namespace names {
constexpr const char* Percentage = "Percentage";
constexpr const char* State = "State";
constexpr const char* IsPresent = "IsPresent";
constexpr const char* BatteryLevel = "BatteryLevel";
constexpr const char* ofLevel[] = {Percentage, State, IsPresent, BatteryLevel};
}  // namespace names

// Numbers of UPower ("State" and "BatteryLevel" of org.freedesktop.UPower.Device). Of a battery that tells no percents
// but something like "low" UPower makes some, also of one that tells nothing yet.
constexpr int unknownLevel = 0;
enum class State : std::uint8_t { Charging = 1, FullyCharged = 4, PendingCharge = 5 };

std::string_view lastOf(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

struct Level {
  std::optional<int> percent;
  ChargingStatus status = ChargingStatus::NoBatteryDisplay;
  friend bool operator==(const Level&, const Level&) = default;
};

// UPower says of every battery that is full that it is fully charged, whether it is being charged or not.
ChargingStatus statusOf(const PropertyList& state, bool isWired) {
  switch (static_cast<State>(state.toInt())) {
    case State::Charging:
    case State::PendingCharge:
      return ChargingStatus::Charging;
    case State::FullyCharged:
      return isWired ? ChargingStatus::NoBatteryDisplay : ChargingStatus::OnBattery;
    default:
      return ChargingStatus::OnBattery;
  }
}

Level levelOf(const PropertyList& device, bool isWired) {
  const PropertyList& percentage = device[names::Percentage];
  const PropertyList& isPresent = device[names::IsPresent];
  const PropertyList& level = device[names::BatteryLevel];
  const bool isGuessed = level.isNumber() && level.toInt() == unknownLevel;
  const bool isAbsent = isPresent.isBoolean() && !isPresent.toBool();
  if (!percentage.isNumber() || !std::isfinite(percentage.toDouble()) || isGuessed || isAbsent) return {};
  const double percent = std::clamp(percentage.toDouble(), 0.0, 100.0);
  return {static_cast<int>(std::lround(percent)), statusOf(device[names::State], isWired)};
}

// UPower looks at a battery again and again, and tells that it has.
bool tellsOfLevel(const PropertyChanges& changes) {
  return changes.isIncomplete ||
         std::ranges::any_of(names::ofLevel, [&](const char* name) { return changes.changed.contains(name); });
}

}  // namespace

struct MouseBattery::Client {
  Client(std::vector<std::string> which, bool isOnCable, Handler told)
      : supplies(std::move(which)),
        isWired(isOnCable),
        handler(std::move(told)),
        service(Bus::System, busName, [this] { serviceChanged(); }) {
    service.watch(managerPath, managerInterface, "DeviceAdded", [this](const ReceivedSignal& received) {
      if (received.values.size() == 1) consider(received.values.front().toString());
    });
    service.watch(managerPath, managerInterface, "DeviceRemoved", [this](const ReceivedSignal& received) {
      if (received.values.size() == 1 && received.values.front().string() == battery) lose();
    });
  }

  std::vector<std::string> supplies;
  bool isWired;
  Handler handler;
  bool hasAsked = false;
  std::string battery;  // its object; empty for none
  Level level;
  BusService service;

  // Always the last thing done: the handler may end all this.
  void become(const Level& now) {
    if (now == std::exchange(level, now)) return;
    const Handler told = handler;
    if (told) told();
  }

  void serviceChanged() {
    if (service.isThere()) {
      hasAsked = true;
      const auto considerAll = [this](const BusAnswer& answer) {
        if (answer.values.size() != 1) return;
        const auto devices = answer.values.front().elements();
        for (std::size_t index = 0; index < std::min(devices.size(), maximumDevices); ++index) {
          consider(devices[index].toString());
        }
      };
      service.call(managerPath, managerInterface, "EnumerateDevices", {}, considerAll, std::nullopt);
    } else {
      if (!std::exchange(hasAsked, true)) service.start([](const ServiceStart&) {});
      lose();
    }
  }

  bool isMeant(std::string_view nativePath) const {
    return std::ranges::any_of(supplies, [nativePath](const std::string& supply) {
      return !nativePath.empty() && lastOf(nativePath) == lastOf(supply);
    });
  }

  void consider(const std::string& device) {
    service.getProperties(device, deviceInterface, [this, device](const PropertyList& properties) {
      if (!battery.empty() || !isMeant(properties["NativePath"].string())) return;
      battery = device;
      // Only this one's changes: the other batteries of the machine are no reason to wake up.
      service.watch(battery, propertiesInterface, propertiesChanged, [this](const ReceivedSignal& received) {
        const auto changes = propertyChangesOf(received, deviceInterface);
        if (changes && tellsOfLevel(*changes)) read();
      });
      read();
    });
  }

  // What UPower says at once, for it may tell of one half of a change before the other.
  void read() {
    service.getProperties(battery, deviceInterface, [this, device = battery](const PropertyList& properties) {
      if (device == battery) become(levelOf(properties, isWired));
    });
  }

  void lose() {
    if (!battery.empty()) service.unwatch(std::exchange(battery, {}));
    become({});
  }
};

MouseBattery::MouseBattery(std::vector<std::string> supplies, bool isWired, Handler changed) {
  if (!supplies.empty()) mClient = std::make_unique<Client>(std::move(supplies), isWired, std::move(changed));
}

MouseBattery::~MouseBattery() = default;

std::optional<int> MouseBattery::percent() const {
  return mClient ? mClient->level.percent : std::nullopt;
}

ChargingStatus MouseBattery::chargingStatus() const {
  return mClient ? mClient->level.status : ChargingStatus::NoBatteryDisplay;
}

}  // namespace vorn::engine
