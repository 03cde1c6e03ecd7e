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
    const auto change = bus::readOwnerChange(message);
    if (!change || change->previousOwner.empty()) return 0;
    const std::string_view busName(change->busName);
    if (busName.starts_with(messagePortBusNamePrefix)) {
      static_cast<const State*>(self)->lost(std::string(busName.substr(messagePortBusNamePrefix.size())));
    }
    return 0;
  }
};

PortLosses::PortLosses(std::function<void(const std::string&)> lost) : mState(std::make_unique<State>()) {
  mState->lost = std::move(lost);
  std::string nameSpace(messagePortBusNamePrefix);
  nameSpace.pop_back();
  mState->changes = bus::addMatch(Bus::Session, bus::ownerChangesOf("arg0namespace='" + nameSpace + "'"),
                                  &State::ownerChanged, mState.get());
}

PortLosses::~PortLosses() = default;

}  // namespace vorn
