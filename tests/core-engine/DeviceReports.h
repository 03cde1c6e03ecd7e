// The news that a device's state is told with.
#pragma once

#include <cstdint>
#include <string>

#include "core-engine/TestParts.h"

namespace vorn::engine::test {

inline RecordingNewsPort::News level(std::int32_t percent, const std::string& product = "273") {
  return {"commandReplyNotification" + product,
          PropertyList::dictionary({{"MessageID", 15}, {"BatteryPercentLevel", percent}})};
}

inline RecordingNewsPort::News charging(std::int32_t status, const std::string& product = "273") {
  return {"commandReplyNotification" + product,
          PropertyList::dictionary({{"MessageID", 16}, {"DeviceChargingStatus", status}})};
}

inline RecordingNewsPort::News firmware(std::int32_t status, const std::string& version,
                                        const std::string& product = "273") {
  return {"commandReplyNotification" + product,
          PropertyList::dictionary({{"MessageID", 14}, {"ReturnStatus", status}, {"FirmwareVersion", version}})};
}

inline RecordingNewsPort::News firmwareOf(bool isWired, std::int32_t status, const std::string& version,
                                          const std::string& product = "273") {
  RecordingNewsPort::News news = firmware(status, version, product);
  news.userInfo = news.userInfo.with("IsDeviceWired", isWired ? 1 : 0);
  return news;
}

}  // namespace vorn::engine::test
