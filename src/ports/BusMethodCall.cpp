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

}  // namespace

BusAnswer callBusMethod(const BusTarget& target, const std::string& method, const std::vector<BusInput>& inputs,
                        std::chrono::milliseconds timeout) {
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen()) return {Status::NoBus, {}, connection.error()};
  const bus::MessageReference request =
      bus::newCall(connection, target.busName, target.path, target.interface.c_str(), method.c_str());
  if (!request) return {Status::Invalid, {}, "The call cannot be made"};
  for (const BusInput& input : inputs) {
    if (!bus::appendValue(request.get(), input.type, input.value)) {
      return {Status::Invalid, {}, "A value does not fit the type " + input.type};
    }
  }
  bus::Error error;
  const bus::MessageReference reply = bus::call(connection, request.get(), timeout, error);
  if (!reply) return {statusOf(error, connection), {}, error.text()};
  auto values = bus::readValues(reply.get());
  if (!values) return {Status::Invalid, {}, "The answer cannot be understood"};
  return {Status::Success, std::move(*values), {}};
}

}  // namespace vorn
