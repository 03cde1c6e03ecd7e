// Where the engine's notifications leave. One thread, the engine's.
#pragma once

#include <string_view>

#include "model/PropertyList.h"

namespace vorn::engine {

class NewsPort {
 public:
  virtual ~NewsPort() = default;
  // Broadcasts to whoever observes the name; nobody hears whether anybody does. userInfo: a dictionary, or none.
  virtual void post(std::string_view name, const PropertyList& userInfo) = 0;
  // The same for one connection, whose unique bus name receiver is; nobody else hears it.
  virtual void postTo(std::string_view receiver, std::string_view name, const PropertyList& userInfo) = 0;
};

}  // namespace vorn::engine
