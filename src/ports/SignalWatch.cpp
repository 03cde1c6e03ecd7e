#include "ports/SignalWatch.h"

#include <utility>

#include "ports/BusCall.h"
#include "ports/BusValue.h"

namespace vorn {

namespace {

std::string ruleFor(const SignalSource& source) {
  const std::string sender = source.busName.empty() ? "" : ",sender='" + source.busName + "'";
  return "type='signal',interface='" + source.interface + "',member='" + source.signal + "'" + sender +
         (source.hasObjectsBelow ? ",path_namespace='" : ",path='") + source.path + "'";
}

std::string textOf(const char* text) {
  return text == nullptr ? "" : text;
}

}  // namespace

struct SignalWatch::State {
  Handler received;
  bus::SlotReference match;

  static int arrived(sd_bus_message* message, void* self, sd_bus_error*) {
    ReceivedSignal signal{textOf(sd_bus_message_get_sender(message)), textOf(sd_bus_message_get_path(message)), {}};
    if (auto values = bus::readValues(message)) signal.values = std::move(*values);
    // The handler may end the watch that it belongs to.
    const Handler received = static_cast<State*>(self)->received;
    received(signal);
    return 0;
  }
};

SignalWatch::SignalWatch(const SignalSource& source, Handler received) : mState(std::make_unique<State>()) {
  mState->received = std::move(received);
  mState->match = bus::addMatch(source.bus, ruleFor(source), &State::arrived, mState.get());
}

SignalWatch::~SignalWatch() = default;

}  // namespace vorn
