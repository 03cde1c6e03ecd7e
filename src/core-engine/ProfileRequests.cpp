#include "core-engine/ProfileRequests.h"

#include <optional>
#include <string>
#include <string_view>

#include "core-engine/ProfileRules.h"
#include "core-engine/ReturnStatus.h"
#include "core-engine/SettingsRequests.h"

namespace vorn::engine {

namespace {

PropertyList statusValue(ReturnStatus status) {
  return static_cast<std::int32_t>(status);
}

void report(Log& log, const std::string& client, std::string_view title, const Complaint& complaint) {
  const std::string kind = std::string(title) + ": " + complaint.reason;
  log.fault(client, kind, complaint.detail.empty() ? kind : kind + " (" + complaint.detail + ")");
}

// title: the request, for the log. change makes a ProfileChange of the bundle.
template <typename Change>
Answer changeProfiles(EngineParts& parts, const Request& request, std::string_view title, const Change& change) {
  if (!provideSettings(parts, request, {})) {
    return PropertyList::dictionary({{replyKeys::ReturnStatus, statusValue(ReturnStatus::NoSettings)}});
  }
  ProfileChange result;
  const auto outcome = parts.store.apply([&](const PropertyList& bundle) {
    result = change(bundle);
    return result.bundle;
  });
  for (const Complaint& complaint : result.complaints) report(parts.log, request.sender, title, complaint);
  const ReturnStatus status = outcome == SettingsStore::Outcome::NotSaved ? ReturnStatus::NotSaved : result.status;
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
  return changeProfiles(parts, request, "replace all profiles", [&](const PropertyList& bundle) {
    return withReplacedProfiles(bundle, request.body[requestKeys::AllProfiles], parts.defaults.ownProfile());
  });
}

Answer deleteProfile(EngineParts& parts, const Request& request) {
  return changeProfiles(parts, request, "delete profile", [&](const PropertyList& bundle) {
    return withoutProfile(bundle, request.body[requestKeys::ProfileID]);
  });
}

Answer switchProfile(EngineParts& parts, const Request& request) {
  return changeProfiles(parts, request, "switch profile", [&](const PropertyList& bundle) {
    return withActiveProfile(bundle, request.body[requestKeys::ProfileID]);
  });
}

}  // namespace vorn::engine
