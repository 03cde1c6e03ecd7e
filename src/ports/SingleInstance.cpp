#include "ports/SingleInstance.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "ports/BusCall.h"

namespace vorn {

namespace {

constexpr const char* applicationInterface = "org.freedesktop.Application";
constexpr const char* tokenKey = "activation-token";
// The running program may be inside a blocking wait of its own; the request reaches it afterwards.
constexpr std::chrono::milliseconds activateTimeout{25000};

std::string objectPathOf(std::string_view identifier) {
  std::string path("/");
  path += identifier;
  std::replace(path.begin(), path.end(), '.', '/');
  std::replace(path.begin(), path.end(), '-', '_');
  return path;
}

using SharedHandler = std::shared_ptr<SingleInstance::ActivateHandler>;

// The token among the platform data; empty when there is none.
int readToken(sd_bus_message* message, std::string* token) {
  int result = sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
  if (result < 0) return result;
  while ((result = sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv")) > 0) {
    const char* key = nullptr;
    const char* contents = nullptr;
    if ((result = sd_bus_message_read(message, "s", &key)) < 0 ||
        (result = sd_bus_message_peek_type(message, nullptr, &contents)) < 0)
      return result;
    const char* text = nullptr;
    if (std::strcmp(key, tokenKey) == 0 && std::strcmp(contents, "s") == 0) {
      if ((result = sd_bus_message_read(message, "v", "s", &text)) < 0) return result;
      *token = text;
    } else if ((result = sd_bus_message_skip(message, "v")) < 0) {
      return result;
    }
    if ((result = sd_bus_message_exit_container(message)) < 0) return result;
  }
  return result;
}

int handleActivate(sd_bus_message* message, void* handler, sd_bus_error*) {
  std::string token;
  const int result = readToken(message, &token);
  if (result < 0) return result;
  // The handler may end the claim that it belongs to.
  const SharedHandler kept = *static_cast<const SharedHandler*>(handler);
  if (*kept) (*kept)(token);
  return sd_bus_reply_method_return(message, "");
}

const sd_bus_vtable vtable[] = {SD_BUS_VTABLE_START(0),
                                SD_BUS_METHOD_WITH_ARGS("Activate", SD_BUS_ARGS("a{sv}", platform_data),
                                                        SD_BUS_NO_RESULT, handleActivate, SD_BUS_VTABLE_UNPRIVILEGED),
                                SD_BUS_VTABLE_END};

}  // namespace

struct SingleInstance::State {
  std::string identifier;
  SharedHandler handler;
  bus::BusReference bus;
  bus::SlotReference slot;
};

SingleInstance::SingleInstance() : mState(std::make_unique<State>()) {}

std::unique_ptr<SingleInstance> SingleInstance::claim(std::string_view identifier, ActivateHandler handler,
                                                      bool* isTaken) {
  if (isTaken != nullptr) *isTaken = false;
  BusConnection& connection = BusConnection::forThisThread();
  if (!bus::isValidBusName(identifier) || !connection.isOpen()) return nullptr;
  std::unique_ptr<SingleInstance> instance(new SingleInstance);
  State& state = *instance->mState;
  state.identifier = identifier;
  state.handler = std::make_shared<ActivateHandler>(std::move(handler));
  state.bus = bus::share(connection.handle());
  // Whoever sees the name must find the object.
  sd_bus_slot* slot = nullptr;
  int result = sd_bus_add_object_vtable(state.bus.get(), &slot, objectPathOf(identifier).c_str(), applicationInterface,
                                        vtable, &state.handler);
  state.slot.reset(slot);
  if (result >= 0) result = bus::claimName(connection, state.identifier);
  if (result >= 0) return instance;
  if (isTaken != nullptr) *isTaken = result == -EEXIST;
  state.identifier.clear();
  return nullptr;
}

SingleInstance::~SingleInstance() {
  mState->slot.reset();
  if (!mState->identifier.empty()) sd_bus_release_name(mState->bus.get(), mState->identifier.c_str());
}

bool SingleInstance::activateOther(std::string_view identifier, const std::string& token) {
  if (!bus::isValidBusName(identifier)) return false;
  BusConnection& connection = BusConnection::forThisThread();
  const std::string busName(identifier);
  const auto newActivate = [&] {
    return bus::newCall(connection, busName, objectPathOf(identifier), applicationInterface, "Activate");
  };
  bus::MessageReference message = newActivate();
  if (!message) return false;
  if (token.empty() || sd_bus_message_append(message.get(), "a{sv}", 1, tokenKey, "s", token.c_str()) < 0) {
    // A token that the bus cannot carry is no reason to leave the window behind others.
    message = newActivate();
    if (!message || sd_bus_message_append(message.get(), "a{sv}", 0) < 0) return false;
  }
  bus::Error error;
  return bus::call(connection, message.get(), activateTimeout, error) != nullptr;
}

}  // namespace vorn
