// Another program of the session, which asks the engine for what it holds and for changes.
#pragma once

#include "link/PortEngineLink.h"
#include "model/SettingsKeys.h"

namespace skarn::test {

class OtherClient {
 public:
  OtherClient() { mLink.createLocalPort(); }

  // The answer to a request with these keys and the sender's.
  vorn::PropertyList ask(vorn::MessageID messageID, const vorn::PropertyList& keys) {
    mLink.send(keys.with(vorn::requestKeys::ProductID, vorn::wiredProductID)
                   .with(vorn::requestKeys::ResponseMsgPortName, portName)
                   .with(vorn::requestKeys::SourceApp, "org.example.OtherClient"),
               messageID);
    const vorn::PropertyList answer = mLink.waitForReply() ? mLink.reply() : vorn::PropertyList();
    mLink.emptySlot();
    return answer;
  }
  // A request that has no answer on the port.
  void tell(vorn::MessageID messageID) {
    mLink.send(vorn::PropertyList::dictionary({{vorn::requestKeys::ProductID, vorn::wiredProductID},
                                               {vorn::requestKeys::ResponseMsgPortName, portName}}),
               messageID);
  }
  vorn::PropertyList bundle() {
    return ask(vorn::MessageID::GetAllSettings, vorn::PropertyList::dictionary())[vorn::replyKeys::AllDevSettings];
  }

  // The bundle after the change.
  vorn::PropertyList change(vorn::MessageID messageID, const vorn::PropertyList& keys) {
    return ask(messageID, keys)[vorn::replyKeys::ReturnDictionary];
  }
  vorn::PropertyList updateProfile(int profileID, const vorn::PropertyList& settings) {
    return change(vorn::MessageID::UpdateProfile,
                  vorn::PropertyList::dictionary({{vorn::requestKeys::ProfileID, profileID},
                                                  {vorn::requestKeys::DeviceSettingsDictionary, settings}}));
  }
  // A further profile, with these settings.
  vorn::PropertyList addProfile(const vorn::PropertyList& settings) {
    return change(vorn::MessageID::AddProfile,
                  vorn::PropertyList::dictionary({{vorn::requestKeys::DeviceSettingsDictionary, settings}}));
  }
  vorn::PropertyList switchProfile(int profileID) {
    return change(vorn::MessageID::SwitchProfile,
                  vorn::PropertyList::dictionary({{vorn::requestKeys::ProfileID, profileID}}));
  }
  // Gives one of the first profile's keys another assignment.
  vorn::PropertyList assign(vorn::keys::Key key, int command, int param1) {
    const vorn::PropertyList assignments = bundle()[vorn::keys::Profiles].at(0)[vorn::keys::Keys];
    const vorn::PropertyList record = vorn::PropertyList::dictionary(
        {{vorn::keys::Command, command}, {vorn::keys::Param1, param1}, {vorn::keys::Param2, 0}});
    return updateProfile(0, vorn::PropertyList::dictionary({{vorn::keys::Keys, assignments.with(key, record)}}));
  }

 private:
  static constexpr const char* portName = "OtherClientReplyPort";
  vorn::PortEngineLink mLink{portName};
};

}  // namespace skarn::test
