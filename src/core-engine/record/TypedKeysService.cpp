#include "core-engine/record/TypedKeysService.h"

#include <limits>

#include "model/HidUsages.h"
#include "protocol/TypedKeys.h"

namespace vorn::engine {

bool TypedKeysService::start(std::string& error) {
  BusObjectDescription description{typedKeys::busName, typedKeys::objectPath, typedKeys::interface, {}, {}};
  BusMethod type{
      typedKeys::methods::Type, {{"q", "usagePage"}, {"q", "usage"}, {"b", "isPressed"}, {"t", "time"}}, {}, {}, {}};
  type.callFrom = [this](const std::vector<PropertyList>& given, const std::string& connection) {
    return this->type(given, connection);
  };
  description.methods.push_back(std::move(type));
  mObject = BusObject::create(std::move(description), &error);
  return mObject != nullptr;
}

BusReply TypedKeysService::type(const std::vector<PropertyList>& given, const std::string& connection) const {
  const std::uint64_t page = given[0].toUnsigned();
  const std::uint64_t usage = given[1].toUnsigned();
  const std::uint64_t time = given[3].toUnsigned();
  // Both fit, as the bus has checked.
  if (!hid::isKeyOrButton(static_cast<std::int64_t>(page), static_cast<std::int64_t>(usage)) ||
      time > std::numeric_limits<std::int64_t>::max()) {
    return BusReply::failure(
        typedKeys::errors::BadArgument,
        "What can be typed are keys (usage page 7, usages 4 to 231) and buttons (page 9, usages 1 to 9)");
  }
  const KeyChanged key{static_cast<hid::UsagePage>(page), static_cast<hid::Usage>(usage), given[2].toBool(),
                       std::chrono::milliseconds(static_cast<std::int64_t>(time))};
  if (mTyped(connection, key)) return BusReply::success();
  return BusReply::failure(typedKeys::errors::NotListening, "This program neither records nor captures now");
}

}  // namespace vorn::engine
