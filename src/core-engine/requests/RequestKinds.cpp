#include "core-engine/requests/DeviceQueries.h"
#include "core-engine/requests/DeviceRequests.h"
#include "core-engine/requests/MacroRequests.h"
#include "core-engine/requests/ProfileRequests.h"
#include "core-engine/requests/Request.h"
#include "core-engine/requests/SettingsRequests.h"

namespace vorn::engine {

namespace {

constexpr RequestKind kinds[] = {
    {MessageID::RegisterDevice, "register device", registerDevice},
    {MessageID::GetAllSettings, "get all settings", getAllSettings},
    {MessageID::AddProfile, "add profile", addProfile},
    {MessageID::UpdateProfile, "update profile", updateProfile},
    {MessageID::ReplaceAllProfiles, "replace all profiles", replaceAllProfiles},
    {MessageID::DeleteProfile, "delete profile", deleteProfile},
    {MessageID::SwitchProfile, "switch profile", switchProfile},
    {MessageID::QueryFirmwareVersion, "query firmware version", queryFirmwareVersion},
    {MessageID::QueryBatteryLevel, "query battery level", queryBatteryLevel},
    {MessageID::QueryChargingStatus, "query charging status", queryChargingStatus},
    {MessageID::StartMacroRecording, "start macro recording", startMacroRecording},
    {MessageID::StopMacroRecording, "stop macro recording", stopMacroRecording},
    {MessageID::SaveRecordedEvents, "save recorded events", saveRecordedEvents},
    {MessageID::StartEditHID, "start editing a key event", startEditHID},
    {MessageID::DeleteMacro, "delete macro", deleteMacro},
    {MessageID::RemoveMacroEvent, "remove one macro event", removeMacroEvent},
    {MessageID::UpdateMacroEvent, "replace one macro event", updateMacroEvent},
    {MessageID::RenameMacro, "rename macro", renameMacro},
    {MessageID::GetMacroDetails, "get macro events", getMacroDetails},
    {MessageID::GetMacroEvent, "get one macro event", getMacroEvent},
    {MessageID::StartSingleKeyRecording, "start single-key recording", startSingleKeyRecording},
    {MessageID::StopSingleKeyRecording, "stop single-key recording", stopSingleKeyRecording},
    {MessageID::AddMacro, "add macro", addMacro},
    {MessageID::RemoveAllMacroEvents, "remove all macro events", removeAllMacroEvents},
    {MessageID::SetAllEventsDelay, "set delay of all macro events", setAllEventsDelay},
    {MessageID::SetEventDelay, "set delay of one macro event", setEventDelay},
    {MessageID::ReleaseDevice, "release device", releaseDevice},
};

}  // namespace

std::span<const RequestKind> requestKinds() {
  return kinds;
}

}  // namespace vorn::engine
