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
    const auto change = bus::readOwnerChange(message);
    if (!change) return 0;
    // The handlers may end the watch that they belong to.
    auto& state = *static_cast<State*>(self);
    state.owner = change->owner;
    const std::function<void()> lost = state.lost;
    const std::function<void()> found = state.found;
    if (!change->previousOwner.empty()) lost();
    if (!change->owner.empty() && found) found();
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
  mState->changes =
      bus::addMatch(Bus::Session, bus::ownerChangesOf("arg0='" + busName + "'"), &State::ownerChanged, mState.get());
  if (mState->changes) mState->owner = bus::ownerOf(connection, busName);
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
