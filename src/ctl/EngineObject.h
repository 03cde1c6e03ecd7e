// Calls of the objects that the engine has on the bus beside its message port.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ctl/Context.h"
#include "ports/BusMethodCall.h"

namespace vorn::ctl {

// What the method returned. An engine that does not run is started as for a request. what: the object in the messages
// of failures, "the virtual mouse"; an error of the object is told in its own words.
Result<std::vector<PropertyList>> callEngineObject(const Context& context, const BusTarget& target,
                                                   std::string_view what, const std::string& method,
                                                   const std::vector<BusInput>& inputs = {});

}  // namespace vorn::ctl
