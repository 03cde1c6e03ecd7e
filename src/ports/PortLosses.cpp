#include "ports/PortLosses.h"

#include <string_view>
#include <utility>

#include "ports/BusCall.h"
#include "ports/MessagePort.h"

namespace vorn {

struct PortLosses::State {
  std::function<void(const std::string&)> lost;
  bus::SlotReference changes;

  static int ownerChanged(sd_bus_message* message, void* self, sd_bus_error*) {
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    if (sd_bus_message_read(message, "sss", &name, &oldOwner, &newOwner) <= 0 || *oldOwner == '\0') return 0;
    const std::string_view busName(name);
    if (busName.starts_with(messagePortBusNamePrefix)) {
      static_cast<const State*>(self)->lost(std::string(busName.substr(messagePortBusNamePrefix.size())));
    }
    return 0;
  }
};

PortLosses::PortLosses(std::function<void(const std::string&)> lost) : mState(std::make_unique<State>()) {
  mState->lost = std::move(lost);
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen()) return;
  std::string nameSpace(messagePortBusNamePrefix);
  nameSpace.pop_back();
  const std::string rule =
      "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',interface='org.freedesktop.DBus',"
      "member='NameOwnerChanged',arg0namespace='" +
      nameSpace + "'";
  sd_bus_slot* slot = nullptr;
  if (sd_bus_add_match(connection.handle(), &slot, rule.c_str(), &State::ownerChanged, mState.get()) >= 0) {
    mState->changes.reset(slot);
  }
  connection.announceQueuedMessages();
}

PortLosses::~PortLosses() = default;

}  // namespace vorn
