// Mice that are plugged into this machine, as the rest of the engine sees them. One thread, the engine's.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/device/Device.h"
#include "core-engine/device/linux/ControlMap.h"

namespace vorn::engine {

// A mouse of the machine, whether or not it may be used.
struct FoundMouse {
  // The same whenever this mouse is plugged in, and no other's: bus, vendor, product, and its serial number or else the
  // place where it is plugged in: "usb-16c0:27db-A1B2", "bluetooth-16c0:27db-aa:bb:cc:dd:ee:ff".
  std::string id;
  bool isMarkedByPlace = false;  // it has no serial number, so in another socket its ID is another one
  std::string name;              // as it tells itself; control characters are gone
  Device::Connection connection = Device::Connection::Wired;
  std::vector<std::string> nodes;      // /dev/input/event5, all of them
  std::vector<std::string> forbidden;  // those of them that this user may not read and grab
  bool isPointerForbidden = false;     // one of these moves the pointer
  bool isOutputForbidden = false;      // this user may not make a keyboard or a pointer (/dev/uinput)
  std::int32_t resolution = 0;         // DPI, as the system knows it; 0 where it does not
  // The controls and fixed keys for which it has a key, a button or a wheel, with what it was taught.
  ControlSet controls;

  // Perhaps without some of its keys.
  bool isAllowed() const { return !isPointerForbidden && !isOutputForbidden; }
  friend bool operator==(const FoundMouse&, const FoundMouse&) = default;
};

// What a person has told of a mouse.
struct MouseRecord {
  ControlMap controls;
  std::int32_t resolution = 0;  // DPI, 100 to 32,000; 0: what the system knows of it, or else 800
  friend bool operator==(const MouseRecord&, const MouseRecord&) = default;
};

// One of them, in use. While it is not plugged in it is absent, and comes back by itself.
class RealMouse : public Device {
 public:
  using Heard = std::function<void(const EventSource& source)>;

  // From now on.
  virtual void setRecord(const MouseRecord& record) = 0;
  // The next key, button (but the left and the right one, with which a person works the window) or step of a wheel goes
  // to heard, once for each press, and not to the desktop, where the node can be kept from it without taking the
  // pointer away; until it is called with an empty function.
  virtual void teach(Heard heard) = 0;
  // Its resolution without any scaling, in DPI.
  virtual std::int32_t resolution() const = 0;
};

class RealMice {
 public:
  // What is known of the mouse of this ID.
  using RecordOf = std::function<MouseRecord(const std::string& id)>;

  virtual ~RealMice() = default;

  // All mice of the machine now, by name; looks once more.
  virtual std::vector<FoundMouse> mice() = 0;
  // From the first look on: one has come or gone, or may be used now, or no longer. One handler.
  virtual void setChangeHandler(std::function<void()> handler) = 0;
  virtual void setRecords(RecordOf recordOf) = 0;
  // The mouse of this ID, plugged in or not. It does nothing until it is told what to apply.
  virtual std::unique_ptr<RealMouse> make(const std::string& id) = 0;
};

}  // namespace vorn::engine
