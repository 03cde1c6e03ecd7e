#include "ports/PortWatch.h"

#include <utility>

#include "ports/BusCall.h"
#include "ports/MessagePort.h"

namespace vorn {

struct PortWatch::State {
  std::string portName;
  std::function<void()> lost;
  bool wasThere = false;
  bus::SlotReference changes;

  static int ownerChanged(sd_bus_message* message, void* self, sd_bus_error*) {
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    if (sd_bus_message_read(message, "sss", &name, &oldOwner, &newOwner) <= 0 || *newOwner != '\0') return 0;
    // The handler may end the watch that it belongs to.
    const std::function<void()> lost = static_cast<State*>(self)->lost;
    lost();
    return 0;
  }
};

PortWatch::PortWatch(std::string_view portName, std::function<void()> lost) : mState(std::make_unique<State>()) {
  mState->portName = portName;
  mState->lost = std::move(lost);
  const std::string busName = std::string(messagePortBusNamePrefix).append(portName);
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen() || !bus::isValidBusName(busName)) return;
  const std::string rule =
      "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',interface='org.freedesktop.DBus',"
      "member='NameOwnerChanged',arg0='" +
      busName + "'";
  sd_bus_slot* slot = nullptr;
  const int result = sd_bus_add_match(connection.handle(), &slot, rule.c_str(), &State::ownerChanged, mState.get());
  mState->changes.reset(slot);
  connection.announceQueuedMessages();
  mState->wasThere = result >= 0 && bus::hasOwner(connection, busName);
}

PortWatch::~PortWatch() = default;

const std::string& PortWatch::portName() const {
  return mState->portName;
}

bool PortWatch::wasThere() const {
  return mState->wasThere;
}

}  // namespace vorn
