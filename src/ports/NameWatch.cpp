#include "ports/NameWatch.h"

#include <utility>

#include "ports/BusCall.h"

namespace vorn {

namespace {

// What sd-bus itself tells at the end of a connection.
constexpr const char* endOfConnection =
    "type='signal',sender='org.freedesktop.DBus.Local',path='/org/freedesktop/DBus/Local',"
    "interface='org.freedesktop.DBus.Local',member='Disconnected'";

}  // namespace

struct NameWatch::State {
  Handler changed;
  bool isTold = false;
  std::string owner;
  bus::SlotReference changes;
  bus::SlotReference end;
  bus::SlotReference question;

  void tell(const std::string& now) {
    if (std::exchange(isTold, true) && owner == now) return;
    owner = now;
    // The handler may end the watch that it belongs to.
    const Handler handler = changed;
    handler(now);
  }
  static int ownerChanged(sd_bus_message* message, void* self, sd_bus_error*) {
    if (const auto change = bus::readOwnerChange(message)) static_cast<State*>(self)->tell(change->owner);
    return 0;
  }
  static int disconnected(sd_bus_message*, void* self, sd_bus_error*) {
    static_cast<State*>(self)->tell("");
    return 0;
  }
  static int answered(sd_bus_message* answer, void* self, sd_bus_error*) {
    auto& state = *static_cast<State*>(self);
    const char* owner = nullptr;
    if (sd_bus_message_is_method_error(answer, nullptr) > 0 || sd_bus_message_read(answer, "s", &owner) <= 0)
      owner = "";
    state.tell(owner);
    return 0;
  }
};

NameWatch::NameWatch(Bus bus, const std::string& busName, Handler changed) : mState(std::make_unique<State>()) {
  mState->changed = std::move(changed);
  if (!bus::isValidBusName(busName)) return;
  BusConnection& connection = BusConnection::forThisThread(bus);
  mState->changes =
      bus::addMatchLater(bus, bus::ownerChangesOf("arg0='" + busName + "'"), &State::ownerChanged, mState.get());
  const bus::MessageReference question = bus::newBusCall(connection, "GetNameOwner");
  if (!question || sd_bus_message_append(question.get(), "s", busName.c_str()) < 0) return;
  sd_bus_slot* slot = nullptr;
  if (sd_bus_add_match(connection.handle(), &slot, endOfConnection, &State::disconnected, mState.get()) >= 0)
    mState->end.reset(slot);
  if (sd_bus_call_async(connection.handle(), &slot, question.get(), &State::answered, mState.get(), UINT64_MAX) >= 0)
    mState->question.reset(slot);
  connection.announceQueuedMessages();
}

NameWatch::~NameWatch() = default;

const std::string& NameWatch::owner() const {
  return mState->owner;
}

}  // namespace vorn
