#include "ports/PortWatch.h"

#include <utility>

#include "ports/BusCall.h"
#include "ports/MessagePort.h"

namespace vorn {

struct PortWatch::State {
  std::string portName;
  std::function<void()> lost;
  std::function<void()> found;
  bool wasThere = false;
  std::string owner;
  bus::SlotReference changes;

  static int ownerChanged(sd_bus_message* message, void* self, sd_bus_error*) {
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    if (sd_bus_message_read(message, "sss", &name, &oldOwner, &newOwner) <= 0) return 0;
    const bool isLost = *oldOwner != '\0';
    const bool isFound = *newOwner != '\0';
    // The handlers may end the watch that they belong to.
    auto& state = *static_cast<State*>(self);
    state.owner = newOwner;
    const std::function<void()> lost = state.lost;
    const std::function<void()> found = state.found;
    if (isLost) lost();
    if (isFound && found) found();
    return 0;
  }
};

PortWatch::PortWatch(std::string_view portName, std::function<void()> lost, std::function<void()> found)
    : mState(std::make_unique<State>()) {
  mState->portName = portName;
  mState->lost = std::move(lost);
  mState->found = std::move(found);
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
  if (result >= 0) mState->owner = bus::ownerOf(connection, busName);
  mState->wasThere = !mState->owner.empty();
}

PortWatch::~PortWatch() = default;

const std::string& PortWatch::portName() const {
  return mState->portName;
}

const std::string& PortWatch::owner() const {
  return mState->owner;
}

bool PortWatch::wasThere() const {
  return mState->wasThere;
}

}  // namespace vorn
