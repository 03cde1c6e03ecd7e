#include "core-engine/DeviceRequests.h"
#include "core-engine/Request.h"
#include "core-engine/SettingsRequests.h"

namespace vorn::engine {

namespace {

constexpr RequestKind kinds[] = {
    {MessageID::RegisterDevice, "register device", registerDevice},
    {MessageID::GetAllSettings, "get all settings", getAllSettings},
    {MessageID::ReleaseDevice, "release device", releaseDevice},
};

}  // namespace

std::span<const RequestKind> requestKinds() {
  return kinds;
}

}  // namespace vorn::engine
