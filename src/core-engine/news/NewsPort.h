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
};

}  // namespace vorn::engine
