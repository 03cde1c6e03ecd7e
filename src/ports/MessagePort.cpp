#include "ports/MessagePort.h"

#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstring>
#include <map>

#include "ports/BusCall.h"

namespace vorn {

namespace {

std::string busNameOf(std::string_view portName) {
  return std::string(messagePortBusNamePrefix).append(portName);
}

bus::MessageReference newSend(const BusConnection& connection, const std::string& portName, std::int32_t messageID,
                              BytesView data) {
  auto message = bus::newCall(connection, busNameOf(portName), messagePortObjectPath, messagePortInterface, "Send");
  if (!message || sd_bus_message_append(message.get(), "i", messageID) < 0 || !bus::appendBytes(message.get(), data))
    return nullptr;
  return message;
}

RemoteMessagePort::Status statusOf(const sd_bus_error& error) {
  using Status = RemoteMessagePort::Status;
  const auto is = [&error](const char* name) { return sd_bus_error_has_name(&error, name) > 0; };
  // A peer that ends without answering is NoReply; only our own limit is Timeout.
  if (is(SD_BUS_ERROR_TIMEOUT)) return Status::Timeout;
  for (const char* name : {SD_BUS_ERROR_SERVICE_UNKNOWN, SD_BUS_ERROR_NAME_HAS_NO_OWNER, SD_BUS_ERROR_UNKNOWN_OBJECT,
                           SD_BUS_ERROR_UNKNOWN_INTERFACE, SD_BUS_ERROR_UNKNOWN_METHOD})
    if (is(name)) return Status::InvalidPort;
  return Status::TransportError;
}

}  // namespace

std::optional<RemoteMessagePort> RemoteMessagePort::lookUp(std::string_view name) {
  const std::string busName = busNameOf(name);
  if (!bus::isValidBusName(busName)) return std::nullopt;
  if (!bus::hasOwner(BusConnection::forThisThread(), busName)) return std::nullopt;
  return RemoteMessagePort(std::string(name));
}

RemoteMessagePort::Status RemoteMessagePort::sendRequest(std::int32_t messageID, BytesView data,
                                                         std::chrono::milliseconds timeout, Bytes* replyData) const {
  if (replyData != nullptr) replyData->clear();
  BusConnection& connection = BusConnection::forThisThread();
  const bus::MessageReference message = newSend(connection, mName, messageID, data);
  if (!message) return Status::TransportError;
  bus::Error error;
  const bus::MessageReference reply = bus::call(connection, message.get(), timeout, error);
  if (!reply) return statusOf(*error.get());
  const std::optional<BytesView> returned = bus::readBytes(reply.get());
  if (!returned) return Status::TransportError;
  if (replyData != nullptr) replyData->assign(returned->begin(), returned->end());
  return Status::Success;
}

RemoteMessagePort::Status RemoteMessagePort::post(std::int32_t messageID, BytesView data) const {
  BusConnection& connection = BusConnection::forThisThread();
  const bus::MessageReference message = newSend(connection, mName, messageID, data);
  if (!message || sd_bus_message_set_expect_reply(message.get(), 0) < 0 ||
      sd_bus_send(connection.handle(), message.get(), nullptr) < 0)
    return Status::TransportError;
  connection.announceQueuedMessages();
  return Status::Success;
}

namespace {

RemoteMessagePort::Status outcomeOf(sd_bus_message* answer) {
  if (answer == nullptr) return RemoteMessagePort::Status::TransportError;
  const sd_bus_error* const failure = sd_bus_message_get_error(answer);
  return failure == nullptr ? RemoteMessagePort::Status::Success : statusOf(*failure);
}

}  // namespace

void RemoteMessagePort::ping(std::string_view name, std::function<void(Status)> done) {
  const std::string busName = busNameOf(name);
  if (!bus::isValidBusName(busName)) return done(Status::InvalidPort);
  BusConnection& connection = BusConnection::forThisThread();
  const auto message = bus::newCall(connection, busName, messagePortObjectPath, "org.freedesktop.DBus.Peer", "Ping");
  bus::callLater(connection, message.get(), std::nullopt,
                 [done = std::move(done)](sd_bus_message* answer) { done(outcomeOf(answer)); });
  connection.announceQueuedMessages();
}

void RemoteMessagePort::postTracked(std::string_view name, std::int32_t messageID, BytesView data,
                                    std::function<void(Status)> read) {
  const std::string portName(name);
  if (!bus::isValidBusName(busNameOf(portName))) return read(Status::InvalidPort);
  const BusConnection& connection = BusConnection::forThisThread();
  const bus::MessageReference message = newSend(connection, portName, messageID, data);
  if (!message || sd_bus_message_set_expect_reply(message.get(), 0) < 0 ||
      sd_bus_send(connection.handle(), message.get(), nullptr) < 0)
    return read(Status::TransportError);
  // Every program answers a ping, and does so after it has read what came before.
  ping(name, std::move(read));
}

void RemoteMessagePort::sendLater(std::string_view name, std::int32_t messageID, BytesView data,
                                  std::chrono::milliseconds timeout, std::function<void(Status)> done) {
  const std::string portName(name);
  BusConnection& connection = BusConnection::forThisThread();
  const bus::MessageReference message =
      bus::isValidBusName(busNameOf(portName)) ? newSend(connection, portName, messageID, data) : nullptr;
  bus::callLater(connection, message.get(), timeout,
                 [done = std::move(done)](sd_bus_message* answer) { done(outcomeOf(answer)); });
}

namespace {

// The ports of one connection. They share one object on the bus; the name that a message was sent to tells them
// apart.
class PortTable {
 public:
  using SharedCallback = std::shared_ptr<LocalMessagePort::Callback>;

