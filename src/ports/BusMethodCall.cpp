#include "ports/BusMethodCall.h"

#include "ports/BusCall.h"
#include "ports/BusValue.h"

namespace vorn {

namespace {

using Status = BusAnswer::Status;

Status statusOf(const bus::Error& error, const BusConnection& connection) {
  if (!connection.isOpen()) return Status::NoBus;
  if (error.is(SD_BUS_ERROR_TIMEOUT)) return Status::Timeout;
  for (const char* name : {SD_BUS_ERROR_SERVICE_UNKNOWN, SD_BUS_ERROR_NAME_HAS_NO_OWNER}) {
    if (error.is(name)) return Status::NoOwner;
  }
  return Status::Error;
}

// Null when the call cannot be made; error then tells why.
bus::MessageReference newRequest(const BusConnection& connection, const BusTarget& target, const std::string& method,
                                 const std::vector<BusInput>& inputs, std::string* error) {
  bus::MessageReference request =
      bus::newCall(connection, target.busName, target.path, target.interface.c_str(), method.c_str());
  if (!request) {
    *error = "The call cannot be made";
    return nullptr;
  }
  for (const BusInput& input : inputs) {
    if (bus::appendValue(request.get(), input.type, input.value)) continue;
    *error = "A value does not fit the type " + input.type;
    return nullptr;
  }
  return request;
}

}  // namespace

BusAnswer callBusMethod(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs,
                        std::chrono::milliseconds timeout) {
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen()) return {Status::NoBus, {}, connection.error()};
  std::string refusal;
  const bus::MessageReference request = newRequest(connection, target, method, inputs, &refusal);
  if (!request) return {Status::Invalid, {}, refusal};
  bus::Error error;
  const bus::MessageReference reply = bus::call(connection, request.get(), timeout, error);
  if (!reply) return {statusOf(error, connection), {}, error.text()};
  auto values = bus::readValues(reply.get());
  if (!values) return {Status::Invalid, {}, "The answer cannot be understood"};
  return {Status::Success, std::move(*values), {}};
}

bool postBusMethod(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs) {
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen()) return false;
  std::string refusal;
  const bus::MessageReference request = newRequest(connection, target, method, inputs, &refusal);
  if (!request || sd_bus_message_set_expect_reply(request.get(), 0) < 0 ||
      sd_bus_send(connection.handle(), request.get(), nullptr) < 0)
    return false;
  connection.announceQueuedMessages();
  return true;
}

}  // namespace vorn
