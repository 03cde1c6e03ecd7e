// Private to src/ports: values of D-Bus messages from and to property lists, by the types of BusObject.h.
#pragma once

#include <systemd/sd-bus.h>

#include <optional>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"
#include "ports/BusMethodCall.h"

namespace vorn::bus {

// Appends the value as this one complete type, or v<T>, a variant that holds a T. False when it does not fit.
bool appendValue(sd_bus_message* message, std::string_view type, const PropertyList& value);

// Appends the dictionary as an a{sv}, with these types for some of its entries. False when one does not fit.
bool appendDictionary(sd_bus_message* message, const PropertyList& value, const BusEntryTypes& types);

// Reads one value of a basic type. Nothing when the message holds another one.
std::optional<PropertyList> readBasicValue(sd_bus_message* message, char type);

// Reads all values that are left in the message or in its container. Nothing when one of them has a type that is not
// listed there; a variant reads as what it holds.
std::optional<std::vector<PropertyList>> readValues(sd_bus_message* message);

}  // namespace vorn::bus
