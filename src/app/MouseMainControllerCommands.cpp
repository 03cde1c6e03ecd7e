// The hub's requests to the engine and what follows each answer.
#include <QItemSelectionModel>
#include <QTableView>

#include "app/MouseMainController.h"
#include "app/SettingsHistory.h"
#include "app/TypedKeys.h"
#include "buttons/MouseButtonController.h"
#include "lighting/MouseLightingController.h"
#include "macros/MouseMacrosController.h"
#include "model/Assignments.h"
#include "model/SettingsKeys.h"
#include "profiles/MouseProfilesController.h"
#include "protocol/EngineProtocol.h"
#include "widgets/BusyIndicator.h"

namespace skarn {

using vorn::MessageID;
using vorn::PropertyList;
namespace keys = vorn::keys;
namespace requestKeys = vorn::requestKeys;
namespace replyKeys = vorn::replyKeys;

namespace {

constexpr int macroCommand = static_cast<int>(vorn::AssignmentCommand::Macro);
constexpr int profileCommand = static_cast<int>(vorn::AssignmentCommand::Profile);

PropertyList sequenceUpdate(std::uint8_t macro, std::uint8_t eventIndex, const PropertyList& event) {
  return PropertyList::dictionary(
      {{requestKeys::MacroID, macro}, {requestKeys::SequenceIdx, eventIndex}, {requestKeys::Sequence, event}});
}

}  // namespace

PropertyList MouseMainController::envelope() const {
  return PropertyList::dictionary({{requestKeys::ProductID, static_cast<std::int32_t>(devicePID)},
                                   {requestKeys::ResponseMsgPortName, vorn::configuratorReplyPortName}});
}

PropertyList MouseMainController::sendAndWait(MessageID messageID, const PropertyList& request,
                                              std::chrono::milliseconds interval) {
  // The wait of the start is the one that is made for nobody.
  if (mIsEngineGone || (mHasStarted && !mIsEngineThere)) return {};
  mServices.link.send(request, messageID);
  const bool isAnswered = mServices.link.waitForReply(vorn::maximumPolls, interval);
  endShowingWait();
  noteAnswer(isAnswered);
  return isAnswered ? mServices.link.reply() : PropertyList();
}

std::optional<int> MouseMainController::statusOf(MessageID messageID, const PropertyList& request,
                                                 std::chrono::milliseconds interval) {
  const PropertyList answer = sendAndWait(messageID, request, interval);
  if (answer.isNone()) return std::nullopt;
  mServices.link.emptySlot();
  // What is no number reads as 0, but is no success.
  const PropertyList& status = answer[replyKeys::ReturnStatus];
  return status.isNumber() ? std::optional(status.toInt()) : std::nullopt;
}

PropertyList MouseMainController::bundleOf(MessageID messageID, const PropertyList& request) {
  const PropertyList answer = sendAndWait(messageID, request);
  if (answer.isNone()) return {};
  mServices.link.emptySlot();
  const PropertyList& bundle = answer[replyKeys::ReturnDictionary];
  return bundle.isDictionary() ? bundle : PropertyList();
}

// --- Profiles

void MouseMainController::noteChange(const PropertyList& bundle, std::string_view profileName) {
  mChangeNote = PropertyList::dictionary({{vorn::newsKeys::ProfileName, profileName},
                                          {replyKeys::AllDevSettings, bundle},
                                          {requestKeys::SourceApp, vorn::configuratorIdentifier}});
}

void MouseMainController::applyChange(const PropertyList& bundle, std::string_view profileName) {
  if (bundle.isNone()) return;
  noteChange(bundle, profileName);
  takeBundle(bundle);
}

void MouseMainController::takeBundle(const PropertyList& bundle) {
  updateToLatestSettings(bundle);
  setProperties();
  updateUISettings();
}

std::optional<vorn::ReturnStatus> MouseMainController::addNewProfileWithSettings(const PropertyList& profile) {
  return changeProfiles(MessageID::AddProfile, envelope().with(requestKeys::DeviceSettingsDictionary, profile),
                        profile[keys::ProfileName].string());
}

std::optional<vorn::ReturnStatus> MouseMainController::addFurtherProfileWithSettings(const PropertyList& profile) {
  return changeProfiles(
      MessageID::AddProfile,
      envelope().with(requestKeys::DeviceSettingsDictionary, profile).with(requestKeys::IsContinuation, true),
      profile[keys::ProfileName].string());
}

std::optional<vorn::ReturnStatus> MouseMainController::reorderProfiles(const vorn::ProfileOrder& order,
                                                                       const PropertyList& names) {
  return changeProfiles(
      MessageID::ReorderProfiles,
      envelope().with(requestKeys::ProfileOrder, vorn::orderRecord(order)).with(requestKeys::ProfileNames, names),
      mDefaultProfileDict()[keys::ProfileName].string());
}

std::optional<vorn::ReturnStatus> MouseMainController::changeProfiles(MessageID messageID, const PropertyList& request,
                                                                      std::string_view profileName) {
  const PropertyList answer = sendAndWait(messageID, request);
  if (answer.isNone()) return std::nullopt;
  mServices.link.emptySlot();
  // An engine that has changed them says at least what it holds now.
  const PropertyList& bundle = answer[replyKeys::ReturnDictionary];
  const PropertyList& told = answer[replyKeys::ReturnStatus];
  const auto status = told.isNumber() ? static_cast<vorn::ReturnStatus>(told.toInt()) : vorn::ReturnStatus::Done;
  if (bundle.isDictionary()) {
    if (vorn::isChanged(status)) noteChange(bundle, profileName);
    takeBundle(bundle);
  } else if (vorn::isChanged(status)) {
    return std::nullopt;
  }
  return status;
}

void MouseMainController::updateProfileWithID(int profileID, const PropertyList& andSettings) {
  const int target = profileID < 0 ? deviceSettingsDict[keys::ActiveProfile].toInt() : profileID;
  const PropertyList bundle = bundleOf(
      MessageID::UpdateProfile,
      envelope().with(requestKeys::ProfileID, target).with(requestKeys::DeviceSettingsDictionary, andSettings));
  applyChange(bundle, andSettings[keys::ProfileName].string());
}

int MouseMainController::profileTableRow() const {
  const QItemSelectionModel* selection = mMouseProfilesController->mProfilesTableView()->selectionModel();
  if (selection == nullptr || !selection->hasSelection()) return -1;
  return selection->selectedIndexes().constFirst().row();
}

void MouseMainController::updateProfileWithSettings(const PropertyList& settings) {
  updateProfileWithID(profileTableRow(), settings);
}

void MouseMainController::updateButtonAssignmentWithSettings(const PropertyList& settings) {
  updateProfileWithSettings(settings);
}

void MouseMainController::updateButtonAssignmentWithSettings(const PropertyList& settings, int toProfileIndex) {
  updateProfileWithID(toProfileIndex, settings);
}

void MouseMainController::updateValueForSetting(const PropertyList& settings) {
  updateProfileWithSettings(settings);
}

void MouseMainController::renameProfileWithProfileID(int profileID, const PropertyList& andSettings) {
  updateProfileWithID(profileID, andSettings);
}

void MouseMainController::clickApplySettings() {
  // Always the first profile, whatever profile is active.
  updateProfileWithID(0, mMouseLightingController->mUserSettingsDict());
}

void MouseMainController::updateProfileKeyInDictionaryWithDictionary(const PropertyList& profiles) {
  bundleOf(MessageID::ReplaceAllProfiles, envelope().with(requestKeys::AllProfiles, profiles));
}

void MouseMainController::deleteProfileWithProfileID(int profileID) {
  const PropertyList before = profilesArray;
  mProfileDeleted = true;
  mDeletedProfileID = static_cast<std::uint32_t>(profileID);
  updateProfilesControlState(false);
  const PropertyList answer = sendAndWait(MessageID::DeleteProfile, envelope().with(requestKeys::ProfileID, profileID));
  // An answer without the bundle stays in the slot for the next command, and the tab stays disabled.
  if (!answer[replyKeys::ReturnDictionary].isDictionary()) return;
  mServices.link.emptySlot();
  switchProfileWithID(std::max(profileID - 1, 0));
  keepReferences(before, {vorn::AssignmentCommand::Profile, profileID, before.size()});
}

void MouseMainController::switchProfileWithID(int profileID) {
  const PropertyList answer = sendAndWait(MessageID::SwitchProfile, envelope().with(requestKeys::ProfileID, profileID));
  if (answer.isNone()) return;
  // The clean-up's own commands wait for their own answers.
  mServices.link.emptySlot();
  const PropertyList& bundle = answer[replyKeys::ReturnDictionary];
  if (bundle.isDictionary()) takeSwitch(bundle, profileID);
  updateUISettings();
  updateProfilesControlState(true);
  mProfileDeleted = false;
  mDeletedProfileID = 0;
}

void MouseMainController::takeSwitch(const PropertyList& bundle, int profileID) {
  updateToLatestSettings(bundle);
  noteChange(bundle, profilesArray.at(profileID)[keys::ProfileName].string());
  setProperties();
  if (!mProfileDeleted) return;
  mMouseButtonController->removeMacroProfileMappings(static_cast<int>(mDeletedProfileID), profileCommand);
  loadLatestSettings();
  setProperties();
}

void MouseMainController::keepReferences(const PropertyList& before, const vorn::Deletion& deletion) {
  const PropertyList kept =
      vorn::withReferencesKept(before, profilesArray, deletion, defaultSettingsDict[keys::Profiles].at(0));
  if (kept == profilesArray) return;
  const PropertyList bundle = bundleOf(MessageID::ReplaceAllProfiles, envelope().with(requestKeys::AllProfiles, kept));
  if (!bundle.isNone()) takeBundle(bundle);
}

// --- Macros

std::optional<vorn::ReturnStatus> MouseMainController::addMacroWithSettings(const PropertyList& macro) {
  const auto status =
      statusOf(MessageID::AddMacro, envelope().with(requestKeys::MacroContents, macro), vorn::addMacroPollInterval);
  if (status == 0) reload();
  return status ? std::optional(static_cast<vorn::ReturnStatus>(*status)) : std::nullopt;
}

void MouseMainController::deleteMacroAtIndex(int macro) {
  const PropertyList before = profilesArray;
  const std::size_t count = macrosArray.size();
  if (statusOf(MessageID::DeleteMacro, envelope().with(requestKeys::MacroID, macro)) != 0) return;
  loadLatestSettings();
  setProperties();
  mMouseButtonController->removeMacroProfileMappings(macro, macroCommand);
  reload();
  if (macrosArray.size() + 1 == count) keepReferences(before, {vorn::AssignmentCommand::Macro, macro, count});
}

void MouseMainController::renameMacroAtIndex(int macro, std::string_view withNewName) {
  const PropertyList contents = PropertyList::dictionary({{keys::MacroName, withNewName}, {keys::MacroID, macro}});
  if (statusOf(MessageID::RenameMacro, envelope().with(requestKeys::MacroContents, contents)) == 0) reload();
}

void MouseMainController::reloadMacros() {
  if (mServices.link.isEngineAvailable()) reload();
}

void MouseMainController::getMacroDetailsForMacroAtIndex(int macro) {
  const PropertyList answer =
      sendAndWait(MessageID::GetMacroDetails, envelope().with(requestKeys::IndexOfMacroSequence, macro));
  if (answer.isNone()) return;
  mServices.link.emptySlot();
  // Missing lines are no empty list.
  const PropertyList& lines = answer[replyKeys::MacroSequences];
  if (lines.isArray()) mMouseMacrosController->updateSelectedMacroWithMacroDetails(lines);
}

PropertyList MouseMainController::getSequenceDetails(std::uint8_t macro, std::uint8_t eventIndex) {
  const PropertyList answer =
      sendAndWait(MessageID::GetMacroEvent,
                  envelope().with(requestKeys::MacroID, macro).with(requestKeys::SequenceIdx, eventIndex));
  if (answer.isNone()) return PropertyList::dictionary();
  mServices.link.emptySlot();
  return answer[replyKeys::SequenceInMacro].dictionaryOrEmpty();
}

void MouseMainController::updateSequenceInfo(std::uint8_t macro, std::uint8_t eventIndex, const PropertyList& newDict) {
  updateSequence(sequenceUpdate(macro, eventIndex, newDict));
}

void MouseMainController::updateFurtherSequenceInfo(std::uint8_t macro, std::uint8_t eventIndex,
                                                    const PropertyList& newDict) {
  updateSequence(sequenceUpdate(macro, eventIndex, newDict).with(requestKeys::IsContinuation, true));
}

void MouseMainController::updateSequence(const PropertyList& update) {
  if (statusOf(MessageID::UpdateMacroEvent, envelope().merging(update)) != 0) return;
  mMouseMacrosController->setStateOfTableButtonsWithState(true);
  mMouseMacrosController->setStateOfMacroTableWithState(true);
}

std::optional<vorn::ReturnStatus> MouseMainController::replaceSequence(const PropertyList& sequence, int ofMacroAtIndex,
                                                                       const PropertyList& macro) {
  const PropertyList contents = PropertyList::dictionary(
      {{keys::MacroID, ofMacroAtIndex}, {keys::MacroName, macro[keys::MacroName]}, {keys::Sequence, sequence}});
  const PropertyList request = envelope()
                                   .with(requestKeys::MacroContents, contents)
                                   .with(requestKeys::ExpectedSequence, macro[keys::Sequence].dictionaryOrEmpty());
  const auto status = statusOf(MessageID::ReplaceMacroSequence, request);
  return status ? std::optional(static_cast<vorn::ReturnStatus>(*status)) : std::nullopt;
}

void MouseMainController::removeEventAtIndex(int event, int forMacroAtIndex) {
  statusOf(MessageID::RemoveMacroEvent,
           envelope().with(requestKeys::MacroID, forMacroAtIndex).with(requestKeys::MacroEventTableIndex, event));
}

void MouseMainController::removeAllEventsForMacroAtIndex(int macro) {
  statusOf(MessageID::RemoveAllMacroEvents, envelope().with(requestKeys::MacroID, macro));
}

void MouseMainController::setAllEventsDelay(int delay, int forMacroAtIndex, bool hasNoDelay) {
  statusOf(MessageID::SetAllEventsDelay, envelope()
                                             .with(requestKeys::MacroID, forMacroAtIndex)
                                             .with(requestKeys::Delay, delay)
                                             .with(requestKeys::HasNoDelay, hasNoDelay));
}

void MouseMainController::setNewDelay(int milliseconds, int atMacroEventIndex, int forMacroAtIndex) {
  statusOf(MessageID::SetEventDelay, envelope()
                                         .with(requestKeys::Delay, milliseconds)
                                         .with(requestKeys::SequenceIdx, atMacroEventIndex)
                                         .with(requestKeys::MacroID, forMacroAtIndex));
}

void MouseMainController::startMacroRecording(bool append, int macroIndex) {
  statusOf(MessageID::StartMacroRecording,
           envelope().with(requestKeys::MacroID, macroIndex).with(requestKeys::IsAppendRecording, append ? 1 : 0));
}

void MouseMainController::stopMacroRecording() {
  mTypedKeys->releaseAll();
  statusOf(MessageID::StopMacroRecording, envelope());
}

void MouseMainController::saveRecordedEventsForMacroAtIndex(int macro, bool isNewRecording) {
  const auto status = statusOf(
      MessageID::SaveRecordedEvents,
      envelope().with(requestKeys::MacroID, macro).with(requestKeys::IsAppendRecording, isNewRecording ? 1 : 0));
  if (status == 0) reload();
}

void MouseMainController::startEditHID() {
  statusOf(MessageID::StartEditHID, envelope());
}

void MouseMainController::startSingleKeyRecording() {
  statusOf(MessageID::StartSingleKeyRecording, envelope());
}

void MouseMainController::stopSingleKeyRecording() {
  mTypedKeys->releaseAll();
  statusOf(MessageID::StopSingleKeyRecording, envelope());
}

// --- Device

void MouseMainController::sendQuery(MessageID messageID) {
  if (!mIsEngineGone) mServices.link.post(envelope(), messageID);
}

void MouseMainController::checkBatteryLevel() {
  sendQuery(MessageID::QueryBatteryLevel);
}

void MouseMainController::checkBatteryStatus() {
  sendQuery(MessageID::QueryChargingStatus);
}

void MouseMainController::releaseVornDeviceInstance() {
  mServices.link.post(PropertyList::dictionary({{requestKeys::ProductID, static_cast<std::int32_t>(devicePID)}}),
                      MessageID::ReleaseDevice);
}

}  // namespace skarn
