#include "core-engine/requests/DeviceQueries.h"
#include "core-engine/requests/DeviceRequests.h"
#include "core-engine/requests/MacroRequests.h"
#include "core-engine/requests/ProfileRequests.h"
#include "core-engine/requests/Request.h"
#include "core-engine/requests/SettingsRequests.h"

namespace vorn::engine {

namespace {

constexpr RequestKind kinds[] = {
    {MessageID::RegisterDevice, "register device", Products::Any, registerDevice},
    {MessageID::GetAllSettings, "get all settings", Products::Served, getAllSettings},
    {MessageID::AddProfile, "add profile", Products::Served, addProfile},
    {MessageID::UpdateProfile, "update profile", Products::Served, updateProfile},
    {MessageID::ReplaceAllProfiles, "replace all profiles", Products::Served, replaceAllProfiles},
    {MessageID::DeleteProfile, "delete profile", Products::Served, deleteProfile},
    {MessageID::SwitchProfile, "switch profile", Products::Served, switchProfile},
    {MessageID::QueryFirmwareVersion, "query firmware version", Products::Any, queryFirmwareVersion},
    {MessageID::QueryBatteryLevel, "query battery level", Products::Any, queryBatteryLevel},
    {MessageID::QueryChargingStatus, "query charging status", Products::Any, queryChargingStatus},
    {MessageID::StartMacroRecording, "start macro recording", Products::Served, startMacroRecording},
    {MessageID::StopMacroRecording, "stop macro recording", Products::Served, stopMacroRecording},
    {MessageID::SaveRecordedEvents, "save recorded events", Products::Served, saveRecordedEvents},
    {MessageID::StartEditHID, "start editing a key event", Products::Served, startEditHID},
    {MessageID::DeleteMacro, "delete macro", Products::Served, deleteMacro},
    {MessageID::RemoveMacroEvent, "remove one macro event", Products::Served, removeMacroEvent},
    {MessageID::UpdateMacroEvent, "replace one macro event", Products::Served, updateMacroEvent},
    {MessageID::RenameMacro, "rename macro", Products::Served, renameMacro},
    {MessageID::GetMacroDetails, "get macro events", Products::Served, getMacroDetails},
    {MessageID::GetMacroEvent, "get one macro event", Products::Served, getMacroEvent},
    {MessageID::StartSingleKeyRecording, "start single-key recording", Products::Served, startSingleKeyRecording},
    {MessageID::StopSingleKeyRecording, "stop single-key recording", Products::Served, stopSingleKeyRecording},
    {MessageID::AddMacro, "add macro", Products::Served, addMacro},
    {MessageID::RemoveAllMacroEvents, "remove all macro events", Products::Served, removeAllMacroEvents},
    {MessageID::SetAllEventsDelay, "set delay of all macro events", Products::Served, setAllEventsDelay},
    {MessageID::SetEventDelay, "set delay of one macro event", Products::Served, setEventDelay},
    {MessageID::ReorderProfiles, "reorder profiles", Products::Served, reorderProfiles},
    {MessageID::ReleaseDevice, "release device", Products::Any, releaseDevice},
    {MessageID::ReplaceMacroSequence, "replace a macro's sequence", Products::Served, replaceMacroSequence},
};

}  // namespace

std::span<const RequestKind> requestKinds() {
  return kinds;
}

}  // namespace vorn::engine
