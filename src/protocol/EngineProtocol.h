// What the engine and its clients say to each other: port names, message IDs, the keys of requests and answers, and
// the notifications. Everything here is fixed; docs/engine-link.md describes it for other languages.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace vorn {

inline constexpr std::string_view enginePortName = "VornCoreEngineMsgPort";
// The bus name by which the engine is started on demand. The engine takes it when its port serves.
inline constexpr const char* engineServiceName = "org.vorn.CoreEngine";
inline constexpr std::string_view configuratorReplyPortName = "SkarnConfiguratorReplyPort";
// Each running vornctl has a port of its own, with its process ID after the prefix.
inline constexpr std::string_view vornctlReplyPortPrefix = "VornCtlReplyPort";

// Who a program of ours is: in "Source App", and for the configurator also its desktop entry and its bus name.
inline constexpr std::string_view configuratorIdentifier = "org.vorn.SkarnConfigurator";
inline constexpr std::string_view vornctlIdentifier = "org.vorn.vornctl";

// Product IDs: the mouse on its cable, and the same mouse on its wireless receiver.
inline constexpr std::int32_t wiredProductID = 273;
inline constexpr std::int32_t wirelessProductID = 0;

enum class MessageID : std::int32_t {
  RegisterDevice = 0,
  GetAllSettings = 4,
  AddProfile = 5,
  UpdateProfile = 6,
  ReplaceAllProfiles = 7,
  DeleteProfile = 9,
  SwitchProfile = 10,
  QueryFirmwareVersion = 14,
  QueryBatteryLevel = 15,
  QueryChargingStatus = 16,
  StartMacroRecording = 18,
  StopMacroRecording = 19,
  SaveRecordedEvents = 20,
  StartEditHID = 21,
  DeleteMacro = 22,
  RemoveMacroEvent = 23,
  UpdateMacroEvent = 24,
  RenameMacro = 25,
  GetMacroDetails = 27,
  GetMacroEvent = 28,
  StartSingleKeyRecording = 29,
  StopSingleKeyRecording = 30,
  AddMacro = 32,
  RemoveAllMacroEvents = 33,
  SetAllEventsDelay = 34,
  SetEventDelay = 37,
  ReleaseDevice = 38,
  // Ours beyond what the mouse's own software has always asked for.
  ReplaceMacroSequence = 101,
  ReorderProfiles = 102,
};

// Time-out of one message, there and back, and the wait for its answer.
inline constexpr std::chrono::milliseconds sendTimeout{2000};
// How long an engine that is started on demand may take until it is there.
inline constexpr std::chrono::milliseconds engineStartTimeout{10'000};
inline constexpr std::chrono::milliseconds pollInterval{10};
inline constexpr std::chrono::milliseconds addMacroPollInterval{20};
inline constexpr int maximumPolls = 601;
inline constexpr int sendRequestResult = -50;

namespace requestKeys {
using Key = std::string_view;
inline constexpr Key ProductID = "ProductID";
inline constexpr Key ResponseMsgPortName = "ResponseMsgPortName";
inline constexpr Key ProductName = "ProductName";
inline constexpr Key IsDeviceWired = "IsDeviceWired";
inline constexpr Key DefaultVrPlistPath = "DefaultVrPlistPath";
inline constexpr Key ProfileID = "ProfileID";
inline constexpr Key DeviceSettingsDictionary = "DeviceSettingsDictionary";
inline constexpr Key AllProfiles = "AllProfiles";
// The position now of the profile at each place then, and the names in the order of now, as the client saw them.
inline constexpr Key ProfileOrder = "ProfileOrder";
inline constexpr Key ProfileNames = "ProfileNames";
inline constexpr Key MacroContents = "MacroContents";
// The sequence that the macro had when the client read it.
inline constexpr Key ExpectedSequence = "ExpectedSequence";
inline constexpr Key MacroID = "macroID";
inline constexpr Key IsAppendRecording = "isAppendRecording";
inline constexpr Key IndexOfMacroSequence = "IndexOfMacroSequence";
inline constexpr Key SequenceIdx = "sequenceIdx";
inline constexpr Key Sequence = "sequence";
inline constexpr Key MacroEventTableIndex = "macroEventTableIndex";
inline constexpr Key Delay = "delay";
inline constexpr Key HasNoDelay = "HasNoDelay";
inline constexpr Key SourceApp = "Source App";
// Of a program that asks and goes: the answers to its queries concern nobody else, and nothing is announced for it.
inline constexpr Key IsVisitor = "IsVisitor";
// It goes on with what the same connection has asked for just before: to be undone together.
inline constexpr Key IsContinuation = "IsContinuation";
}  // namespace requestKeys

namespace replyKeys {
using Key = std::string_view;
inline constexpr Key ReturnStatus = "ReturnStatus";
inline constexpr Key ReturnDictionary = "ReturnDictionary";
inline constexpr Key AllDevSettings = "AllDevSettings";
inline constexpr Key MacroSequences = "MacroSequences";
inline constexpr Key SequenceInMacro = "sequenceInMacro";
}  // namespace replyKeys

namespace newsKeys {
using Key = std::string_view;
inline constexpr Key SourceApp = requestKeys::SourceApp;
inline constexpr Key ProfileName = "Profile Name";
inline constexpr Key UpdatedKeymapProfile = "Updated Keymap Profile";
inline constexpr Key MessageID = "MessageID";
inline constexpr Key BatteryPercentLevel = "BatteryPercentLevel";
inline constexpr Key DeviceChargingStatus = "DeviceChargingStatus";
inline constexpr Key ReturnStatus = "ReturnStatus";
inline constexpr Key FirmwareVersion = "FirmwareVersion";
inline constexpr Key IsDeviceWired = requestKeys::IsDeviceWired;
inline constexpr Key DPIValue = "DPI Value";
inline constexpr Key DPIYValue = "DPIY Value";
inline constexpr Key MessagesArray = "messagesArray";
// The reply port of the client whose recording the lines belong to, and the position of the macro that it records.
inline constexpr Key ResponseMsgPortName = requestKeys::ResponseMsgPortName;
inline constexpr Key MacroID = requestKeys::MacroID;
inline constexpr Key SingleKey = "singleKey";
inline constexpr Key SingleKeyModif = "singleKeyModif";
}  // namespace newsKeys

namespace notificationNames {
inline std::string deviceAttached(std::int32_t product) {
  return "Device Attached " + std::to_string(product);
}
inline std::string deviceRemoved(std::int32_t product) {
  return "Device Removed " + std::to_string(product);
}
inline std::string profileUpdated(std::int32_t product) {
  return "Profile Updated " + std::to_string(product);
}
inline std::string dpiUpdated(std::int32_t product) {
  return "DPI Updated " + std::to_string(product);
}
inline std::string keymapUpdated(std::int32_t product) {
  return "Keymap Updated " + std::to_string(product);
}
inline std::string commandReply(std::int32_t product) {
  return "commandReplyNotification" + std::to_string(product);
}
// The numbers of a single-key event: caught for an assignment, or for an event of a macro.
inline constexpr std::int32_t assignmentCapture = 273;
inline constexpr std::int32_t macroEventCapture = 1050;
inline std::string singleKeyEvent(std::int32_t number) {
  return "SingleKeyEvent" + std::to_string(number);
}
inline std::string macroSequence(std::int32_t number) {
  return "MacroSequence" + std::to_string(number);
}
}  // namespace notificationNames

}  // namespace vorn