  // The table of the thread's connection; null and *result when the object cannot be put on the bus.
  static std::shared_ptr<PortTable> of(const BusConnection& connection, int* result);

  bool contains(const std::string& busName) const { return mCallbacks.contains(busName); }
  void add(const std::string& busName, SharedCallback callback) { mCallbacks[busName] = std::move(callback); }
  void remove(const std::string& busName) { mCallbacks.erase(busName); }
  sd_bus* bus() const { return mBus.get(); }

 private:
  static int handleSend(sd_bus_message* message, void* table, sd_bus_error* error);
  SharedCallback callbackFor(const char* destination) const;

  static const sd_bus_vtable vtable[];

  bus::BusReference mBus;
  bus::SlotReference mSlot;
  std::map<std::string, SharedCallback> mCallbacks;
};

const sd_bus_vtable PortTable::vtable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD_WITH_ARGS("Send", SD_BUS_ARGS("i", messageID, "ay", data), SD_BUS_RESULT("ay", replyData),
                            PortTable::handleSend, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END};

std::shared_ptr<PortTable> PortTable::of(const BusConnection& connection, int* result) {
  thread_local std::weak_ptr<PortTable> latest;
  std::shared_ptr<PortTable> table = latest.lock();
  if (table && table->bus() == connection.handle()) return table;
  table = std::make_shared<PortTable>();
  table->mBus = bus::share(connection.handle());
  sd_bus_slot* slot = nullptr;
  *result =
      sd_bus_add_object_vtable(table->bus(), &slot, messagePortObjectPath, messagePortInterface, vtable, table.get());
  if (*result < 0) return nullptr;
  table->mSlot.reset(slot);
  latest = table;
  return table;
}

PortTable::SharedCallback PortTable::callbackFor(const char* destination) const {
  const auto found = mCallbacks.find(destination != nullptr ? destination : "");
  if (found != mCallbacks.end()) return found->second;
  // Sent to the connection's unique name.
  return mCallbacks.size() == 1 ? mCallbacks.begin()->second : nullptr;
}

int PortTable::handleSend(sd_bus_message* message, void* table, sd_bus_error* error) {
  std::int32_t messageID = 0;
  int result = sd_bus_message_read(message, "i", &messageID);
  if (result < 0) return result;
  const std::optional<BytesView> data = bus::readBytes(message);
  if (!data) return -EBADMSG;
  // The callback may take its own port away; from here on nothing of the table is touched.
  const SharedCallback callback =
      static_cast<const PortTable*>(table)->callbackFor(sd_bus_message_get_destination(message));
  if (!callback) return sd_bus_error_set(error, SD_BUS_ERROR_UNKNOWN_OBJECT, "No such message port");
  const char* sender = sd_bus_message_get_sender(message);
  const std::optional<Bytes> returned = (*callback)({messageID, *data, sender != nullptr ? sender : ""});
  if (!returned) return sd_bus_error_set(error, SD_BUS_ERROR_LIMITS_EXCEEDED, "The message port takes no more now");

  sd_bus_message* started = nullptr;
  result = sd_bus_message_new_method_return(message, &started);
  if (result < 0) return result;
  const bus::MessageReference reply(started);
  if (!bus::appendBytes(reply.get(), *returned))
    return sd_bus_error_set(error, SD_BUS_ERROR_LIMITS_EXCEEDED, "The reply is too large");
  return sd_bus_message_send(reply.get());
}

}  // namespace

struct LocalMessagePort::State {
  std::string name;
  std::string busName;
  std::shared_ptr<PortTable> table;
};

LocalMessagePort::LocalMessagePort() : mState(std::make_unique<State>()) {}

std::unique_ptr<LocalMessagePort> LocalMessagePort::create(std::string_view name, Callback callback, Failure* failure,
                                                           std::string* error) {
  const auto fail = [&](Failure reason, std::string text) {
    if (failure != nullptr) *failure = reason;
    if (error != nullptr) *error = std::move(text);
    return nullptr;
  };
  const std::string busName = busNameOf(name);
  if (!bus::isValidBusName(busName)) return fail(Failure::InvalidName, "Not a valid name of a port: " + busName);
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen()) return fail(Failure::NoBus, connection.error());

  int result = 0;
  const std::shared_ptr<PortTable> table = PortTable::of(connection, &result);
  if (!table) return fail(Failure::Other, std::strerror(-result));
  if (table->contains(busName)) return fail(Failure::NameTaken, "This program has the port already: " + busName);
  // Whoever sees the name must find the object complete.
  table->add(busName, std::make_shared<Callback>(std::move(callback)));
  result = bus::claimName(connection, busName);
  if (result < 0) {
    table->remove(busName);
    if (result == -EEXIST) return fail(Failure::NameTaken, "Another program has the port: " + busName);
    return fail(connection.isOpen() ? Failure::Other : Failure::NoBus, std::strerror(-result));
  }
  std::unique_ptr<LocalMessagePort> port(new LocalMessagePort);
  *port->mState = {std::string(name), busName, table};
  return port;
}

LocalMessagePort::~LocalMessagePort() {
  mState->table->remove(mState->busName);
  sd_bus_release_name(mState->table->bus(), mState->busName.c_str());
}

const std::string& LocalMessagePort::name() const {
  return mState->name;
}

}  // namespace vorn
