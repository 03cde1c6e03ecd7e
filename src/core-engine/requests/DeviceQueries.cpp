#include "core-engine/requests/DeviceQueries.h"

#include "core-engine/news/DeviceNews.h"

namespace vorn::engine {

namespace {

void post(EngineParts& parts, const Request& request, const PropertyList& report) {
  const std::int32_t product = request.productID();
  if (product != wiredProductID && product != wirelessProductID) {
    parts.log.fault(request.sender, "query of an unknown product",
                    "asks about the unknown product " + std::to_string(product));
    return;
  }
  const std::string name = notificationNames::commandReply(product);
  if (request.isOfVisitor()) {
    parts.news.postTo(request.sender, name, report);
  } else {
    parts.news.post(name, report);
  }
}

}  // namespace

Answer queryFirmwareVersion(EngineParts& parts, const Request& request) {
  post(parts, request, firmwareReport(parts.device));
  if (parts.device.isPresent()) post(parts, request, chargingReport(parts.device));
  return std::nullopt;
}

Answer queryBatteryLevel(EngineParts& parts, const Request& request) {
  post(parts, request, batteryReport(parts.device));
  return std::nullopt;
}

Answer queryChargingStatus(EngineParts& parts, const Request& request) {
  post(parts, request, chargingReport(parts.device));
  return std::nullopt;
}

}  // namespace vorn::engine
