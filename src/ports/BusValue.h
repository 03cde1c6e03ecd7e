// Private to src/ports: values of D-Bus messages from and to property lists, by the types of BusObject.h.
#pragma once

#include <systemd/sd-bus.h>

#include <optional>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn::bus {

// Appends the value as this one complete type. False when it does not fit.
bool appendValue(sd_bus_message* message, std::string_view type, const PropertyList& value);

// Reads one value of a basic type. Nothing when the message holds another one.
std::optional<PropertyList> readBasicValue(sd_bus_message* message, char type);

}  // namespace vorn::bus
