#include "core-engine/requests/ReplyPorts.h"

#include "ports/MessagePort.h"

namespace vorn::engine {

bool BusReplyPorts::exists(std::string_view portName) {
  return RemoteMessagePort::lookUp(portName).has_value();
}

ReplyPorts::Outcome BusReplyPorts::post(std::string_view portName, std::int32_t messageID, BytesView data) {
  const auto port = RemoteMessagePort::lookUp(portName);
  if (!port) return Outcome::NoSuchPort;
  return port->post(messageID, data) == RemoteMessagePort::Status::Success ? Outcome::Sent : Outcome::Failed;
}

}  // namespace vorn::engine
