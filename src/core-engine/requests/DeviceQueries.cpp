#include "core-engine/requests/DeviceQueries.h"

#include "core-engine/news/DeviceNews.h"

namespace vorn::engine {

namespace {

void post(EngineParts& parts, const Request& request, const PropertyList& report) {
  const std::int32_t product = request.productID();
  if (product == wiredProductID || product == wirelessProductID) {
    parts.news.post(notificationNames::commandReply(product), report);
  } else {
    parts.log.fault(request.sender, "query of an unknown product",
                    "asks about the unknown product " + std::to_string(product));
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
