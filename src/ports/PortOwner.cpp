#include "ports/PortOwner.h"

#include <utility>

#include "ports/BusCall.h"
#include "ports/MessagePort.h"

namespace vorn {

struct PortOwner::State {
  std::function<void()> missing;
  std::string connection;
  bus::SlotReference question;

  static int answered(sd_bus_message* reply, void* self, sd_bus_error*) {
    auto& state = *static_cast<State*>(self);
    const sd_bus_error* const failure = sd_bus_message_get_error(reply);
    const char* owner = nullptr;
    if (failure == nullptr && sd_bus_message_read(reply, "s", &owner) > 0) state.connection = owner;
    // The handler may end the question that it belongs to.
    const std::function<void()> missing = state.missing;
    if (sd_bus_error_has_name(failure, SD_BUS_ERROR_NAME_HAS_NO_OWNER) > 0) missing();
    return 0;
  }
};

PortOwner::PortOwner(std::string_view portName, std::function<void()> missing) : mState(std::make_unique<State>()) {
  mState->missing = std::move(missing);
  std::string busName = std::string(messagePortBusNamePrefix).append(portName);
  // What cannot be asked for is missing like what is not there: the prefix alone is no port's name.
  if (!bus::isValidBusName(busName)) busName = messagePortBusNamePrefix.substr(0, messagePortBusNamePrefix.size() - 1);
  BusConnection& connection = BusConnection::forThisThread();
  const bus::MessageReference question = bus::newBusCall(connection, "GetNameOwner");
  if (!question || sd_bus_message_append(question.get(), "s", busName.c_str()) < 0) return;
  sd_bus_slot* slot = nullptr;
  if (sd_bus_call_async(connection.handle(), &slot, question.get(), &State::answered, mState.get(), UINT64_MAX) >= 0)
    mState->question.reset(slot);
  connection.announceQueuedMessages();
}

PortOwner::~PortOwner() = default;

const std::string& PortOwner::connection() const {
  return mState->connection;
}

}  // namespace vorn
