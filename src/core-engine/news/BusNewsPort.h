// The engine's news as distributed notifications of the session bus.
#pragma once

#include "core-engine/news/NewsPort.h"
#include "ports/DistributedNotificationCenter.h"

namespace vorn::engine {

class BusNewsPort : public NewsPort {
 public:
  void post(std::string_view name, const PropertyList& userInfo) override {
    DistributedNotificationCenter::defaultCenter().post(name, {}, userInfo);
  }
  void postTo(std::string_view receiver, std::string_view name, const PropertyList& userInfo) override {
    DistributedNotificationCenter::defaultCenter().postTo(receiver, name, {}, userInfo);
  }
};

}  // namespace vorn::engine
