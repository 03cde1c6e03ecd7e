#include "core-engine/requests/ProfileRequests.h"

#include <optional>
#include <string>
#include <string_view>

#include "core-engine/requests/SettingsRequests.h"
#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/ProfileRules.h"
#include "protocol/ReturnStatus.h"

namespace vorn::engine {

namespace {

PropertyList statusValue(ReturnStatus status) {
  return static_cast<std::int32_t>(status);
}

void report(Log& log, const std::string& client, std::string_view title, const Complaint& complaint) {
  const std::string kind = std::string(title) + ": " + complaint.reason;
  log.fault(client, kind, complaint.detail.empty() ? kind : kind + " (" + complaint.detail + ")");
}

void doNothing() {}

// title: the request, for the log. change makes a ProfileChange of the bundle; follow is called when it is in force.
template <typename Change, typename Follow = void (*)()>
Answer changeProfiles(EngineParts& parts, const Request& request, std::string_view title, const Change& change,
                      const Follow& follow = doNothing) {
  if (!provideSettings(parts, request, {})) {
    return PropertyList::dictionary({{replyKeys::ReturnStatus, statusValue(ReturnStatus::NoSettings)}});
  }
  // What such a client sends comes from its own default settings and would overwrite the user's.
  if (parts.clients.showsDefaults(request.replyPort())) {
    return PropertyList::dictionary({{replyKeys::ReturnStatus, statusValue(ReturnStatus::NoMouse)}});
  }
  ProfileChange result;
  const auto outcome = parts.store.apply([&](const PropertyList& bundle) {
    result = change(bundle);
    return result.bundle;
  });
  if (outcome == SettingsStore::Outcome::Done) follow();
  for (const Complaint& complaint : result.complaints) report(parts.log, request.sender, title, complaint);
  ReturnStatus status = result.status;
  if (outcome == SettingsStore::Outcome::NotSaved) status = ReturnStatus::NotSaved;
  if (outcome == SettingsStore::Outcome::TooLarge) {
    report(parts.log, request.sender, title, {unsendableReason, {}});
    status = ReturnStatus::TooLarge;
  }
  if (outcome == SettingsStore::Outcome::Refused && status == ReturnStatus::Done) {
    report(parts.log, request.sender, title, {"the result is no complete bundle", {}});
    status = ReturnStatus::Malformed;
  }
  return PropertyList::dictionary(
      {{replyKeys::ReturnDictionary, parts.store.bundle()}, {replyKeys::ReturnStatus, statusValue(status)}});
}

}  // namespace

Answer addProfile(EngineParts& parts, const Request& request) {
  return changeProfiles(parts, request, "add profile", [&](const PropertyList& bundle) {
    return withAddedProfile(bundle, request.body[requestKeys::DeviceSettingsDictionary], parts.defaults.ownProfile());
  });
}

Answer updateProfile(EngineParts& parts, const Request& request) {
  return changeProfiles(parts, request, "update profile", [&](const PropertyList& bundle) {
    return withUpdatedProfile(bundle, request.body[requestKeys::ProfileID],
                              request.body[requestKeys::DeviceSettingsDictionary]);
  });
}

Answer replaceAllProfiles(EngineParts& parts, const Request& request) {
  const auto replace = [&](const PropertyList& bundle) {
    return withReplacedProfiles(bundle, request.body[requestKeys::AllProfiles], parts.defaults.ownProfile());
  };
  return changeProfiles(parts, request, "replace all profiles", replace, [&] { parts.profiles.profilesReplaced(); });
}

Answer deleteProfile(EngineParts& parts, const Request& request) {
  const PropertyList& profileID = request.body[requestKeys::ProfileID];
  const auto remove = [&](const PropertyList& bundle) { return withoutProfile(bundle, profileID); };
  return changeProfiles(parts, request, "delete profile", remove,
                        [&] { parts.profiles.profileDeleted(profileID.toInt64()); });
}

Answer switchProfile(EngineParts& parts, const Request& request) {
  return changeProfiles(parts, request, "switch profile", [&](const PropertyList& bundle) {
    return withActiveProfile(bundle, request.body[requestKeys::ProfileID]);
  });
}

}  // namespace vorn::engine
