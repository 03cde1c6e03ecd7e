#include "ports/SignalWatch.h"

#include <utility>

#include "ports/BusCall.h"

namespace vorn {

struct SignalWatch::State {
  Handler received;
  bus::SlotReference match;

  static int arrived(sd_bus_message* message, void* self, sd_bus_error*) {
    const char* const sender = sd_bus_message_get_sender(message);
    // The handler may end the watch that it belongs to.
    const Handler received = static_cast<State*>(self)->received;
    received(sender == nullptr ? "" : sender);
    return 0;
  }
};

SignalWatch::SignalWatch(const std::string& path, const std::string& interface, const std::string& signal,
                         Handler received)
    : mState(std::make_unique<State>()) {
  mState->received = std::move(received);
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen()) return;
  sd_bus_slot* slot = nullptr;
  sd_bus_match_signal(connection.handle(), &slot, nullptr, path.c_str(), interface.c_str(), signal.c_str(),
                      &State::arrived, mState.get());
  mState->match.reset(slot);
  connection.announceQueuedMessages();
}

SignalWatch::~SignalWatch() = default;

}  // namespace vorn
