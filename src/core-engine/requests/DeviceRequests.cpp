#include "core-engine/requests/DeviceRequests.h"

#include <string>
#include <vector>

#include "core-engine/requests/SettingsRequests.h"

namespace vorn::engine {

namespace {

Answer registered(bool isRegistered) {
  return PropertyList::dictionary({{replyKeys::ReturnStatus, isRegistered}});
}

}  // namespace

Answer registerDevice(EngineParts& parts, const Request& request) {
  const std::int32_t product = request.productID();
  if (product != wiredProductID && product != wirelessProductID) {
    parts.log.fault(request.sender, "registration of an unknown product",
                    "registers the unknown product " + std::to_string(product));
    return registered(false);
  }
  if (!provideSettings(parts, request, request.body[requestKeys::DefaultVrPlistPath].toString())) {
    return registered(false);
  }
  // Without a port there is nobody to tell anything to.
  const bool isPresent = parts.device.isPresent();
  if (!request.replyPort().empty()) parts.clients.add({request.sender, request.replyPort(), product, !isPresent});
  return registered(isPresent);
}

Answer releaseDevice(EngineParts& parts, const Request& request) {
  std::vector<std::string> ports = parts.clients.release(request.sender);
  // Who began something need not be registered, or not from this connection any more.
  if (parts.recorder.connection() == request.sender) ports.push_back(parts.recorder.client());
  if (parts.capture.connection() == request.sender) ports.push_back(parts.capture.client());
  for (const std::string& port : ports) {
    // What was recorded can still be saved.
    parts.recorder.stop(port);
    parts.capture.stop(port);
  }
  return std::nullopt;
}

}  // namespace vorn::engine
