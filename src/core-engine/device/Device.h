// The mouse, as the engine sees it. One thread, the engine's.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "core-engine/device/DeviceValues.h"
#include "protocol/DeviceStatus.h"

namespace vorn::engine {

// The mouse came, went or changed between cable and receiver; ask the device which.
struct ConnectionChanged {
  friend bool operator==(const ConnectionChanged&, const ConnectionChanged&) = default;
};
// The battery level or the charging status changed.
struct BatteryChanged {
  friend bool operator==(const BatteryChanged&, const BatteryChanged&) = default;
};
// The mouse tells another firmware version than when it came.
struct FirmwareChanged {
  friend bool operator==(const FirmwareChanged&, const FirmwareChanged&) = default;
};
// A control was pressed or released; control is its identifier, or one of the fixed keys (model/Controls.h). A step of
// the wheel is a press and a release.
struct ControlChanged {
  std::string control;
  bool isPressed = false;
  friend bool operator==(const ControlChanged&, const ControlChanged&) = default;
};
// A person typed a key or clicked a button somewhere while the engine may be recording or capturing: a keyboard usage
// (page 7) or a button number (page 9).
struct KeyChanged {
  std::uint16_t usagePage = 0;
  std::uint16_t usage = 0;
  bool isPressed = false;
  // When, by the clock of who tells of it; only differences between keys that have one count. None: now.
  std::optional<std::chrono::milliseconds> time{};
  friend bool operator==(const KeyChanged&, const KeyChanged&) = default;
};
// The mouse offers something else than before.
struct AbilitiesChanged {
  friend bool operator==(const AbilitiesChanged&, const AbilitiesChanged&) = default;
};
using DeviceEvent =
    std::variant<ConnectionChanged, BatteryChanged, FirmwareChanged, ControlChanged, KeyChanged, AbilitiesChanged>;

// What a control does depends on the settings, and a mouse that goes lets go of its controls.
inline bool needsSettings(const DeviceEvent& event) {
  return std::holds_alternative<ControlChanged>(event) || std::holds_alternative<ConnectionChanged>(event);
}

// Something the desktop receives from the mouse: the new value of a HID usage (USB HID Usage Tables), 1 and 0 for the
// press and the release of a key (page 7) or a button (page 9), steps for the wheel (page 1, usage 0x38).
struct OutputEvent {
  std::uint16_t usagePage = 0;
  std::uint16_t usage = 0;
  std::int32_t value = 0;
  friend bool operator==(const OutputEvent&, const OutputEvent&) = default;
};

class Device {
 public:
  enum class Connection { Absent, Wired, Wireless };
  using EventHandler = std::function<void(const DeviceEvent&)>;

  virtual ~Device() = default;

  virtual Connection connection() const = 0;
  // As the maker writes it; empty while the mouse is absent or does not tell. What other services know of it may come
  // later than the mouse; FirmwareChanged tells.
  virtual std::string firmwareVersion() const = 0;
  virtual int batteryPercent() const = 0;  // 0 to 100; 0 while the mouse is absent
  virtual ChargingStatus chargingStatus() const = 0;
  // Gives the event to the desktop. A mouse that is absent gives nothing.
  virtual void emit(const OutputEvent& event) = 0;

  // Makes the mouse what the settings in force ask for, as far as it can. What it cannot do now, being absent or
  // asleep, it does when it comes.
  virtual void apply(const DeviceValues& values) = 0;
  // While it listens it tells of every key of its own that is pressed (KeyChanged), but for those that are told as
  // controls: of these the desktop gets what the engine plays.
  virtual void setListening(bool isListening) = 0;
  // Changes with the connection, and with what other services know of the mouse; AbilitiesChanged tells.
  virtual DeviceAbilities abilities() const = 0;

  bool isPresent() const { return connection() != Connection::Absent; }
  bool isWired() const { return connection() == Connection::Wired; }

  // Called from the engine's run loop after the change; one handler, an empty one for none.
  void setEventHandler(EventHandler handler) { mEventHandler = std::move(handler); }

 protected:
  void notify(const DeviceEvent& event) const {
    if (mEventHandler) mEventHandler(event);
  }

 private:
  EventHandler mEventHandler;
};

}  // namespace vorn::engine
